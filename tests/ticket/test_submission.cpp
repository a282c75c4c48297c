// From a filled form to the events that carry the order out: type and validity, the
// statement, Yes and No, the expiry, quick deals, withdrawal and the trade panel.

#include <algorithm>

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class SubmissionTest : public TicketTest {
 protected:
  void SetUp() override {
    SetUpUser();
    ticket_->setDealingGateway(42);
    OpenBlankForValue();
    host_.events.clear();
  }
  Form& form() { return f().controls(); }
  void Click(Control& c) { ASSERT_TRUE(form().userClick(c)) << c.fullName(); }
  void Amount(const std::string& text) { form().userPaste(f().txtPrimQty, text); }
  const RecordedEvent& Last(const std::string& name) {
    const RecordedEvent* e = host_.last(name);
    if (!e) throw std::runtime_error("no " + name);
    return *e;
  }
};

TEST_F(SubmissionTest, OrderTypesReshapeTheForm) {
  Click(f().optType(2));
  EXPECT_EQ(m().OrderType, LIMIT_ORDER);
  EXPECT_TRUE(f().txtLimit.Visible() && !f().txtLimit.Locked());
  EXPECT_FALSE(f().txtPrice.Visible());
  EXPECT_TRUE(f().fraValid.Visible());
  EXPECT_TRUE(f().lblValueDate.FontStrikethru());
  EXPECT_FALSE(f().cmdBuySell(0).Visible());
  EXPECT_FALSE(f().cmdOKCancel(0).Enabled());  // a limit at the market fails the check

  Click(f().optType(4));
  EXPECT_EQ(m().Action, ACTION_OCO);
  EXPECT_TRUE(f().txtStop.Visible() && f().udLimit.Visible() && f().udStop.Visible());

  Click(f().optType(5));
  EXPECT_EQ(m().Action, ACTION_NONE);
  EXPECT_FALSE(f().optBuySell(0).Visible());
  EXPECT_EQ(f().txtPrice.Text(), "   -   ");
  EXPECT_EQ(m().Duration, kNoDate);
  EXPECT_EQ(f().Label1(4).Caption(), "EUR");

  Click(f().optType(1));
  EXPECT_TRUE(f().cmdBuySell(0).Visible());
  EXPECT_FALSE(f().lblValueDate.FontStrikethru());

  // Day order on a limit, Market forces GTC, back on Limit keeps GTC.
  Click(f().optType(2));
  Click(f().optValid(0));
  EXPECT_NE(m().Duration, kNoDate);
  Click(f().optType(1));
  Click(f().optType(2));
  EXPECT_TRUE(f().optValid(1).Value());
}

TEST_F(SubmissionTest, StatementReadsAsTheOrderWillGo) {
  host_.prices[kEurUsd] = Price(1.2300, 1.2305);  // a sell limit at 1.2345 lies above the bid
  Click(f().optBuySell(1));
  Click(f().optType(2));
  Click(f().optValid(0));
  Amount("1000");
  form().userPaste(f().txtLimit, "1.2345");
  Click(f().cmdOKCancel(0));
  EXPECT_TRUE(f().fraConf.Visible());
  EXPECT_EQ(f().lblConfCurrs.Caption(), "Sell  EUR vs USD");
  EXPECT_EQ(f().lblConfirm.Caption(),
            "To: Halden Bank\r\nFrom: Main\r\n\r\nI wish to place a limit order at 1.2345 to sell "
            "1,000.00 EUR vs USD value 05-Mar-2002 (Day Order).");
  EXPECT_EQ(f().Label1(12).Caption(),
            "NOTE: This order is not executed until confirmed by Halden Bank with a green order "
            "ticket.");
  EXPECT_EQ(form().focused(), &f().cmdOKCancel(4));
  EXPECT_FALSE(f().cmdOKCancel(2).Enabled());
  EXPECT_EQ(f().Timer1.Interval(), 5000);
  EXPECT_EQ(Last("ResizeTicket").args[0], "1");

  // The OCO pair, and a second opening builds afresh.
  Click(f().cmdOKCancel(4));
  Click(f().optType(4));
  form().userPaste(f().txtLimit, "1.2345");
  form().userPaste(f().txtStop, "1.1234");
  Click(f().optValid(1));
  Click(f().cmdOKCancel(0));
  EXPECT_EQ(f().lblConfirm.Caption(),
            "To: Halden Bank\r\nFrom: Main\r\n\r\nI wish to place two orders worked OCO.  A limit "
            "order at 1.2345 and a stop loss order at 1.1234, both to sell 1,000.00 EUR vs USD "
            "value 05-Mar-2002 (GTC).");
}

