// The demo's desk behind real tickets on a headless loop: every road of an order from the
// blank form to its end, as the ticket shows it and as the event log records it.

#include <gtest/gtest.h>

#include "demo_host.h"
#include "platform/date.h"
#include "platform/headless_loop.h"

namespace quillon::demo {
namespace {

constexpr Long kYellow = 0x0000FFFF, kGreen = 0x0000FF00, kCyan = 0x00FFFF00;

class DemoDeskTest : public ::testing::Test {
 protected:
  DemoDeskTest() { host_.desk().quotePolicy().requoteAfter = 0; }  // quotes change when told

  int Open(const TicketOptions& options = {}) {
    const int id = host_.openTicket(options);
    EXPECT_NE(id, 0);
    return id;
  }
  // Opens a ticket, chooses the order type (0 keeps the market order) and its prices, places
  // the order, answers Yes to the statement and lets the desk acknowledge it.
  int Place(int type = 0, const char* limit = nullptr, const char* stop = nullptr) {
    const int t = Open();
    if (type) Click(t, F(t).optType(type));
    if (limit) F(t).controls().userPaste(F(t).txtLimit, limit);
    if (stop) F(t).controls().userPaste(F(t).txtStop, stop);
    Click(t, F(t).cmdOKCancel(0));
    EXPECT_TRUE(F(t).fraConf.Visible());
    Click(t, F(t).cmdOKCancel(3));
    Step(2);
    return t;
  }
  Clientticket& T(int id) { return *host_.ticket(id); }
  TicketForm& F(int id) { return T(id).form(); }
  Long Colour(int id) { return F(id).UserControl.BackColor(); }
  void Click(int id, Control& c) { EXPECT_TRUE(F(id).controls().userClick(c)) << c.fullName(); }
  void Step(int n = 1) {  // no time passes: the market stands still
    while (n-- > 0) host_.step();
  }
  void Seconds(int n) {  // time passes second by second, the host steps after each
    while (n-- > 0) loop_.advance(1000), host_.step();
  }

  HeadlessLoop loop_;  // Thursday 1 March 2001, 10:00
  DemoHost host_{loop_};
};

TEST_F(DemoDeskTest, MarketOrderIsAcknowledgedThenFilledAndTheEquityCompletesTheConfirmation) {
  const int t = Open(), b = Open({ids::kUSDJPY, 2, 2});  // b: the dummy account
  EXPECT_TRUE(F(t).txtEquity.Text().empty());            // the answer waits for the host's step
  Step();
  Click(t, F(t).cmdOKCancel(0));
  Click(t, F(t).cmdOKCancel(3));
  EXPECT_EQ(F(t).lblReason.Caption(), "Placing order, please wait...");  // no answer inside
  Step();  // delivery report and acknowledgement
  EXPECT_EQ(Colour(t), kYellow);
  Step();  // the fill
  EXPECT_EQ(T(t).members().Status, ORDER_EXECUTED);
  EXPECT_EQ(F(t).txtPrice.Text(), "1.0844");
  // The equity after the trade came with it: 2% of 100,000 EUR at the mid 1.0843 is held.
  const std::string conf = F(t).lblTradeConf.Caption();
  // The sentence that follows it: golden orders_of_each_type.
  EXPECT_NE(conf.find("The new tradable equity is 247,831.40\r\n"), std::string::npos) << conf;
  Step();  // the answer to the confirmation's own request adds nothing more
  EXPECT_EQ(F(t).lblTradeConf.Caption(), conf);
  // The other account's ticket (German) keeps its equity and its own, wider prices.
  EXPECT_EQ(F(b).txtEquity.Text(), "20.000,00");
  EXPECT_EQ(F(b).txtBid.Text(), "151,33");  // the dummy account's wide profile: 2 pips wider
  host_.feed().setBid(ids::kUSDJPY, 150.00);
  EXPECT_EQ(F(b).txtBid.Text(), "149,98");
}

TEST_F(DemoDeskTest, OcoPairRestsOnBothLegsAndTheFillCancelsThePartner) {
  const int t = Place(4, "1.0830", "1.0860");
  EXPECT_EQ(T(t).getLinkID(), 1002);
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_PENDING);
  EXPECT_EQ(host_.desk().order(1002)->status, ORDER_PENDING);
  host_.feed().setBid(ids::kEURUSD, 1.0858);  // offer 1.0860 triggers the buy stop
  Step();
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_CANCELLED);
  EXPECT_EQ(host_.desk().order(1002)->status, ORDER_EXECUTED);
  // The partner's cancellation was shown.
  EXPECT_NE(host_.log().text(true).find("GetReason Reason=20"), std::string::npos);
  EXPECT_EQ(F(t).txtPrice.Text(), "1.0860");
}

