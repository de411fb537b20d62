// Cutting texts into parts and reading numbers from them.
#include "platform/text.h"

#include <algorithm>
#include <charconv>

namespace camera {

std::string_view takeUntil(char separator, std::string_view* rest) {
  const std::size_t end = std::min(rest->find(separator), rest->size());
  const std::string_view taken = rest->substr(0, end);
  rest->remove_prefix(std::min(end + 1, rest->size()));
  return taken;
}

bool readInteger(std::string_view text, int base, std::int64_t* number) {
  std::int64_t value = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc{} || stop != end) return false;
  *number = value;
  return true;
}

}  // namespace camera
