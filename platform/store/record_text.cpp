// The text form of a record's elements.
#include "platform/store/record_text.h"

#include <charconv>
#include <cstring>
#include <vector>

#include "platform/store/record_fields.h"
#include "platform/text.h"

namespace camera {
namespace {

constexpr std::string_view kHex = "0123456789abcdef";

void appendHex(std::string* text, unsigned char byte) {
  *text += kHex[byte >> 4];
  *text += kHex[byte & 15];
}

bool parseHex(std::string_view digits, unsigned char* byte) {
  if (digits.size() != 2) return false;
  return std::from_chars(digits.data(), digits.data() + 2, *byte, 16).ptr == digits.data() + 2;
}

std::string escaped(std::string_view text) {
  std::string line;
  for (const char c : text) {
    if (c == '\\') {
      line += "\\\\";
    } else if (c == '\n') {
      line += "\\n";
    } else if (isControl(c)) {
      line += "\\x";
      appendHex(&line, static_cast<unsigned char>(c));
    } else {
      line += c;
    }
  }
  return line;
}

// Reads the escape at the start of the text. Returns its length; 0 if it is malformed or stands for a NUL.
std::size_t escapeAt(std::string_view text, char* c) {
  if (text.starts_with("\\\\")) *c = '\\';
  if (text.starts_with("\\n")) *c = '\n';
  if (text.starts_with("\\\\") || text.starts_with("\\n")) return 2;
  unsigned char byte = 0;
  if (!text.starts_with("\\x") || !parseHex(text.substr(2, 2), &byte) || byte == 0) return 0;
  *c = static_cast<char>(byte);
  return 4;
}

std::optional<std::string> unescaped(std::string_view line) {
  std::string text;
  while (!line.empty()) {
    char c = line.front();
    const std::size_t length = c == '\\' ? escapeAt(line, &c) : isControl(c) ? 0 : 1;
    if (length == 0) return std::nullopt;
    text += c;
    line.remove_prefix(length);
  }
  return text;
}

using Bytes = std::vector<unsigned char>;  // of one element

bool parseText(std::string_view line, Bytes* element) {
  const std::optional<std::string> text = unescaped(line);
  if (!text || text->size() >= element->size()) return false;
  std::memcpy(element->data(), text->data(), text->size());
  return true;
}

bool parseReserved(std::string_view digits, Bytes* element) {
  if (digits.size() != 2 * element->size()) return false;
  for (std::size_t i = 0; i < element->size(); ++i) {
    if (!parseHex(digits.substr(2 * i, 2), &(*element)[i])) return false;
  }
  return true;
}

template <class Number>
bool parseNumber(std::string_view text, Bytes* element) {
  Number number = 0;
  if (!readNumber(text, &number)) return false;
  std::memcpy(element->data(), &number, sizeof number);
  return true;
}

bool parseKind(const Field& field, std::string_view text, Bytes* element) {
  switch (field.kind) {
    case FieldKind::kText:
      return parseText(text, element);
    case FieldKind::kReserved:
      return parseReserved(text, element);
    case FieldKind::kByte:
      return parseNumber<std::uint8_t>(text, element);
    case FieldKind::kInteger:
      return parseNumber<std::int32_t>(text, element);
    case FieldKind::kView:
      break;
  }
  return false;
}

}  // namespace

std::string formatElement(const Field& field, const void* element) {
  const auto* bytes = static_cast<const char*>(element);
  if (field.kind == FieldKind::kText) return escaped({bytes, strnlen(bytes, field.width)});
  if (field.kind != FieldKind::kReserved) return std::to_string(elementNumber(field, element));
  std::string digits;
  for (std::size_t i = 0; i < field.width; ++i) appendHex(&digits, static_cast<unsigned char>(bytes[i]));
  return digits;
}

bool parseElement(const Field& field, std::string_view text, void* element) {
  Bytes parsed(field.width);
  if (!parseKind(field, text, &parsed) || !validElement(field, parsed.data())) return false;
  std::memcpy(element, parsed.data(), parsed.size());
  return true;
}

std::optional<Element> findElement(const RecordInfo& info, std::string_view name) {
  std::optional<Element> found;
  forEachElement(info, [&](const Field& field, unsigned index, std::size_t offset) {
    if (!found && elementName(field, index) == name) found = Element{&field, offset};
  });
  return found;
}

}  // namespace camera
