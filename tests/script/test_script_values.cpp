// Reading script values from JSON and writing output values.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "script_values.h"

namespace quillon::script {
namespace {

// A value, or the part of the error message it must raise.
struct ReadCase { const char* json; ValueType type; Value expected; const char* error = nullptr; };

TEST(ScriptValues, ReadsEachTypeAndRejectsTheWrongOnes) {
  const std::vector<ReadCase> cases = {
      {"2.5", ValueType::Long, {}, "whole number"},
      {"2147483648", ValueType::Long, {}, "whole number"},
      {"\"5\"", ValueType::Long, {}, "got \"5\""},
      {"32767", ValueType::Integer, Integer{32767}},
      {"null", ValueType::Double, {}, "a number"},
      {"1", ValueType::Boolean, {}, "true or false"},
      {"7", ValueType::String, {}, "a text"},
      // Dates within years 100 to 9999.
      {"-657434", ValueType::Date, -657434.0},
      {"\"0100-01-01T12:00:00\"", ValueType::Date, -657434.5},  // noon of the first day
      {"-657435", ValueType::Date, {}, "years 100 to 9999"},
      {"\"2001-13-01\"", ValueType::Date, {}, "a date"},
      {"2958466", ValueType::Date, {}, "years 100 to 9999"},
      {"false", ValueType::Date, {}, "a date"},
  };
  for (const ReadCase& c : cases) {
    SCOPED_TRACE(c.json);
    Json json = Json::parse(c.json);
    if (c.error) {
      try {
        ReadValue(json, c.type, "field \"x\"");
        ADD_FAILURE() << "no error";
      } catch (const ScriptError& e) {
        std::string message = e.what();
        EXPECT_EQ(message.rfind("field \"x\": expected ", 0), 0u) << message;
        EXPECT_NE(message.find(c.error), std::string::npos) << message;
      }
      continue;
    }
    Value got = ReadValue(json, c.type, "field \"x\"");
    ASSERT_EQ(got.index(), c.expected.index());
    if (const double* d = std::get_if<double>(&got))
      EXPECT_NEAR(*d, std::get<double>(c.expected), 1e-9);
    else
      EXPECT_EQ(got, c.expected);
  }
}

TEST(ScriptValues, WritesNumbersDatesAndVariants) {
  EXPECT_EQ(NumberJson(-0.0).dump(), "0");
  EXPECT_EQ(NumberJson(std::nan("")).dump(), "null");
  EXPECT_EQ(DateJson(1e9).dump(), "1000000000");  // no calendar date: the day count
  EXPECT_EQ(DateJson(-657434.5).dump(), "\"0100-01-01T12:00:00\"");
  // A long value in a message is cut short between characters: '"' and 19 two-byte ones.
  auto accents = [](int n) {
    std::string text;
    while (n-- > 0) text += "\u00e9";
    return text;
  };
  EXPECT_EQ(Describe(Json(accents(30))), "\"" + accents(19) + "...");

  VariantArray array;
  array.lowerBound = 1;
  array.elements = {Variant::FromLong(7), Variant::FromDate(36951.5), Variant::FromString("a"),
                    Variant::FromBoolean(true), Variant()};
  EXPECT_EQ(VariantJson(Variant::FromArray(array)).dump(),
            "[7,\"2001-03-01T12:00:00\",\"a\",true,null]");
  EXPECT_EQ(VariantJson(Variant::FromArray({})).dump(), "[]");
  EXPECT_EQ(ValueJson(Value(36951.0), ValueType::Double).dump(), "36951");

  // Comparing for change: signed zeros are one value, a Long is no Integer.
  EXPECT_TRUE(SameValue(0.0, -0.0));
  EXPECT_FALSE(SameValue(Long{1}, Integer{1}));
}

}  // namespace
}  // namespace quillon::script
