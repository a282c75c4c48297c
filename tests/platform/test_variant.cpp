// Variant: conversions, arrays with their bounds, copies and comparison.

#include <gtest/gtest.h>

#include "platform/error_of.h"
#include "platform/runtime_error.h"
#include "platform/variant.h"

namespace quillon {
namespace {

TEST(VariantTest, ConversionsFollowTheType) {
  EXPECT_EQ(Variant().toDouble(), 0);
  EXPECT_FALSE(Variant().toBoolean());
  EXPECT_EQ(Variant::FromBoolean(true).toDouble(), -1);
  EXPECT_EQ(Variant::FromDouble(2.5).toLong(), 2);
  EXPECT_EQ(Variant::FromDouble(3.5).toLong(), 4);
  EXPECT_TRUE(Variant::FromDouble(0.1).toBoolean());

  EXPECT_EQ(ErrorOf([] { Variant::FromDouble(3e9).toLong(); }), kOverflow);
  EXPECT_EQ(ErrorOf([] { Variant::FromString("12").toDouble(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { Variant::FromString("1").toBoolean(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { Variant::FromLong(1).toString(); }), kTypeMismatch);
  EXPECT_EQ(ErrorOf([] { Variant::FromArray({}).toDouble(); }), kTypeMismatch);
}

TEST(VariantTest, ArraysKeepTheirBoundsCopiesAndEquality) {
  const Variant v = Variant::FromArray({1, {Variant::FromLong(10), Variant::FromString("x")}});
  EXPECT_EQ(v.lbound(), 1);
  EXPECT_EQ(v.ubound(), 2);
  EXPECT_EQ(v.at(2).toString(), "x");
  for (Long i : {0, 3}) EXPECT_EQ(ErrorOf([&] { v.at(i); }), kSubscriptOutOfRange) << i;
  EXPECT_EQ(Variant::FromArray({}).ubound(), -1);
  EXPECT_EQ(ErrorOf([] { Variant::FromLong(5).at(0); }), kTypeMismatch);

  Variant copy = v;
  copy.array().elements.push_back(Variant::FromLong(2));
  copy.array().elements[0] = Variant::FromLong(9);
  EXPECT_EQ(v.ubound(), 2);
  EXPECT_EQ(v.at(1).toLong(), 10);
  EXPECT_EQ(copy.at(1).toLong(), 9);

  // Equal means the same type and value, and for arrays the same bounds and elements.
  EXPECT_NE(Variant::FromLong(3), Variant::FromInteger(3));
  EXPECT_NE(Variant::FromLong(0), Variant());
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
