// A host that calls back into the ticket inside its events, or destroys it while it runs.

#include <functional>
#include <stdexcept>

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class ReentrancyTest : public TicketTest {
 protected:
  // A fresh ticket, account 1 without a price profile (raw ticks show), blank EUR/USD.
  void SetUp() override {
    ticket_ = std::make_unique<Clientticket>(TicketServices{.loop = &loop_, .locale = &locale_});
    ticket_->setHost(&host_);
    host_.inside.clear();
    SetUpUser(kEveryRight, 1, -1);
    OpenBlankForValue();
    host_.events.clear();
  }

  void Tick(double bid, double offer) {
    Call(&Clientticket::PriceGeneric, kEurUsd, 0, bid, offer, PRICE_TRADED, 0, 0.0);
  }
  void Quote(Long orderID, double bid, double offer, double seconds) {
    Call(&Clientticket::OrderGenericQuote, 0, orderID, 1, kEurUsd, 100000.0, QTY_PRIMARY, bid,
         offer, 0, kNoDate + seconds / 86400.0, 0.0, 0.0, 16, 8, 9, 0, std::string(), 0, false, 4,
         -1, 0.0, 0.0);
  }
  static Msg Answer(Long orderID, Long status = ORDER_ACTIVE) {
    return Msg{.OrderID = orderID, .AccountID = 1, .InstrumentID = kEurUsd, .Quantity = 1000,
               .Price = 1.2350, .Duration = kNoDate, .ValueDate = 37320, .Status = status};
  }
  std::string LastEvent() const { return host_.events.empty() ? "" : host_.events.back().name; }
  const std::function<void()> destroy_ = [this] { ticket_.reset(); };
  // The user types an amount, asks for the order statement and says Yes.
  void PlaceMarketOrder() {
    form().userPaste(f().txtPrimQty, "1000");
    ASSERT_TRUE(form().userClick(f().cmdOKCancel(0)));
    ASSERT_TRUE(f().fraConf.Visible());
    host_.events.clear();
    ASSERT_TRUE(form().userClick(f().cmdOKCancel(3)));
  }
};

// Called back inside the order's send, the order goes out once and the send finishes.
TEST_F(ReentrancyTest, CallsBackInsideTheOrderSend) {
  const auto nack = [this] { Call(&Clientticket::GuaranteedMsgAck, 0, 7, false); };
  const std::string placing = "Placing order, please wait...";
  const struct {
    const char* event; std::function<void()> inside; Long status, gid, orderID, reason;
    std::string caption;
  } cases[] = {
      {"GID", nack, ORDER_ACTIVE_INTERNAL, 7, 0, 0, placing},  // not the ticket's number yet
      // Inside the message the number is set: a failed delivery replays the order, warned.
      {"VtOrderGenericNew", nack, ORDER_ACTIVE_INTERNAL, -1, 0, 101,
       "Your order may not have been received by Norvane.  Please contact the dealers."},
      // A failing handler of a question inside a resume-next statement has no effect.
      {"VtOrderGenericNew", [] { throw std::runtime_error("down"); }, ORDER_ACTIVE_INTERNAL, 7, 0,
       0, placing},
      // The server answers on the way out: in 21 with no number, the first answer is its own.
      {"VtOrderGenericNew",
       [this] {
         EXPECT_EQ(m().Status, ORDER_ACTIVE_INTERNAL);
         EXPECT_EQ(m().OrderID, 0);
         Initialise(Answer(555));
       },
       ORDER_ACTIVE, 7, 555, 0, "Your order has been received, please wait for a confirmation"},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const auto& c = cases[i];
    SCOPED_TRACE(testing::Message() << "case " << i << ", inside " << c.event);
    SetUp();
    host_.nextGid = 7;
    host_.inside[c.event] = c.inside;
    EXPECT_NO_THROW(PlaceMarketOrder());
    EXPECT_EQ(host_.count("VtOrderGenericNew"), 1);
    EXPECT_EQ(host_.count("ErrorMsg"), 0);
    EXPECT_EQ(LastEvent(), "ResizeTicket");
    EXPECT_FALSE(f().fraHide.Visible());
    EXPECT_EQ(m().Status, c.status);
    EXPECT_EQ(m().GID, c.gid);
    EXPECT_EQ(m().OrderID, c.orderID);
    EXPECT_EQ(m().Reason, c.reason);
    EXPECT_EQ(f().lblReason.Caption(), c.caption);
    EXPECT_EQ(f().cmdOKCancel(1).Enabled(), c.orderID != 0);  // once there is one to cancel
  }
}

