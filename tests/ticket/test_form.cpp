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
      {"cmdOKCancel(0)", "UserControl", 135, 5250, 1245, 345, 20, true, false},
      {"cmdOKCancel(4)", "fraConf", 3480, 4050, 1155, 345, 26, true, true},
      {"lblQuoteTime", "fraSubQuote", 1590, 540, 825, 285, 34, true, true},
      {"cmdContract(4)", "fraOrderEntry", 1620, 1320, 525, 225, 10, false, true},
      {"fraValid", "fraOrderType", 90, 1845, 2070, 555, 59, false, true},
      {"optValid(1)", "fraValid", 1170, 225, 810, 195, 60, true, true},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    Control* control = form.find(c.name);
    ASSERT_NE(control, nullptr);
    ASSERT_NE(control->parent(), nullptr);
    EXPECT_EQ(control->parent()->name(), c.parent);
    EXPECT_EQ((std::vector<double>{control->Left(), control->Top(), control->Width(),
                                   control->Height(), double(control->tabIndex)}),
              (std::vector<double>{c.left, c.top, c.width, c.height, double(c.tab)}));
    EXPECT_EQ(control->Visible(), c.visible);
    EXPECT_EQ(control->Enabled(), c.enabled);
  }
  EXPECT_TRUE(f().optValid(0).Value());
  EXPECT_TRUE(f().txtSecQty.Locked());
  EXPECT_EQ(f().txtPrimQty.maxLength, 18);
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
  for (const char* name :
       {"cmbAccount", "cmdValue", "fraOrderEntry", "cmdOKCancel(0)", "cmdOKCancel(1)"})
    EXPECT_FALSE(f().controls().find(name)->Enabled()) << name;
  EXPECT_TRUE(f().cmdOKCancel(2).Enabled());
  EXPECT_FALSE(f().fraConf.Visible());
  // What a disabled frame holds takes no input, its own flag untouched.
  EXPECT_TRUE(f().txtPrimQty.Enabled());
  EXPECT_FALSE(f().txtPrimQty.isEffectivelyEnabled());

  probe().f().fraConf.setVisible(true);
  probe().f().cmdOKCancel(2).setEnabled(false);
  probe().Enable(true);
  for (int i : {0, 1, 2}) EXPECT_TRUE(f().cmdOKCancel(i).Enabled()) << i;
  EXPECT_FALSE(f().fraConf.Visible());
}

TEST_F(FormTest, TicketColourPaintsTheEntryBoxesInTheSecondColour) {
  probe().SetColour(0x00112233, 0x00445566);
  for (const char* name : {"txtLimit", "txtStop", "txtPrimQty", "txtSecQty"})
    EXPECT_EQ(f().controls().find(name)->BackColor(), 0x00445566) << name;
  for (const char* name :
       {"UserControl", "fraHide", "fraTradeConf", "optType(4)", "optValid(1)", "fraOrderEntry",
        "fraConf", "fraSubQuote", "txtPrice", "txtBid", "lblOffer", "optBuySell(1)", "txtEquity"})
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
    Initialise(Msg{.InstrumentID = kEurUsd, .Quantity = 100000, .Price = 1.2,
                   .Status = c.status, .Reason = 4});
    EXPECT_EQ(f().UserControl.BackColor(), c.colour);
    EXPECT_EQ(f().fraOrderEntry.BackColor(), c.colour);
    EXPECT_EQ(f().cmdOKCancel(1).Enabled(), c.cancelRequest);
    EXPECT_FALSE(f().cmdOKCancel(0).Enabled() || f().fraOrderEntry.Enabled());
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

  oco.Status = ORDER_ACTIVE;
  Initialise(oco);
  EXPECT_EQ(f().lblReason.Caption(),
            "Your order has been received, please wait for a confirmation");

  Initialise(Msg{.InstrumentID = kEurUsd, .Price = 1.5, .OrderType = LIMIT_ORDER,
                 .Status = ORDER_CANCELLED});
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
    EXPECT_EQ(m().LimitPrice, 1.2350);
    EXPECT_EQ(m().StopPrice, 1.2350);
    EXPECT_EQ(f().UserControl.BackColor(), static_cast<Long>(0x8000000F));
    EXPECT_EQ(f().txtPrimQty.BackColor(), static_cast<Long>(0x8000000E));
    EXPECT_EQ(f().txtBid.Text(), "1.2345");
    EXPECT_EQ(f().lblReason.Caption(), "Please enter your order details.");
    EXPECT_TRUE(f().optBuySell(0).Value());
    EXPECT_FALSE(f().lblOrderID.Visible() || f().cmdOKCancel(1).Enabled());
    EXPECT_TRUE(f().fraOrderEntry.Enabled());
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
    Initialise(Msg{.InstrumentID = kEurUsd});
    for (int i = 1; i <= 5; ++i) EXPECT_EQ(f().optType(i).Value(), i == c.selected) << i;
  }
}

TEST_F(FormTest, ExecutedOrderSelectsNoTypeAndShowsItsPrice) {
  OpenBlank();
  Initialise(Msg{.InstrumentID = kEurUsd, .Quantity = 100000, .Price = 1.25,
                 .OrderType = LIMIT_ORDER, .Status = ORDER_EXECUTED});
  for (int i = 1; i <= 5; ++i) EXPECT_FALSE(f().optType(i).Value());
  EXPECT_TRUE(f().txtPrice.Visible());
  EXPECT_FALSE(f().txtLimit.Visible());
  EXPECT_EQ(f().txtPrice.Text(), "1.2500");
  EXPECT_EQ(f().UserControl.BackColor(), 0x0000FF00);
}

}  // namespace
}  // namespace quillon
