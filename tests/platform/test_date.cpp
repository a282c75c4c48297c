// Date arithmetic on the day count: calendar parts, month ends, boundaries, texts.

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "platform/error_of.h"
#include "platform/date.h"
#include "platform/locale.h"
#include "platform/runtime_error.h"

namespace quillon {
namespace {

std::string Iso(Date d) { return FormatIsoDateTime(d); }

TEST(DateTest, DaySerialsMatchTheDayCount) {
  const struct { int y, m, d; double serial; } cases[] = {
      {1899, 12, 30, 0},  {1900, 3, 1, 61},  {2000, 2, 29, 36585},  {100, 1, 1, -657434},
      {1990, 13, 1, 33239},  // month 13 is January of the next year
      {1990, 3, 0, 32932},   // day 0 is the last day of February
      {1990, 0, 1, 32843},   // month 0 is December of the year before
  };
  for (const auto& c : cases) EXPECT_EQ(DateSerial(c.y, c.m, c.d), c.serial) << c.m << "/" << c.d;
  EXPECT_EQ(ErrorOf([] { DateSerial(99, 12, 31); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { DateSerial(9999, 12, 32); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { DateSerial(2000, 2147483647, 1); }), kOverflow);
  EXPECT_DOUBLE_EQ(TimeSerial(25, 0, 0), 25.0 / 24);
}

TEST(DateTest, PartsKeepTheTimeOfNegativeDaysPositive) {
  const struct { double d; const char* iso; int weekday; } cases[] = {
      {-1.25, "1899-12-29T06:00:00", 6}, {-0.5, "1899-12-30T12:00:00", 7},
      {32874 + 86399.4 / 86400, "1990-01-01T23:59:59", 2},
      {32874.9999999, "1990-01-02T00:00:00", 3},  // rounds to the second, into the next day
      {2958465.99999, "9999-12-31T23:59:59", 6},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(Iso(c.d), c.iso) << "day " << c.d;
    EXPECT_EQ(WeekdayOf(c.d), c.weekday) << "day " << c.d;
  }
  EXPECT_EQ(MakeDate({1899, 12, 29, 6, 0, 0}), -1.25);
  EXPECT_EQ(MakeDate({1990, 1, 1, 24, 0, 0}), 32875);
  EXPECT_EQ(DateOnly(-1.25), -1);
  for (double bad : {std::nan(""), 2958466.0, -657435.5, 1e300}) {
    EXPECT_EQ(ErrorOf([&] { PartsOf(bad); }), kOverflow) << bad;
    EXPECT_EQ(ErrorOf([&] { FormatIsoDateTime(bad); }), kOverflow) << bad;
  }
}

TEST(DateTest, AddingMovesAlongTheTimeLineAndMonthsClampToTheMonthEnd) {
  const struct { const char* from; int months; const char* to; } cases[] = {
      {"1990-01-31T10:30:00", 1, "1990-02-28T10:30:00"},
      {"2000-03-31T00:00:00", -1, "2000-02-29T00:00:00"},
      {"1990-01-15T00:00:00", -13, "1988-12-15T00:00:00"},
      {"1900-01-29T06:00:00", -1, "1899-12-29T06:00:00"},
  };
  for (const auto& c : cases) {
    Date from = 0;
    ASSERT_TRUE(TryParseIsoDate(c.from, from));
    EXPECT_EQ(Iso(AddMonths(from, c.months)), c.to) << c.from << " + " << c.months;
  }
  EXPECT_EQ(Iso(AddDays(-1.25, 1)), "1899-12-30T06:00:00");
  EXPECT_EQ(AddDays(0.25, -1), -1.25);
  EXPECT_EQ(Iso(AddSeconds(0, -3600)), "1899-12-29T23:00:00");
  EXPECT_EQ(Iso(AddSeconds(0, -1e-12)), "1899-12-30T00:00:00");
  EXPECT_EQ(ErrorOf([] { AddMonths(DateSerial(100, 1, 1), -1); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { AddDays(2958465, 1); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { AddDays(0, NAN); }), kOverflow);
}

// Days and seconds between moments: the forward search, settlement and quote countdown tests.
TEST(DateTest, DifferencesCountBoundariesCrossed) {
  const Date lateDec = MakeDate({1990, 12, 31, 23, 59, 59});
  const Date earlyJan = MakeDate({1991, 1, 1, 0, 0, 1});
  EXPECT_EQ(DiffYears(lateDec, earlyJan), 1);
  EXPECT_EQ(DiffMonths(lateDec, earlyJan), 1);
  EXPECT_EQ(DiffMonths(DateSerial(1991, 3, 1), DateSerial(1990, 1, 31)), -14);
}

TEST(DateTest, DayMonthYearTextsWriteAndReadBack) {
  const Locale en = Locale::ByName("en_US"), de = Locale::ByName("de_DE");
  const struct { Date d; const char *english, *german; } cases[] = {
      {DateSerial(2001, 3, 1), "01-Mar-2001", "01-Mär-2001"},
      {DateSerial(2024, 10, 31) + 0.75, "31-Oct-2024", "31-Okt-2024"},
      {DateSerial(999, 12, 5), "05-Dec-0999", "05-Dez-0999"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(FormatDateDMY(c.d, en), c.english);
    EXPECT_EQ(FormatDateDMY(c.d, de), c.german);
    EXPECT_EQ(ParseDate(c.english, en), DateOnly(c.d));
    EXPECT_EQ(ParseDate(c.german, de), DateOnly(c.d));
  }
  const struct { const char* text; const Locale& locale; double expected; } texts[] = {
      {"1 January 1990", en, 32874},      {" 1-JAN-1990 ", en, 32874},
      {"1990-01-01T12:00:00", en, 32874.5}, {"1-Jan-1990 06:00", en, 32874.25},
      {"1-Mar-2001", de, 36951},  // English names are understood in every locale
      {"1-okt.-2001", de, 37165},
  };
  for (const auto& c : texts) EXPECT_EQ(ParseDate(c.text, c.locale), c.expected) << c.text;
  for (const char* bad : {"", "Jan-1-1990", "1-Foo-1990", "30-Feb-1990", "1-Jan-", "1990-1-1",
                          "1990-01-01T25:00:00", "1-Jan-1990x", "1-Jan-1990 7", "1-Jan-99",
                          "1-Okt-2001"}) {
    EXPECT_EQ(ErrorOf([&] { ParseDate(bad, en); }), kTypeMismatch) << bad;
  }
  for (const char* bad :
       {"2023-02-29", "2024-02-29T24:00:00", "2024-02-29 10:00:00", "0099-01-01"}) {
    Date out = -7;
    EXPECT_FALSE(TryParseIsoDate(bad, out)) << bad;
    EXPECT_EQ(out, -7) << bad;
  }
}

}  // namespace
}  // namespace quillon
