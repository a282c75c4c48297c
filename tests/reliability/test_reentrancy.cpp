// A host that calls back into the ticket from inside its events and from work it posted to
// the message loop, and a host that closes and destroys the ticket while the ticket is still
// running: inside an event, a yield, a timer tick, or a user's typing.

#include <functional>
#include <stdexcept>

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class ReentrancyTest : public TicketTest {
 protected:
  // Account 1 "Main" without a price profile (raw ticks show), every right, connected, and a
  // blank EUR/USD ticket.
  void SetUp() override {
    Long id = 1, profile = -1;
    std::string name = "Main";
    ticket_->LoadAccount(id, name, profile);
    ticket_->setLanguage(1);
    ticket_->setAccountType(kEveryRight);
    ticket_->setDealingGateway(42);
    OpenBlankForValue();
    host_.events.clear();
  }

  // A fresh ticket on the same loop and host, set up as above.
  void SetUpTicket() {
    TicketServices services;
    services.loop = &loop_;
    services.locale = &locale_;
    ticket_ = std::make_unique<Clientticket>(services);
    ticket_->setHost(&host_);
    host_.inside.clear();
    SetUp();
  }

  Form& form() { return f().controls(); }
  void Click(Control& c) { ASSERT_TRUE(form().userClick(c)) << c.fullName(); }

  void Tick(Clientticket& t, double bid, double offer) {
    Long instrument = kEurUsd, counterparty = 0, type = PRICE_TRADED, source = 0;
    Date time = 0;
    t.PriceGeneric(instrument, counterparty, bid, offer, type, source, time);
  }
  void Quote(Clientticket& t, Long orderID, double bid, double offer, double seconds) {
    Long from = 0, account = 1, instrument = kEurUsd, type = 0, status = 16, counterparty = 9,
         dummy = 0, system = 0, cpSystem = 4, profile = -1, primSec = QTY_PRIMARY;
    double quantity = 100000, strike = 0;
    Date duration = kNoDate + seconds / 86400.0, marketTime = 0, valueDate = 0, expiry = 0;
    Integer reason = 8;
    std::string text;
    Boolean encrypt = false;
    t.OrderGenericQuote(from, orderID, account, instrument, quantity, primSec, bid, offer, type,
                        duration, marketTime, valueDate, status, reason, counterparty, dummy,
                        text, system, encrypt, cpSystem, profile, strike, expiry);
  }
  // The server's answer to the order the ticket sent: active under number `orderID`.
  Msg Active(Long orderID) {
    Msg m;
    m.OrderID = orderID;
    m.InstrumentID = kEurUsd;
    m.AccountID = 1;
    m.Status = ORDER_ACTIVE;
    m.Quantity = 1000;
    m.Price = 1.2350;
    m.Duration = kNoDate;
    m.ValueDate = 37320;
    return m;
  }
  void Ack(Clientticket& t, Integer gid, bool success) {
    Long from = 0;
    Boolean ok = success;
    t.GuaranteedMsgAck(from, gid, ok);
  }
  // The user types an amount, asks for the order statement and says Yes.
  void PlaceMarketOrder() {
    form().userPaste(f().txtPrimQty, "1000");
    Click(f().cmdOKCancel(0));
    ASSERT_TRUE(f().fraConf.Visible());
    host_.events.clear();
    Click(f().cmdOKCancel(3));
  }
};

TEST_F(ReentrancyTest, AnswerInsideTheOrderEventIsAdoptedAndTheSendFinishes) {
  // The host answers while the order is still on its way out: the ticket is already in 21
  // with no order number, so the first ORDER_ACTIVE on its instrument is its own.
  host_.inside["VtOrderGenericNew"] = [this] {
    EXPECT_EQ(m().Status, ORDER_ACTIVE_INTERNAL);
    EXPECT_EQ(m().OrderID, 0);
    Initialise(Active(555));
  };
  PlaceMarketOrder();
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 1);
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
  // The send goes on to its end after the answer: the window is given back its size.
  ASSERT_FALSE(host_.names().empty());
  EXPECT_EQ(host_.names().back(), "ResizeTicket");
  EXPECT_EQ(m().OrderID, 555);
  EXPECT_EQ(m().Status, ORDER_ACTIVE);
  EXPECT_EQ(f().lblReason.Caption(),
            "Your order has been received, please wait for a confirmation");
  EXPECT_EQ(f().lblOrderID.Caption(), "555");
  EXPECT_TRUE(f().cmdOKCancel(1).Enabled());
  EXPECT_FALSE(f().fraHide.Visible());
  EXPECT_FALSE(loop_.isRunning(f().Timer1));
}

