// The formats of wireless keys.
#include "handlers/device/wireless_keys.h"

#include "framework/checks.h"
#include "framework/value_tables.h"

namespace camera {
namespace {

constexpr WepFormat kWepFormats[] = {{5, false, 64}, {10, true, 64}, {13, false, 128}, {26, true, 128}};
constexpr std::size_t kWpaDigits = 64;

bool isHex(std::string_view key, std::size_t length) {
  return key.size() == length && consistsOf(key, kHexDigits);
}

bool isPrintable(std::string_view key) {
  return consistsOf(key, kAlnum, kPrintableText);
}

}  // namespace

const WepFormat* wepFormat(std::string_view key) {
  for (const WepFormat& format : kWepFormats) {
    if (format.length == key.size()) return &format;
  }
  return nullptr;
}

bool isWepKey(std::string_view key) {
  const WepFormat* format = wepFormat(key);
  if (format == nullptr) return false;
  return format->isHex ? isHex(key, format->length) : isPrintable(key);
}

bool isWpaKey(std::string_view key) {
  return isHex(key, kWpaDigits) || (hasLength(key, 8, 63) && isPrintable(key));
}

}  // namespace camera