TEST_F(DemoDeskTest, TwoWayQuoteIsRequotedSuspendedDealtDeclinedOrLeftToExpire) {
  const int t = Place(5);
  ASSERT_TRUE(F(t).fraQuote.Visible());  // the dealer's price, one pip wider on each side
  EXPECT_DOUBLE_EQ(T(t).members().Offer, 1.0845);
  host_.feed().setBid(ids::kEURUSD, 1.0850);
  ASSERT_TRUE(host_.desk().requote(1001));
  Step();
  EXPECT_DOUBLE_EQ(T(t).members().Offer, 1.0853);
  ASSERT_TRUE(host_.desk().suspendQuote(1001));
  Step();
  EXPECT_EQ(F(t).lblQuotePrice.Caption(), "Quote Off");
  Seconds(3);  // the suspension ends by itself
  Step();
  EXPECT_NE(F(t).lblQuotePrice.Caption(), "Quote Off");
  Seconds(1);  // the next tick makes the buttons live
  const double offer = T(t).members().Offer;
  Click(t, F(t).cmdQuote(2));
  Step();
  EXPECT_EQ(T(t).members().Status, ORDER_EXECUTED);
  EXPECT_DOUBLE_EQ(T(t).members().MarketPrice, offer);
  const int e = Place(5);
  Seconds(16);
  EXPECT_EQ(F(e).lblReason.Caption(), "The quote has expired.");
  const int u = Place(5);
  Seconds(1);
  Click(u, F(u).cmdQuote(1));
  Step();
  EXPECT_EQ(host_.desk().order(T(u).getOrderID())->status, ORDER_CANCELLED);
}

TEST_F(DemoDeskTest, CancelRequestIsGrantedOrRefusedForWantOfEquity) {
  const int t = Place(2, "1.0800");
  host_.desk().setEquity(1, 1000, 5000000);  // less than the 2,166 the order binds
  Click(t, F(t).cmdOKCancel(1));
  Step();
  EXPECT_EQ(F(t).lblReason.Caption(), "You do not have enough equity to cancel this order");
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_PENDING);  // still working
  const int u = Place(3, nullptr, "1.0900");
  host_.desk().setEquity(1, 250000, 5000000);
  Click(u, F(u).cmdOKCancel(1));
  Step();
  EXPECT_EQ(T(u).members().Status, ORDER_CANCELLED);
  host_.feed().setBid(ids::kEURUSD, 1.0790);  // the refused order still fills
  Step();
  EXPECT_EQ(Colour(t), kGreen);
}

TEST_F(DemoDeskTest, FailedDeliveryAndLostConnection) {
  host_.desk().setDeliveryFails(true);
  const int t = Place();
  EXPECT_EQ(F(t).lblReason.Caption(),
            "Your order may not have been received by Norvane.  Please contact the dealers.");
  EXPECT_TRUE(host_.desk().orders().empty());
  host_.desk().setDeliveryFails(false);
  host_.setConnected(false);
  const int u = Open();
  Click(u, F(u).cmdOKCancel(0));
  EXPECT_EQ(host_.log().named("VtOrderGenericNew").size(), 1u);
  host_.feed().setBid(ids::kEURUSD, 1.0900);  // no prices without a connection
  EXPECT_EQ(F(u).txtBid.Text(), "1.0842");
  host_.setConnected(true);
  host_.feed().setBid(ids::kEURUSD, 1.0901);
  EXPECT_EQ(F(u).txtBid.Text(), "1.0901");
}

