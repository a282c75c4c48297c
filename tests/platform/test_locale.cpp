// Locale data from ICU: decimal and grouping signs, month names.

#include <gtest/gtest.h>

#include "platform/error_of.h"
#include "platform/locale.h"

namespace quillon {
namespace {

// German signs and month names: the number format and date text tests.
TEST(LocaleTest, MonthBoundsRegionsWithoutDataOfTheirOwnUnknownNamesAndTheDefault) {
  const Locale en = Locale::ByName("en_US");
  for (int month : {0, 13}) {
    EXPECT_EQ(ErrorOf([&] { (void)en.shortMonthName(month); }), kInvalidProcedureCall) << month;
  }
  const Locale at = Locale::ByName("de_XX");
  EXPECT_EQ(at.decimalSign(), ",");
  EXPECT_EQ(at.shortMonthName(3), "Mär");
  for (const char* name : {"xx_YY", "", "not a locale"}) {
    const Locale unknown = Locale::ByName(name);
    EXPECT_EQ(unknown.decimalSign(), ".") << name;
    EXPECT_EQ(unknown.groupingSign(), ",") << name;
    EXPECT_EQ(unknown.longMonthName(5), "May") << name;
  }
  EXPECT_EQ(Locale::Default().name(), "en_US");
}

}  // namespace
}  // namespace quillon