TEST_F(ReentrancyTest, AcknowledgementsInsideTheirOwnMessage) {
  // Inside GID the number is not the ticket's yet: an acknowledgement of it there concerns
  // another message and changes nothing; the number is kept once the event returns.
  host_.inside["GID"] = [this] { Ack(*ticket_, 1, false); };
  PlaceMarketOrder();
  EXPECT_EQ(m().GID, 1);
  EXPECT_EQ(m().Status, ORDER_ACTIVE_INTERNAL);
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 1);

  // Inside the message itself the number is set: a failed delivery replays the order and the
  // ticket shows the warning; the send still finishes with its resize.
  SetUpTicket();
  host_.nextGid = 7;
  host_.inside["VtOrderGenericNew"] = [this] { Ack(*ticket_, 7, false); };
  PlaceMarketOrder();
  EXPECT_EQ(m().GID, -1);
  EXPECT_EQ(m().Reason, 101);
  EXPECT_EQ(m().Status, ORDER_ACTIVE_INTERNAL);
  EXPECT_EQ(f().lblReason.Caption(),
            "Your order may not have been received by Norvane.  Please contact the dealers.");
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 1);
  EXPECT_EQ(host_.names().back(), "ResizeTicket");
  EXPECT_FALSE(f().fraHide.Visible());
}

TEST_F(ReentrancyTest, EquityAnsweredInsideItsRequest) {
  // On the blank form the answer fills the frame.
  host_.inside["RequestEquity"] = [this] {
    Long account = 1;
    double equity = -1234.5, limit = 50000;
    ticket_->ReceivedEquity(account, equity, limit);
  };
  Msg blank;
  blank.InstrumentID = kEurUsd;
  blank.AccountID = 1;
  blank.Status = -1;
  Initialise(blank);
  EXPECT_EQ(f().txtEquity.Text(), "(1,234.50)");
  EXPECT_EQ(f().txtTradLimit.Text(), "50,000.00");

  // For the trade confirmation the request goes out before the panel is up, so an answer
  // inside it is a frame update too: the confirmation gets no figure and waits for the next.
  host_.inside["RequestEquity"] = [this] {
    Long account = 1;
    double equity = 777, limit = 888;
    ticket_->ReceivedEquity(account, equity, limit);
  };
  Msg done = Active(0);
  done.Status = ORDER_EXECUTED;
  Initialise(done);
  ASSERT_TRUE(f().fraTradeConf.Visible());
  EXPECT_EQ(f().txtEquity.Text(), "777.00");
  EXPECT_FALSE(m().EquityShown);
  const std::string caption = f().lblTradeConf.Caption();
  EXPECT_EQ(caption.substr(caption.size() - 27), "The new tradable equity is ");
  Long account = 1;
  double equity = 999, limit = 0;
  ticket_->ReceivedEquity(account, equity, limit);
  EXPECT_TRUE(m().EquityShown);
  EXPECT_NE(f().lblTradeConf.Caption().find("is 999.00\r\nUnless stated otherwise"),
            std::string::npos);
}

TEST_F(ReentrancyTest, TickFromAYieldInsideThePriceTextWritesLast) {
  // The tick's price text yields; a second tick queued on the loop runs inside it to its end,
  // and the first one finishes with the members that stand.
  bool nestedRan = false;
  loop_.post([&] {
    nestedRan = true;
    Tick(*ticket_, 1.3000, 1.3005);
  });
  Tick(*ticket_, 1.2400, 1.2405);
  ASSERT_TRUE(nestedRan);
  EXPECT_EQ(m().Bid, 1.3000);
  EXPECT_EQ(m().Offer, 1.3005);
  EXPECT_EQ(f().txtBid.Text(), "1.3000");
  EXPECT_EQ(f().txtOffer.Text(), "1.3005");
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
  EXPECT_TRUE(f().cmdOKCancel(0).Enabled());
}

