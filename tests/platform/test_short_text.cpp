// Short texts compared by word loads: a difference in any byte, at any length, counts.

#include <gtest/gtest.h>

#include <string>

#include "platform/short_text.h"

namespace quillon {
namespace {

TEST(ShortTextTest, EveryByteAndTheLengthCount) {
  std::string a;
  for (std::size_t n = 0; n <= 24; a += static_cast<char>('a' + n++)) {
    const std::string same = a;  // another buffer, the same bytes
    EXPECT_TRUE(SameText(a, same) && KeyOfText(a) == KeyOfText(same)) << n;
    for (std::size_t i = 0; i < n; ++i) {
      std::string b = a;
      b[i] = '\xE4';
      EXPECT_FALSE(SameText(a, b)) << n << " at " << i;
      EXPECT_TRUE(n > 16 || !(KeyOfText(a) == KeyOfText(b))) << n << " at " << i;
    }
    EXPECT_FALSE(SameText(a, a + '\0')) << n;  // a longer text is another text
  }
}

}  // namespace
}  // namespace quillon
