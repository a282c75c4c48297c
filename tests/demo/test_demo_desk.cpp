// The demo's desk behind real tickets on a headless loop: every road of an order from the
// blank form to its end, as the ticket shows it and as the event log records it.

#include <gtest/gtest.h>

#include "demo_host.h"
#include "platform/date.h"
#include "platform/headless_loop.h"

namespace quillon::demo {
namespace {

constexpr Long kYellow = 0x0000FFFF, kWhite = 0x00FFFFFF, kGreen = 0x0000FF00,
               kCyan = 0x00FFFF00;

class DemoDeskTest : public ::testing::Test {
 protected:
  DemoDeskTest() {
    // Quotes change only when a test says so.
    host_.desk().quotePolicy().requoteAfter = 0;
  }

  int Open(Long instrument = ids::kEURUSD, Long account = 1, Integer language = 1,
           bool valueDateButton = false) {
    TicketOptions options;
    options.instrumentID = instrument;
    options.accountID = account;
    options.language = language;
    options.showValueDateButton = valueDateButton;
    const int id = host_.openTicket(options);
    EXPECT_NE(id, 0);
    return id;
  }
  Clientticket& T(int id) { return *host_.ticket(id); }
  TicketForm& F(int id) { return T(id).form(); }
  void Click(int id, Control& c) { EXPECT_TRUE(F(id).controls().userClick(c)) << c.fullName(); }
  // Runs the host's steps without letting time pass, so the market stands still.
  void Step(int n = 1) {
    for (int i = 0; i < n; ++i) host_.step();
  }
  // Lets time pass second by second, stepping the host after each.
  void Seconds(int n) {
    for (int i = 0; i < n; ++i) {
      loop_.advance(1000);
      host_.step();
    }
  }
  void PlaceAndConfirm(int id) {
    Click(id, F(id).cmdOKCancel(0));
    ASSERT_TRUE(F(id).fraConf.Visible());
    Click(id, F(id).cmdOKCancel(3));
  }
  const LogEntry* Last(const std::string& event) {
    auto all = host_.log().named(event);
    return all.empty() ? nullptr : all.back();
  }
  static std::string Arg(const LogEntry* e, const std::string& name) {
    if (!e) return "<no event>";
    for (const auto& [n, v] : e->args)
      if (n == name) return v;
    return "<no " + name + ">";
  }
  Long Colour(int id) { return F(id).UserControl.BackColor(); }

