// The values of a script: reading them from JSON with a clear error, writing them as output.
#pragma once

#include <cstdint>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <variant>

#include "platform/types.h"
#include "platform/variant.h"

namespace quillon::script {

// Keys keep the order they were written in, on input and output.
using Json = nlohmann::ordered_json;

// A line the host cannot read or carry out; the message says what is wrong, without the line.
class ScriptError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The types of the ticket's interface, as a script writes them.
enum class ValueType { Long, Integer, Double, Date, Boolean, String };

// One value of a ValueType; Double and Date share `double`.
using Value = std::variant<Long, Integer, double, bool, std::string>;

// The zero of a type: 0, 0.0, date 0, false or an empty text.
Value DefaultValue(ValueType type);

// Reads a value of `type`; `what` names it in the error ("field \"value\"").
// Long and Integer take whole numbers in their range, Double any number, Boolean only
// true/false, String only a text, Date an ISO text or a day count (years 100 to 9999).
Value ReadValue(const Json& json, ValueType type, const std::string& what);
Long ReadLong(const Json& json, const std::string& what);
Integer ReadInteger(const Json& json, const std::string& what);
double ReadDouble(const Json& json, const std::string& what);
Date ReadDate(const Json& json, const std::string& what);
bool ReadBoolean(const Json& json, const std::string& what);
std::string ReadString(const Json& json, const std::string& what);
// A whole number from min to max.
std::int64_t ReadWhole(const Json& json, const std::string& what, std::int64_t min,
                       std::int64_t max);

// Whether two values of one type are the same (NaN equals NaN, so that it is no change).
bool SameValue(const Value& a, const Value& b);

// Output: a value as JSON by its type.
Json ValueJson(const Value& value, ValueType type);
// A number: a whole one within 2^53 as a JSON integer, any other as a float, NaN as null.
Json NumberJson(double v);
// "YYYY-MM-DDTHH:MM:SS"; a day count outside years 100 to 9999 stays a number.
Json DateJson(Date d);
// "0x8000000F": eight upper-case hex digits of the 32-bit value.
std::string ColourText(Long colour);
// Arrays from their lower bound, elements by their type, Empty as null.
Json VariantJson(const Variant& v);

// A short text of a JSON value for error messages.
std::string Describe(const Json& json);
// A name from the script in double quotes for an error message, escaped as in JSON, so that
// a line break or a NUL in it cannot split or cut the one line of the message.
std::string Quoted(const std::string& text);

}  // namespace quillon::script
