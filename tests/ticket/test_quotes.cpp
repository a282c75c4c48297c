// A dealer's quote from arrival through requote, suspension, the user's answer and expiry.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class QuoteTest : public TicketTest {
 protected:
  // A two-way request for 100,000 EUR vs USD has gone out as order 55 and is active.
  void SetUp() override {
    SetUpUser();
    ticket_->setDealingGateway(42);
    OpenActiveTwoWay();
  }
  void Quote(double bid, double offer, double seconds, Long orderID = 55,
             double quantity = 100000, Long primSec = QTY_PRIMARY, Long dealer = 9) {
    // Status 16 and reason 8 from counterparty `dealer` (system 4), valid for `seconds`.
    Call(&Clientticket::OrderGenericQuote, 0, orderID, 1, kEurUsd, quantity, primSec, bid, offer,
         0, kNoDate + seconds / 86400.0, 0.0, 0.0, 16, 8, dealer, 0, "", 0, false, 4, 0, 0.0, 0.0);
  }
};

TEST_F(QuoteTest, RequoteRestartsTheSecondAndTheCountGoesOnAfterADeal) {
  Quote(1.2345, 1.2350, 30);
  EXPECT_FALSE(f().cmdOKCancel(2).Enabled());
  loop_.advance(3500);  // the requote comes half-way through a second

  Quote(1.2346, 1.2351, 20);
  EXPECT_EQ(f().lblQuoteTime.Caption(), "20");
  loop_.advance(999);
  EXPECT_EQ(f().lblQuoteTime.Caption(), "20");
  loop_.advance(1);
  EXPECT_EQ(f().lblQuoteTime.Caption(), "19");
  EXPECT_TRUE(f().cmdQuote(2).Enabled());

  Click(f().cmdQuote(2));
  EXPECT_EQ(m().Status, ORDER_EXECUTED_INTERNAL);
  EXPECT_FALSE(f().cmdQuote(2).Enabled());
  loop_.advance(1000);
  EXPECT_TRUE(f().cmdQuote(2).Enabled());
}

TEST_F(QuoteTest, SuspensionStopsTheCountALiveQuoteRestartsItACancellationEndsIt) {
  Quote(1.2345, 1.2350, 30);
  Quote(0, 0, 30);
  EXPECT_TRUE(f().cmdQuote(1).Enabled());
  EXPECT_FALSE(loop_.isRunning(f().Timer1));

  Quote(0, 1.2350, 10);  // one side is enough for a live quote
  EXPECT_TRUE(loop_.isRunning(f().Timer1));
  EXPECT_EQ(f().lblQuoteMsg.ForeColor(), 0x000000FF);  // red until the first tick
  loop_.advance(1000);
  EXPECT_EQ(f().lblQuoteMsg.ForeColor(), f().UserControl.ForeColor());
  // Valid to trade leaves the quote running; a cancellation ends it.
  Initialise(Msg{.OrderID = 55, .InstrumentID = kEurUsd, .Status = ORDER_VALID_TO_TRADE});
  EXPECT_TRUE(f().fraQuote.Visible() && loop_.isRunning(f().Timer1));
  Initialise(Msg{.OrderID = 55, .InstrumentID = kEurUsd, .Status = ORDER_CANCELLED});
  EXPECT_FALSE(f().fraQuote.Visible() || loop_.isRunning(f().Timer1));
}

TEST_F(QuoteTest, ExpiryCancelsWithReasonTwoOnlyWhenConnected) {
  Quote(1.2345, 1.2350, 1);
  host_.events.clear();
  loop_.advance(1000);
  EXPECT_EQ(host_.names(), (std::vector<std::string>{"Connected", "VtOrderGenericNew"}));
  const auto& args = host_.last("VtOrderGenericNew")->args;
  EXPECT_EQ((std::vector<std::string>{args[11], args[14], args[20]}),
            (std::vector<std::string>{"13", "2", "-1"}));  // status, reason, no GID

  // Disconnected: the timer stops and nothing at all goes out.
  probe().m().Status = ORDER_ACTIVE;
  Quote(1.2345, 1.2350, 0);
  host_.connected = false;
  host_.events.clear();
  loop_.advance(1000);
  EXPECT_EQ(host_.names(), std::vector<std::string>{"Connected"});
  EXPECT_EQ(m().Status, ORDER_ACTIVE);
  EXPECT_EQ(f().lblQuoteTime.Caption(), "-1");
}

