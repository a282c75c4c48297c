// The form's tree, opening and closing it, painting it, and the display states.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class FormTest : public TicketTest {};

TEST_F(FormTest, TreeHoldsEveryControlWithItsDesignState) {
  const Form& form = f().controls();
  struct Case {
    const char* name;
    const char* parent;
    double left, top, width, height;
    int tab;
    bool visible, enabled;
  };
  const Case cases[] = {
      {"fraHide", "UserControl", 0, 0, 5550, 5685, 27, true, true},
      {"calValueDate", "UserControl", 2790, 360, 2700, 2370, 64, false, true},
      {"cmdOKCancel(1)", "UserControl", 2160, 5250, 1245, 345, 21, true, false},
      {"cmdOKCancel(0)", "UserControl", 135, 5250, 1245, 345, 20, true, false},
      {"cmdOKCancel(4)", "fraConf", 3480, 4050, 1155, 345, 26, true, true},
      {"cmdOKCancel(6)", "fraTradeConf", 3060, 2880, 1245, 345, 62, true, true},
      {"lblQuoteTime", "fraSubQuote", 1590, 540, 825, 285, 34, true, true},
      {"cmdContract(4)", "fraOrderEntry", 1620, 1320, 525, 225, 10, false, true},
      {"udSec", "fraOrderEntry", 2610, 1100, 240, 285, 65, false, true},
      {"txtOffer", "fraClientPrices", 3705, 225, 1275, 285, 70, true, true},
      {"txtEquity", "fraEquity", 1395, 315, 1275, 285, 55, true, true},
      {"fraValid", "fraOrderType", 90, 1845, 2070, 555, 59, false, true},
      {"optType(5)", "fraOrderType", 120, 600, 825, 225, 14, true, true},
      {"optValid(1)", "fraValid", 1170, 225, 810, 195, 60, true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Control* control = form.find(c.name);
    ASSERT_NE(control, nullptr);
    ASSERT_NE(control->parent(), nullptr);
    EXPECT_EQ(control->parent()->name(), c.parent);
    EXPECT_EQ(control->Left(), c.left);
    EXPECT_EQ(control->Top(), c.top);
    EXPECT_EQ(control->Width(), c.width);
    EXPECT_EQ(control->Height(), c.height);
    EXPECT_EQ(control->tabIndex, c.tab);
    EXPECT_EQ(control->Visible(), c.visible);
    EXPECT_EQ(control->Enabled(), c.enabled);
  }
  EXPECT_TRUE(f().optValid(0).Value());
  EXPECT_FALSE(f().optValid(1).Value());
  EXPECT_TRUE(f().txtSecQty.Locked());
  EXPECT_EQ(f().txtPrimQty.maxLength, 18);
  EXPECT_EQ(f().txtStop.maxLength, 15);
  EXPECT_EQ(f().txtBid.BackColor(), static_cast<Long>(0x80000004));
  EXPECT_EQ(f().lblQuotePrice.ForeColor(), 0x0000FF00);
  EXPECT_TRUE(f().lblConfCurrs.font.bold);
  EXPECT_EQ(f().Timer1.Interval(), 0);
  EXPECT_EQ(form.find("optType(0)"), nullptr);
  EXPECT_EQ(form.find("Label1(2)"), nullptr);
  // Every array element is reachable by name, and the arrays have their gaps.
  for (int i : {0, 1, 4, 6, 10, 12}) EXPECT_NE(form.find("Label1(" + std::to_string(i) + ")"), nullptr);
  for (int i = 0; i <= 6; ++i) EXPECT_TRUE(f().cmdOKCancel.has(i));
  EXPECT_FALSE(f().cmdOKCancel.has(7));
}

TEST_F(FormTest, EnableOpensAndClosesTheFormButNeverTheCloseButton) {
  probe().f().fraConf.setVisible(true);
  probe().Enable(false);
  EXPECT_FALSE(f().cmbAccount.Enabled());
  EXPECT_FALSE(f().cmdValue.Enabled());
  EXPECT_FALSE(f().fraOrderEntry.Enabled());
  EXPECT_FALSE(f().cmdOKCancel(0).Enabled());
  EXPECT_FALSE(f().cmdOKCancel(1).Enabled());
  EXPECT_TRUE(f().cmdOKCancel(2).Enabled());
  EXPECT_FALSE(f().fraConf.Visible());
  // What a disabled frame holds takes no input, its own flag untouched.
  EXPECT_TRUE(f().txtPrimQty.Enabled());
  EXPECT_FALSE(f().txtPrimQty.isEffectivelyEnabled());

  probe().f().fraConf.setVisible(true);
  probe().f().cmdOKCancel(2).setEnabled(false);
  probe().Enable(true);
  EXPECT_TRUE(f().cmdOKCancel(0).Enabled());
  EXPECT_TRUE(f().cmdOKCancel(1).Enabled());
  EXPECT_TRUE(f().cmdOKCancel(2).Enabled());
  EXPECT_FALSE(f().fraConf.Visible());
}

TEST_F(FormTest, TicketColourPaintsTheEntryBoxesInTheSecondColour) {
  probe().SetColour(0x00112233, 0x00445566);
  for (const char* name : {"txtLimit", "txtStop", "txtPrimQty", "txtSecQty"})
    EXPECT_EQ(f().controls().find(name)->BackColor(), 0x00445566) << name;
  for (const char* name :
       {"UserControl", "fraHide", "fraOrderType", "fraTradeConf", "optType(1)", "optType(4)",
        "fraValid", "optValid(1)", "fraOrderEntry", "fraConf", "fraQuote", "fraSubQuote",
        "txtPrice", "txtBid", "txtOffer", "fraClientPrices", "lblBid", "lblOffer",
        "optBuySell(0)", "optBuySell(1)", "fraEquity", "lblEquity", "lblTradLimit", "txtEquity",
        "txtTradLimit"})
    EXPECT_EQ(f().controls().find(name)->BackColor(), 0x00112233) << name;
  // Controls outside the list keep their colours.
  EXPECT_EQ(f().lblReason.BackColor(), static_cast<Long>(0x8000000E));
  EXPECT_EQ(f().lblQuoteTime.BackColor(), 0);
}

// One message per status on a blank ticket, and what the ticket shows for it.
TEST_F(FormTest, StatusChoosesColourWordsAndCancelRequest) {
  host_.reasons[4] = "Rejected by dealer";
  struct Case {
    Long status;
    Long colour;  // 0: the colour the ticket had
    bool cancelRequest, orderNumber;
    const char* reason;
  };
  const Long grey = static_cast<Long>(0x8000000F);
  const Case cases[] = {
      {1, 0x0000FFFF, true, true, "Your order has been received, please wait for a confirmation"},
      {9, 0x0000FFFF, true, true, "Your order has been received, please wait for a confirmation"},
      {2, 0x00FFFFFF, false, true, "Rejected by dealer"},
      {5, 0x00FFFF00, true, true, "Order pending"},
      {29, 0x00FFFF00, false, true, "You do not have enough equity to cancel this order"},
      {21, grey, false, false,
       "Your order may not have been received by Norvane.  Please contact the dealers."},
      {0, grey, false, true, ""},
      {19, grey, false, true, ""},
      {4711, grey, false, true, ""},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.status);
    OpenBlank();
    Msg msg;
    msg.OrderID = 0;
    msg.InstrumentID = kEurUsd;
    msg.Status = c.status;
    msg.Reason = 4;
    msg.Quantity = 100000;
    msg.Price = 1.2;
    Initialise(msg);
    EXPECT_EQ(f().UserControl.BackColor(), c.colour);
    EXPECT_EQ(f().fraOrderEntry.BackColor(), c.colour);
    EXPECT_EQ(f().cmdOKCancel(1).Enabled(), c.cancelRequest);
    EXPECT_FALSE(f().cmdOKCancel(0).Enabled());
    EXPECT_TRUE(f().cmdOKCancel(2).Enabled());
    EXPECT_FALSE(f().fraOrderEntry.Enabled());
    EXPECT_EQ(f().lblOrderID.Visible(), c.orderNumber);
    EXPECT_EQ(f().lblReason.Caption(), c.reason);
    EXPECT_FALSE(f().fraHide.Visible());
  }
}

