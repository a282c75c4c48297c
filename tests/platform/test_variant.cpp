// Variant: conversions, arrays with their bounds, copies and comparison.

#include <gtest/gtest.h>

#include "platform/runtime_error.h"
#include "platform/variant.h"

namespace quillon {
namespace {

template <typename F>
Long ErrorOf(F&& f) {
  try {
    f();
  } catch (const RuntimeError& e) {
    return e.number();
  }
  return 0;
}

TEST(VariantTest, ConversionsFollowTheType) {
  EXPECT_TRUE(Variant().isEmpty());
  EXPECT_EQ(Variant().toDouble(), 0);
  EXPECT_FALSE(Variant().toBoolean());

  EXPECT_EQ(Variant::FromBoolean(true).toDouble(), -1);
  EXPECT_EQ(Variant::FromBoolean(false).toLong(), 0);
  EXPECT_TRUE(Variant::FromBoolean(true).toBoolean());
  EXPECT_EQ(Variant::FromInteger(-7).toLong(), -7);
  EXPECT_EQ(Variant::FromLong(2147483647).toDouble(), 2147483647.0);
  EXPECT_EQ(Variant::FromDouble(2.5).toLong(), 2);
  EXPECT_EQ(Variant::FromDouble(3.5).toLong(), 4);
  EXPECT_TRUE(Variant::FromDouble(0.1).toBoolean());
  EXPECT_EQ(Variant::FromDate(32874.5).type(), Variant::Type::Date);
  EXPECT_EQ(Variant::FromDate(32874.5).toDouble(), 32874.5);
  EXPECT_EQ(Variant::FromString("EUR/USD").toString(), "EUR/USD");

  EXPECT_EQ(ErrorOf([] { Variant::FromDouble(3e9).toLong(); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { Variant::FromString("12").toDouble(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { Variant::FromString("1").toBoolean(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { Variant::FromLong(1).toString(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { Variant().toString(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { Variant::FromArray({}).toDouble(); }), kTypeMismatch);
}

TEST(VariantTest, ArraysKeepTheirBoundsAndRefuseSubscriptsOutsideThem) {
  VariantArray a;
  a.lowerBound = 1;
  a.elements = {Variant::FromLong(10), Variant::FromLong(20), Variant::FromString("x")};
  const Variant v = Variant::FromArray(a);
  EXPECT_TRUE(v.isArray());
  EXPECT_EQ(v.lbound(), 1);
  EXPECT_EQ(v.ubound(), 3);
  EXPECT_EQ(v.at(1).toLong(), 10);
  EXPECT_EQ(v.at(3).toString(), "x");
  EXPECT_EQ(ErrorOf([&] { v.at(0); }), kSubscriptOutOfRange);
  EXPECT_EQ(ErrorOf([&] { v.at(4); }), kSubscriptOutOfRange);

  const Variant empty = Variant::FromArray({});
  EXPECT_EQ(empty.lbound(), 0);
  EXPECT_EQ(empty.ubound(), -1);
  EXPECT_EQ(ErrorOf([&] { empty.at(0); }), kSubscriptOutOfRange);

  const Variant scalar = Variant::FromLong(5);
  EXPECT_EQ(ErrorOf([&] { scalar.at(0); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([&] { scalar.lbound(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([&] { scalar.array(); }), kTypeMismatch);
}

TEST(VariantTest, CopiesAreIndependentValues) {
  Variant original = Variant::FromArray({0, {Variant::FromLong(1)}});
  Variant copy = original;
  copy.array().elements.push_back(Variant::FromLong(2));
  copy.array().elements[0] = Variant::FromLong(9);
  EXPECT_EQ(original.ubound(), 0);
  EXPECT_EQ(original.at(0).toLong(), 1);
  EXPECT_EQ(copy.ubound(), 1);
  EXPECT_EQ(copy.at(0).toLong(), 9);
}

TEST(VariantTest, EqualMeansSameTypeAndValue) {
  EXPECT_EQ(Variant(), Variant());
  EXPECT_EQ(Variant::FromLong(3), Variant::FromLong(3));
  EXPECT_NE(Variant::FromLong(3), Variant::FromInteger(3));
  EXPECT_NE(Variant::FromLong(0), Variant());
  EXPECT_EQ(Variant::FromString("a"), Variant::FromString("a"));
  EXPECT_NE(Variant::FromString("a"), Variant::FromString("A"));
  const VariantArray a{1, {Variant::FromLong(1), Variant::FromString("b")}};
  VariantArray b = a;
  EXPECT_EQ(Variant::FromArray(a), Variant::FromArray(b));
  b.lowerBound = 0;
  EXPECT_NE(Variant::FromArray(a), Variant::FromArray(b));
  b = a;
  b.elements[1] = Variant::FromString("c");
  EXPECT_NE(Variant::FromArray(a), Variant::FromArray(b));
}

}  // namespace
}  // namespace quillon
