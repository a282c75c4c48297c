// The form's tree, opening and closing it, painting it, and the display states.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class FormTest : public TicketTest {};

TEST_F(FormTest, EnableOpensAndClosesTheFormButNeverTheCloseButton) {
  probe().f().fraConf.setVisible(true);
  probe().Enable(false);
  for (const char* name : {"cmbAccount", "fraOrderEntry", "cmdOKCancel(0)", "cmdOKCancel(1)"})
    EXPECT_FALSE(form().find(name)->Enabled()) << name;
  EXPECT_TRUE(f().cmdOKCancel(2).Enabled());
  EXPECT_FALSE(f().fraConf.Visible());

  probe().f().fraConf.setVisible(true);
  probe().f().cmdOKCancel(2).setEnabled(false);
  probe().Enable(true);
  for (int i : {0, 1, 2}) EXPECT_TRUE(f().cmdOKCancel(i).Enabled()) << i;
  EXPECT_FALSE(f().fraConf.Visible());
}

TEST_F(FormTest, TicketColourPaintsTheEntryBoxesInTheSecondColour) {
  probe().SetColour(0x00112233, 0x00445566);
  for (const char* name : {"txtLimit", "txtPrimQty"})
    EXPECT_EQ(form().find(name)->BackColor(), 0x00445566) << name;
  for (const char* name : {"UserControl", "optValid(1)", "fraSubQuote", "txtBid", "txtEquity"})
    EXPECT_EQ(form().find(name)->BackColor(), 0x00112233) << name;
  EXPECT_EQ(f().lblReason.BackColor(), static_cast<Long>(0x8000000E));
}

TEST_F(FormTest, StatusChoosesColourWordsAndCancelRequest) {
  host_.reasons[4] = "Rejected by dealer";
  const Long grey = static_cast<Long>(0x8000000F);
  const struct { Long status, colour; bool cancelRequest, orderNumber; const char* reason; }
      cases[] = {
      {9, 0x0000FFFF, true, true, "Your order has been received, please wait for a confirmation"},
      {2, 0x00FFFFFF, false, true, "Rejected by dealer"},
      {29, 0x00FFFF00, false, true, "You do not have enough equity to cancel this order"},
      {21, grey, false, false,
       "Your order may not have been received by Norvane.  Please contact the dealers."},
      {4711, grey, false, true, ""},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.status);
    OpenBlank();
    Initialise(Msg{.InstrumentID = kEurUsd, .Quantity = 100000, .Price = 1.2,
                   .Status = c.status, .Reason = 4});
    EXPECT_EQ(f().UserControl.BackColor(), c.colour);
    EXPECT_EQ(f().cmdOKCancel(1).Enabled(), c.cancelRequest);
    EXPECT_FALSE(f().cmdOKCancel(0).Enabled() || f().fraOrderEntry.Enabled());
    EXPECT_EQ(f().lblOrderID.Visible(), c.orderNumber);
    EXPECT_EQ(f().lblReason.Caption(), c.reason);
  }
}

