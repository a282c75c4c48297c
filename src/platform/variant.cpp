#include "platform/variant.h"

#include <limits>
#include <utility>

#include "platform/runtime_error.h"

namespace quillon {

Variant Variant::FromBoolean(Boolean v) {
  Variant r;
  r.type_ = Type::Boolean;
  r.value_ = v ? -1.0 : 0.0;
  return r;
}

Variant Variant::FromInteger(Integer v) {
  Variant r;
  r.type_ = Type::Integer;
  r.value_ = static_cast<double>(v);
  return r;
}

Variant Variant::FromLong(Long v) {
  Variant r;
  r.type_ = Type::Long;
  r.value_ = static_cast<double>(v);
  return r;
}

Variant Variant::FromDouble(double v) {
  Variant r;
  r.type_ = Type::Double;
  r.value_ = v;
  return r;
}

Variant Variant::FromDate(Date v) {
  Variant r;
  r.type_ = Type::Date;
  r.value_ = v;
  return r;
}

Variant Variant::FromString(std::string v) {
  Variant r;
  r.type_ = Type::String;
  r.value_ = std::move(v);
  return r;
}

Variant Variant::FromArray(VariantArray v) {
  Variant r;
  r.type_ = Type::Array;
  r.value_ = std::make_shared<VariantArray>(std::move(v));
  return r;
}

double Variant::toDouble() const {
  switch (type_) {
    case Type::Empty:
      return 0;
    case Type::String:
    case Type::Array:
      Raise(kTypeMismatch);
    default:
      return std::get<double>(value_);
  }
}

Long Variant::toLong() const { return CLng(toDouble()); }

const std::string& Variant::toString() const {
  if (type_ != Type::String) Raise(kTypeMismatch);
  return std::get<std::string>(value_);
}

Boolean Variant::toBoolean() const { return toDouble() != 0; }

const VariantArray& Variant::array() const {
  if (type_ != Type::Array) Raise(kTypeMismatch);
  return *std::get<std::shared_ptr<VariantArray>>(value_);
}

VariantArray& Variant::array() {
  if (type_ != Type::Array) Raise(kTypeMismatch);
  auto& shared = std::get<std::shared_ptr<VariantArray>>(value_);
  // Copies of a Variant share their array until one of them is changed.
  if (shared.use_count() > 1) shared = std::make_shared<VariantArray>(*shared);
  return *shared;
}

const Variant& Variant::at(Long i) const {
  const VariantArray& a = array();
  const long long index = static_cast<long long>(i) - a.lowerBound;
  if (index < 0 || index >= static_cast<long long>(a.elements.size())) {
    Raise(kSubscriptOutOfRange);
  }
  return a.elements[static_cast<std::size_t>(index)];
}

Long Variant::lbound() const { return array().lowerBound; }

Long Variant::ubound() const {
  const VariantArray& a = array();
  const long long upper =
      static_cast<long long>(a.lowerBound) + static_cast<long long>(a.elements.size()) - 1;
  if (upper > std::numeric_limits<Long>::max()) Raise(kOverflow);
  return static_cast<Long>(upper);
}

bool Variant::operator==(const Variant& other) const {
  if (type_ != other.type_) return false;
  switch (type_) {
    case Type::Empty:
      return true;
    case Type::String:
      return std::get<std::string>(value_) == std::get<std::string>(other.value_);
    case Type::Array: {
      const VariantArray& a = array();
      const VariantArray& b = other.array();
      return a.lowerBound == b.lowerBound && a.elements == b.elements;
    }
    default:
      return std::get<double>(value_) == std::get<double>(other.value_);
  }
}

}  // namespace quillon
