// Checks, stores and reports parameters by their rows.
#include "framework/params.h"

#include <algorithm>
#include <cstring>

#include "framework/reply.h"

namespace camera {
namespace {

constexpr std::size_t kMostEchoed = 64;  // bytes of a name that a message repeats at most

// Cuts a UTF-8 text to at most kMostEchoed bytes, without splitting a character.
std::string_view startOf(std::string_view text) {
  if (text.size() <= kMostEchoed) return text;
  std::size_t end = kMostEchoed;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) --end;
  return text.substr(0, end);
}

std::string_view fieldText(const ParamRow& row, const void* field) {
  if (row.fieldKind == FieldKind::kView) return *static_cast<const std::string_view*>(field);
  const auto* text = static_cast<const char*>(field);
  return {text, strnlen(text, row.size)};
}

void storeNumber(const ParamRow& row, int value, void* field) {
  if (row.fieldKind == FieldKind::kByte) {
    *static_cast<std::uint8_t*>(field) = static_cast<std::uint8_t>(value);
  } else {
    *static_cast<std::int32_t*>(field) = value;
  }
}

int fieldNumber(const ParamRow& row, const void* field) {
  return row.fieldKind == FieldKind::kByte ? *static_cast<const std::uint8_t*>(field)
                                           : *static_cast<const std::int32_t*>(field);
}

// A field that already holds the text keeps the bytes after its NUL, so that an equal value leaves the record
// equal.
bool storeText(const ParamRow& row, std::string_view text, void* field) {
  if (row.fieldKind == FieldKind::kView) {
    *static_cast<std::string_view*>(field) = text;
    return true;
  }
  return fieldText(row, field) == text || copyText(static_cast<char*>(field), row.size, text);
}

bool takeInteger(const ParamRow& row, std::string_view value, void* state) {
  const Bounds bounds = boundsOf(row, state);
  int number = 0;
  if (!parseInteger(value, bounds.min, bounds.max, &number)) return false;
  storeNumber(row, number, row.field(state));
  return true;
}

bool takeText(const ParamRow& row, std::string_view value, void* state) {
  const Bounds bounds = boundsOf(row, state);
  const bool isAccepted = hasLength(value, bounds.min, bounds.max) &&
                          (row.characters.any || consistsOf(value, row.characters, row.extra)) &&
                          (value.empty() || row.check == nullptr || row.check(value));
  return isAccepted && storeText(row, value, row.field(state));
}

bool takeChoice(const ParamRow& row, std::string_view value, void* state) {
  int number = indexOf(value, wordsOf(row, state));
  if (number < 0) return false;
  void* field = row.field(state);
  if (row.fieldKind == FieldKind::kText || row.fieldKind == FieldKind::kView)
    return storeText(row, value, field);
  if (row.storesNumber) parseInteger(value, 0, INT32_MAX, &number);
  storeNumber(row, number, field);
  return true;
}

bool takeOne(const ParamRow& row, std::string_view value, void* state) {
  switch (row.kind) {
    case ParamKind::kInteger:
      return takeInteger(row, value, state);
    case ParamKind::kText:
      return takeText(row, value, state);
    case ParamKind::kChoice:
      return takeChoice(row, value, state);
    case ParamKind::kOwn:
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
std::string_view unknownName(const Queries& params, const ParamList& list) {
  for (const auto& [name, value] : params) {
    if (list.find(name) == nullptr) return name;
  }
  return {};
}

// Rejects the value of a row.
Refusal rejected(const ParamRow& row, std::string_view value, const void* state) {
  const std::string_view fault = row.fault != nullptr ? row.fault(value) : "";
  return {row.name, joined({fault, fault.empty() ? "" : "; ", acceptedBy(row, state)})};
}

}  // namespace

Bounds boundsOf(const ParamRow& row, const void* state) {
  if (row.boundsOf != nullptr && state != nullptr) return row.boundsOf(state);
  return row.recordBounds != nullptr ? row.recordBounds() : row.bounds;
}

Words wordsOf(const ParamRow& row, const void* state) {
  return row.wordsOf != nullptr && state != nullptr ? row.wordsOf(state) : row.words;
}

bool isHandled(const ParamRow& row, const void* state) {
  return row.kind != ParamKind::kIgnored && (row.isHandled == nullptr || row.isHandled(state));
}

bool areNumbers(Words words) {
  return std::all_of(words.begin(), words.end(), isJsonInteger);
}

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
  if (row.kind == ParamKind::kInteger) return rangeOf(boundsOf(row, state));
  if (row.kind == ParamKind::kChoice) return anyOf(wordsOf(row, state));
  if (row.kind == ParamKind::kText) return rangeOf(boundsOf(row, state)) + " " + charactersOf(row);
  return "anything";
}

std::string shortened(std::string_view text) {
  const std::string_view start = startOf(text);
  return joined({start, start.size() < text.size() ? "..." : ""});
}

Refusal unknownParam(std::string_view name) {
  return {name.empty() ? "(no name)" : shortened(name), "no such parameter"};
}

std::string_view switchWord(bool isOn, Words words) {
  for (const Words& choice : {Words{kOffOn}, Words{kNoYes}}) {
    const bool isSwitch = indexOf(choice[0], words) >= 0 && indexOf(choice[1], words) >= 0;
    if (isSwitch) return choice[isOn ? 1 : 0];
  }
  return {};
}

const ParamRow* ParamList::find(std::string_view name) const {
  const auto row =
      std::find_if(rows.begin(), rows.end(), [name](const ParamRow& r) { return name == r.name; });
  return row == rows.end() ? nullptr : &*row;
}

bool ParamList::take(const Queries& params, void* state, std::uint64_t* given,
                     std::vector<std::string>* ignored, Refusal* refusal) const {
  std::size_t found = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    const ParamRow& row = rows[i];
    const auto query = params.find(row.name);
    const bool isGiven = query != params.end();
    if (!isGiven && !row.isRequired) continue;
    if (isGiven) {
      ++found;
      *given |= std::uint64_t{1} << i;
      const bool handled = isHandled(row, state);
      if (!handled) ignored->emplace_back(row.name);
      if (!handled || takeOne(row, query->second, state)) continue;
    }
    // A required parameter may be missing because its name is misspelled: report the unknown name instead.
    const std::string_view stranger =
        isGiven || unknown == UnknownNames::kIgnore ? "" : unknownName(params, *this);
    *refusal = !stranger.empty() ? unknownParam(stranger)
               : isGiven         ? rejected(row, query->second, state)
                                 : Refusal{row.name, "required: " + acceptedBy(row, state)};
    return false;
  }
  if (found != params.size() && unknown == UnknownNames::kRefuse) {
    *refusal = unknownParam(unknownName(params, *this));
    return false;
  }
  if (params.size() > most) {
    *refusal = unknownParam(unknownName(params, *this));
    refusal->message += " (a request has at most " + decimal(static_cast<std::int64_t>(most)) + " here)";
    return false;
  }
  if (found == params.size()) return true;
  for (const auto& [name, value] : params) {
    if (find(name) == nullptr) ignored->push_back(name);
  }
  return true;
}

void ParamList::reply(Reply& reply, const void* state) const {
  for (const ParamRow& row : rows) {
    if (row.field == nullptr || !isHandled(row, state)) continue;
    const void* field = row.field(const_cast<void*>(state));
    if (row.kind == ParamKind::kInteger || row.storesNumber) {
      reply.pair(row.name, fieldNumber(row, field));
    } else if (row.fieldKind == FieldKind::kText || row.fieldKind == FieldKind::kView) {
      reply.pair(row.name, fieldText(row, field));
    } else {
      const Words words = wordsOf(row, state);
      const std::string_view word = wordAt(words, fieldNumber(row, field));
      reply.isJson() && areNumbers(words) ? reply.number(row.name, word) : reply.pair(row.name, word);
    }
  }
}

}  // namespace camera
