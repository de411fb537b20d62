// Writes JSON, and parses the flat object that a request may have.
#include "framework/json.h"

#include <algorithm>
#include <set>
#include <utility>

#include "framework/checks.h"
#include "framework/utf8.h"
#include "platform/text.h"

namespace camera {
namespace {

// The letters of the escapes, and the characters that they stand for.
constexpr std::string_view kEscapes = "\"\\/bfnrt";
constexpr std::string_view kEscaped = "\"\\/\b\f\n\r\t";

bool isSurrogate(char32_t code) {
  return code >= 0xD800 && code < 0xE000;
}

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  std::string parse(std::vector<JsonMember>* members) {
    if (!isUtf8(text_)) return "not UTF-8";
    const bool isParsed = parseObject(members) && (end() || fail("nothing after the object"));
    return isParsed ? "" : fault_;
  }

 private:
  bool fail(std::string_view expected) {
    const Decimal place(static_cast<std::int64_t>(at_) + 1);
    fault_ = joined({"expected ", expected, " at byte ", place.text()});
    return false;
  }

  void skipSpace() { at_ = std::min(text_.find_first_not_of(" \t\r\n", at_), text_.size()); }
  bool end() {
    skipSpace();
    return at_ == text_.size();
  }
  // Takes the text if it comes next.
  bool take(std::string_view next) {
    const bool isNext = text_.substr(at_).starts_with(next);
    if (isNext) at_ += next.size();
    return isNext;
  }
  bool takeMark(char mark) {
    skipSpace();
    return take({&mark, 1});
  }

  bool parseObject(std::vector<JsonMember>* members) {
    if (!takeMark('{')) return fail("an object");
    if (takeMark('}')) return true;
    do {
      JsonMember member;
      skipSpace();
      if (!parseString(&member.name)) return fail("a name in quotes");
      if (!names_.insert(member.name).second) return fail("a name that is not given twice");
      if (!takeMark(':')) return fail("a colon");
      if (!parseValue(&member)) return false;
      members->push_back(std::move(member));
    } while (takeMark(','));
    return takeMark('}') || fail("a comma or the end of the object");
  }

  bool parseValue(JsonMember* member) {
    skipSpace();
    for (const std::string_view word : {"true", "false"}) {
      if (!take(word)) continue;
      member->kind = JsonMember::kBoolean;
      member->texts.emplace_back(word);
      return true;
    }
    if (takeMark('[')) return parseArray(member);
    return parseScalar(member) || fail("a text, an integer, true, false or an array");
  }

  bool parseArray(JsonMember* member) {
    JsonMember item;
    if (!takeMark(']')) {
      do {
        skipSpace();
        if (!parseScalar(&item)) return fail("a text or an integer");
      } while (takeMark(','));
      if (!takeMark(']')) return fail("a comma or the end of the array");
    }
    member->kind = JsonMember::kArray;
    member->texts = std::move(item.texts);
    return true;
  }

  // Appends the value's text.
  bool parseScalar(JsonMember* member) {
    std::string value;
    const bool isText = text_.substr(at_).starts_with('"');
    if (!(isText ? parseString(&value) : parseNumber(&value))) return false;
    member->kind = isText ? JsonMember::kText : JsonMember::kNumber;
    member->texts.push_back(std::move(value));
    return true;
  }

  // Every number of the interface is an integer.
  bool parseNumber(std::string* number) {
    const std::size_t end = std::min(text_.find_first_not_of("-0123456789", at_), text_.size());
    const std::string_view digits = text_.substr(at_, end - at_);
    const bool isInteger = isJsonInteger(digits) &&
                           (end == text_.size() || std::string_view{".eE"}.find(text_[end]) == text_.npos);
    if (!isInteger) return false;
    *number = digits;
    at_ = end;
    return true;
  }

  bool parseString(std::string* decoded) {
    if (!take("\"")) return false;
    while (at_ < text_.size() && static_cast<unsigned char>(text_[at_]) >= ' ') {
      if (take("\"")) return true;
      const char c = text_[at_++];
      if (c != '\\') {
        *decoded += c;
      } else if (!parseEscape(decoded)) {
        return false;
      }
    }
    return false;
  }

  bool parseEscape(std::string* decoded) {
    if (at_ == text_.size()) return false;
    const char letter = text_[at_++];
    const std::size_t known = kEscapes.find(letter);
    if (known != kEscapes.npos) {
      *decoded += kEscaped[known];
      return true;
    }
    char32_t code = 0;
    if (letter != 'u' || !parseHex(&code)) return false;
    if (isSurrogate(code)) {
      char32_t low = 0;
      const bool isPair = code < 0xDC00 && take("\\u") && parseHex(&low) && low >= 0xDC00 && isSurrogate(low);
      if (!isPair) return false;
      code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
    }
    appendUtf8(code, decoded);
    return true;
  }

  bool parseHex(char32_t* code) {
    const std::string_view digits = text_.substr(at_, 4);
    std::uint16_t number = 0;
    if (digits.size() != 4 || !consistsOf(digits, kHexDigits) || !readNumber(digits, &number, 16))
      return false;
    at_ += 4;
    *code = number;
    return true;
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::set<std::string> names_;
  std::string fault_;
};

}  // namespace

std::string jsonString(std::string_view text) {
  std::string json = "\"";
  for (const char c : decodeUtf8(text)) {
    static constexpr char kHex[] = "0123456789abcdef";
    const std::size_t known = kEscaped.find(c);
    if (c != '/' && known != kEscaped.npos) {
      json += {'\\', kEscapes[known]};
    } else if (isControl(c)) {
      const auto byte = static_cast<unsigned char>(c);
      json.append("\\u00") += {kHex[byte >> 4], kHex[byte & 15]};
    } else {
      json += c;
    }
  }
  return json += '"';
}

bool isJsonInteger(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  return !text.empty() && consistsOf(text, kDigits) && (text.size() == 1 || text.front() != '0');
}

void JsonObject::add(std::string_view key, std::string_view text) {
  addValue(key, jsonString(text));
}

void JsonObject::add(std::string_view key, std::int64_t number) {
  addValue(key, Decimal(number).text());
}

void JsonObject::addValue(std::string_view key, std::string_view json) {
  const auto member =
      std::find_if(members_.begin(), members_.end(), [key](const Member& m) { return m.key == key; });
  if (member == members_.end()) {
    members_.push_back({std::string{key}, std::string{json}});
  } else {
    member->isRepeated = true;
    member->value.append(",").append(json);
  }
}

std::string JsonObject::text() const {
  std::string json = "{";
  for (const Member& member : members_) {
    if (json.size() > 1) json += ',';
    json += jsonString(member.key) + (member.isRepeated ? ":[" : ":") + member.value;
    if (member.isRepeated) json += ']';
  }
  return json += '}';
}

void JsonArray::add(std::string_view json) {
  if (!items_.empty()) items_ += ',';
  items_ += json;
}

std::string jsonList(std::string_view items, ListOf kind) {
  JsonArray array;
  while (!items.empty()) {
    const std::string_view item = takeUntil(',', &items);
    if (item.empty()) continue;
    array.add(kind == ListOf::kNumbers && isJsonInteger(item) ? std::string{item} : jsonString(item));
  }
  return array.text();
}

std::string parseJson(std::string_view text, std::vector<JsonMember>* members) {
  return Parser(text).parse(members);
}

}  // namespace camera