  HeadlessLoop loop_;  // Thursday 1 March 2001, 10:00
  DemoHost host_{loop_};
};

TEST_F(DemoDeskTest, MarketOrderIsAcknowledgedThenFilledAndTheEquityCompletesTheConfirmation) {
  const int t = Open();
  EXPECT_EQ(T(t).members().Status, -1);
  EXPECT_EQ(F(t).lblReason.Caption(), "Please enter your order details.");
  EXPECT_EQ(F(t).fraOrderEntry.Caption(), "Euro vs US Dollar");
  EXPECT_EQ(F(t).txtBid.Text(), "1.0842");
  EXPECT_EQ(F(t).txtOffer.Text(), "1.0844");
  EXPECT_EQ(F(t).lblValueDate.Caption(), "05-Mar-2001");  // spot of a Thursday
  EXPECT_EQ(Arg(Last("VtPriceGenericRequest"), "InstrumentID"), "101");
  EXPECT_EQ(Arg(Last("RequestEquity"), "InstrumentID"), "-1");
  EXPECT_TRUE(F(t).txtEquity.Text().empty());  // the answer waits for the host's step
  Step();
  EXPECT_EQ(F(t).txtEquity.Text(), "250,000.00");
  EXPECT_EQ(F(t).txtTradLimit.Text(), "5,000,000.00");

  PlaceAndConfirm(t);
  const LogEntry* sent = Last("VtOrderGenericNew");
  EXPECT_EQ(Arg(sent, "ToID"), "900");
  EXPECT_EQ(Arg(sent, "Status"), "0");
  EXPECT_EQ(Arg(sent, "Quantity"), "100000");
  EXPECT_EQ(Arg(sent, "Price"), "1.0844");
  EXPECT_EQ(Arg(sent, "GID"), "1");
  EXPECT_EQ(T(t).members().Status, ORDER_ACTIVE_INTERNAL);  // no answer inside the event
  EXPECT_EQ(F(t).lblReason.Caption(), "Placing order, please wait...");

  Step();  // delivery report and acknowledgement
  EXPECT_EQ(T(t).members().GID, -1);
  EXPECT_EQ(T(t).members().Status, ORDER_ACTIVE);
  EXPECT_EQ(T(t).getOrderID(), 1001);
  EXPECT_EQ(Colour(t), kYellow);
  EXPECT_EQ(F(t).lblReason.Caption(),
            "Your order has been received, please wait for a confirmation");
  EXPECT_EQ(F(t).lblOrderID.Caption(), "1001");

  Step();  // the fill
  EXPECT_EQ(T(t).members().Status, ORDER_EXECUTED);
  EXPECT_EQ(T(t).members().TradeID, 5001);
  EXPECT_EQ(Colour(t), kGreen);
  EXPECT_TRUE(F(t).fraTradeConf.Visible());
  EXPECT_EQ(F(t).txtPrice.Text(), "1.0844");
  EXPECT_EQ(Arg(Last("RequestEquity"), "InstrumentID"), "101");
  // The equity after the trade came with it: 2% of 100,000 EUR at the mid 1.0843 is held.
  const std::string conf = F(t).lblTradeConf.Caption();
  EXPECT_NE(conf.find("The new tradable equity is 247,831.40\r\nUnless stated otherwise, Halden "
                      "Bank acts as a principal in all trades."),
            std::string::npos)
      << conf;
  EXPECT_DOUBLE_EQ(host_.desk().account(1)->equity, 250000 - 2168.6);
  Step();  // the answer to the confirmation's own request adds nothing more
  EXPECT_EQ(F(t).lblTradeConf.Caption(), conf);
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_EXECUTED);
}

TEST_F(DemoDeskTest, LimitOrderRestsPendingUntilTheMarketReachesIt) {
  const int t = Open();
  Click(t, F(t).optType(2));
  F(t).controls().userPaste(F(t).txtLimit, "1.0830");
  PlaceAndConfirm(t);
  EXPECT_EQ(Arg(Last("VtOrderGenericNew"), "OrderType"), "2");
  EXPECT_EQ(Arg(Last("VtOrderGenericNew"), "Price"), "1.083");
  Step();
  EXPECT_EQ(Colour(t), kYellow);
  Step();
  EXPECT_EQ(T(t).members().Status, ORDER_PENDING);
  EXPECT_EQ(Colour(t), kCyan);
  EXPECT_EQ(F(t).lblReason.Caption(), "Order pending");
  EXPECT_TRUE(F(t).cmdOKCancel(1).Enabled());

  host_.feed().setBid(ids::kEURUSD, 1.0830);  // offer 1.0832: not yet
  Step();
  EXPECT_EQ(T(t).members().Status, ORDER_PENDING);
  host_.feed().setBid(ids::kEURUSD, 1.0828);  // offer 1.0830 reaches the limit
  Step();
  EXPECT_EQ(T(t).members().Status, ORDER_EXECUTED);
  EXPECT_EQ(Colour(t), kGreen);
  EXPECT_EQ(F(t).txtPrice.Text(), "1.0830");
  EXPECT_EQ(Arg(Last("VtOrderGenericNew"), "Status"), "0");  // nothing more was sent
}

TEST_F(DemoDeskTest, OcoPairRestsOnBothLegsAndTheFillCancelsThePartner) {
  const int t = Open();
  Click(t, F(t).optType(4));
  F(t).controls().userPaste(F(t).txtLimit, "1.0830");
  F(t).controls().userPaste(F(t).txtStop, "1.0860");
  PlaceAndConfirm(t);
  const LogEntry* pair = Last("VtOrderGenericArray");
  ASSERT_NE(pair, nullptr);
  EXPECT_EQ(Arg(pair, "OrderType"), "[2,3]");
  EXPECT_EQ(Arg(pair, "Price"), "[1.083,1.086]");
  EXPECT_EQ(Arg(pair, "GID"), "-1");
  EXPECT_EQ(host_.log().named("GuaranteedMsgAck").size(), 0u);

  Step();
  EXPECT_EQ(Colour(t), kYellow);
  EXPECT_EQ(T(t).getOrderID(), 1001);
  EXPECT_EQ(T(t).getLinkID(), 1002);
  Step();
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_PENDING);
  EXPECT_EQ(host_.desk().order(1002)->status, ORDER_PENDING);
  EXPECT_EQ(Colour(t), kCyan);
  EXPECT_EQ(F(t).lblReason.Caption().rfind("OCO order pending\r\nShould you decide", 0), 0u);