// The blank form asks for equity twice (first in a resume-next statement); a handler that
// throws ends Initialise with an automation error, and the mask still comes down.
TEST_F(ReentrancyTest, EquityRequestAnsweredOrThrownInside) {
  std::function<void()> fail = [&] {
    host_.inside["RequestEquity"] = fail;
    throw 42;
  };
  host_.inside["RequestEquity"] = fail;
  EXPECT_NO_THROW(OpenBlankForValue());
  ASSERT_EQ(host_.count("ErrorMsg"), 1);
  EXPECT_EQ(host_.last("ErrorMsg")->args,
            (std::vector<std::string>{std::to_string(kAutomationError), "", "Initialise"}));
  EXPECT_EQ(host_.count("RequestEquity"), 2);
  EXPECT_FALSE(f().fraHide.Visible());
  EXPECT_EQ(m().Status, ORDER_BLANK);
  // An answer inside the request fills the frame.
  SetUp();
  host_.inside["RequestEquity"] = [this] { Call(&Clientticket::ReceivedEquity, 1, -1234.5, 5e4); };
  OpenBlankForValue();
  EXPECT_EQ(f().txtEquity.Text(), "(1,234.50)");
  EXPECT_EQ(f().txtTradLimit.Text(), "50,000.00");
  // A trade confirmation's request goes before its panel: the panel waits for the next.
  host_.inside["RequestEquity"] = [this] { Call(&Clientticket::ReceivedEquity, 1, 777.0, 888.0); };
  Initialise(Answer(0, ORDER_EXECUTED));
  ASSERT_TRUE(f().fraTradeConf.Visible());
  EXPECT_EQ(f().txtEquity.Text(), "777.00");
  EXPECT_FALSE(m().EquityShown);
  EXPECT_TRUE(f().lblTradeConf.Caption().ends_with("The new tradable equity is "));
}

TEST_F(ReentrancyTest, TickAndRequoteFromAYieldInsideThePriceText) {
  // A tick queued on the loop runs whole inside the first tick's (yielding) price text. The
  // first then writes its own market price, though the second wrote other prices meanwhile.
  std::vector<std::string> market;
  const int watch = f().controls().addObserver([&](Control& c, ControlProperty what) {
    if (&c == &f().txtPrice && what == ControlProperty::Text) market.push_back(f().txtPrice.Text());
  });
  loop_.post([&] { Tick(1.3000, 1.3005); });
  Tick(1.2400, 1.2405);
  f().controls().removeObserver(watch);
  EXPECT_EQ(market, (std::vector<std::string>{"1.3005", "1.2405", "1.3005"}));
  EXPECT_EQ(f().txtOffer.Text(), "1.3005");
  // A requote of the active two-way request 55 runs whole inside the first quote's price
  // text, which stays the first's own; the members and the seconds are the requote's.
  probe().m().Status = ORDER_PLACED;
  OpenActiveTwoWay();
  loop_.post([&] { Quote(55, 1.2400, 1.2405, 20); });
  Quote(55, 1.2345, 1.2350, 30);
  EXPECT_TRUE(f().fraQuote.Visible());
  EXPECT_EQ(f().lblQuotePrice.Caption(), "1.2345/50");
  EXPECT_EQ(f().lblQuoteTime.Caption(), "20");
  EXPECT_EQ((std::vector{m().Bid, m().Offer}), (std::vector{1.2400, 1.2405}));
  EXPECT_EQ(host_.count("ErrorMsg"), 0);
  // One countdown runs from the seconds that stand, and the expiry goes out once.
  host_.events.clear();
  loop_.advance(19000);
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 0);
  loop_.advance(1000);
  EXPECT_EQ(m().Status, ORDER_CANCELLED_INTERNAL);
  loop_.advance(60000);
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 1);
}

