// Value types of the ticket and the checked conversions between them.
#pragma once

#include <cstdint>
#include <string>

namespace quillon {

using Long = std::int32_t;     // 32-bit signed whole number
using Integer = std::int16_t;  // 16-bit signed whole number
using Boolean = bool;          // true travels as -1, false as 0 where a number is asked for
using Date = double;           // day count: day 0 is 30 Dec 1899, the fraction is the time of day
using String = std::string;    // UTF-8 text owned by its holder

// The numeric form of a Boolean: -1 for true, 0 for false.
constexpr Integer BooleanValue(Boolean b) { return b ? -1 : 0; }

// Conversions that raise run-time error 6 "Overflow" when the value does not fit, and
// round a fraction to the nearest whole number, halves to even (as the classic CInt/CLng).
Integer CInt(double value);
Long CLng(double value);

// 16- and 32-bit arithmetic that raises "Overflow" instead of wrapping.
Integer IntMul(Integer a, Integer b);
Integer IntAdd(Integer a, Integer b);
Long LngMul(Long a, Long b);
Long LngAdd(Long a, Long b);

}  // namespace quillon
