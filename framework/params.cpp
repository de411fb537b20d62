// The driver of parameter tables: checks, takes and reports what the rows say.
#include "framework/params.h"

#include <cstdlib>
#include <cstring>

#include "framework/cgilet.h"

namespace camera {
namespace {

constexpr std::size_t kMostEchoed = 64;  // bytes of a name that a refusal repeats

// The begin of a UTF-8 text, whole characters of it.
std::string_view beginOf(std::string_view text) {
  if (text.size() <= kMostEchoed) return text;
  std::size_t end = kMostEchoed;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end);
}

Bounds boundsOf(const ParamRow& row, const void* state) {
  return row.boundsOf != nullptr && state != nullptr ? row.boundsOf(state) : row.bounds;
}

Words wordsOf(const ParamRow& row, const void* state) {
  return row.wordsOf != nullptr && state != nullptr ? row.wordsOf(state) : row.words;
}

bool isHandled(const ParamRow& row, const void* state) {
  return row.kind != kUnhandledParam && (row.isHandled == nullptr || row.isHandled(state));
}

std::string_view fieldText(const ParamRow& row, const void* field) {
  const auto* text = static_cast<const char*>(field);
  return {text, strnlen(text, row.size)};
}

void storeNumber(const ParamRow& row, int value, void* field) {
  if (row.type == FieldType::kByte) {
    *static_cast<std::uint8_t*>(field) = static_cast<std::uint8_t>(value);
  } else {
    *static_cast<std::int32_t*>(field) = value;
  }
}

int fieldNumber(const ParamRow& row, const void* field) {
  return row.type == FieldType::kByte ? *static_cast<const std::uint8_t*>(field)
                                      : *static_cast<const std::int32_t*>(field);
}

// A field that holds the text keeps what lies behind its NUL, so that an equal value leaves a record equal.
bool storeText(const ParamRow& row, std::string_view text, void* field) {
  if (row.type == FieldType::kView) {
    *static_cast<std::string_view*>(field) = text;
    return true;
  }
  return fieldText(row, field) == text || copyText(static_cast<char*>(field), row.size, text);
}

bool takeInteger(const ParamRow& row, std::string_view value, void* state) {
  const Bounds bounds = boundsOf(row, state);
  int number = 0;
  int given = -1;
  if (ChkInt(value, 1, bounds.min, bounds.max, &number, &given, 0, nullptr, 0) != 0) return false;
  storeNumber(row, number, row.field(state));
  return true;
}

bool takeText(const ParamRow& row, std::string_view value, void* state) {
  const Bounds bounds = boundsOf(row, state);
  const bool fits = BaseCgilet::checkLen(static_cast<int>(value.size()), bounds.min, bounds.max) >= 0 &&
                    (row.characters.any || consistsOf(value, row.characters, row.extra));
  if (!fits || (!value.empty() && row.check != nullptr && !row.check(value))) return false;
  return storeText(row, value, row.field(state));
}

bool takeChoice(const ParamRow& row, std::string_view value, void* state) {
  int index = 0;
  const char* word = nullptr;
  const Words words = wordsOf(row, state);
  const int count = static_cast<int>(words.size());
  if (CmpStr(value, words.data(), count, &index, &word, true, false) != 0) return false;
  void* field = row.field(state);
  if (row.type == FieldType::kText || row.type == FieldType::kView) return storeText(row, word, field);
  if (row.storesNumber) parseInteger(value, 0, INT32_MAX, &index);
  storeNumber(row, index, field);
  return true;
}

bool takeOne(const ParamRow& row, std::string_view value, void* state) {
  switch (row.kind) {
    case kIntParam:
      return takeInteger(row, value, state);
    case kStrParam:
      return takeText(row, value, state);
    case kCStrParam:
      return takeChoice(row, value, state);
    case kOwnParam:
      return row.take(value, state);
    default:
      return true;
  }
}

std::string_view wordAt(Words words, int index) {
  return index >= 0 && static_cast<std::size_t>(index) < words.size() ? words[static_cast<std::size_t>(index)]
                                                                      : "";
}

std::string decimal(std::int64_t number) {
  return std::string{Decimal(number).text()};
}

std::string rangeOf(Bounds bounds) {
  return bounds.min == bounds.max ? decimal(bounds.min) : decimal(bounds.min) + " to " + decimal(bounds.max);
}

std::string charactersOf(const ParamRow& row) {
  const std::string_view extra = row.extra;
  if (row.characters.any) return "characters";
  if (extra == kPrintableText) return "printable ASCII characters";
  std::string text;
  const auto add = [&text](std::string_view more) {
    if (!text.empty()) text += ", ";
    text += more;
  };
  if (row.characters.letters) add("letters");
  if (row.characters.digits) add("digits");
  if (row.characters.hexDigits) add("hexadecimal digits");
  if (extra == kPunctuationText) {
    add("punctuation");
  } else if (!extra.empty()) {
    add({});
    for (const char& c : extra) text += std::string{&c == extra.data() ? "" : " "} + c;
  }
  return text;
}

// The first parameter that no row names.
std::string_view unknownName(const Queries& queries, std::span<const ParamRow> rows) {
  for (const auto& [name, value] : queries) {
    bool isKnown = false;
    for (const ParamRow& row : rows) isKnown = isKnown || name == row.name;
    if (!isKnown) return name;
  }
  return {};
}

}  // namespace