// Destroyed inside the event named (or by work queued on the loop, "yield"): nothing is raised
// after it, no error is reported, and where given the events raised are exactly these.
TEST_F(ReentrancyTest, DestroyedWhileRunning) {
  const struct {
    std::string event; std::function<void()> run; std::vector<std::string> raised = {};
  } cases[] = {
      {"CloseTicket", [&] { EXPECT_TRUE(form().userClick(f().cmdOKCancel(2))); }, {"CloseTicket"}},
      {"VtOrderGenericNew", [&] { PlaceMarketOrder(); }, {"Connected", "GID", "VtOrderGenericNew"}},
      // Yields: a tick's price text, the language's walk, the settlement walk (own loop).
      {"yield", [&] { Tick(1.2400, 1.2405); }},
      {"yield", [&] { ticket_->setLanguage(2); }},
      {"",
       [&] {
         ticket_ = std::make_unique<Clientticket>();
         static_cast<HeadlessLoop&>(ticket_->loop()).post(destroy_);
         EXPECT_EQ(Call(&Clientticket::Get_Settlement_Day, 37320.0, 0.0, 0), 0);
       }},
      // The statement's panel expires; the resize raised on the way back destroys the ticket.
      {"ResizeTicket",
       [&] {
         host_.inside.clear();  // armed once the statement is up
         form().userPaste(f().txtPrimQty, "1000");
         EXPECT_TRUE(form().userClick(f().cmdOKCancel(0)));
         host_.events.clear();
         host_.inside["ResizeTicket"] = destroy_;
         loop_.advance(5000);
         loop_.advance(60000);  // nothing of the ticket is left on the loop
       }},
      // A message hands over to Initialise; the account's click handler asks for equity.
      {"RequestEquity",
       [&] {
         Call(&Clientticket::OrderGeneric, 0, 0, 1, kEurUsd, 0.0, 0, 0.0, MARKET_ORDER, 0.0, 0.0,
              0.0, -1, 0, 0, 0, 0, 0, std::string(), 0, false, 0, 0, 0.0, 0.0);
       }},
      // Initialise's intake fails half way (no button for order type 8).
      {"ErrorMsg",
       [&] {
         Initialise(Msg{.InstrumentID = kEurUsd, .OrderType = 8, .Status = ORDER_ACTIVE});
       }},
      // Each key stroke and spin of the amount asks for the market: the rest go nowhere.
      {"VtPriceGetArray", [&] { EXPECT_TRUE(form().userType(f().txtPrimQty, "12345")); }},
  };
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    const auto& [event, run, raised] = cases[i];
    SCOPED_TRACE(testing::Message() << "case " << i << ", inside " << event);
    SetUp();
    const bool armed = !event.empty() && event != "yield";
    if (event == "yield") loop_.post(destroy_);
    if (armed) host_.inside[event] = destroy_;
    run();
    EXPECT_EQ(ticket_, nullptr);
    EXPECT_EQ(host_.count("ErrorMsg"), event == "ErrorMsg");
    EXPECT_EQ(raised.empty() ? raised : host_.names(), raised);
    EXPECT_EQ(host_.count(event), armed ? 1 : 0);
    EXPECT_EQ(armed ? LastEvent() : event, event);
  }
}

}  // namespace
}  // namespace quillon