TEST_F(FormTest, LaterStatusesDropTheOcoWarningAskTheReasonLastAndShowThePlainPrice) {
  OpenBlank();
  Msg oco{.InstrumentID = kEurUsd, .Quantity = 1000, .Status = ORDER_PENDING, .Action = ACTION_OCO};
  Initialise(oco);
  oco.Status = ORDER_ACTIVE;
  Initialise(oco);
  EXPECT_EQ(f().lblReason.Caption(),
            "Your order has been received, please wait for a confirmation");

  // A cancelled order's row asks for the reason last: a host that looks at the ticket while it
  // answers finds it white, closed and numbered already.
  probe().m().OrderID = 77;
  Long colour = 0;
  bool open = true;
  std::string number;
  host_.inside["GetReason"] = [&] {
    colour = f().UserControl.BackColor();
    open = f().fraOrderEntry.Enabled();
    number = f().lblOrderID.Visible() ? f().lblOrderID.Caption() : "";
  };
  Initialise(Msg{.OrderID = 77, .InstrumentID = kEurUsd, .Price = 1.5, .OrderType = LIMIT_ORDER,
                 .Status = ORDER_CANCELLED});
  EXPECT_EQ(colour, 0x00FFFFFF);
  EXPECT_FALSE(open);
  EXPECT_EQ(number, "77");
  EXPECT_EQ(f().txtLimit.Text(), "1.5");
  EXPECT_EQ(f().txtPrice.Text(), "1.5");
  EXPECT_FALSE(f().fraValid.Visible());

  Initialise(Msg{.InstrumentID = kEurUsd, .Quantity = 100000, .Price = 1.25,
                 .OrderType = LIMIT_ORDER, .Status = ORDER_EXECUTED});
  // The order types cleared and the price in the pip's format: golden orders_of_each_type and
  // the demo desk's OCO fill.
  EXPECT_FALSE(f().txtLimit.Visible());
}

// The second blank form follows an active sell order, which it undoes.
TEST_F(FormTest, BlankFormResetsEverythingAndAsksForPricesOnlyWhenConnected) {
  for (bool connected : {false, true}) {
    SCOPED_TRACE(connected);
    host_.connected = connected;
    host_.events.clear();
    OpenBlank();
    // The request's and the equity question's arguments: golden blank_ticket_de.
    EXPECT_EQ(host_.count("VtPriceGenericRequest"), connected ? 1 : 0);
    ASSERT_EQ(host_.names().back(), "RequestEquity");
    EXPECT_EQ(m().LimitPrice, 1.2350);
    EXPECT_EQ(m().StopPrice, 1.2350);
    EXPECT_EQ(f().UserControl.BackColor(), static_cast<Long>(0x8000000F));
    EXPECT_TRUE(f().optBuySell(0).Value() && f().fraOrderEntry.Enabled());
    EXPECT_FALSE(f().lblOrderID.Visible() || f().cmdOKCancel(1).Enabled());
    Initialise(Msg{.InstrumentID = kEurUsd, .Quantity = -1000, .Price = 1.2,
                   .OrderType = LIMIT_ORDER, .Status = ORDER_ACTIVE});
    ASSERT_TRUE(f().optBuySell(1).Value() && f().cmdOKCancel(1).Enabled());
  }
}

// The rights and the instrument enable the order types; a blank form selects Market, else
// Quote, else Stop. A quote-only instrument offers Quote whatever the rights.
TEST_F(FormTest, RightsAndInstrumentEnableTheOrderTypesAndChooseTheBlankFormsOne) {
  // The rights, the instrument's status, the types enabled, and the one selected (0: none).
  const struct { Integer rights, instStatus; bool market, quote, pending; int selected; }
      cases[] = {
      {0x0004, 0, true, false, false, 1},  {0x0004, 1, false, true, false, 5},
      {0x0084, 0, true, false, true, 1},   {0x0400, 0, false, true, false, 5},
      {0x0080, 0, false, false, true, 3},  {0, 0, false, false, false, 0},
      {0, 1, false, true, false, 5},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.rights << " instrument status " << c.instStatus);
    ticket_->setLanguage(1);
    ticket_->setAccountType(c.rights);
    host_.instruments[kEurUsd].Status = c.instStatus;
    Initialise(Msg{.InstrumentID = kEurUsd});
    EXPECT_EQ(f().optType(1).Enabled(), c.market);
    EXPECT_EQ(f().optType(5).Enabled(), c.quote);
    for (int i : {2, 3, 4}) EXPECT_EQ(f().optType(i).Enabled(), c.pending) << i;
    for (int i = 1; i <= 5; ++i) EXPECT_EQ(f().optType(i).Value(), i == c.selected) << i;
  }
}

}  // namespace
}  // namespace quillon
