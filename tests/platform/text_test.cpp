// Texts: cutting, reading and checking them.
#include "platform/text.h"

#include <gtest/gtest.h>

#include <string>

namespace camera {
namespace {

// At every place of texts that are shorter and longer than what is looked at in one step.
TEST(Text, IsPlainWithPrintableAsciiAlone) {
  for (std::size_t size = 1; size < 20; ++size) {
    for (std::size_t at = 0; at < size; ++at) {
      for (int byte = 0; byte < 256; ++byte) {
        std::string text(size, '~');
        text[at] = static_cast<char>(byte);
        ASSERT_EQ(isPlain(text), byte >= 0x20 && byte < 0x7F) << size << ' ' << at << ' ' << byte;
      }
    }
  }
  EXPECT_TRUE(isPlain(""));
}

}  // namespace
}  // namespace camera
