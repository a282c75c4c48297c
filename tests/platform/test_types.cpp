// Checked conversions and arithmetic, and the run-time error they raise.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

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

TEST(TypesTest, SixteenAndThirtyTwoBitArithmeticRaisesOverflowInsteadOfWrapping) {
  EXPECT_EQ(IntMul(-32, 1024), -32768);
  EXPECT_EQ(ErrorOf([] { IntMul(-1, -32768); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { IntAdd(-32768, -1); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { LngMul(46341, 46341); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { LngMul(-1, std::numeric_limits<Long>::min()); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { LngAdd(2147483647, 1); }), kOverflow);
  EXPECT_EQ(LngAdd(-2147483647, -1), std::numeric_limits<Long>::min());
}

TEST(RuntimeErrorTest, NumbersCarryTheirTextsAndForeignExceptionsBecomeAutomationErrors) {
  EXPECT_STREQ(RuntimeError(kTypeMismatch).what(), "Type mismatch");
  EXPECT_FALSE(RuntimeError(12345).description().empty());
  const auto caught = [](auto&& thrower) {
    try {
      thrower();
    } catch (...) {
      return CurrentError();
    }
    return RuntimeError(0, "nothing thrown");
  };
  RuntimeError e = caught([] { Raise(kResourceNotFound, "Resource '7' not found"); });
  EXPECT_EQ(e.number(), kResourceNotFound);
  EXPECT_EQ(e.description(), "Resource '7' not found");
  e = caught([] { throw std::runtime_error("host failed"); });
  EXPECT_EQ(e.number(), kAutomationError);
  EXPECT_EQ(caught([] { throw 42; }).number(), kAutomationError);
  EXPECT_EQ(CurrentError().number(), kAutomationError);  // outside any catch block
}

}  // namespace
}  // namespace quillon
