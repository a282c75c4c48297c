// Locale data from ICU: decimal and grouping signs, month names.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/locale.h"

namespace quillon {
namespace {

std::vector<std::string> ShortMonths(const Locale& l) {
  std::vector<std::string> names;
  for (int m = 1; m <= 12; ++m) names.push_back(l.shortMonthName(m));
  return names;
}

TEST(LocaleTest, SignsAndMonthNamesOfEnglishAndGerman) {
  const Locale en = Locale::ByName("en_US");
  EXPECT_EQ(en.name(), "en_US");
  EXPECT_EQ(en.decimalSign(), ".");
  EXPECT_EQ(en.groupingSign(), ",");
  EXPECT_EQ(ShortMonths(en), (std::vector<std::string>{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                       "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}));
  EXPECT_EQ(en.longMonthName(9), "September");

  const Locale de = Locale::ByName("de_DE");
  EXPECT_EQ(de.decimalSign(), ",");
  EXPECT_EQ(de.groupingSign(), ".");
  EXPECT_EQ(ShortMonths(de), (std::vector<std::string>{"Jan", "Feb", "Mär", "Apr", "Mai", "Jun",
                                                       "Jul", "Aug", "Sep", "Okt", "Nov", "Dez"}));
  EXPECT_EQ(de.longMonthName(3), "März");
  EXPECT_EQ(de.longMonthName(12), "Dezember");

  // A month outside the year is the caller's error, raised as the platform raises it.
  for (int month : {0, 13, -1}) {
    try {
      (void)en.shortMonthName(month);
      ADD_FAILURE() << "month " << month;
    } catch (const RuntimeError& e) {
      EXPECT_EQ(e.number(), kInvalidProcedureCall);
    }
  }
}

TEST(LocaleTest, RegionsWithoutDataOfTheirOwnAndUnknownNames) {
  const Locale at = Locale::ByName("de_XX");
  EXPECT_EQ(at.decimalSign(), ",");
  EXPECT_EQ(at.shortMonthName(3), "Mär");

  for (const char* name : {"xx_YY", "", "not a locale"}) {
    SCOPED_TRACE(name);
    const Locale unknown = Locale::ByName(name);
    EXPECT_EQ(unknown.decimalSign(), ".");
    EXPECT_EQ(unknown.groupingSign(), ",");
    EXPECT_EQ(unknown.shortMonthName(1), "Jan");
    EXPECT_EQ(unknown.longMonthName(5), "May");
  }
}

TEST(LocaleTest, DefaultIsEnglishAndBuiltOnce) {
  const Locale& d = Locale::Default();
  EXPECT_EQ(&d, &Locale::Default());
  EXPECT_EQ(d.name(), "en_US");
  EXPECT_EQ(d.decimalSign(), ".");
  EXPECT_EQ(d.shortMonthName(12), "Dec");
}

}  // namespace
}  // namespace quillon