TEST_F(FormTest, PendingOcoWarnsAndCancelledShowsThePlainPrice) {
  OpenBlank();
  Msg oco;
  oco.InstrumentID = kEurUsd;
  oco.Status = ORDER_PENDING;
  oco.Action = ACTION_OCO;
  oco.Quantity = 1000;
  Initialise(oco);
  EXPECT_EQ(f().lblReason.Caption(),
            "OCO order pending\r\nShould you decide to offset your position by placing another "
            "order, it is your responsibility to cancel this OCO order.");
  EXPECT_TRUE(f().lblReason.Visible());

  oco.Status = ORDER_ACTIVE;
  Initialise(oco);
  EXPECT_EQ(f().lblReason.Caption(),
            "Your order has been received, please wait for a confirmation");

  Msg cancelled;
  cancelled.InstrumentID = kEurUsd;
  cancelled.Status = ORDER_CANCELLED;
  cancelled.OrderType = LIMIT_ORDER;
  cancelled.Price = 1.5;
  Initialise(cancelled);
  EXPECT_EQ(f().txtLimit.Text(), "1.5");
  EXPECT_EQ(f().txtPrice.Text(), "1.5");
  EXPECT_FALSE(f().fraValid.Visible());
}

TEST_F(FormTest, BlankFormResetsEverythingAndAsksForPricesOnlyWhenConnected) {
  for (bool connected : {false, true}) {
    SCOPED_TRACE(connected);
    host_.connected = connected;
    host_.events.clear();
    ticket_->setPriceRequestGroup(7);
    ticket_->setCompanyCtrPty(3);
    OpenBlank();
    EXPECT_EQ(host_.count("VtPriceGenericRequest"), connected ? 1 : 0);
    if (connected) {
      EXPECT_EQ(host_.last("VtPriceGenericRequest")->args,
                (std::vector<std::string>{"7", "10", "3"}));
    }
    ASSERT_NE(host_.last("RequestEquity"), nullptr);
    EXPECT_EQ(host_.last("RequestEquity")->args, (std::vector<std::string>{"0", "-1"}));
    EXPECT_EQ(host_.names().back(), "RequestEquity");
    EXPECT_EQ(m().Status, -1);
    EXPECT_EQ(m().MarketPrice, 1.2350);
    EXPECT_EQ(m().LimitPrice, 1.2350);
    EXPECT_EQ(m().StopPrice, 1.2350);
    EXPECT_EQ(f().UserControl.BackColor(), static_cast<Long>(0x8000000F));
    EXPECT_EQ(f().txtPrimQty.BackColor(), static_cast<Long>(0x8000000E));
    EXPECT_EQ(f().txtSecQty.BackColor(), static_cast<Long>(0x8000000F));
    EXPECT_EQ(f().txtPrice.Text(), "1.2350");
    EXPECT_EQ(f().txtBid.Text(), "1.2345");
    EXPECT_EQ(f().txtOffer.Text(), "1.2350");
    EXPECT_EQ(f().txtPrimQty.Text(), "100,000.00");
    EXPECT_EQ(f().lblReason.Caption(), "Please enter your order details.");
    EXPECT_TRUE(f().optBuySell(0).Value());
    EXPECT_TRUE(f().optValid(0).Value());
    EXPECT_FALSE(f().lblOrderID.Visible());
    EXPECT_FALSE(f().cmdOKCancel(1).Enabled());
    EXPECT_TRUE(f().fraOrderEntry.Enabled());
    EXPECT_FALSE(f().fraHide.Visible());
  }
}