std::string anyOf(Words words) {
  std::string text;
  std::string last;
  for (const std::string_view word : words) {
    if (word.empty()) continue;
    if (!last.empty()) text += text.empty() ? last : ", " + last;
    last = word;
  }
  return text.empty() ? last : text + " or " + last;
}

std::string acceptedBy(const ParamRow& row, const void* state) {
  const bool isFixed = row.boundsOf == nullptr && row.wordsOf == nullptr;
  if (row.accepted != nullptr && (isFixed || state == nullptr)) return row.accepted;
  if (row.kind == kIntParam) return rangeOf(boundsOf(row, state));
  if (row.kind == kCStrParam) return anyOf(wordsOf(row, state));
  if (row.kind == kStrParam) return rangeOf(boundsOf(row, state)) + " " + charactersOf(row);
  return "anything";
}

std::string unknownParam(std::string_view name) {
  const std::string_view echoed = name.empty() ? "(no name)" : beginOf(name);
  return std::string{echoed} + (echoed.size() < name.size() ? "..." : "") + ": no such parameter";
}

bool GivenParams::has(std::string_view name) const {
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    if (name == rows_[i].name) return (given_ >> i & 1) != 0;
  }
  std::abort();  // an endpoint asked for a parameter that its own table does not have
}

bool ParamList::take(const Queries& queries, void* state, GivenParams* given, std::string* refusal) const {
  std::size_t found = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ParamRow& row = rows[i];
    const auto query = queries.find(row.name);
    const bool isGiven = query != queries.end();
    if (!isGiven && !row.isRequired) continue;
    if (isGiven) {
      ++found;
      given->mark(i);
      if (!isHandled(row, state) || takeOne(row, query->second, state)) continue;
    }
    // A name that nobody knows is more likely why one is missing.
    const std::string_view stranger =
        isGiven || unknown == UnknownNames::kIgnore ? "" : unknownName(queries, rows);
    *refusal = !stranger.empty()
                   ? unknownParam(stranger)
                   : std::string{row.name} + (isGiven ? ": " : ": required: ") + acceptedBy(row, state);
    return false;
  }
  if (found != queries.size() && unknown == UnknownNames::kRefuse) {
    *refusal = unknownParam(unknownName(queries, rows));
    return false;
  }
  if (queries.size() > most) {
    *refusal = unknownParam(unknownName(queries, rows)) + " (at most " +
               decimal(static_cast<std::int64_t>(most)) + " at once)";
    return false;
  }
  return true;
}

void ParamList::reply(InfCgilet& cgilet, const void* state) const {
  std::string key;
  std::string text;
  for (const ParamRow& row : rows) {
    if (row.field == nullptr || !isHandled(row, state)) continue;
    const void* field = row.field(const_cast<void*>(state));
    key = row.name;
    if (row.kind == kIntParam || row.storesNumber) {
      cgilet.pair(key, fieldNumber(row, field));
      continue;
    }
    if (row.type == FieldType::kView) {
      text = *static_cast<const std::string_view*>(field);
    } else if (row.type == FieldType::kText) {
      text = fieldText(row, field);
    } else {
      text = wordAt(wordsOf(row, state), fieldNumber(row, field));
    }
    cgilet.pair(key, text);
  }
}

}  // namespace camera
