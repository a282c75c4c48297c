// Number texts: formatting by a pattern, the numeric-text test and its reading.
#pragma once

#include <string>
#include <string_view>

#include "platform/locale.h"

namespace quillon {

// Formats a value by a pattern of the placeholders 0 (a digit that always shows) and # (a
// digit that shows when significant), with "," for grouping and "." for the decimal sign
// (written as the locale's signs), other characters as literals, and up to two sections
// separated by ";" (the second for negative numbers, written without their minus sign).
// The value is first taken to its 15-significant-digit decimal form, then rounded to the
// pattern's decimals, halves away from zero: 1.23455 with "0.0000" gives "1.2346".
// Examples: "#,##0.00;(#,##0.00)" -1234.5 -> "(1,234.50)"; "####;(####)" 0 -> "".
std::string FormatNumber(double value, std::string_view pattern, const Locale& locale);

// The text of a Double as the classic Str writes it: up to 15 significant digits, a point as
// decimal sign whatever the locale, no leading zero before the point, no trailing zeros, a
// leading blank for a number that is not negative, never an exponent: 0.0001 -> " .0001",
// -0.5 -> "-.5", 10 -> " 10".
std::string StrOfDouble(double value);

// The general number text of a Double under the locale, as the classic CStr writes it: up to
// 15 significant digits, the locale's decimal sign, a leading zero, no grouping:
// 0.5 -> "0.5" ("0,5" in German), 1234.5 -> "1234.5", -2 -> "-2".
std::string GeneralNumber(double value, const Locale& locale);

// Whether a text is numeric under the locale: surrounding blanks allowed, digits with
// grouping signs, the decimal sign, a sign before or behind the digits, brackets for a
// negative number, an exponent. "", "abc" and "   -   " are not numeric.
bool IsNumericText(std::string_view text, const Locale& locale);

// The value of a numeric text; raises "Type mismatch" for a text that is not numeric.
double ReadNumericText(std::string_view text, const Locale& locale);

// The lenient reading of the classic Val: leading blanks skipped, then an optional sign and
// the digits (with a point) as far as they go; no digits give 0. "4>" -> 4, "x1" -> 0.
double Val(std::string_view text);

}  // namespace quillon
