// What a wireless key must look like.
#include "handlers/device/wireless_keys.h"

#include "framework/cgilet.h"
#include "framework/value_tables.h"

namespace camera {
namespace {

constexpr WepFormat kWepFormats[] = {
    {5, false, "64"}, {10, true, "64"}, {13, false, "128"}, {26, true, "128"}};
constexpr int kWpaDigits = 64;

bool isHex(std::string_view key, int length) {
  return BaseCgilet::checkHex(key, length, 1) >= 0;
}

bool isPrintable(std::string_view key) {
  return check_accept_str(key, kPrintableText, true, true);
}

}  // namespace

const WepFormat* wepFormat(std::string_view key) {
  for (const WepFormat& format : kWepFormats) {
    if (format.length == key.size()) return &format;
  }
  return nullptr;
}

int checkWepKey(std::string_view key) {
  const WepFormat* format = wepFormat(key);
  if (format == nullptr) return -1;
  const bool valid = format->isHex ? isHex(key, static_cast<int>(format->length)) : isPrintable(key);
  return valid ? 0 : -1;
}

int checkWpaKey(std::string_view key) {
  const bool valid = isHex(key, kWpaDigits) || (BaseCgilet::checkLen(key, 8, 63) >= 0 && isPrintable(key));
  return valid ? 0 : -1;
}

}  // namespace camera
