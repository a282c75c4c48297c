// From a filled form to the events that carry the order out: type and validity, the
// statement, Yes and No, quick deals, withdrawal and the trade panel.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class SubmissionTest : public TicketTest {
 protected:
  void SetUp() override {
    SetUpUser();
    ticket_->setDealingGateway(42);
    OpenBlankForValue();
  }
  const RecordedEvent& Last(const std::string& name) {
    const RecordedEvent* e = host_.last(name);
    if (!e) throw std::runtime_error("no " + name);
    return *e;
  }
};

TEST_F(SubmissionTest, OrderTypesReshapeTheForm) {
  Click(f().optType(2));
  EXPECT_TRUE(f().txtLimit.Visible() && !f().txtLimit.Locked() && !f().txtPrice.Visible());
  EXPECT_TRUE(f().fraValid.Visible() && f().lblValueDate.FontStrikethru());
  EXPECT_FALSE(f().cmdBuySell(0).Visible());
  EXPECT_FALSE(f().cmdOKCancel(0).Enabled());  // a limit at the market fails the check
  Click(f().optType(4));
  EXPECT_EQ(m().Action, ACTION_OCO);
  EXPECT_TRUE(f().txtStop.Visible() && f().udLimit.Visible() && f().udStop.Visible());
  Click(f().optType(5));
  EXPECT_EQ(m().Action, ACTION_NONE);
  EXPECT_FALSE(f().optBuySell(0).Visible());
  Click(f().optType(1));
  EXPECT_TRUE(f().cmdBuySell(0).Visible() && !f().lblValueDate.FontStrikethru());
  // Day order on a limit, Market forces GTC, back on Limit keeps GTC.
  Click(f().optType(2));
  Click(f().optValid(0));
  Click(f().optType(1));
  Click(f().optType(2));
  EXPECT_TRUE(f().optValid(1).Value());
}

TEST_F(SubmissionTest, StatementPanelAndTwoWayReadingTheSameOnBothSides) {
  host_.prices[kEurUsd] = Price(1.2300, 1.2305);  // a sell limit at 1.2345 lies above the bid
  Click(f().optBuySell(1));
  Click(f().optType(2));
  form().userPaste(f().txtLimit, "1.2345");
  Click(f().cmdOKCancel(0));
  EXPECT_TRUE(f().fraConf.Visible());  // its currency line: golden orders_of_each_type
  EXPECT_EQ(form().focused(), &f().cmdOKCancel(4));
  EXPECT_FALSE(f().cmdOKCancel(2).Enabled());

  Click(f().cmdOKCancel(4));
  Click(f().optType(5));
  Click(f().cmdOKCancel(0));
  const std::string sell = f().lblConfirm.Caption();
  EXPECT_EQ(f().lblConfCurrs.Caption(), " EUR vs USD");
  Click(f().cmdOKCancel(4));
  probe().f().optBuySell(0).setValue(true);
  Click(f().cmdOKCancel(0));
  EXPECT_EQ(f().lblConfirm.Caption(), sell);
}

// An account the list does not hold leaves its line out; the search yields for each account
// it passes, and what runs then sees the statement half built on the label.
TEST_F(SubmissionTest, StatementWithoutTheAccountIsBuiltOnTheLabelPieceByPiece) {
  probe().m().AccountID = 99;
  std::string halfBuilt;
  host_.inside["Connected"] = [&] { loop_.post([&] { halfBuilt = f().lblConfirm.Caption(); }); };
  Click(f().cmdOKCancel(0));
  EXPECT_EQ(halfBuilt, "To: Halden Bank\r\nFrom: ");
  const std::string statement = f().lblConfirm.Caption();
  EXPECT_EQ(statement.rfind("To: Halden Bank\r\nFrom: \r\nI wish to place a market", 0), 0u)
      << statement;
}

// The two prices of an OCO statement are read in order: what runs in the yield of the limit's
// text (here a change of both prices, as a message taken then would make) shows in the stop's.
TEST_F(SubmissionTest, OcoStatementReadsTheLimitBeforeTheStop) {
  Click(f().optType(4));
  form().userPaste(f().txtLimit, "1.2300");
  form().userPaste(f().txtStop, "1.2400");
  host_.inside["Connected"] = [&] {
    loop_.post([&] { probe().m().LimitPrice = 1.1, probe().m().StopPrice = 1.3; });
  };
  Click(f().cmdOKCancel(0));
  EXPECT_NE(
      f().lblConfirm.Caption().find("A limit order at 1.2300 and a stop loss order at 1.3000"),
      std::string::npos)
      << f().lblConfirm.Caption();
}