TEST_F(SubmissionTest, TwoWayRequestReadsTheSameOnBothSides) {
  Click(f().optType(5));
  Click(f().cmdOKCancel(0));
  const std::string buy = f().lblConfirm.Caption();
  EXPECT_EQ(f().lblConfCurrs.Caption(), " EUR vs USD");
  Click(f().cmdOKCancel(4));
  probe().f().optBuySell(1).setValue(true);
  Click(f().cmdOKCancel(0));
  EXPECT_EQ(f().lblConfirm.Caption(), buy);
  EXPECT_NE(buy.find("a two-way quote request for 100,000.00 EUR vs USD"), std::string::npos);
  EXPECT_NE(buy.find("(GTC)."), std::string::npos);
}

TEST_F(SubmissionTest, YesSendsExactlyOneOrderAndWaits) {
  Amount("1000");
  Click(f().cmdOKCancel(0));
  host_.events.clear();
  Click(f().cmdOKCancel(3));
  EXPECT_EQ(host_.names(),
            (std::vector<std::string>{"Connected", "GID", "VtOrderGenericNew", "ResizeTicket"}));
  const auto& args = Last("VtOrderGenericNew").args;
  ASSERT_EQ(args.size(), 24u);
  EXPECT_EQ((std::vector<std::string>(args.begin(), args.begin() + 4)),
            (std::vector<std::string>{"42", "0", "1", "10"}));  // gateway, order, account, inst
  EXPECT_EQ(f().lblReason.Caption(), "Placing order, please wait...");
  EXPECT_FALSE(f().fraConf.Visible());
  EXPECT_TRUE(f().cmdOKCancel(2).Enabled());
  EXPECT_FALSE(f().cmdOKCancel(0).Enabled());
  EXPECT_FALSE(loop_.isRunning(f().Timer1));
}

// Every side, both quantity boxes and each single-order type: the sign follows the option,
// the price follows the type, the validity frame decides the duration, and the GID comes
// fresh from the event just before.
TEST_F(SubmissionTest, EverySideQuantityAndTypeGoesOutAsTheFormSays) {
  // Bid 1.2345, offer 1.2350: a buy limit below the offer, a buy stop above it, and the
  // mirror for a sell.
  loop_.setClock(36951.25);
  for (const int type : {MARKET_ORDER, LIMIT_ORDER, STOPLOSS_ORDER, TWOWAY_ORDER}) {
    for (int side = 0; side < 2; ++side) {
      for (bool secondary : {false, true}) {
        SCOPED_TRACE("type " + std::to_string(type) + (side ? " sell" : " buy") +
                     (secondary ? " secondary" : " primary"));
        OpenBlankForValue();
        Click(f().optType(type));
        if (type != TWOWAY_ORDER) Click(f().optBuySell(side));
        // The secondary buttons are hidden on the shipped form; they work once shown.
        probe().f().cmdContract(4).setVisible(secondary);
        Click(f().cmdContract(secondary ? 4 : 1));
        // A secondary amount turns the sides of the market round.
        const bool buyBase = (side == 0) != secondary;
        if (type == LIMIT_ORDER) {
          form().userPaste(f().txtLimit, buyBase ? "1.2200" : "1.2500");
          Click(f().optValid(0));  // a day order: the trading day's end goes out
        }
        if (type == STOPLOSS_ORDER) form().userPaste(f().txtStop, buyBase ? "1.2500" : "1.2200");
        ASSERT_TRUE(f().cmdOKCancel(0).Enabled());
        Click(f().cmdOKCancel(0));
        host_.events.clear();
        Click(f().cmdOKCancel(3));

        ASSERT_EQ(host_.count("VtOrderGenericNew"), 1);
        const auto& names = host_.names();
        const auto sent = std::find(names.begin(), names.end(), "VtOrderGenericNew");
        ASSERT_NE(sent, names.begin());
        EXPECT_EQ(*(sent - 1), "GID");
        const auto& args = Last("VtOrderGenericNew").args;
        const bool buy = type == TWOWAY_ORDER || side == 0;
        EXPECT_GT(m().Quantity, 0);
        EXPECT_EQ(args[4], RecordingHost::S(buy ? m().Quantity : -m().Quantity));
        EXPECT_EQ(args[5], secondary ? "1" : "0");
        const double price = type == LIMIT_ORDER      ? m().LimitPrice
                             : type == STOPLOSS_ORDER ? m().StopPrice
                                                        : m().MarketPrice;
        EXPECT_EQ(args[6], RecordingHost::S(price));
        if (type == TWOWAY_ORDER) {
          EXPECT_EQ(args[6], "0");
        } else if (type == LIMIT_ORDER) {
          EXPECT_EQ(args[6], buyBase ? "1.22" : "1.25");
          EXPECT_NE(args[8], "32874");
        }
        EXPECT_EQ(args[7], std::to_string(type));
        const bool validity = type == LIMIT_ORDER || type == STOPLOSS_ORDER;
        EXPECT_EQ(args[8], validity ? RecordingHost::S(m().Duration) : "32874");
        EXPECT_EQ(args[9], "36951.25");
        EXPECT_EQ(args[10], "37320");
        EXPECT_EQ(args[11], "0");
        EXPECT_EQ(m().Status, ORDER_ACTIVE_INTERNAL);
        EXPECT_EQ(args[20], Last("GID").args[0]);
        EXPECT_EQ(args[20], std::to_string(m().GID));
        EXPECT_EQ(args[23], "0");
      }
    }
  }
}

