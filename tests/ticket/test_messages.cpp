// Order and trade messages, guaranteed delivery, the trade confirmation and its printing,
// and the equity that completes it.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class RecordingPrinter : public HtmlPrinter {
 public:
  int jobs = 0;
  void print(const std::string&, Long, Long) override { ++jobs; }
};

class MessagesTest : public TicketTest {
 protected:
  void SetUp() override {
    ticket_ = std::make_unique<Clientticket>(TicketServices{&loop_, nullptr, &printer_, &locale_});
    ticket_->setHost(&host_);
    SetUpUser(0x0004 | 0x0080 | 0x0002);  // live
    OpenBlankForValue();
  }
  // Places a sell limit order at 1.2400 and confirms it: the ticket waits in 21.
  void SendSellLimit() {
    Click(f().optBuySell(1));
    Click(f().optType(2));
    form().userPaste(f().txtLimit, "1.2400");
    Click(f().cmdOKCancel(0));
    Click(f().cmdOKCancel(3));
    ASSERT_EQ(m().Status, ORDER_ACTIVE_INTERNAL);
  }
  void Ack(Integer gid, Boolean success) { Call(&Clientticket::GuaranteedMsgAck, 0, gid, success); }
  void Equity(Long account, double equity) {
    Call(&Clientticket::ReceivedEquity, account, equity, 5.0);
  }

  RecordingPrinter printer_;
};

TEST_F(MessagesTest, FailedDeliveryReplaysTheOrderAsItWasSent) {
  SendSellLimit();
  const Integer sent = m().GID;
  Ack(sent + 1, false);  // another message's report
  EXPECT_EQ(m().GID, sent);
  Ack(sent, false);
  EXPECT_EQ(m().GID, -1);
  EXPECT_EQ(f().lblReason.Caption(),
            "Your order may not have been received by Norvane.  Please contact the dealers.");
  EXPECT_TRUE(f().optBuySell(1).Value());
  EXPECT_EQ(f().txtLimit.Text(), "1.2400");
  EXPECT_FALSE(f().fraOrderEntry.Enabled());
  // The same report again finds no number to match.
  host_.events.clear();
  Ack(sent, false);
  EXPECT_TRUE(host_.events.empty());
}

TEST_F(MessagesTest, ASuccessfulReportOnlyClearsTheNumber) {
  SendSellLimit();
  Ack(m().GID, true);
  EXPECT_EQ(m().GID, -1);
  EXPECT_EQ(f().lblReason.Caption(), "Placing order, please wait...");
}

TEST_F(MessagesTest, MessageMethodsFillWhatTheirShapeLacks) {
  Execute(-1000, 77);
  EXPECT_EQ(m().TradeID, 77);
  EXPECT_EQ(m().Duration, loop_.now());  // a trade lasts the present moment

  // A pending OCO limit linked to order 5, then its cancellation.
  Call(&Clientticket::OrderGenericPending, 0, 0, 1, kEurUsd, 1000.0, 0, 1.2, LIMIT_ORDER, kNoDate,
       0.0, 0.0, ORDER_PENDING, 5, ACTION_OCO, 0, 0, 0, "", 0, false, 0, 0);
  EXPECT_EQ(m().TradeID, 0);
  EXPECT_EQ(m().LinkID, 5);
  Call(&Clientticket::OrderGenericCancel, 0, 0, 1, kEurUsd, 1000.0, 0, 1.2, LIMIT_ORDER, kNoDate,
       0.0, 0.0, ORDER_CANCELLED, 0, 0, 0, "", 0, false, 0, 0, 0.0, 0.0);
  EXPECT_EQ(m().LinkID, 0);
  EXPECT_EQ(m().Action, ACTION_NONE);
  EXPECT_EQ(m().Status, ORDER_CANCELLED);
}

TEST_F(MessagesTest, TradeConfirmationTakesItsOwnAccountsEquityOnce) {
  Execute(-1000, 77);
  ASSERT_TRUE(f().fraTradeConf.Visible());
  const std::string before = f().txtEquity.Text();
  Equity(2, 1000);  // another account
  Equity(1, -1234.5);  // only once: golden orders_of_each_type and the demo desk
  const std::string caption = f().lblTradeConf.Caption();
  EXPECT_EQ(caption.substr(caption.find("equity is")),
            "equity is (1,234.50)\r\nUnless stated otherwise, Halden Bank acts as a principal in "
            "all trades.");
  EXPECT_EQ(f().txtEquity.Text(), before);

  // A later execution on the same ticket is not completed again.
  Execute(2000, 78, QTY_SECONDARY);
  Equity(1, 5);
  EXPECT_NE(f().lblTradeConf.Caption().find("bought 2,000.00 USD vs EUR"), std::string::npos);
  EXPECT_EQ(f().lblTradeConf.Caption().find("Unless"), std::string::npos);
}

// The confirmation reads each piece where it is worded: while the host is asked for the pair
// it renames the account and reports another execution; the amount was taken before, and the
// name in the second place, after the pair, is the new one.
TEST_F(MessagesTest, ConfirmationReadsEachPieceWhereItIsWorded) {
  // The pair's questions come after the intake's three look-ups and two price requests.
  host_.inside["VtPriceGetArray"] = [&] {
    host_.inside["VtPriceGetArray"] = [&] {
      host_.inside["VtInstGetArray"] = [&] {
        Call(&Clientticket::LoadAccount, 1, "Renamed", 0);
        Execute(2000, 78);
      };
    };
  };
  Execute(-1000, 77);
  const std::string caption = f().lblTradeConf.Caption();
  EXPECT_NE(caption.find("To: Main\r\n"), std::string::npos) << caption;
  EXPECT_NE(caption.find("you have sold 1,000.00 EUR vs USD value"), std::string::npos) << caption;
  EXPECT_NE(caption.find("for account Renamed at a price of"), std::string::npos) << caption;
}

// Print leaves the panel and its caption alone; OK closes the panel, and Close the ticket.
TEST_F(MessagesTest, TradePanelPrintsAnEmptyTestTradeThenClosesWithTheTicket) {
  ticket_->setAccountType(0x0004);  // not live
  Execute(0, 0);
  const std::string caption = f().lblTradeConf.Caption();
  EXPECT_NE(caption.find("you have sold 0.00 EUR"), std::string::npos);
  Click(f().cmdOKCancel(6));
  EXPECT_EQ(printer_.jobs, 1);
  EXPECT_TRUE(f().fraTradeConf.Visible());
  EXPECT_EQ(f().lblTradeConf.Caption(), caption);
  Click(f().cmdOKCancel(5));
  EXPECT_FALSE(f().fraTradeConf.Visible());
  EXPECT_EQ(form().focused(), &f().cmdOKCancel(2));
  host_.events.clear();
  Click(f().cmdOKCancel(2));
  EXPECT_EQ(host_.names(), std::vector<std::string>{"CloseTicket"});
}

}  // namespace
}  // namespace quillon
