// Writes the generated parts of docs/api.md.
#include "api/markdown.h"

#include <algorithm>

#include "framework/checks.h"
#include "platform/text.h"

namespace camera::api {
namespace {

constexpr std::string_view kStart = "<!-- generated -->";
constexpr std::string_view kEnd = "<!-- end -->";
constexpr std::size_t kWidth = 120;

// Breaks a paragraph into lines.
std::string wrapped(std::string_view text) {
  std::string lines;
  std::size_t column = 0;
  while (!text.empty()) {
    const std::string_view word = takeUntil(' ', &text);
    if (column > 0) {
      const bool fits = column + 1 + word.size() <= kWidth;
      lines += fits ? ' ' : '\n';
      column = fits ? column + 1 : 0;
    }
    lines += word;
    column += word.size();
  }
  return lines + "\n";
}

std::string cell(std::string_view text) {
  std::string escaped;
  for (const char c : text) escaped.append(c == '|' ? "\\" : "") += c;
  return escaped;
}

std::string listed(Words words) {
  std::string text;
  for (const std::string_view word : words) {
    if (!word.empty()) text += joined({text.empty() ? "" : ", ", "`", word, "`"});
  }
  return text;
}

std::string valuesOf(const ApiParam& param, const ParamRow* row, bool needsParams) {
  std::string text = param.values != nullptr                                      ? param.values
                     : row == nullptr                                             ? ""
                     : row->kind == ParamKind::kChoice && row->wordsOf == nullptr ? listed(row->words)
                                                                                  : acceptedBy(*row, nullptr);
  if (param.unit != nullptr) text += joined({" (", param.unit, ")"});
  if (row != nullptr && row->isRequired && needsParams) text += "; required";
  return text;
}

std::string paramTable(const Described& described) {
  const Api& api = *described.api;
  if (api.params.empty()) return "\nWithout parameters.\n";
  std::string table = "\n| parameter | values | effect |\n|---|---|---|\n";
  for (const ApiParam& param : api.params)
    table += joined({"| `", param.name, "` | ",
                     cell(valuesOf(param, api.rows.find(param.name), described.needsParams)), " | ",
                     cell(meaningOf(param, described)), " |\n"});
  return table;
}

const char* jsonOf(ApiType type) {
  switch (type) {
    case ApiType::kNumbers:
      return "list of numbers";
    case ApiType::kTexts:
      return "list";
    case ApiType::kObjects:
      return "list of entries";
    case ApiType::kNumber:
      return "number";
    case ApiType::kAny:
      return "list or range";
    default:
      return "text";
  }
}

std::string replyTable(const Api& api) {
  const bool hasOwn = std::any_of(api.reply.begin(), api.reply.end(),
                                  [](const ApiKey& key) { return key.meaning != nullptr; });
  if (!hasOwn) return {};
  std::string names;
  for (const ApiKey& key : api.reply) names += joined({names.empty() ? "" : ", ", "`", key.name, "`"});
  std::string table = "\n" + wrapped("The keys of the reply, in this order: " + names + ".");
  table += "\n| key | kind | value |\n|---|---|---|\n";
  for (const ApiKey& key : api.reply) {
    if (key.meaning == nullptr) continue;
    const std::string words = listed(key.words);
    table += joined({"| `", key.name, "` | ", words.empty() ? jsonOf(key.type) : words, " | ",
                     cell(key.meaning), " |\n"});
    for (const ApiKey& member : key.members)
      table += joined({"| — `", member.name, "` | ",
                       member.words.empty() ? jsonOf(member.type) : listed(member.words), " | ",
                       cell(member.meaning), " |\n"});
  }
  return table;
}

std::string partOf(const Described& described) {
  const Api& api = *described.api;
  std::string part = joined(
      {"Records: ", api.records, ".\n\n", wrapped(api.summary), paramTable(described), replyTable(api)});
  for (const ApiCode& code : api.codes)
    part += joined({"\n", wrapped(joined({Decimal(code.code).text(), ": ", code.when}))});
  return part;
}

const Described* findEndpoint(std::span<const Described> endpoints, std::string_view name) {
  const auto found =
      std::find_if(endpoints.begin(), endpoints.end(), [name](const Described& d) { return d.name == name; });
  return found == endpoints.end() ? nullptr : &*found;
}

}  // namespace

std::string withGeneratedParts(std::string_view text, std::span<const Described> endpoints) {
  std::string result;
  const Described* current = nullptr;
  bool isSkipped = false;
  while (!text.empty()) {
    const std::string_view line = takeUntil('\n', &text);
    if (line.starts_with("## ")) current = findEndpoint(endpoints, line.substr(3));
    if (line == kEnd) isSkipped = false;
    if (!isSkipped) result.append(line) += '\n';
    if (line != kStart || current == nullptr) continue;
    result += partOf(*current);
    isSkipped = true;
  }
  return result;
}

}  // namespace camera::api
