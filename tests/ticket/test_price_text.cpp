// The text of prices in a point and a comma locale, and the text replacement under them.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

struct SingleCase {
  double pip, price;
  const char* point;
  const char* comma;
};

const SingleCase kSingle[] = {
    {0.0001, 1.23456, "1.2346", "1,2346"},
    {0.01, 123.4, "123.40", "123,40"},
    {0.1, 0.25, "0.3", "0,3"},
    {1, 7, "07", "07"},
    {0, 1.2345, "01", "01"},
    {0.0001, -0.0001, "-0.0001", "-0,0001"},
    {0.0001, 1.23455, "1.2346", "1,2346"},  // the 15-digit form rounds up, not the binary one
    {0.0001, 0, "   -   ", "   -   "},
    {0.0005, 1.23456, "1.2346", "1,2346"},  // a pip that is no power of ten keeps its decimals
    {0.00001, 1.234567, "1.23457", "1,23457"},
};

struct SpreadCase {
  double bid, offer, pip;
  const char* point;
  const char* comma;
};

const SpreadCase kSpread[] = {
    {1.2345, 1.2350, 0.0001, "1.2345/50", "1,2345/50"},
    {123.45, 123.50, 0.01, "123.45/50", "123,45/50"},
    {1234.56, 1234.60, 0.01, "1234.56/.60", "1234,56/,60"},
    {1234.5, 1234.8, 0.1, "1234.5/34.8", "1234,5/34,8"},
    {1234, 1236, 1, "1234/36", "1234/36"},
    {1.2345, 0, 0.0001, "1.2345/  ", "1,2345/  "},
    {0, 1.2350, 0.0001, "   -   /50", "   -   /50"},
};

class PriceTextTest : public TicketTest, public ::testing::WithParamInterface<const char*> {
 protected:
  PriceTextTest() : TicketTest(GetParam()) { ticket_->setLanguage(1); }
  bool comma() const { return std::string(GetParam()) == "de_DE"; }
};

TEST_P(PriceTextTest, SinglePriceShowsThePipsDecimals) {
  for (const SingleCase& c : kSingle) {
    SCOPED_TRACE(testing::Message() << c.price << " pip " << c.pip);
    EXPECT_EQ(probe().Single(c.price, c.pip), comma() ? c.comma : c.point);
  }
  EXPECT_EQ(m().DecimalSeparator, comma() ? "," : ".");
}

TEST_P(PriceTextTest, SpreadShowsTheWholeBidAndTheTailOfTheOffer) {
  for (const SpreadCase& c : kSpread) {
    SCOPED_TRACE(testing::Message() << c.bid << "/" << c.offer);
    EXPECT_EQ(probe().Spread(c.bid, c.offer, c.pip), comma() ? c.comma : c.point);
  }
}

TEST_P(PriceTextTest, NoPriceReadsBackAsZero) {
  const std::string dash = probe().Single(0, 0.0001);
  probe().f().txtPrimQty.setText(dash);
  EXPECT_FALSE(IsNumericText(dash, locale_));
}

TEST_P(PriceTextTest, APriceWrittenAgainGivesTheSameTextAndTheSameYields) {
  // Each digit 1 of the pip's text gives one yield, the first time and every time after.
  for (double pip : {0.0001, 0.0011, 0.0001, 0.01}) {
    const std::uint64_t ones = pip == 0.0011 ? 2 : 1;
    std::string first;
    for (int round = 0; round < 3; ++round) {
      SCOPED_TRACE(testing::Message() << "pip " << pip << " round " << round);
      const std::uint64_t before = loop_.yieldCount();
      const std::string text = probe().Single(1.23456, pip);
      EXPECT_EQ(loop_.yieldCount() - before, ones);
      if (round == 0) first = text;
      EXPECT_EQ(text, first);
    }
  }
  // Prices that differ past the pip's decimals, written after other pips' patterns.
  EXPECT_EQ(probe().Single(1.23456, 0.00001), comma() ? "1,23456" : "1.23456");
  EXPECT_EQ(probe().Single(1.23454, 0.0001), comma() ? "1,2345" : "1.2345");
  EXPECT_EQ(probe().Single(-1.23456, 0.0001), comma() ? "-1,2346" : "-1.2346");
}

INSTANTIATE_TEST_SUITE_P(Locales, PriceTextTest, ::testing::Values("en_US", "de_DE"));

class ChangeCharsTest : public TicketTest {};

TEST_F(ChangeCharsTest, ReplacesEveryOccurrenceAndYieldsOncePerReplacement) {
  std::string source = "0.0011";
  std::uint64_t before = loop_.yieldCount();
  EXPECT_EQ(probe().ChangeChars(source, "1", "0"), "0.0000");
  EXPECT_EQ(source, "0.0000");  // the caller's text changes too
  EXPECT_EQ(loop_.yieldCount() - before, 2u);

  before = loop_.yieldCount();
  std::string plain = "no such text";
  EXPECT_EQ(probe().ChangeChars(plain, "[X]", "y"), "no such text");
  EXPECT_EQ(loop_.yieldCount(), before);

  // A replacement that holds what it replaces still ends.
  std::string grow = "aXa";
  EXPECT_EQ(probe().ChangeChars(grow, "a", "aa"), "aaXaa");
  std::string empty = "abc";
  EXPECT_EQ(probe().ChangeChars(empty, "", "z"), "abc");
}

TEST_F(ChangeCharsTest, QueuedWorkRunsWhileAPriceIsFormatted) {
  ticket_->setLanguage(1);
  int ran = 0;
  loop_.post([&] { ++ran; });
  EXPECT_EQ(probe().Single(1.2345, 0.0001), "1.2345");
  EXPECT_EQ(ran, 1);
  // Work that formats with another pip inside the yield leaves the price in the making alone,
  // whether its pattern was known before or not.
  for (double price : {1.2346, 1.2347}) {
    std::string nested;
    loop_.post([&] { nested = probe().Single(price, 0.01); });
    EXPECT_EQ(probe().Single(price, 0.0001), price == 1.2346 ? "1.2346" : "1.2347");
    EXPECT_EQ(nested, "1.23");
  }
}

TEST_F(ChangeCharsTest, PriceTextWithoutALanguageReportsTheMissingString) {
  EXPECT_EQ(probe().Single(0, 0.0001), "");
  const RecordedEvent* error = host_.last("ErrorMsg");
  ASSERT_NE(error, nullptr);
  EXPECT_EQ(error->args[0], "326");
  EXPECT_FALSE(error->args[1].empty());
  EXPECT_EQ(error->args[2], "Single_Price_As_String");
}

}  // namespace
}  // namespace quillon