TEST_F(FormTest, BlankFormChoosesQuoteThenStopWhenMarketIsClosed) {
  struct Case {
    Integer rights;
    Integer instStatus;
    int selected;  // 0: none
  };
  const Case cases[] = {
      {0x0004, 0, 1},
      {0x0400, 0, 5},
      {0x0080, 0, 3},
      {0x0000, 0, 0},
      {0x0000, 1, 5},  // a quote-only instrument opens Quote whatever the rights
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.rights);
    ticket_ = std::make_unique<Clientticket>(TicketServices{&loop_, nullptr, nullptr, &locale_});
    ticket_->setHost(&host_);
    ticket_->setLanguage(1);
    ticket_->setAccountType(c.rights);
    host_.instruments[kEurUsd].Status = c.instStatus;
    Msg msg;
    msg.InstrumentID = kEurUsd;
    msg.Status = -1;
    Initialise(msg);
    for (int i = 1; i <= 5; ++i) EXPECT_EQ(f().optType(i).Value(), i == c.selected) << i;
  }
}

TEST_F(FormTest, ExecutedOrderSelectsNoTypeAndShowsItsPrice) {
  OpenBlank();
  Msg done;
  done.InstrumentID = kEurUsd;
  done.Status = ORDER_EXECUTED;
  done.OrderType = LIMIT_ORDER;
  done.Price = 1.25;
  done.Quantity = 100000;
  Initialise(done);
  for (int i = 1; i <= 5; ++i) EXPECT_FALSE(f().optType(i).Value());
  EXPECT_TRUE(f().txtPrice.Visible());
  EXPECT_FALSE(f().txtLimit.Visible());
  EXPECT_EQ(f().txtPrice.Text(), "1.2500");
  EXPECT_EQ(f().UserControl.BackColor(), 0x0000FF00);
}

}  // namespace
}  // namespace quillon