  host_.feed().setBid(ids::kEURUSD, 1.0858);  // offer 1.0860 triggers the buy stop
  Step();
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_CANCELLED);
  EXPECT_EQ(host_.desk().order(1002)->status, ORDER_EXECUTED);
  EXPECT_EQ(Arg(Last("GetReason"), "Reason"), "20");  // the partner's cancellation was shown
  EXPECT_EQ(T(t).getOrderID(), 1002);
  EXPECT_EQ(Colour(t), kGreen);
  EXPECT_TRUE(F(t).fraTradeConf.Visible());
  EXPECT_EQ(F(t).txtPrice.Text(), "1.0860");
}

TEST_F(DemoDeskTest, TwoWayQuoteIsRequotedSuspendedAndDealt) {
  const int t = Open();
  Click(t, F(t).optType(5));
  PlaceAndConfirm(t);
  EXPECT_EQ(Arg(Last("VtOrderGenericNew"), "OrderType"), "5");
  Step();
  EXPECT_EQ(Colour(t), kYellow);
  EXPECT_FALSE(F(t).fraQuote.Visible());
  Step();  // the dealer's price, one pip wider on each side
  ASSERT_TRUE(F(t).fraQuote.Visible());
  EXPECT_EQ(F(t).lblQuoteTime.Caption(), "15");
  EXPECT_DOUBLE_EQ(T(t).members().Bid, 1.0841);
  EXPECT_DOUBLE_EQ(T(t).members().Offer, 1.0845);
  EXPECT_TRUE(F(t).cmdQuote(0).Visible() && F(t).cmdQuote(2).Visible());

  Seconds(3);
  EXPECT_EQ(F(t).lblQuoteTime.Caption(), "12");
  host_.feed().setBid(ids::kEURUSD, 1.0850);
  ASSERT_TRUE(host_.desk().requote(1001));
  Step();
  EXPECT_EQ(F(t).lblQuoteTime.Caption(), "15");
  EXPECT_DOUBLE_EQ(T(t).members().Offer, 1.0853);

  ASSERT_TRUE(host_.desk().suspendQuote(1001));
  Step();
  EXPECT_EQ(F(t).lblQuotePrice.Caption(), "Quote Off");
  EXPECT_FALSE(F(t).cmdQuote(2).Enabled());
  Seconds(3);  // the suspension ends by itself
  Step();
  EXPECT_NE(F(t).lblQuotePrice.Caption(), "Quote Off");
  Seconds(1);  // the next tick makes the buttons live
  ASSERT_TRUE(F(t).cmdQuote(2).Enabled());

  const double offer = T(t).members().Offer;
  Click(t, F(t).cmdQuote(2));
  EXPECT_EQ(Arg(Last("VtOrderGenericNew"), "Status"), "12");
  Step();
  EXPECT_EQ(T(t).members().Status, ORDER_EXECUTED);
  EXPECT_EQ(Colour(t), kGreen);
  EXPECT_DOUBLE_EQ(T(t).members().MarketPrice, offer);
  EXPECT_FALSE(F(t).fraQuote.Visible());
}

