// The elements of a record: their names, places and values.
#include "platform/store/record_fields.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <string_view>

namespace camera {
namespace {

std::string_view textOf(const Field& field, const void* element) {
  const auto* text = static_cast<const char*>(element);
  return {text, strnlen(text, field.width)};
}

}  // namespace

std::string elementName(const Field& field, unsigned index) {
  std::string name = field.name;
  if (field.isArray) name.append("[").append(std::to_string(index)).append("]");
  return name;
}

std::int32_t elementNumber(const Field& field, const void* element) {
  if (field.kind == FieldKind::kByte) return *static_cast<const std::uint8_t*>(element);
  std::int32_t number = 0;
  std::memcpy(&number, element, sizeof number);
  return number;
}

bool sameElement(const Field& field, const void* left, const void* right) {
  if (field.kind == FieldKind::kText) return textOf(field, left) == textOf(field, right);
  return std::memcmp(left, right, field.width) == 0;
}

void copyElement(const Field& field, void* to, const void* from) {
  const std::size_t size = field.kind == FieldKind::kText ? textOf(field, from).size() : field.width;
  std::memcpy(to, from, size);
  std::memset(static_cast<char*>(to) + size, 0, field.width - size);
}

bool validElement(const Field& field, const void* element) {
  if (field.kind == FieldKind::kReserved) return true;
  if (field.kind != FieldKind::kText) {
    const std::int32_t number = elementNumber(field, element);
    return number >= field.min && number <= field.max;
  }
  // A text without a NUL is longer than any bound.
  const auto length = static_cast<std::int32_t>(textOf(field, element).size());
  return length >= field.min && length <= field.max;
}

void convertByteOrder(const RecordInfo& info, std::span<std::uint8_t> record) {
  if constexpr (std::endian::native == std::endian::little) return;
  forEachElement(info, [&](const Field& field, unsigned, std::size_t offset) {
    if (field.kind != FieldKind::kInteger || offset + field.width > record.size()) return;
    const auto element = record.subspan(offset, field.width);
    std::reverse(element.begin(), element.end());
  });
}

std::string firstInvalid(const RecordInfo& info, const void* record) {
  std::string invalid;
  forEachElement(info, [&](const Field& field, unsigned index, std::size_t offset) {
    if (invalid.empty() && !validElement(field, static_cast<const char*>(record) + offset)) {
      invalid = elementName(field, index);
    }
  });
  return invalid;
}

Bounds boundsAt(const RecordInfo& info, std::ptrdiff_t offset) {
  const Field* found = &info.fields.front();
  for (const Field& field : info.fields) {
    if (field.offset <= offset) found = &field;
  }
  return {found->min, found->max};
}

}  // namespace camera