// A ticket the host opened as a manual trade on a market form sends a trade, not an order.
TEST_F(SubmissionTest, ManualTradeGoesOutAsATradeWithItsOwnArguments) {
  ticket_->setCompanyCtrPty(0);
  probe().m().Status = ORDER_PLACED;  // so that the ticket takes a foreign order number
  Initialise(Msg{.OrderID = 55, .AccountID = 1, .InstrumentID = kEurUsd, .OrderType = MANUAL_TRADE,
                 .ValueDate = 37320, .CounterpartyID = 8, .FreeFormat = "desk note",
                 .CounterPartySystemID = 9});
  ASSERT_EQ(m().OrderType, MANUAL_TRADE);
  Click(f().optBuySell(1));
  Amount("1000");
  // No counter amount is shown for a trade, so the form's check never passes.
  EXPECT_FALSE(f().cmdOKCancel(0).Enabled());
  probe().f().cmdOKCancel(0).setEnabled(true);
  Click(f().cmdOKCancel(0));
  EXPECT_NE(f().lblConfirm.Caption().find("a manual trade at 1.2345 to sell 1,000.00 EUR vs USD"),
            std::string::npos)
      << f().lblConfirm.Caption();
  host_.events.clear();
  loop_.setClock(36951.75);
  Click(f().cmdOKCancel(3));

  EXPECT_EQ(host_.count("VtOrderGenericNew"), 0);
  ASSERT_EQ(host_.count("VtTradeGenericNew"), 1);
  const auto& args = Last("VtTradeGenericNew").args;
  ASSERT_EQ(args.size(), 23u);
  EXPECT_EQ(args[1], "0");                   // TradeID
  EXPECT_EQ(args[4], "-1000");
  EXPECT_EQ(args[6], RecordingHost::S(m().MarketPrice));  // the market, whatever the type
  EXPECT_EQ(args[7], "7");
  EXPECT_EQ(args[8], "36951.75");
  EXPECT_EQ(args[10], "20");                 // Status 20, set before the event
  EXPECT_EQ(args[12], "0");                  // OrderID
  EXPECT_EQ(args[17], "desk note");
  EXPECT_EQ(args[19], Last("GID").args[0]);
  EXPECT_EQ(args[20], "8");                  // the counterparty, not its system id
  EXPECT_EQ(m().Status, TRADE_MANUAL);
  EXPECT_EQ(m().OrderID, 0);

  // A failed delivery of a trade shows nothing: only an order in flight is replayed.
  const std::string reason = f().lblReason.Caption();
  Long from = 0;
  Integer gid = m().GID;
  Boolean ok = false;
  ticket_->GuaranteedMsgAck(from, gid, ok);
  EXPECT_EQ(m().Status, TRADE_MANUAL);
  EXPECT_EQ(m().GID, -1);
  EXPECT_EQ(f().lblReason.Caption(), reason);
}

