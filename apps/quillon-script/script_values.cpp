#include "script_values.h"

#include <cmath>
#include <cstdio>
#include <limits>

#include "platform/date.h"

namespace quillon::script {
namespace {

[[noreturn]] void Wrong(const std::string& what, const char* expected, const Json& got) {
  throw ScriptError(what + ": expected " + expected + ", got " + Describe(got));
}

}  // namespace

Value DefaultValue(ValueType type) {
  switch (type) {
    case ValueType::Long:
      return Long{0};
    case ValueType::Integer:
      return Integer{0};
    case ValueType::Double:
    case ValueType::Date:
      return 0.0;
    case ValueType::Boolean:
      return false;
    case ValueType::String:
      break;
  }
  return std::string();
}

std::int64_t ReadWhole(const Json& json, const std::string& what, std::int64_t min,
                       std::int64_t max) {
  const std::string range =
      "a whole number from " + std::to_string(min) + " to " + std::to_string(max);
  if (json.is_number_integer() && !json.is_number_unsigned()) {
    std::int64_t v = json.get<std::int64_t>();
    if (v >= min && v <= max) return v;
  } else if (json.is_number_unsigned()) {
    std::uint64_t v = json.get<std::uint64_t>();
    if (max >= 0 && v <= static_cast<std::uint64_t>(max) && static_cast<std::int64_t>(v) >= min)
      return static_cast<std::int64_t>(v);
  } else if (json.is_number_float()) {
    double v = json.get<double>();
    // Compared as doubles first, so that no out-of-range value is ever converted.
    if (std::isfinite(v) && v == std::floor(v) && v >= static_cast<double>(min) &&
        v <= static_cast<double>(max))
      return static_cast<std::int64_t>(v);
  }
  Wrong(what, range.c_str(), json);
}

Long ReadLong(const Json& json, const std::string& what) {
  return static_cast<Long>(
      ReadWhole(json, what, std::numeric_limits<Long>::min(), std::numeric_limits<Long>::max()));
}

Integer ReadInteger(const Json& json, const std::string& what) {
  return static_cast<Integer>(ReadWhole(json, what, std::numeric_limits<Integer>::min(),
                                        std::numeric_limits<Integer>::max()));
}

double ReadDouble(const Json& json, const std::string& what) {
  if (json.is_number()) {
    double v = json.get<double>();
    if (std::isfinite(v)) return v;
  }
  Wrong(what, "a number", json);
}

Date ReadDate(const Json& json, const std::string& what) {
  const char* expected =
      "a date: \"YYYY-MM-DD\", \"YYYY-MM-DDTHH:MM:SS\" or a day count, years 100 to 9999";
  Date d = 0;
  if (json.is_string()) {
    if (!TryParseIsoDate(json.get_ref<const std::string&>(), d)) Wrong(what, expected, json);
  } else if (json.is_number()) {
    d = json.get<double>();
  } else {
    Wrong(what, expected, json);
  }
  if (!IsCalendarDate(d)) Wrong(what, expected, json);
  return d;
}

bool ReadBoolean(const Json& json, const std::string& what) {
  if (!json.is_boolean()) Wrong(what, "true or false", json);
  return json.get<bool>();
}

std::string ReadString(const Json& json, const std::string& what) {
  if (!json.is_string()) Wrong(what, "a text", json);
  return json.get<std::string>();
}

Value ReadValue(const Json& json, ValueType type, const std::string& what) {
  switch (type) {
    case ValueType::Long:
      return ReadLong(json, what);
    case ValueType::Integer:
      return ReadInteger(json, what);
    case ValueType::Double:
      return ReadDouble(json, what);
    case ValueType::Date:
      return ReadDate(json, what);
    case ValueType::Boolean:
      return ReadBoolean(json, what);
    case ValueType::String:
      break;
  }
  return ReadString(json, what);
}

bool SameValue(const Value& a, const Value& b) {
  if (a.index() != b.index()) return false;
  if (const double* x = std::get_if<double>(&a)) {
    double y = std::get<double>(b);
    return *x == y || (std::isnan(*x) && std::isnan(y));
  }
  return a == b;
}

Json ValueJson(const Value& value, ValueType type) {
  return std::visit(
      [type](const auto& v) -> Json {
        using T = std::decay_t<decltype(v)>;
        if constexpr (std::is_same_v<T, double>) {
          return type == ValueType::Date ? DateJson(v) : NumberJson(v);
        } else {
          return Json(v);
        }
      },
      value);
}

Json NumberJson(double v) {
  constexpr double kExact = 9007199254740992.0;  // 2^53
  if (std::isfinite(v) && v == std::floor(v) && std::fabs(v) <= kExact)
    return Json(static_cast<std::int64_t>(v));
  if (std::isnan(v) || std::isinf(v)) return Json(nullptr);
  return Json(v);
}

Json DateJson(Date d) {
  if (IsCalendarDate(d)) {
    try {
      return Json(FormatIsoDateTime(d));
    } catch (...) {
      // The day count of a date the calendar cannot write stays a number, below.
    }
  }
  return NumberJson(d);
}

std::string ColourText(Long colour) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%08X",
                static_cast<unsigned>(static_cast<std::uint32_t>(colour)));
  return text;
}

Json VariantJson(const Variant& v) {
  switch (v.type()) {
    case Variant::Type::Empty:
      return Json(nullptr);
    case Variant::Type::Boolean:
      return Json(v.toBoolean());
    case Variant::Type::Integer:
    case Variant::Type::Long:
    case Variant::Type::Double:
      return NumberJson(v.toDouble());
    case Variant::Type::Date:
      return DateJson(v.toDouble());
    case Variant::Type::String:
      return Json(v.toString());
    case Variant::Type::Array:
      break;
  }
  Json out = Json::array();
  for (const Variant& element : v.array().elements) out.push_back(VariantJson(element));
  return out;
}

std::string Describe(const Json& json) {
  std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
  constexpr std::size_t kMax = 40;
  if (text.size() > kMax) {
    // Cut at the start of a character, never inside one.
    std::size_t cut = kMax;
    while (cut > 0 && (static_cast<unsigned char>(text[cut]) & 0xC0) == 0x80) --cut;
    text = text.substr(0, cut) + "...";
  }
  return text;
}

std::string Quoted(const std::string& text) {
  return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

}  // namespace quillon::script