TEST_F(DemoDeskTest, UnansweredQuoteExpiresAndDecliningCancels) {
  const int t = Open();
  Click(t, F(t).optType(5));
  PlaceAndConfirm(t);
  Step(2);
  ASSERT_TRUE(F(t).fraQuote.Visible());
  Seconds(15);
  const LogEntry* expiry = Last("VtOrderGenericNew");
  EXPECT_EQ(Arg(expiry, "Status"), "13");
  EXPECT_EQ(Arg(expiry, "Reason"), "2");
  EXPECT_EQ(Arg(expiry, "GID"), "-1");
  Step();
  EXPECT_EQ(Colour(t), kWhite);
  EXPECT_EQ(F(t).lblReason.Caption(), "The quote has expired.");

  const int u = Open();
  Click(u, F(u).optType(5));
  PlaceAndConfirm(u);
  Step(2);
  Seconds(1);
  Click(u, F(u).cmdQuote(1));
  Step();
  EXPECT_EQ(Colour(u), kWhite);
  EXPECT_EQ(F(u).lblReason.Caption(), "Cancelled at your request.");
  EXPECT_EQ(host_.desk().order(T(u).getOrderID())->status, ORDER_CANCELLED);
}

TEST_F(DemoDeskTest, CancelRequestIsGrantedOrRefusedForWantOfEquity) {
  const int t = Open();
  Click(t, F(t).optType(2));
  F(t).controls().userPaste(F(t).txtLimit, "1.0800");
  PlaceAndConfirm(t);
  Step(2);
  ASSERT_EQ(T(t).members().Status, ORDER_PENDING);

  host_.desk().setEquity(1, 1000, 5000000);  // less than the 2,166 the order binds
  Click(t, F(t).cmdOKCancel(1));
  EXPECT_EQ(Arg(Last("VtOrderGenericNew"), "Status"), "19");
  Step();
  EXPECT_EQ(T(t).members().Status, ORDER_CANCEL_REQUEST_REJECT);
  EXPECT_EQ(Colour(t), kCyan);
  EXPECT_EQ(F(t).lblReason.Caption(), "You do not have enough equity to cancel this order");
  EXPECT_FALSE(F(t).cmdOKCancel(1).Enabled());
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_PENDING);  // still working

  const int u = Open();
  Click(u, F(u).optType(3));
  F(u).controls().userPaste(F(u).txtStop, "1.0900");
  PlaceAndConfirm(u);
  Step(2);
  host_.desk().setEquity(1, 250000, 5000000);
  Click(u, F(u).cmdOKCancel(1));
  Step();
  EXPECT_EQ(T(u).members().Status, ORDER_CANCELLED);
  EXPECT_EQ(Colour(u), kWhite);
  EXPECT_EQ(F(u).lblReason.Caption(), "Cancelled at your request.");
  // The refused order of the first ticket still fills.
  host_.feed().setBid(ids::kEURUSD, 1.0790);
  Step();
  EXPECT_EQ(Colour(t), kGreen);
}