TEST_F(QuoteTest, OneWayQuoteShowsTheSidesButtonAndPrice) {
  probe().m().OrderType = LIMIT_ORDER;
  Quote(1.2345, 1.2350, 30, 55, -1000);
  EXPECT_EQ(f().lblQuotePrice.Caption(), "1.2345");
  EXPECT_TRUE(f().cmdQuote(0).Visible());
  EXPECT_FALSE(f().cmdQuote(2).Visible());
  EXPECT_NE(f().lblQuoteMsg.Caption().find(" to sell 1,000.00 "), std::string::npos);
  // A secondary amount takes the other side of the price.
  Quote(1.2345, 1.2350, 30, 55, 1000, QTY_SECONDARY);
  EXPECT_EQ(f().lblQuotePrice.Caption(), "1.2345");
  EXPECT_TRUE(f().cmdQuote(2).Visible());

  loop_.advance(1000);  // a requote's buttons wait for the next tick
  host_.connected = false;
  host_.events.clear();
  Click(f().cmdQuote(1));
  EXPECT_EQ(host_.names(), (std::vector<std::string>{"Connected", "Message"}));
}

// The sentence reads its pieces in order: a requote the host sends while it is asked for the
// pair comes after the price and the amount were taken.
TEST_F(QuoteTest, SentenceReadsEachPieceWhereItIsWorded) {
  host_.inside["VtInstGetArray"] = [&] { Quote(1.3344, 1.3351, 9, 55, 300000); };
  Quote(1.2344, 1.2351, 15);
  EXPECT_EQ(f().lblQuoteMsg.Caption().rfind(
                "You have received a new quote of 1.2344/51 for 100,000.00 EUR vs USD value ", 0),
            0u)
      << f().lblQuoteMsg.Caption();

  // The sentence names the kind of quote by the order's type when it is worded: a message that
  // makes the request a limit order while the quantities ask the host for a price is read there.
  host_.inside["VtPriceGetArray"] = [&] {
    Initialise(Msg{.OrderID = 55, .AccountID = 1, .InstrumentID = kEurUsd, .Quantity = 100000,
                   .Price = 1.2300, .OrderType = LIMIT_ORDER, .Status = ORDER_ACTIVE});
  };
  Quote(1.2344, 1.2351, 15);
  ASSERT_EQ(m().OrderType, LIMIT_ORDER);
  EXPECT_EQ(
      f().lblQuoteMsg.Caption().rfind("You have received a new quote of 1.2344/51 to buy ", 0), 0u)
      << f().lblQuoteMsg.Caption();
}

// A requote that arrives while the host answers the GID question does not change the deal
// already being sent.
TEST_F(QuoteTest, DealArgumentsAreReadBeforeTheGidIsAskedFor) {
  Quote(1.2345, 1.2350, 30);
  host_.inside["GID"] = [&] { Quote(1.2355, 1.2360, 30, 55, 100000, QTY_PRIMARY, 19); };
  Click(f().cmdQuote(2));
  ASSERT_EQ(m().CounterpartyID, 19);
  const auto& args = host_.last("VtOrderGenericNew")->args;
  EXPECT_EQ((std::vector<std::string>{args[6], args[15]}),
            (std::vector<std::string>{"1.235", "9"}));  // the offer and dealer quoted
}

TEST_F(QuoteTest, QuotesForOtherOrdersAndOverlongQuotesChangeLittle) {
  Quote(1.2345, 1.2350, 30, 56);
  EXPECT_FALSE(f().fraQuote.Visible());
  EXPECT_EQ(f().UserControl.BackColor(), 0x0000FFFF);  // the active order's own yellow
  EXPECT_EQ(m().Quantity, 100000);

  Quote(1.2345, 1.2350, 32768);
  ASSERT_NE(host_.last("ErrorMsg"), nullptr);
  EXPECT_EQ(host_.last("ErrorMsg")->args, (std::vector<std::string>{"6", "", "OrderGenericQuote"}));
  EXPECT_FALSE(f().fraQuote.Visible());
  EXPECT_EQ(m().CounterpartyID, 9);  // the members were taken before the failure

  Quote(1.2345, 1.2350, 32767);
  EXPECT_EQ(f().lblQuoteTime.Caption(), "32767");
}

}  // namespace
}  // namespace quillon