TEST_F(ReentrancyTest, RequoteFromAYieldInsideTheQuotePrice) {
  // A two-way request is active as order 55 (a ticket that holds no order takes any).
  probe().m().Status = ORDER_PLACED;
  Msg request = Active(55);
  request.OrderType = TWOWAY_ORDER;
  request.Quantity = 100000;
  Initialise(request);
  host_.events.clear();
  // While the first quote's price is written the dealer's requote arrives from the loop. It
  // runs whole; the first quote then finishes: the price text it was making is its own, while
  // the members and the seconds written before the price are the requote's.
  bool nestedRan = false;
  loop_.post([&] {
    nestedRan = true;
    Quote(*ticket_, 55, 1.2400, 1.2405, 20);
  });
  Quote(*ticket_, 55, 1.2345, 1.2350, 30);
  ASSERT_TRUE(nestedRan);
  EXPECT_TRUE(f().fraQuote.Visible());
  EXPECT_EQ(f().lblQuotePrice.Caption(), "1.2345/50");
  EXPECT_EQ(f().lblQuoteTime.Caption(), "20");
  EXPECT_EQ(m().Bid, 1.2400);
  EXPECT_EQ(m().Offer, 1.2405);
  EXPECT_TRUE(loop_.isRunning(f().Timer1));
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
  // One countdown runs from the seconds that stand, and the expiry goes out once.
  loop_.advance(19000);
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 0);
  loop_.advance(1000);
  EXPECT_EQ(f().lblQuoteTime.Caption(), "0");
  EXPECT_FALSE(loop_.isRunning(f().Timer1));
  EXPECT_EQ(m().Status, ORDER_CANCELLED_INTERNAL);
  loop_.advance(60000);
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 1);
}

TEST_F(ReentrancyTest, HostHandlersThatThrowAreAbsorbed) {
  // A failing handler of a question inside a resume-next statement has no effect.
  host_.inside["VtOrderGenericNew"] = [] { throw std::runtime_error("transport down"); };
  EXPECT_NO_THROW(PlaceMarketOrder());
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 1);
  EXPECT_EQ(m().Status, ORDER_ACTIVE_INTERNAL);
  EXPECT_EQ(host_.names().back(), "ResizeTicket");
  EXPECT_EQ(host_.count("ErrorMsg"), 0);

  // Inside a stop-and-report procedure it ends the procedure with an automation error, and
  // Initialise still takes its mask down. (The account's click handler asks first, inside a
  // resume-next statement: that failure has no effect.)
  host_.events.clear();
  std::function<void()> fail = [&] {
    host_.inside["RequestEquity"] = fail;
    throw 42;
  };
  host_.inside["RequestEquity"] = fail;
  Msg blank;
  blank.InstrumentID = kEurUsd;
  blank.AccountID = 1;
  blank.Status = -1;
  EXPECT_NO_THROW(Initialise(blank));
  ASSERT_EQ(host_.count("ErrorMsg"), 1);
  EXPECT_EQ(host_.last("ErrorMsg")->args,
            (std::vector<std::string>{std::to_string(kAutomationError), "", "Initialise"}));
  EXPECT_EQ(host_.count("RequestEquity"), 2);
  EXPECT_FALSE(f().fraHide.Visible());
  EXPECT_EQ(m().Status, ORDER_BLANK);
  host_.inside.clear();
}

// --- A host that destroys the ticket while the ticket is running ---

TEST_F(ReentrancyTest, ClosedAndDestroyedInsideCloseTicket) {
  host_.inside["CloseTicket"] = [this] { ticket_.reset(); };
  Form& controls = form();
  EXPECT_TRUE(controls.userClick(f().cmdOKCancel(2)));
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(host_.names(), std::vector<std::string>{"CloseTicket"});
}

TEST_F(ReentrancyTest, DestroyedInsideTheOrderEventRaisesNothingMore) {
  host_.inside["VtOrderGenericNew"] = [this] { ticket_.reset(); };
  PlaceMarketOrder();
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(host_.names(), (std::vector<std::string>{"Connected", "GID", "VtOrderGenericNew"}));
}

