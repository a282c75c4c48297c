// Translating the captions: the walk, its single pass, and languages the table lacks.

#include "platform/error_of.h"
#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class LanguageTest : public TicketTest {};

TEST_F(LanguageTest, GermanTranslatesNumberedCaptionsAndLeavesFixedOnes) {
  // The numbered captions in German: golden blank_ticket_de. Fixed texts stay English, and
  // there is no string 0.
  ticket_->setLanguage(2);
  EXPECT_EQ(f().cmdOKCancel(1).Caption(), "Cancel &Req");
  EXPECT_EQ(f().fraEquity.Caption(), "Equity");
  EXPECT_EQ(f().lblConfCurrs.Caption(), "0");
}

TEST_F(LanguageTest, ASecondLanguageTranslatesOnlyCaptionsStillHoldingNumbers) {
  ticket_->setLanguage(1);
  probe().f().lblOrderID.setCaption("37");
  probe().f().lblQuotePrice.setCaption("1.2345");  // rounds to entry 2001
  probe().f().lblQuoteMsg.setCaption("15");        // no such string
  ticket_->setLanguage(2);
  EXPECT_EQ(ticket_->getLanguage(), 2);
  EXPECT_EQ(f().cmdQuote(1).Caption(), "Nothing");
  EXPECT_EQ(probe().ResString(603), "Verbindung unterbrochen");
  EXPECT_EQ(f().lblOrderID.Caption(), "Kauf");
  EXPECT_EQ(f().lblQuotePrice.Caption(), "&OK");
  EXPECT_EQ(f().lblQuoteMsg.Caption(), "15");
}

TEST_F(LanguageTest, LanguagesWithoutStringsLeaveTheDigits) {
  for (Integer language : {Integer{0}, Integer{-1}, Integer{32767}, Integer{33}}) {
    SCOPED_TRACE(language);
    ticket_ = std::make_unique<Clientticket>(TicketServices{&loop_, nullptr, nullptr, &locale_});
    ticket_->setLanguage(language);
    EXPECT_EQ(ticket_->getLanguage(), language);
    EXPECT_EQ(f().cmdOKCancel(0).Caption(), "28");
  }
  // 33 * 1000 does not fit 16 bits: the fetch fails on the product, not on the table.
  EXPECT_EQ(ErrorOf([&] { probe().ResString(1); }), kOverflow);
}

}  // namespace
}  // namespace quillon