// Every side, both quantity boxes and each single-order type: the sign follows the option,
// the price follows the type, the validity frame decides the duration; exactly one order goes
// out and the ticket waits. The type, the market time and the GID as sent: golden
// orders_of_each_type.
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

        ASSERT_EQ(host_.names(), (std::vector<std::string>{"Connected", "GID", "VtOrderGenericNew",
                                                           "ResizeTicket"}));
        const auto& args = Last("VtOrderGenericNew").args;
        EXPECT_EQ(args[4], type == TWOWAY_ORDER || side == 0 ? "500000" : "-500000");
        EXPECT_EQ(args[5], secondary ? "1" : "0");
        // A market order deals at the side of the market the base currency is bought at.
        const char* price = type == TWOWAY_ORDER   ? "0"
                            : type == MARKET_ORDER ? (buyBase ? "1.235" : "1.2345")
                            : (type == LIMIT_ORDER) == buyBase ? "1.22" : "1.25";
        EXPECT_EQ(args[6], price);
        const bool validity = type == LIMIT_ORDER || type == STOPLOSS_ORDER;
        EXPECT_EQ(args[8], validity ? RecordingHost::S(m().Duration) : "32874");
        EXPECT_TRUE(type != LIMIT_ORDER || args[8] != "32874") << args[8];
        EXPECT_FALSE(f().fraConf.Visible() || f().cmdOKCancel(0).Enabled());
        EXPECT_TRUE(f().cmdOKCancel(2).Enabled());
      }
    }
  }
}

// The arguments before the GID are read before the GID is asked for: a quote the host sends
// for order 0 while it answers changes the ticket, not the order that is going out.
TEST_F(SubmissionTest, OrderArgumentsAreReadBeforeTheGidIsAskedFor) {
  Click(f().cmdOKCancel(0));
  host_.inside["GID"] = [&] {
    Call(&Clientticket::OrderGenericQuote, 0, 0, 1, kEurUsd, 300000.0, 0, 0.0, 0.0, 0, kNoDate, 0.0,
         0.0, 16, 8, 9, 0, "", 0, false, 4, 0, 0.0, 0.0);
  };
  Click(f().cmdOKCancel(3));
  ASSERT_EQ(m().CounterpartyID, 9);
  const auto& args = Last("VtOrderGenericNew").args;
  EXPECT_EQ((std::vector<std::string>{args[14], args[15]}), (std::vector<std::string>{"0", "0"}));
}

// An OCO pair goes out unguaranteed, with the ticket's own gateway, live flag and encryption:
// what the host writes into them stays with the ticket.
TEST_F(SubmissionTest, OcoPairCarriesTheMembersTheHostMayRewrite) {
  const auto toTheStatement = [&] {
    Click(f().optType(OCO_ORDER));
    form().userPaste(f().txtLimit, "1.2200");
    form().userPaste(f().txtStop, "1.2500");
    Click(f().cmdOKCancel(0));
    host_.events.clear();
  };
  // An action beyond 16 bits does not fit the pair's arrays: the pair does not go, and the
  // steps after it run.
  toTheStatement();
  probe().m().Action = 70000;
  Click(f().cmdOKCancel(3));
  EXPECT_EQ(host_.names(), (std::vector<std::string>{"Connected", "ResizeTicket"}));
  SetUp();
  toTheStatement();
  host_.rewriteOrderArray = [](Long& toID, Long& dummyLive, Boolean& encrypt) {
    toID = 43, dummyLive = DUMMY_TRADING, encrypt = true;
  };
  Click(f().cmdOKCancel(3));
  ASSERT_EQ(host_.names(),
            (std::vector<std::string>{"Connected", "VtOrderGenericArray", "ResizeTicket"}));
  const auto& args = Last("VtOrderGenericArray").args;
  EXPECT_EQ((std::vector<std::string>{args[0], args[6], args[7], args[22]}),
            (std::vector<std::string>{"42", "[1.22,1.25]", "[2,3]", "-1"}));
  EXPECT_EQ(m().GID, 0);
  EXPECT_EQ(ticket_->getDealingGateway(), 43);
  EXPECT_EQ(m().DummyLive, DUMMY_TRADING);
  EXPECT_TRUE(ticket_->getEncrypt());
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
  form().userPaste(f().txtPrimQty, "1000");
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
  // Status 20 is set before the event; the counterparty goes out, not its system id.
  EXPECT_EQ((std::vector<std::string>{args[4], args[7], args[8], args[10], args[17], args[19],
                                      args[20]}),
            (std::vector<std::string>{"-1000", "7", "36951.75", "20", "desk note",
                                      Last("GID").args[0], "8"}));

  // A failed delivery of a trade shows nothing: only an order in flight is replayed.
  const std::string reason = f().lblReason.Caption();
  Call(&Clientticket::GuaranteedMsgAck, 0, m().GID, false);
  EXPECT_EQ(m().Status, TRADE_MANUAL);
  EXPECT_EQ(m().GID, -1);
  EXPECT_EQ(f().lblReason.Caption(), reason);
}