TEST_F(DemoDeskTest, AForwardValueDateTakesTheFamilyMemberAndItsPoints) {
  const int t = Open({ids::kEURUSD, 1, 1, true});
  Click(t, F(t).cmdValue);
  ASSERT_TRUE(F(t).calValueDate.Visible());
  // One month from spot Monday 5 March is Thursday 5 April: the 1M member.
  F(t).controls().userDateClick(F(t).calValueDate, DateSerial(2001, 4, 5));
  EXPECT_EQ(T(t).getInstrumentID(), ids::kEURUSD1M);
  EXPECT_EQ(F(t).txtBid.Text(), "1.0851");    // nine forward points
  host_.feed().setBid(ids::kEURUSD, 1.0850);  // the member follows its parent
  EXPECT_EQ(F(t).txtBid.Text(), "1.0859");
}

TEST_F(DemoDeskTest, LimitOrderRestsUntilTheMarketReachesItEvenWithItsTicketClosed) {
  const int t = Place(2, "1.0830");
  EXPECT_EQ(Colour(t), kCyan);
  Click(t, F(t).cmdOKCancel(2));        // closing withdraws nothing
  ASSERT_NE(host_.ticket(t), nullptr);  // closed after the event, not inside it
  Step();
  ASSERT_EQ(host_.ticket(t), nullptr);
  host_.feed().setBid(ids::kEURUSD, 1.0830);  // offer 1.0832: not yet
  Step();
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_PENDING);
  host_.feed().setBid(ids::kEURUSD, 1.0828);  // offer 1.0830 reaches the limit
  Step(2);
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_EXECUTED);
  // 2% of the amount at the mid of the market that filled it.
  EXPECT_DOUBLE_EQ(host_.desk().account(1)->equity, 250000 - 0.02 * 100000 * 1.0829);
}

TEST_F(DemoDeskTest, AQuoteWhoseTicketClosedIsWithdrawnNotRequotedForEver) {
  host_.desk().quotePolicy().requoteAfter = 5;  // each requote would renew the quote's life
  const int t = Place(5);
  ASSERT_TRUE(F(t).fraQuote.Visible());
  host_.closeTicket(t);
  const int u = Open();  // closed before the first quote came
  Click(u, F(u).optType(5));
  Click(u, F(u).cmdOKCancel(0));
  Click(u, F(u).cmdOKCancel(3));
  Step();
  host_.closeTicket(u);
  Seconds(30);
  for (Long id : {1001, 1002}) {
    EXPECT_EQ(host_.desk().order(id)->status, ORDER_CANCELLED) << id;
    EXPECT_FALSE(host_.desk().order(id)->quoteOpen) << id;
  }
}

TEST_F(DemoDeskTest, ATicketSwitchedToAnotherAccountTradesLiveOrNotAsThatAccountDoes) {
  for (const Long from : {2, 1}) {
    const int t = Open({ids::kEURUSD, from});
    Step();
    ASSERT_TRUE(F(t).controls().userSelect(F(t).cmbAccount, from == 2 ? 0 : 1));
    Step();
    Click(t, F(t).cmdOKCancel(0));
    Click(t, F(t).cmdOKCancel(3));
    Step(3);
    const std::string conf = F(t).lblTradeConf.Caption();
    const bool live = from == 2;  // switched to the live account
    EXPECT_EQ(conf.find("The new tradable equity is") != std::string::npos, live) << conf;
    EXPECT_EQ(conf.find("this is not a live trade") != std::string::npos, !live) << conf;
  }
}

}  // namespace
}  // namespace quillon::demo
