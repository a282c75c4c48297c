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
  struct Case {
    double value;
    Long cint;  // expected CInt, or an error number when error is set
    bool cintOverflows;
    Long clng;
    bool clngOverflows;
  };
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  const Case cases[] = {
      {0.5, 0, false, 0, false},
      {1.5, 2, false, 2, false},
      {2.5, 2, false, 2, false},
      {-0.5, 0, false, 0, false},
      {-1.5, -2, false, -2, false},
      {-2.5, -2, false, -2, false},
      {2.4999999, 2, false, 2, false},
      {2.5000001, 3, false, 3, false},
      {32767.4, 32767, false, 32767, false},
      {32767.5, 0, true, 32768, false},
      {-32768.5, -32768, false, -32768, false},
      {-32769, 0, true, -32769, false},
      {2147483647.4, 0, true, 2147483647, false},
      {2147483647.5, 0, true, 0, true},
      {-2147483648.5, 0, true, -2147483648LL, false},
      {-2147483649.0, 0, true, 0, true},
      {nan, 0, true, 0, true},
      {inf, 0, true, 0, true},
      {-inf, 0, true, 0, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(testing::Message() << "value " << c.value);
    if (c.cintOverflows) {
      EXPECT_EQ(ErrorOf([&] { CInt(c.value); }), kOverflow);
    } else {
      EXPECT_EQ(CInt(c.value), c.cint);
    }
    if (c.clngOverflows) {
      EXPECT_EQ(ErrorOf([&] { CLng(c.value); }), kOverflow);
    } else {
      EXPECT_EQ(CLng(c.value), c.clng);
    }
  }
}

TEST(TypesTest, SixteenAndThirtyTwoBitArithmeticRaisesOverflowInsteadOfWrapping) {
  EXPECT_EQ(IntMul(32, 1000), 32000);
  EXPECT_EQ(ErrorOf([] { IntMul(33, 1000); }), kOverflow);
  EXPECT_EQ(IntMul(-32, 1024), -32768);
  EXPECT_EQ(ErrorOf([] { IntMul(-1, -32768); }), kOverflow);
  EXPECT_EQ(IntAdd(32766, 1), 32767);
  EXPECT_EQ(ErrorOf([] { IntAdd(32767, 1); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { IntAdd(-32768, -1); }), kOverflow);

  EXPECT_EQ(LngMul(46340, 46340), 2147395600);
  EXPECT_EQ(ErrorOf([] { LngMul(46341, 46341); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { LngMul(-1, std::numeric_limits<Long>::min()); }), kOverflow);
  EXPECT_EQ(LngAdd(2147483646, 1), 2147483647);
  EXPECT_EQ(ErrorOf([] { LngAdd(2147483647, 1); }), kOverflow);
  EXPECT_EQ(LngAdd(-2147483647, -1), std::numeric_limits<Long>::min());
}

TEST(RuntimeErrorTest, ClassicNumbersCarryTheirTexts) {
  const struct {
    Long number;
    const char* text;
  } cases[] = {
      {kInvalidProcedureCall, "Invalid procedure call or argument"},
      {kOverflow, "Overflow"},
      {kSubscriptOutOfRange, "Subscript out of range"},
      {kDivisionByZero, "Division by zero"},
      {kTypeMismatch, "Type mismatch"},
      {kAutomationError, "Automation error"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(RuntimeError::TextOf(c.number), c.text);
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
  RuntimeError e = caught([] { Raise(kDivisionByZero); });
  EXPECT_EQ(e.number(), kDivisionByZero);
  EXPECT_EQ(e.description(), "Division by zero");

  e = caught([] { Raise(kResourceNotFound, "Resource with identifier '7' not found"); });
  EXPECT_EQ(e.number(), kResourceNotFound);
  EXPECT_EQ(e.description(), "Resource with identifier '7' not found");

  e = caught([] { throw std::runtime_error("host failed"); });
  EXPECT_EQ(e.number(), kAutomationError);
  EXPECT_EQ(e.description(), "Automation error");

  e = caught([] { throw 42; });
  EXPECT_EQ(e.number(), kAutomationError);

  EXPECT_EQ(CurrentError().number(), kAutomationError);  // outside any catch block
}

}  // namespace
}  // namespace quillon