// A quick deal picks the side by the ruling currency; not connected, it says so and changes
// nothing.
TEST_F(SubmissionTest, QuickDealPicksTheSideAndNotConnectedChangesNothing) {
  host_.connected = false;
  Click(f().cmdBuySell(1));
  EXPECT_EQ(Last("Message").args[0], "You are not currently connected");
  EXPECT_FALSE(f().fraConf.Visible());

  host_.connected = true;
  Click(f().cmdBuySell(0));  // a sell: golden orders_of_each_type pins its statement
  Click(f().cmdOKCancel(4));
  Click(f().cmdBuySell(1));
  EXPECT_TRUE(f().optBuySell(0).Value() && f().fraConf.Visible());
  host_.connected = false;
  Click(f().cmdOKCancel(3));
  EXPECT_TRUE(f().fraConf.Visible());
  EXPECT_EQ(host_.count("VtOrderGenericNew"), 0);
  // The panel still closes by itself, silently (the form it leaves: golden
  // orders_of_each_type).
  loop_.advance(5000);
  EXPECT_FALSE(f().fraConf.Visible());
  EXPECT_EQ(host_.count("Message"), 2);
}

TEST_F(SubmissionTest, WithdrawingAnActiveOrderSendsItsOwnQuantityAndReasonSix) {
  probe().m().Status = ORDER_PLACED;  // a ticket that holds no order takes any on its instrument
  Initialise(Msg{.OrderID = 77, .AccountID = 1, .InstrumentID = kEurUsd, .Quantity = -1000,
                 .Price = 1.3, .OrderType = LIMIT_ORDER, .Status = ORDER_ACTIVE, .Reason = 3});
  host_.events.clear();
  Click(f().cmdOKCancel(1));
  ASSERT_EQ(host_.count("VtOrderGenericNew"), 1);
  const auto& args = Last("VtOrderGenericNew").args;
  EXPECT_EQ((std::vector<std::string>{args[1], args[4], args[11], args[14]}),
            (std::vector<std::string>{"77", "-1000", "13", "6"}));
  EXPECT_EQ(m().Status, ORDER_CANCELLED_INTERNAL);
  EXPECT_EQ(m().Reason, 3);
  EXPECT_FALSE(f().cmdOKCancel(1).Enabled());

  // An action beyond 16 bits does not fit the event: the send fails and is passed over, no
  // number is drawn for it, and the ticket goes on to its next step.
  Initialise(Msg{.OrderID = 77, .AccountID = 1, .InstrumentID = kEurUsd, .Quantity = 1000,
                 .Price = 1.3, .OrderType = LIMIT_ORDER, .Status = ORDER_PENDING, .Action = 70000});
  ASSERT_EQ(m().Action, 70000);
  host_.events.clear();
  Click(f().cmdOKCancel(1));
  EXPECT_EQ(host_.names(), (std::vector<std::string>{"Connected"}));
  EXPECT_EQ(m().Status, ORDER_CANCEL_REQUEST);
}

}  // namespace
}  // namespace quillon