TEST_F(DemoDeskTest, FailedDeliveryAndLostConnection) {
  const int t = Open();
  host_.desk().setDeliveryFails(true);
  PlaceAndConfirm(t);
  Step();
  EXPECT_EQ(Arg(Last("VtOrderGenericNew"), "GID"), "1");
  EXPECT_EQ(T(t).members().Reason, 101);
  EXPECT_EQ(F(t).lblReason.Caption(),
            "Your order may not have been received by Norvane.  Please contact the dealers.");
  EXPECT_TRUE(host_.desk().orders().empty());
  Step(2);
  EXPECT_EQ(T(t).members().Status, ORDER_ACTIVE_INTERNAL);  // nothing ever answers it

  host_.desk().setDeliveryFails(false);
  host_.setConnected(false);
  const int u = Open();
  const std::size_t orders = host_.log().named("VtOrderGenericNew").size();
  Click(u, F(u).cmdOKCancel(0));
  EXPECT_EQ(Arg(Last("Message"), "Message"), "\"You are not currently connected\"");
  EXPECT_FALSE(F(u).fraConf.Visible());
  EXPECT_EQ(host_.log().named("VtOrderGenericNew").size(), orders);
  host_.feed().setBid(ids::kEURUSD, 1.0900);  // no prices without a connection
  EXPECT_EQ(F(u).txtBid.Text(), "1.0842");
  host_.setConnected(true);
  host_.feed().setBid(ids::kEURUSD, 1.0901);
  EXPECT_EQ(F(u).txtBid.Text(), "1.0901");
}

TEST_F(DemoDeskTest, SeveralTicketsOnTheirOwnAccountsLanguagesAndPrices) {
  const int a = Open(ids::kEURUSD, 1);
  const int b = Open(ids::kUSDJPY, 2, 2);
  Step();
  EXPECT_EQ(F(a).txtEquity.Text(), "250,000.00");
  EXPECT_EQ(F(b).txtEquity.Text(), "20,000.00");
  EXPECT_EQ(T(a).members().DummyLive, LIVE_TRADING);
  EXPECT_EQ(T(b).members().DummyLive, DUMMY_TRADING);
  EXPECT_EQ(F(b).cmdOKCancel(0).Caption(), "&Ausführen");
  EXPECT_EQ(F(b).fraOrderEntry.Caption(), "US Dollar vs Yen");
  // The dummy account deals on the wide profile: two pips more on each side.
  EXPECT_EQ(F(b).txtBid.Text(), "151.33");
  EXPECT_EQ(F(b).txtOffer.Text(), "151.39");

  host_.feed().setBid(ids::kUSDJPY, 150.00);
  EXPECT_EQ(F(b).txtBid.Text(), "149.98");
  EXPECT_EQ(F(a).txtBid.Text(), "1.0842");

  PlaceAndConfirm(a);
  Step(3);
  EXPECT_EQ(Colour(a), kGreen);
  EXPECT_EQ(T(b).members().Status, -1);
  EXPECT_EQ(F(b).txtEquity.Text(), "20,000.00");  // another account's equity is not shown
  EXPECT_EQ(Arg(Last("VtPriceGetArray"), "PriceProfileID").empty(), false);

  Click(b, F(b).cmdOKCancel(2));
  EXPECT_NE(Last("CloseTicket"), nullptr);
  EXPECT_EQ(Last("CloseTicket")->ticket, b);
  ASSERT_NE(host_.ticket(b), nullptr);  // closed after the event, not inside it
  Step();
  EXPECT_EQ(host_.ticket(b), nullptr);
  EXPECT_EQ(host_.ticketIds(), std::vector<int>{a});
}

