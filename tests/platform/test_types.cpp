// Checked conversions and arithmetic, and the run-time error they raise.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <stdexcept>

#include "platform/runtime_error.h"
#include "platform/types.h"

namespace quillon {
namespace {

// The error number a call raises, or 0 when it returns.
template <typename F>
Long ErrorOf(F&& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return e.number();
  }
  return 0;
}

TEST(TypesTest, CIntAndCLngRoundHalvesToEvenAndOverflowOutOfRange) {
  constexpr Long kOver = -999;  // stands for "raises Overflow"
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const struct { double value; Long cint, clng; } cases[] = {
      {0.5, 0, 0},         {1.5, 2, 2},           {2.5, 2, 2},          {-0.5, 0, 0},
      {-2.5, -2, -2},      {2.4999999, 2, 2},     {2.5000001, 3, 3},    {32767.4, 32767, 32767},
      {32767.5, kOver, 32768},                    {-32768.5, -32768, -32768},
      {-32769, kOver, -32769},                    {2147483647.4, kOver, 2147483647},
      {2147483647.5, kOver, kOver},               {-2147483648.5, kOver, -2147483648LL},
      {-2147483649.0, kOver, kOver},              {nan, kOver, kOver},
      {inf, kOver, kOver}, {-inf, kOver, kOver},
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
  EXPECT_EQ(ErrorOf([] { IntMul(33, 1000); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { IntMul(-1, -32768); }), kOverflow);
  EXPECT_EQ(IntAdd(32766, 1), 32767);
  EXPECT_EQ(ErrorOf([] { IntAdd(32767, 1); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { IntAdd(-32768, -1); }), kOverflow);

  EXPECT_EQ(LngMul(46340, 46340), 2147395600);
  EXPECT_EQ(ErrorOf([] { LngMul(46341, 46341); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { LngMul(-1, std::numeric_limits<Long>::min()); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { LngAdd(2147483647, 1); }), kOverflow);
  EXPECT_EQ(LngAdd(-2147483647, -1), std::numeric_limits<Long>::min());
}

TEST(RuntimeErrorTest, ClassicNumbersCarryTheirTexts) {
  const struct { Long number; const char* text; } cases[] = {
      {kInvalidProcedureCall, "Invalid procedure call or argument"},
      {kOverflow, "Overflow"},
      {kSubscriptOutOfRange, "Subscript out of range"},
      {kDivisionByZero, "Division by zero"},
      {kTypeMismatch, "Type mismatch"},
      {kAutomationError, "Automation error"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RuntimeError(c.number).description(), c.text);
    EXPECT_STREQ(RuntimeError(c.number).what(), c.text);
  }
  EXPECT_EQ(RuntimeError::TextOf(12345), "");
  EXPECT_FALSE(RuntimeError(12345).description().empty());
  EXPECT_EQ(RuntimeError(326, "Resource with identifier '1230' not found").description(),
            "Resource with identifier '1230' not found");
}

TEST(RuntimeErrorTest, CurrentErrorKeepsRuntimeErrorsAndMakesEverythingElseAnAutomationError) {
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
  EXPECT_EQ(e.description(), "Automation error");
  EXPECT_EQ(caught([] { throw 42; }).number(), kAutomationError);
  EXPECT_EQ(CurrentError().number(), kAutomationError);  // outside any catch block
}

}  // namespace
}  // namespace quillon