TEST_F(SubmissionTest, OcoGoesOutAsTwoLegsWithoutAGuarantee) {
  Click(f().optType(4));
  form().userPaste(f().txtLimit, "1.2300");
  form().userPaste(f().txtStop, "1.2400");
  Click(f().cmdOKCancel(0));
  host_.events.clear();
  Click(f().cmdOKCancel(3));
  EXPECT_EQ(host_.count("GID"), 0);
  ASSERT_EQ(host_.count("VtOrderGenericArray"), 1);
  const auto& args = Last("VtOrderGenericArray").args;
  EXPECT_EQ(args[0], "42");
  EXPECT_EQ(args[4], "[100000,100000]");
  EXPECT_EQ(args[6], "[1.23,1.24]");  // prices: limit leg, stop leg
  EXPECT_EQ(args[7], "[2,3]");
  EXPECT_EQ(args[16], "[1,1]");       // ACTION_OCO on both legs
  EXPECT_EQ(args[22], "-1");          // GID
  EXPECT_EQ(m().GID, 0);

  // A sell pair: both legs negative, and the member's duration goes out whatever the frame.
  OpenBlankForValue();
  Click(f().optType(4));
  Click(f().optBuySell(1));
  form().userPaste(f().txtLimit, "1.2400");
  form().userPaste(f().txtStop, "1.2300");
  Click(f().optValid(0));
  Click(f().cmdOKCancel(0));
  Click(f().cmdOKCancel(3));
  const auto& sell = Last("VtOrderGenericArray").args;
  const std::string duration = RecordingHost::S(m().Duration);
  EXPECT_EQ(sell[4], "[-100000,-100000]");
  EXPECT_EQ(sell[6], "[1.24,1.23]");
  EXPECT_EQ(sell[8], "[" + duration + "," + duration + "]");
  EXPECT_EQ(sell[11], "[0,0]");
}

TEST_F(SubmissionTest, NotConnectedSaysSoAndChangesNothing) {
  host_.connected = false;
  Click(f().cmdBuySell(1));
  EXPECT_EQ(Last("Message").args[0], "You are not currently connected");
  EXPECT_FALSE(f().fraConf.Visible());
  EXPECT_TRUE(f().optBuySell(0).Value());

  host_.connected = true;
  Click(f().cmdOKCancel(0));
  host_.connected = false;
  Click(f().cmdOKCancel(3));
  EXPECT_TRUE(f().fraConf.Visible());
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 0);
  // The panel still closes by itself, silently.
  loop_.advance(5000);
  EXPECT_FALSE(f().fraConf.Visible());
  EXPECT_EQ(m().Status, -1);
  EXPECT_EQ(host_.count("Message"), 2);
  EXPECT_EQ(form().focused(), &f().txtPrimQty);
}

TEST_F(SubmissionTest, QuickDealPicksTheSideByTheRulingCurrency) {
  Click(f().cmdBuySell(0));
  EXPECT_EQ(f().lblConfCurrs.Caption(), "Sell  EUR vs USD");
  Click(f().cmdOKCancel(4));
  Click(f().cmdBuySell(1));
  EXPECT_TRUE(f().optBuySell(0).Value());
  EXPECT_TRUE(f().fraConf.Visible());
}

TEST_F(SubmissionTest, WithdrawalSendsTheOrdersOwnQuantityAndReasonSix) {
  Msg pending{.OrderID = 77, .AccountID = 1, .InstrumentID = kEurUsd, .Quantity = -1000,
              .Price = 1.3, .OrderType = LIMIT_ORDER, .Status = ORDER_PENDING, .Reason = 3};
  probe().m().Status = ORDER_PLACED;  // a ticket that holds no order takes any on its instrument
  Initialise(pending);
  host_.events.clear();
  Click(f().cmdOKCancel(1));
  EXPECT_EQ(host_.names(), (std::vector<std::string>{"Connected", "GID", "VtOrderGenericNew"}));
  const auto& args = Last("VtOrderGenericNew").args;
  EXPECT_EQ(args[1], "77");
  EXPECT_EQ(args[4], "-1000");
  EXPECT_EQ(args[11], "19");
  EXPECT_EQ(args[14], "6");
  EXPECT_EQ(m().Status, ORDER_CANCEL_REQUEST);
  EXPECT_EQ(m().Reason, 3);
  EXPECT_FALSE(f().cmdOKCancel(1).Enabled());

  pending.Status = ORDER_ACTIVE;
  Initialise(pending);
  Click(f().cmdOKCancel(1));
  EXPECT_EQ(Last("VtOrderGenericNew").args[11], "13");
  EXPECT_EQ(m().Status, ORDER_CANCELLED_INTERNAL);
}

TEST_F(SubmissionTest, TradePanelButtonsAndClose) {
  Initialise(Msg{.AccountID = 1, .InstrumentID = kEurUsd, .Quantity = 1000, .Price = 1.25,
                 .Status = ORDER_EXECUTED});
  ASSERT_TRUE(f().fraTradeConf.Visible());
  Click(f().cmdOKCancel(5));
  EXPECT_FALSE(f().fraTradeConf.Visible());
  EXPECT_EQ(form().focused(), &f().cmdOKCancel(2));
  host_.events.clear();
  Click(f().cmdOKCancel(2));
  EXPECT_EQ(host_.names(), std::vector<std::string>{"CloseTicket"});
}

}  // namespace
}  // namespace quillon