TEST_F(DemoDeskTest, ValueDateTakesTheForwardFamilyOnRealCalendars) {
  const int t = Open(ids::kEURUSD, 1, 1, true);
  ASSERT_TRUE(F(t).cmdValue.Visible());
  Click(t, F(t).cmdValue);
  ASSERT_TRUE(F(t).calValueDate.Visible());
  // One month from spot Monday 5 March is Thursday 5 April: the 1M member.
  F(t).controls().userDateClick(F(t).calValueDate, DateSerial(2001, 4, 5));
  EXPECT_FALSE(F(t).calValueDate.Visible());
  EXPECT_EQ(T(t).getInstrumentID(), ids::kEURUSD1M);
  EXPECT_EQ(F(t).fraOrderEntry.Caption(), "Euro vs US Dollar 1M");
  EXPECT_EQ(F(t).lblValueDate.Caption(), "05-Apr-2001");
  EXPECT_EQ(F(t).txtBid.Text(), "1.0851");  // nine forward points
  host_.feed().setBid(ids::kEURUSD, 1.0850);  // the member follows its parent
  EXPECT_EQ(F(t).txtBid.Text(), "1.0859");

  // Good Friday is a TARGET holiday: refused, the calendar stays open.
  Click(t, F(t).cmdValue);
  F(t).controls().userDateClick(F(t).calValueDate, DateSerial(2001, 4, 13));
  EXPECT_TRUE(F(t).calValueDate.Visible());
  EXPECT_EQ(T(t).getInstrumentID(), ids::kEURUSD1M);
  // A date no tenor hits goes to the broken-date member.
  F(t).controls().userDateClick(F(t).calValueDate, DateSerial(2001, 3, 20));
  EXPECT_EQ(T(t).getInstrumentID(), ids::kEURUSDBroken);
  EXPECT_NE(Last("VtInstGetArrayAll"), nullptr);
  EXPECT_EQ(Arg(Last("VtInstGetArrayAll"), "InstrumentIDArray"), "[111,112,113,114,115]");
}

TEST_F(DemoDeskTest, DealerRequotesAndSuspendsByItselfWhileTheQuoteStands) {
  host_.desk().quotePolicy().requoteAfter = 2;
  host_.desk().quotePolicy().suspendOneIn = 2;
  const int t = Open();
  Click(t, F(t).optType(5));
  PlaceAndConfirm(t);
  Step(2);
  ASSERT_TRUE(F(t).fraQuote.Visible());
  Seconds(20);
  const auto quotes = host_.log().calls("OrderGenericQuote");
  ASSERT_GE(quotes.size(), 6u);
  int suspensions = 0;
  for (const LogEntry* q : quotes) suspensions += Arg(q, "Bid") == "0";
  EXPECT_GT(suspensions, 0);
  EXPECT_LT(suspensions, static_cast<int>(quotes.size()));
  // Each requote gives the client fresh seconds, so the quote never ran out.
  EXPECT_EQ(host_.log().named("VtOrderGenericNew").size(), 1u);
  EXPECT_TRUE(F(t).fraQuote.Visible());
  EXPECT_EQ(host_.desk().order(1001)->quoteOpen, true);
}

TEST_F(DemoDeskTest, AnswersForAClosedTicketAreDropped) {
  const int t = Open();
  Click(t, F(t).optType(2));
  F(t).controls().userPaste(F(t).txtLimit, "1.0830");
  PlaceAndConfirm(t);
  Step(2);
  Click(t, F(t).cmdOKCancel(2));  // closing withdraws nothing
  Step();
  ASSERT_EQ(host_.ticket(t), nullptr);
  host_.feed().setBid(ids::kEURUSD, 1.0820);
  Step(2);
  EXPECT_EQ(host_.desk().order(1001)->status, ORDER_EXECUTED);
  // 2% of the amount at the mid of the market that filled it.
  EXPECT_DOUBLE_EQ(host_.desk().account(1)->equity, 250000 - 0.02 * 100000 * 1.0821);
}

