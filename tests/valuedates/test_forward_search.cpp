// The forward instrument search: the family, the class table, the fallback, the failure roads.

#include <string>

#include "valuedates/value_date_fixture.h"

namespace quillon {
namespace {

class ForwardSearchTest : public ValueDateTest {};

// At 10:00 on Thursday 1 March 2001 spot is Monday 5 March; 1W settles on 12 March, 1M on
// 5 April, 3M on 5 June.
TEST_F(ForwardSearchTest, ClassTableFallbackAndParent) {
  struct { Long current; Date value; Long expected; } const cases[] = {
      {kSpot, D(2001, 3, 5), kSpot},       // spot with no class-2 member: the parent
      {kSpot, D(2001, 3, 2), -1},          // before spot from a spot instrument
      {k1M, D(2001, 3, 12), k1W},          // a member finds its parent by LinkID
      {kBroken, D(2001, 3, 2), kBroken},   // before spot from term 11 is searched in class 7
      {kOwnClass, D(2001, 3, 12), kSpot},  // class 6 only, and no fallback for it
      {kNoClassInst, D(2001, 3, 12), -1},
      {kNoClassInst, D(2001, 3, 5), kSpot},
  };
  for (const auto& c : cases) {
    host_.events.clear();
    EXPECT_EQ(probe().FindNewInst(c.current, c.value), c.expected)
        << "from " << c.current << " on " << c.value;
    // A search with no class asks for no family.
    EXPECT_EQ(host_.count("VtInstGetArrayAll"), c.expected == -1 ? 0 : 1) << c.current;
  }
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
}

TEST_F(ForwardSearchTest, FamilyQueryAndTieBreaks) {
  // The family is asked for by the parent's currencies and number.
  ASSERT_EQ(probe().FindNewInst(k1M, D(2001, 4, 5)), k1M);
  const RecordedEvent* query = host_.last("VtInstGetArrayAll");
  ASSERT_NE(query, nullptr);
  EXPECT_EQ(query->args, (std::vector<std::string>{"1", "2", "100", "0", "0", "0", "0.000000", "0"}));

  // Class 6 members match from an instrument of term 6.
  family = {kOwnClass, k1W};
  EXPECT_EQ(probe().FindNewInst(kOwnClass, D(2001, 3, 12)), kOwnClass);
  // Two members on one date: the first in the host's order wins.
  AddMember(108, "EUR/USD 7D", kSpot, 7, DateSerial(1990, 1, 8));
  family = {108, k1W};
  EXPECT_EQ(probe().FindNewInst(kSpot, D(2001, 3, 12)), 108);
  family = {k1W, 108};
  EXPECT_EQ(probe().FindNewInst(kSpot, D(2001, 3, 12)), k1W);
  // A later term-11 member replaces an earlier one as the fallback.
  AddMember(109, "EUR/USD odd date", kSpot, 11, kNoDate);
  family = {kBroken, k1W, 109};
  EXPECT_EQ(probe().FindNewInst(kSpot, D(2001, 3, 20)), 109);
  // No fallback and no tenor: the parent, whatever the date.
  family = {k1W, k1M};
  EXPECT_EQ(probe().FindNewInst(kSpot, D(2001, 3, 20)), kSpot);
  // The parent's currencies decide the holidays: a USD holiday moves 1W to 13 March.
  holidays_.days = {{kUsd, D(2001, 3, 12)}};
  family = {k1W};
  EXPECT_EQ(probe().FindNewInst(kSpot, D(2001, 3, 13)), k1W);
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
}

TEST_F(ForwardSearchTest, FailureRoadsOfTheFamily) {
  struct { const char* what; std::function<void(Variant&)> answer; std::vector<std::string> error; }
  const cases[] = {
      {"no array", [](Variant&) {}, {"13", "Type mismatch", "Get_Inst_Family"}},
      {"empty array", [](Variant& ids) { ids = Variant::FromArray({}); },
       {"9", "Subscript out of range", "Get_Inst_Family"}},
      {"lower bound 1",
       [](Variant& ids) { ids = Variant::FromArray({1, {Variant::FromLong(k1W)}}); },
       {"9", "Subscript out of range", "Get_Inst_Family"}},
      {"a name for a number",
       [](Variant& ids) { ids = Variant::FromArray({0, {Variant::FromString("1W")}}); },
       {"13", "Type mismatch", "Get_Inst_Family"}},
  };
  for (const auto& c : cases) {
    host_.events.clear();
    host_.instGetArrayAll = [&](Long, Long, Long, Variant& ids) { c.answer(ids); };
    // The family's query reports once, and the search itself adds nothing.
    EXPECT_EQ(probe().FindNewInst(kSpot, D(2001, 3, 12)), -1) << c.what;
    ASSERT_EQ(host_.count("ErrorMsg"), 1) << c.what;
    EXPECT_EQ(host_.last("ErrorMsg")->args, c.error) << c.what;
  }

  // A good answer: the numbers from index 0, in the host's order.
  host_.instGetArrayAll = [](Long, Long, Long, Variant& ids) {
    ids = Variant::FromArray({0, {Variant::FromLong(k3M), Variant::FromDouble(101.0)}});
  };
  std::vector<Long> members;
  EXPECT_TRUE(probe().InstFamily(kSpot, members));
  EXPECT_EQ(members, (std::vector<Long>{k3M, k1W}));

  // A value that is no date cannot be compared with spot: reported, and no family asked for.
  host_.events.clear();
  EXPECT_EQ(probe().FindNewInst(kSpot, 1e12), -1);
  ASSERT_EQ(host_.count("ErrorMsg"), 1);
  EXPECT_EQ(host_.last("ErrorMsg")->args,
            (std::vector<std::string>{"6", "Overflow", "Find_New_Inst"}));
  EXPECT_EQ(host_.count("VtInstGetArrayAll"), 0);
}

}  // namespace
}  // namespace quillon
