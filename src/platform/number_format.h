// Number texts: formatting by a pattern, the numeric-text test and its reading.
#pragma once

#include <string>
#include <string_view>

#include "platform/locale.h"

namespace quillon {

// Formats a value by a pattern of the placeholders 0 (a digit that always shows) and # (a
// digit that shows when significant), with "," in the whole part for grouping and "." for the
// decimal sign (written as the locale's signs); every other character, digits 1-9 included, is
// a literal. Up to three sections separated by ";": the second for negative numbers (written
// without their minus sign), the third for zero; an empty section or pattern writes the
// general number. Whole digits beyond the pattern's placeholders always show; trailing #
// decimals drop trailing zeros. The value is first taken to its 15-significant-digit decimal
// form, then rounded to the pattern's decimals, halves away from zero: 1.23455 with "0.0000"
// gives "1.2346"; a value that rounds to zero is zero, without a minus sign.
// Examples: "#,##0.00;(#,##0.00)" -1234.5 -> "(1,234.50)"; "####;(####)" 0 -> "".
// An infinite or NaN value raises "Overflow".
std::string FormatNumber(double value, std::string_view pattern, const Locale& locale);

// FormatNumber for a caller that keeps the texts it writes itself: the same text, without a
// look in the memory of texts written last, nor a place taken in it. The text it wrote last
// on this thread is read back by the readings below without a pass over it.
std::string FormatNumberUnkept(double value, std::string_view pattern, const Locale& locale);

// The text of a Double as the classic Str writes it: up to 15 significant digits, a point as
// decimal sign whatever the locale, no leading zero before the point, no trailing zeros, a
// leading blank for a number that is not negative, never an exponent: 0.0001 -> " .0001",
// -0.5 -> "-.5", 10 -> " 10". An infinite or NaN value raises "Overflow".
std::string StrOfDouble(double value);

// The general number text of a Double under the locale, as the classic CStr writes it: up to
// 15 significant digits, the locale's decimal sign, a leading zero, no grouping, never an
// exponent: 0.5 -> "0.5" ("0,5" in German), 1234.5 -> "1234.5", -2 -> "-2".
std::string GeneralNumber(double value, const Locale& locale);

// Whether a text is numeric under the locale: surrounding blanks allowed, digits with
// grouping signs (anywhere in the whole part), the decimal sign, one sign before or behind the
// digits or else brackets for a negative number, an exponent (E). "", "abc", "-", "." and
// "   -   " are not numeric, nor is a number beyond the range of a Double.
bool IsNumericText(std::string_view text, const Locale& locale);

// The value of a numeric text; raises "Type mismatch" for a text that is not numeric and
// "Overflow" for a number beyond the range of a Double.
double ReadNumericText(std::string_view text, const Locale& locale);

// IsNumericText and ReadNumericText at once: for a numeric text true, with its value in
// `value`; otherwise false, with `value` as it was.
bool TryReadNumericText(std::string_view text, const Locale& locale, double& value);

// FormatNumber and ReadNumericText by their general roads alone: no texts kept from earlier
// calls, and no short roads for the usual numbers (the 15 digits of a Double as a whole
// number, a section of placeholders written from whole numbers, a plain decimal read as a
// whole number over a power of ten). They give the same answers as the two above; they exist
// so that this can be checked.
std::string FormatNumberGeneral(double value, std::string_view pattern, const Locale& locale);
double ReadNumericTextGeneral(std::string_view text, const Locale& locale);

// The lenient reading of the classic Val: blanks, tabs and line ends are skipped anywhere,
// then an optional sign, the digits with one point and an exponent (E or D) as far as they go;
// no digits give 0, a number beyond a Double raises "Overflow". "4>" -> 4, "x1" -> 0,
// " 12 3" -> 123, "1,5" -> 1. The "&H" and "&O" forms are not read (they give 0).
double Val(std::string_view text);

}  // namespace quillon
