// Checked conversions and arithmetic, and the run-time error they raise.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/error_of.h"
#include "platform/runtime_error.h"
#include "platform/types.h"

namespace quillon {
namespace {

TEST(TypesTest, CIntAndCLngRoundHalvesToEvenAndOverflowOutOfRange) {
  constexpr Long kOver = -999;  // stands for "raises Overflow"
  const struct { double value; Long cint, clng; } cases[] = {
      {0.5, 0, 0},          {1.5, 2, 2},         {-2.5, -2, -2},     {2.5000001, 3, 3},
      {32767.5, kOver, 32768},                   {-32768.5, -32768, -32768},
      {2147483647.4, kOver, 2147483647},         {2147483647.5, kOver, kOver},
      {-2147483648.5, kOver, -2147483648LL},     {NAN, kOver, kOver},  {-INFINITY, kOver, kOver},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << "value " << c.value);
    if (c.cint == kOver) EXPECT_EQ(ErrorOf([&] { CInt(c.value); }), kOverflow);
    else EXPECT_EQ(CInt(c.value), c.cint);
    if (c.clng == kOver) EXPECT_EQ(ErrorOf([&] { CLng(c.value); }), kOverflow);
    else EXPECT_EQ(CLng(c.value), c.clng);
  }
}

// Each operation raises Overflow instead of wrapping: products in 16 and 32 bits are caught
// by the language and contract tests, sums in 16 bits by the account list's end.
TEST(TypesTest, SixteenAndThirtyTwoBitArithmeticRaisesOverflowInsteadOfWrapping) {
  EXPECT_EQ(ErrorOf([] { IntAdd(-32768, -1); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { LngAdd(2147483647, 1); }), kOverflow);
  EXPECT_EQ(LngAdd(-2147483647, -1), std::numeric_limits<Long>::min());
}

// A number without a text of its own still has one; no exception at all is an automation error.
TEST(RuntimeErrorTest, UnknownNumbersHaveATextAndNoExceptionIsAnAutomationError) {
  EXPECT_FALSE(RuntimeError(12345).description().empty());
  EXPECT_EQ(CurrentError().number(), kAutomationError);  // outside any catch block
}

}  // namespace
}  // namespace quillon
