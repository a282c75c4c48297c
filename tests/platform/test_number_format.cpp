// Number texts under en_US and de_DE: patterns, plain texts, the numeric test and reading, Val.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "platform/error_of.h"
#include "platform/locale.h"
#include "platform/number_format.h"
#include "platform/runtime_error.h"

namespace quillon {
namespace {

constexpr const char* kAmount = "#,##0.00;(#,##0.00)";

// value, pattern, en_US text, de_DE text.
const struct { double value; const char *pattern, *point, *comma; } kFormatCases[] = {
    // Prices (the price text tests hold the ticket's own): never a minus on a zero.
    {-0.00004, "0.0000", "0.0000", "0,0000"},  {99.99, "0.0", "100.0", "100,0"},
    {1e20, "0", "100000000000000000000", "100000000000000000000"},
    {0.1 + 0.2, "0.0000000000000000", "0.3000000000000000", "0,3000000000000000"},
    // Beyond 15 digits the whole part shows zeros; below, the digits of the 15-digit form.
    {123456789012345678.0, "0", "123456789012346000", "123456789012346000"},
    {1.23456789012345e-12, "0.00000000000000000000000000", "0.00000000000123456789012345",
     "0,00000000000123456789012345"},
    // Amounts and whole contracts.
    {-1234.5, kAmount, "(1,234.50)", "(1.234,50)"}, {-0.004, kAmount, "0.00", "0,00"},
    {999.995, kAmount, "1,000.00", "1.000,00"},
    {-123456789.125, kAmount, "(123,456,789.13)", "(123.456.789,13)"},
    {-1e15, "#,##0", "-1,000,000,000,000,000", "-1.000.000.000.000.000"},
    {-0.4, "####;(####)", "", ""},             {-3.6, "####;(####)", "(4)", "(4)"},
    // Other placeholders and sections; digits 1-9 are literals.
    {1.5, "0.0#", "1.5", "1,5"}, {3, "0.##", "3.", "3,"}, {0.5, ".00", ".50", ",50"},
    {-5, "0.00;", "-5.00", "-5,00"}, {0.001, "0.00;(0.00);nil", "nil", "nil"},
    {-2, "0.00;(0.00);nil", "(2.00)", "(2,00)"}, {12345, "0-00", "123-45", "123-45"},
    {2.5, "0 EUR", "3 EUR", "3 EUR"}, {5, "abc", "abc", "abc"},
    {1.0005, "0.0005", "1.0015", "1,0015"},
    // The empty pattern is the general number.
    {-0.0, "", "0", "0"}, {1e-5, "", "0.00001", "0,00001"},
    {2e15, "", "2000000000000000", "2000000000000000"},
    {1.0 / 3, "", "0.333333333333333", "0,333333333333333"},
};

class NumberFormatTest : public ::testing::TestWithParam<const char*> {
 protected:
  const Locale locale_ = Locale::ByName(GetParam());
  bool comma() const { return locale_.decimalSign() == ","; }
};

TEST_P(NumberFormatTest, FormatsByPatternAndRefusesNonFiniteValues) {
  for (const auto& c : kFormatCases) {
    EXPECT_EQ(FormatNumber(c.value, c.pattern, locale_), comma() ? c.comma : c.point)
        << c.value << " with \"" << c.pattern << "\"";
  }
  for (double v : {INFINITY, NAN}) {
    EXPECT_EQ(ErrorOf([&] { FormatNumber(v, kAmount, locale_); }), kOverflow);
    EXPECT_EQ(ErrorOf([&] { GeneralNumber(v, locale_); }), kOverflow);
    EXPECT_EQ(ErrorOf([&] { StrOfDouble(v); }), kOverflow);
  }
}

TEST_P(NumberFormatTest, WhatThePatternsWriteReadsBack) {
  const double values[] = {0, 1234.5, -1234.5, 1e6, 0.01, 999999999.99, -0.07, 123456.789, 0.0001};
  for (const char* pattern : {kAmount, "0.0000", "00", "0.00000", "#,##0"}) {
    for (double v : values) {
      const std::string text = FormatNumber(v, pattern, locale_);
      SCOPED_TRACE(testing::Message() << v << " with \"" << pattern << "\" as " << text);
      ASSERT_TRUE(IsNumericText(text, locale_));
      EXPECT_EQ(FormatNumber(ReadNumericText(text, locale_), pattern, locale_), text);
    }
  }
}

// text, numeric and value under en_US, the same under de_DE.
const struct { const char* text; bool enNumeric; double enValue; bool deNumeric; double deValue; }
    kNumericCases[] = {
        {"1234.5", true, 1234.5, true, 12345},  // "." groups in German, anywhere in the whole part
        {"(1,234.50)", true, -1234.5, false, 0}, {"1.234,5", false, 0, true, 1234.5},
        {"1,5", true, 15, true, 1.5}, {"  12  ", true, 12, true, 12}, {"12-", true, -12, true, -12},
        {"( 12 )", true, -12, true, -12}, {"(0.00)", true, 0, true, 0}, {".5", true, 0.5, true, 5},
        {"1.5E-2", true, 0.015, true, 15e-2}, {"1e-400", true, 0, true, 0},
        {"1.2.3", false, 0, true, 123}, {"", false, 0, false, 0}, {"   -   ", false, 0, false, 0},
        {"(12", false, 0, false, 0}, {"(-12)", false, 0, false, 0}, {"-12-", false, 0, false, 0},
        {"1e+", false, 0, false, 0}, {"1 2", false, 0, false, 0}, {"1e400", false, 0, false, 0},
};

TEST_P(NumberFormatTest, NumericTextAndItsValue) {
  const bool de = comma();
  for (const auto& c : kNumericCases) {
    SCOPED_TRACE(testing::Message() << "\"" << c.text << "\"");
    const bool numeric = de ? c.deNumeric : c.enNumeric;
    const double value = de ? c.deValue : c.enValue;
    double tried = -7;  // left untouched when the text is not a number
    EXPECT_EQ(TryReadNumericText(c.text, locale_, tried), numeric);
    EXPECT_DOUBLE_EQ(tried, numeric ? value : -7);
    EXPECT_EQ(IsNumericText(c.text, locale_), numeric);
    if (numeric) EXPECT_DOUBLE_EQ(ReadNumericText(c.text, locale_), value);
    else EXPECT_NE(ErrorOf([&] { ReadNumericText(c.text, locale_); }), 0);
  }
  EXPECT_EQ(ErrorOf([&] { ReadNumericText("abc", locale_); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([&] { ReadNumericText("1e400", locale_); }), kOverflow);
  EXPECT_FALSE(std::signbit(ReadNumericText("(0.00)", locale_)));
}

INSTANTIATE_TEST_SUITE_P(Locales, NumberFormatTest, ::testing::Values("en_US", "de_DE"));

// The short roads of FormatNumber and ReadNumericText against their general roads, bit for
// bit: seeded random values of every size, halves at each digit, 0.0001 steps, powers of ten
// and their neighbours, the edges of the 15-digit and 2^53 ranges, both signs, three locales.
// Between 1e-9 and 1e15 a pattern of 15 significant digits also writes what the standard
// library's correctly rounded decimal is.
TEST(NumberRoads, ShortRoadsGiveWhatTheGeneralRoadsGive) {
  std::vector<double> values = {0.1 + 0.2, 2.0 / 3, 999999999999999.5, 999999999999999.4, 1e300,
                                1.7976931348623157e308, 5e-324, 123456789012345678.0,
                                9007199254740993.0, 4.35, 2.5, 110.125, 999.995, 99999.99999999995,
                                9.999999999999995, 0.000123456789012345};
  for (int k = -9; k <= 22; ++k) {
    const double p = std::pow(10.0, k);
    values.insert(values.end(), {p, std::nextafter(p, 0.0), std::nextafter(p, 1e300)});
  }
  for (int i = 0; i <= 600; ++i) {
    values.push_back(1.2 + i * 0.0001);                            // steps as a loop adds them
    values.push_back(std::round((0.9 + i * 0.0001) * 1e4) / 1e4);  // and as the host sends them
  }
  std::mt19937_64 random(20260301);
  char text[80];
  for (int i = 0; i < 1500; ++i) {
    // A half at a random digit, any bits, and exact halves at the 16th digit.
    const int digits = 1 + static_cast<int>(random() % 16);
    const auto m = static_cast<long long>(random() % 1000000000000000000ULL);
    std::snprintf(text, sizeof text, "%.*lld5e%d", digits,
                  m % static_cast<long long>(std::pow(10.0, digits)),
                  static_cast<int>(random() % 30) - 20);
    const auto bits = static_cast<double>(random() >> 11);
    const int exponent = static_cast<int>(random() % 130) - 110;
    const auto k = static_cast<double>(random() % 100000000000000ULL);
    values.insert(values.end(), {std::strtod(text, nullptr), std::ldexp(bits, exponent),
                                 1e14 + k + 0.5, 1e13 + std::floor(k / 10) + 0.25,
                                 1e12 + std::floor(k / 100) + 0.625});
  }
  for (std::size_t i = 0, n = values.size(); i < n; ++i) values.push_back(-values[i]);
  for (double v : values) {
    if (!(std::abs(v) >= 1e-9 && std::abs(v) < 1e15)) continue;
    *std::to_chars(text, text + 40, v, std::chars_format::scientific, 14).ptr = '\0';
    const int decimals = std::max(0, 14 - std::atoi(std::find(text, text + 40, 'e') + 1));
    const std::string pattern = decimals > 0 ? "0." + std::string(decimals, '0') : "0";
    const std::string expected(
        text, std::to_chars(text, text + 80, v, std::chars_format::fixed, decimals).ptr);
    EXPECT_EQ(FormatNumber(v, pattern, Locale::Default()), expected) << "with " << pattern;
  }
  // What a reading gives: the value's bits, or the error it raises.
  const auto outcome = [](auto read) {
    try {
      return std::bit_cast<std::uint64_t>(read());
    } catch (const RuntimeError& e) {
      return static_cast<std::uint64_t>(e.number());
    }
  };
  for (const char* name : {"en_US", "de_DE", "fr_FR"}) {
    const Locale locale = Locale::ByName(name);
    const auto sameReading = [&](const std::string& text) {
      EXPECT_EQ(outcome([&] { return ReadNumericText(text, locale); }),
                outcome([&] { return ReadNumericTextGeneral(text, locale); }))
          << name << " \"" << text << "\"";
    };
    for (const char* pattern : {"0.0000", "0.00", "0.0", "00", "0", kAmount, "####;(####)", "#,##0",
                                "0.0#", ".00", "000000", "0.00000000", "0.000000000000000000",
                                "0.0000000000000000000", "#", "#0-00.0# EUR"}) {
      for (double v : values) {
        const std::string text = FormatNumber(v, pattern, locale);
        ASSERT_EQ(text, FormatNumberGeneral(v, pattern, locale))
            << name << " " << v << " " << pattern;
        ASSERT_EQ(text, FormatNumberUnkept(v, pattern, locale)) << name << " " << v;
        sameReading(text);
      }
    }
    // Plain decimals about the edges of the whole-number reading, and random ones with
    // grouping, leading zeros, signs, brackets and exponents.
    const std::string point = locale.decimalSign(), group = locale.groupingSign();
    for (const std::string& text : std::vector<std::string>{
             "9007199254740992", "9007199254740993", "9007199254740991" + point + "5",
             "18446744073709551615", "18446744073709551616", "1234567890123456789",
             "12345678901234567890", "0" + point + std::string(21, '0') + "1",
             "0" + point + std::string(22, '0') + "1", "1" + point + std::string(22, '0'),
             "1" + point + std::string(23, '0'), "000000000000000000000012" + point + "5",
             group + "5", "1" + point + "2" + group + "3", "1" + point + point + "2", point,
             "", "12" + group + group + "3" + point, "0" + point + "0", " 1" + point + "5"})
      sameReading(text);
    std::mt19937_64 random(7);
    for (int i = 0; i < 3000; ++i) {
      std::string text = random() % 4 == 0 ? "(" : random() % 3 == 0 ? "-" : "";
      const int length = 1 + static_cast<int>(random() % 26);
      const int pointAt = static_cast<int>(random() % (length + 4));
      for (int k = 0; k < length; ++k) {
        if (k == pointAt) text += point;
        else if (k < pointAt && random() % 7 == 0) text += group;
        text += static_cast<char>('0' + (random() % 3 == 0 ? 0 : random() % 10));
      }
      if (random() % 8 == 0) text += "E" + std::to_string(static_cast<int>(random() % 40) - 20);
      if (text[0] == '(') text += ")";
      sameReading(text);
    }
  }
}

// The text written last is read by the reader's signs, not the writer's.
TEST(NumberRoads, ATextJustWrittenReadsByTheReadersSigns) {
  const Locale en = Locale::ByName("en_US"), de = Locale::ByName("de_DE");
  const std::string text = FormatNumberUnkept(1.2345, "0.0000", en);
  EXPECT_EQ(ReadNumericText(text, de), 12345);  // "." groups in German
  EXPECT_EQ(ReadNumericText(text, en), 1.2345);
}

TEST(NumberTextTest, StrOfDoubleWritesAPointAndValReadsAsFarAsTheNumberGoes) {
  const struct { double value; const char* text; } strCases[] = {
      {-0.5, "-.5"}, {-0.0, " 0"}, {1e20, " 100000000000000000000"}, {0.00001, " .00001"},
      {1.0 / 3, " .333333333333333"}, {-1234.5678, "-1234.5678"}};
  for (const auto& c : strCases) EXPECT_EQ(StrOfDouble(c.value), c.text) << c.value;
  const struct { const char* text; double value; } valCases[] = {
      {"4>", 4},   {"x1", 0},      {"", 0},        {" 12 3", 123}, {"- 5", -5},  {"+5", 5},
      {"1.5.6", 1.5}, {"1,5", 1},  {"1E", 1},      {"1d2", 100},   {"2e-1x", 0.2}, {"--5", 0},
      {"&H10", 0}, {"\t7\n8", 78}, {"1e-400", 0},
  };
  for (const auto& c : valCases) EXPECT_DOUBLE_EQ(Val(c.text), c.value) << "\"" << c.text << "\"";
  EXPECT_EQ(ErrorOf([] { Val("1e400"); }), kOverflow);
}

}  // namespace
}  // namespace quillon
