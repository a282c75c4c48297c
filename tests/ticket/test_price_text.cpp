// The text of prices in a point and a comma locale, and the text replacement under them.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class PriceTextTest : public TicketTest, public ::testing::WithParamInterface<const char*> {
 protected:
  PriceTextTest() : TicketTest(GetParam()) { ticket_->setLanguage(1); }
  // The point locale's text as the current locale writes it.
  std::string L(std::string text) const {
    if (std::string(GetParam()) == "de_DE")
      for (char& c : text) c = c == '.' ? ',' : c;
    return text;
  }
};

TEST_P(PriceTextTest, SingleAndSpreadPricesShowThePipsDecimals) {
  const struct { double pip, price; const char* text; } cases[] = {
      {0.01, 123.4, "123.40"}, {0.1, 0.25, "0.3"}, {1, 7, "07"}, {0, 1.2345, "01"},
      {0.0001, -0.0001, "-0.0001"}, {0.0001, 0, "   -   "},
      {0.0001, 1.23455, "1.2346"},  // the 15-digit form rounds up, not the binary one
      {0.0005, 1.23456, "1.2346"},  // a pip that is no power of ten keeps its decimals
  };
  for (const auto& c : cases)
    EXPECT_EQ(probe().Single(c.price, c.pip), L(c.text)) << c.price << " pip " << c.pip;

  // A spread shows the whole bid and the tail of the offer.
  const struct { double bid, offer, pip; const char* text; } spreads[] = {
      {1.2345, 1.2350, 0.0001, "1.2345/50"},  {1234.56, 1234.60, 0.01, "1234.56/.60"},
      {1234.5, 1234.8, 0.1, "1234.5/34.8"},   {1234, 1236, 1, "1234/36"},
      {1.2345, 0, 0.0001, "1.2345/  "},       {0, 1.2350, 0.0001, "   -   /50"},
  };
  for (const auto& c : spreads)
    EXPECT_EQ(probe().Spread(c.bid, c.offer, c.pip), L(c.text)) << c.bid << "/" << c.offer;
}

TEST_P(PriceTextTest, APriceWrittenAgainAfterOtherPipsGivesTheSameText) {
  const std::string first = probe().Single(1.23456, 0.0001);
  EXPECT_EQ(probe().Single(1.23456, 0.0011), L("1.2346"));
  EXPECT_EQ(probe().Single(1.23456, 0.01), L("1.23"));
  EXPECT_EQ(probe().Single(1.23456, 0.0001), first);
  // Prices that differ past the pip's decimals, written after other pips' patterns.
  EXPECT_EQ(probe().Single(1.23456, 0.00001), L("1.23456"));
  EXPECT_EQ(probe().Single(1.23454, 0.0001), L("1.2345"));
  EXPECT_EQ(probe().Single(-1.23456, 0.0001), L("-1.2346"));
  // A host that puts another locale in place under the ticket gets prices in its signs, the
  // ones written before included.
  const bool german = std::string(GetParam()) == "de_DE";
  EXPECT_EQ(probe().Single(1.23456, 0.0001), L("1.2346"));
  locale_ = Locale::ByName(german ? "en_US" : "de_DE");
  EXPECT_EQ(probe().Single(1.23456, 0.0001), german ? "1.2346" : "1,2346");
}

INSTANTIATE_TEST_SUITE_P(Locales, PriceTextTest, ::testing::Values("en_US", "de_DE"));

class ChangeCharsTest : public TicketTest {};

TEST_F(ChangeCharsTest, ReplacesEveryOccurrenceAndYieldsOncePerReplacement) {
  std::string source = "0.0011";
  const std::uint64_t before = loop_.yieldCount();
  EXPECT_EQ(probe().ChangeChars(source, "1", "0"), "0.0000");
  EXPECT_EQ(source, "0.0000");  // the caller's text changes too
  EXPECT_EQ(loop_.yieldCount() - before, 2u);
  // A replacement that holds what it replaces still ends; nothing to find changes nothing.
  std::string grow = "aXa", empty = "abc";
  EXPECT_EQ(probe().ChangeChars(grow, "a", "aa"), "aaXaa");
  EXPECT_EQ(probe().ChangeChars(empty, "", "z"), "abc");
}

TEST_F(ChangeCharsTest, QueuedWorkRunsWhileAPriceIsFormatted) {
  ticket_->setLanguage(1);
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
  ASSERT_NE(host_.last("ErrorMsg"), nullptr);
  EXPECT_EQ(host_.last("ErrorMsg")->args[0], "326");
  EXPECT_EQ(host_.last("ErrorMsg")->args[2], "Single_Price_As_String");
}

}  // namespace
}  // namespace quillon
