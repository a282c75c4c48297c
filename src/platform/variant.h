// Variant: the dynamic value of the events' array arguments and of the methods' empty results.
#pragma once

#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "platform/types.h"

namespace quillon {

class Variant;

// An array held by a Variant: elements from a lower bound up.
struct VariantArray {
  Long lowerBound = 0;
  std::vector<Variant> elements;
};

class Variant {
 public:
  enum class Type { Empty, Boolean, Integer, Long, Double, Date, String, Array };

  Variant() = default;  // Empty
  static Variant FromBoolean(Boolean v);
  static Variant FromInteger(Integer v);
  static Variant FromLong(Long v);
  static Variant FromDouble(double v);
  static Variant FromDate(Date v);
  static Variant FromString(std::string v);
  static Variant FromArray(VariantArray v);

  Type type() const { return type_; }
  bool isEmpty() const { return type_ == Type::Empty; }
  bool isArray() const { return type_ == Type::Array; }

  // The value as a number; Empty is 0; a text or an array raises "Type mismatch".
  double toDouble() const;
  Long toLong() const;                  // rounded as CLng, "Overflow" if out of range
  const std::string& toString() const;  // a String Variant only, else "Type mismatch"
  Boolean toBoolean() const;

  const VariantArray& array() const;  // an Array Variant only, else "Type mismatch"
  VariantArray& array();              // copies of a Variant do not share changes to it

  // Element i of an array Variant; "Subscript out of range" outside its bounds.
  const Variant& at(Long i) const;
  Long lbound() const;
  Long ubound() const;  // lbound - 1 for an empty array

  // Same type and same value (arrays: same lower bound and equal elements).
  bool operator==(const Variant& other) const;

 private:
  Type type_ = Type::Empty;
  std::variant<std::monostate, double, std::string, std::shared_ptr<VariantArray>> value_;
};

}  // namespace quillon