TEST_F(ReentrancyTest, DestroyedInsideAYield) {
  // A tick's price text yields; the host's work queued on the loop destroys the ticket there.
  loop_.post([this] { ticket_.reset(); });
  Clientticket* t = ticket_.get();
  Tick(*t, 1.2400, 1.2405);
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(host_.count("ErrorMsg"), 0);

  // The language's walk yields once per control.
  SetUpTicket();
  loop_.post([this] { ticket_.reset(); });
  ticket_.get()->setLanguage(2);
  EXPECT_EQ(ticket_, nullptr);

  // The settlement walk yields once per day; the ticket's own loop outlives the yield.
  ticket_ = std::make_unique<Clientticket>();
  HeadlessLoop& own = static_cast<HeadlessLoop&>(ticket_->loop());
  own.post([this] { ticket_.reset(); });
  Date trade = 37320, forward = 0;
  Long instrument = 0;
  EXPECT_EQ(ticket_.get()->Get_Settlement_Day(trade, forward, instrument), 0);
  EXPECT_EQ(ticket_, nullptr);
}

TEST_F(ReentrancyTest, DestroyedInsideATimerTick) {
  // The statement's panel expires; the resize raised on the way back destroys the ticket.
  form().userPaste(f().txtPrimQty, "1000");
  Click(f().cmdOKCancel(0));
  host_.events.clear();
  host_.inside["ResizeTicket"] = [this] { ticket_.reset(); };
  loop_.advance(5000);
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(host_.count("ResizeTicket"), 1);
  EXPECT_EQ(host_.names().back(), "ResizeTicket");
  loop_.advance(60000);  // nothing of the ticket is left on the loop
}

TEST_F(ReentrancyTest, DestroyedInsideNestedEntries) {
  // A message hands over to Initialise; selecting the account there runs the account's click
  // handler, whose equity request destroys the ticket: every level ends without a report.
  host_.inside["RequestEquity"] = [this] { ticket_.reset(); };
  Long from = 0, order = 0, account = 1, instrument = kEurUsd, primSec = 0, type = MARKET_ORDER,
       status = -1, link = 0, action = 0, counterparty = 0, dummy = 0, system = 0, cpSystem = 0,
       profile = 0;
  double quantity = 0, price = 0, strike = 0;
  Date duration = 0, marketTime = 0, valueDate = 0, expiry = 0;
  Integer reason = 0;
  std::string text;
  Boolean encrypt = false;
  ticket_.get()->OrderGeneric(from, order, account, instrument, quantity, primSec, price, type,
                              duration, marketTime, valueDate, status, link, action, reason,
                              counterparty, dummy, text, system, encrypt, cpSystem, profile,
                              strike, expiry);
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
  EXPECT_EQ(host_.count("RequestEquity"), 1);

  // An error report whose handler destroys the ticket: Initialise's last duty is skipped.
  SetUpTicket();
  host_.inside["ErrorMsg"] = [this] { ticket_.reset(); };
  Msg bad;
  bad.InstrumentID = kEurUsd;
  bad.Status = ORDER_ACTIVE;
  bad.OrderType = 8;  // no button for it: the intake fails half way
  Initialise(bad);
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(host_.count("ErrorMsg"), 1);
}

TEST_F(ReentrancyTest, DestroyedWhileTheUserTypes) {
  // Each key stroke in the amount asks the host for the market; the host destroys the ticket
  // at the first. The rest of the keys go nowhere.
  host_.inside["VtPriceGetArray"] = [this] { ticket_.reset(); };
  Form& controls = form();
  TextBox& amount = f().txtPrimQty;
  EXPECT_TRUE(controls.userType(amount, "12345"));
  EXPECT_EQ(ticket_, nullptr);
  EXPECT_EQ(host_.count("VtPriceGetArray"), 1);

  // And while the user spins the amount.
  SetUpTicket();
  host_.inside["VtPriceGetArray"] = [this] { ticket_.reset(); };
  Form& again = form();
  EXPECT_TRUE(again.userSpin(f().udPrim, true));
  EXPECT_EQ(ticket_, nullptr);
}

}  // namespace
}  // namespace quillon