// The desk on its own: amounts in the secondary currency deal on the other side of the
// price, and a manual trade is confirmed without an order.
TEST(DemoDesk, SecondaryAmountsDealOnTheOtherSideAndManualTradesNeedNoOrder) {
  InstrumentBook book;
  PriceFeed feed(book, 1, 36951.5);  // EUR/USD 1.0842 / 1.0844
  DealingDesk desk(book, feed, 1);
  desk.addAccount({1, "Main", kProfileStandard, true, 1e6, 1e7});
  feed.onTick = [&](Long id) { desk.onPrice(id); };
  auto order = [](Long type, double quantity, double price) {
    OrderRequest r;
    r.AccountID = 1, r.InstrumentID = ids::kEURUSD, r.Quantity = quantity;
    r.PrimarySecondaryQty = QTY_SECONDARY, r.OrderType = type, r.Price = price;
    return r;
  };
  auto trades = [&] {
    std::vector<DeskMessage> out;
    for (auto& m : desk.takeOutbox())
      if (m.kind == DeskMessage::Kind::TradeGeneric) out.push_back(m);
    return out;
  };
  // Buying dollars is selling euros: at the bid.
  desk.receiveOrder(1, order(MARKET_ORDER, 100000, 1.0842));
  desk.advance(36951.5);
  auto done = trades();
  ASSERT_EQ(done.size(), 1u);
  EXPECT_DOUBLE_EQ(done[0].Price, 1.0842);

  desk.receiveOrder(1, order(LIMIT_ORDER, 100000, 1.0850));  // sells euros above the bid
  desk.receiveOrder(1, order(STOPLOSS_ORDER, -100000, 1.0860));  // buys euros on a rise
  desk.advance(36951.5);
  EXPECT_TRUE(trades().empty());
  EXPECT_EQ(desk.order(1002)->status, ORDER_PENDING);
  EXPECT_EQ(desk.order(1003)->status, ORDER_PENDING);
  feed.setBid(ids::kEURUSD, 1.0850);  // the bid reaches the limit; the offer 1.0852 no stop
  done = trades();
  ASSERT_EQ(done.size(), 1u);
  EXPECT_EQ(done[0].OrderID, 1002);
  EXPECT_DOUBLE_EQ(done[0].Price, 1.0850);
  feed.setBid(ids::kEURUSD, 1.0858);  // the offer 1.0860 reaches the stop
  done = trades();
  ASSERT_EQ(done.size(), 1u);
  EXPECT_EQ(done[0].OrderID, 1003);
  EXPECT_DOUBLE_EQ(done[0].Price, 1.0860);

  OrderRequest manual = order(MANUAL_TRADE, 5000, 1.0855);
  manual.Status = TRADE_MANUAL;
  manual.GID = 9;
  desk.receiveTrade(1, manual);
  auto outbox = desk.takeOutbox();
  ASSERT_EQ(outbox.size(), 1u);
  EXPECT_EQ(outbox[0].kind, DeskMessage::Kind::GuaranteedMsgAck);
  EXPECT_EQ(outbox[0].GID, 9);
  desk.advance(36951.5);
  done = trades();
  ASSERT_EQ(done.size(), 1u);
  EXPECT_EQ(done[0].OrderID, 0);
  EXPECT_DOUBLE_EQ(done[0].Price, 1.0855);
  EXPECT_EQ(done[0].Status, ORDER_EXECUTED);
}

TEST(DemoFeed, SeededWalkRepeatsAndKeepsItsSpreads) {
  InstrumentBook book;
  PriceFeed a(book, 7, 36951.5), b(book, 7, 36951.5);
  int ticksA = 0;
  a.onTick = [&](Long id) { ticksA += id == ids::kEURUSD; };
  a.advance(36951.5 + 10.0 / 86400);
  b.advance(36951.5 + 10.0 / 86400);
  EXPECT_GE(ticksA, 16);  // a few a second
  EXPECT_LE(ticksA, 50);
  for (Long pair : book.pairs()) {
    const PriceRec pa = a.price(pair, kProfileStandard), pb = b.price(pair, kProfileStandard);
    EXPECT_EQ(pa.Bid, pb.Bid) << pair;
    const PriceRec wide = a.price(pair, kProfileWide);
    const double pip = book.find(pair)->Pip;
    EXPECT_NEAR((wide.Offer - wide.Bid) - (pa.Offer - pa.Bid), 4 * pip, pip / 100) << pair;
  }
  a.step();
  EXPECT_NE(a.price(ids::kEURUSD, 1).PriceTime, 0);
  EXPECT_EQ(a.price(999, 1).Bid, 0);  // no price for an unknown instrument
}

}  // namespace
}  // namespace quillon::demo
