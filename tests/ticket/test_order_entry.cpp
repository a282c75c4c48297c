// Order entry on a blank ticket: the order checks, the quantities, the price feed, the price
// selection, limit and stop, and accounts.

#include <stdexcept>

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class OrderEntryTest : public TicketTest {
 protected:
  // A blank market EUR/USD ticket, buy, on account 1, bid 1.2345 offer 1.2350.
  void SetUp() override {
    SetUpUser();
    Initialise(Msg{.AccountID = 1, .InstrumentID = kEurUsd});
  }
  void Tick(double bid, double offer, Long type = PRICE_TRADED, Long instrument = kEurUsd) {
    Call(&Clientticket::PriceGeneric, instrument, 0, bid, offer, type, 0, 0.0);
  }
  void Market(double bid, double offer) { host_.prices[kEurUsd] = Price(bid, offer); }
  // The user comes into the box from elsewhere and types.
  void Type(TextBox& box, const std::string& text) {
    form().userFocus(f().cmbAccount);
    form().userFocus(box);
    form().userType(box, text);
  }
  bool CanPlace() { return f().cmdOKCancel(0).Enabled(); }
  bool Check() { return probe().CheckOrder(); }
};

TEST_F(OrderEntryTest, QuantityLimitsAndWholeContracts) {
  ticket_->setMinOrderSize(1);
  ticket_->setMaxOrderSize(50);
  const std::pair<const char*, bool> cases[] = {
      {"5000000", true}, {"5000001", false}, {"99999", false},      {"150000", false},
      {"\b", false},     {"abc", false},     {"(5)", false},        {"200,000.00", true},
  };
  for (const auto& [typed, passes] : cases) {
    SCOPED_TRACE(typed);
    Type(f().txtPrimQty, typed);
    EXPECT_EQ(CanPlace(), passes);
    EXPECT_EQ(f().cmdBuySell(1).Enabled(), passes);
  }
  // The same text under other signs: in German "200,000.00" is no number. A host that puts
  // another locale in place under the ticket is read with the new signs.
  locale_ = Locale::ByName("de_DE");
  EXPECT_FALSE(Check());
  locale_ = Locale::ByName("en_US");
  EXPECT_TRUE(Check());
  // Below half a contract the remainder rounds to nothing: only the minimum stops it.
  ticket_->setMinOrderSize(0);
  Type(f().txtPrimQty, "25000");
  EXPECT_TRUE(CanPlace());
  Type(f().txtPrimQty, "50000");
  EXPECT_FALSE(CanPlace());
  // Without an account, or with a contract size that does not divide the amount, no order.
  Type(f().txtPrimQty, "100000");
  probe().m().AccountID = 0;
  EXPECT_FALSE(Check());
  probe().m().AccountID = 1;
  EXPECT_TRUE(Check());
  probe().m().BaseInst.ContractSize = 40000;
  EXPECT_FALSE(Check());
  probe().m().BaseInst.ContractSize = 0;
  EXPECT_FALSE(Check());
}

// The counter amount written again is left out only while the box holds it, in the same signs.
TEST_F(OrderEntryTest, TheSameCounterAmountIsWrittenAgainWhereTheBoxChanged) {
  Type(f().txtPrimQty, "200000");
  f().txtSecQty.setText("1");  // from outside, as a host may
  Tick(1.2345, 1.2350);
  EXPECT_EQ(f().txtSecQty.Text(), "247,000.00");
  locale_ = Locale::ByName("de_DE");
  Tick(1.2345, 1.2350);
  EXPECT_EQ(f().txtSecQty.Text(), "247.000,00");
}

TEST_F(OrderEntryTest, TheAmountDerivesTheCounterAmountAndStepsByContracts) {
  // The counter amount of a positive one at the offer: golden blank_ticket_de.
  Type(f().txtPrimQty, "(5)");
  EXPECT_EQ(m().Quantity, -5);
  EXPECT_EQ(f().txtSecQty.Text(), "6.18");  // the absolute amount
  // Emptying the box, leaving it, coming back.
  Type(f().txtPrimQty, "\b\b\b");
  EXPECT_EQ(m().Quantity, 0);
  EXPECT_EQ(f().txtSecQty.Text(), "");
  EXPECT_FALSE(CanPlace());
  form().userFocus(f().cmbAccount);
  EXPECT_EQ(f().txtPrimQty.Text(), "0.00");
  form().userFocus(f().txtPrimQty);
  EXPECT_EQ(f().txtPrimQty.Text(), "");
  // The spinner and the contract buttons step by contracts.
  Type(f().txtPrimQty, "100000");
  form().userSpin(f().udPrim, true);
  EXPECT_EQ(f().txtPrimQty.Text(), "200,000.00");
  form().userSpin(f().udPrim, false);
  form().userSpin(f().udPrim, false);  // refused at one contract
  EXPECT_EQ(f().txtPrimQty.Text(), "100,000.00");
  form().userClick(f().cmdContract(1));
  EXPECT_EQ(m().Quantity, 500000);
  // A product past 32 bits leaves the box as it was.
  probe().m().BaseInst.ContractSize = 300000000;
  form().userClick(f().cmdContract(2));
  EXPECT_EQ(f().txtPrimQty.Text(), "500,000.00");
}

TEST_F(OrderEntryTest, SecondaryRulingMirrorsPriceCaptionsAndColours) {
  EXPECT_EQ(f().txtPrice.Text(), "1.2350");
  EXPECT_EQ(f().cmdBuySell(0).Caption(), "Sell Bid");
  f().cmdContract(3).onClick();  // hidden on the form, but its handler works
  EXPECT_EQ(m().PrimarySecondaryQty, QTY_SECONDARY);
  EXPECT_EQ(f().txtPrice.Text(), "1.2345");
  EXPECT_EQ(f().Label1(4).Caption(), "Sell EUR");
  EXPECT_EQ(f().Label1(4).ForeColor(), 0x000000FF);
  EXPECT_EQ(f().Label1(6).Caption(), "Buy USD");
  EXPECT_EQ(f().cmdBuySell(0).Caption(), "Buy Bid");
  EXPECT_EQ(f().txtSecQty.BackColor(), static_cast<Long>(0x8000000E));
  EXPECT_EQ(f().txtPrimQty.Text(), "81,004.46");
  // "Buy Bid" buys USD, the ruling currency: the Buy option, which sells EUR.
  host_.connected = true;
  Click(f().cmdBuySell(0));
  EXPECT_TRUE(f().optBuySell(0).Value() && f().fraConf.Visible());
  Click(f().cmdOKCancel(4));
  // A key stroke in the primary box takes the role back.
  Type(f().txtPrimQty, "1");
  EXPECT_EQ(m().PrimarySecondaryQty, QTY_PRIMARY);
  EXPECT_EQ(f().txtPrimQty.BackColor(), static_cast<Long>(0x8000000E));
}

TEST_F(OrderEntryTest, TicksAreTakenOnlyByABlankFormForItsInstrumentAndZeroesStopDealing) {
  probe().m().CurrentAccount.PriceProfile = -1;  // raw ticks show
  Tick(1.3, 1.31, PRICE_BOTH);
  Tick(1.3, 1.31, PRICE_INDICATIVE);
  Tick(1.3, 1.31, PRICE_TRADED, kGbpUsd);
  EXPECT_EQ(f().txtOffer.Text(), "1.2350");
  Tick(1.3, 1.31);
  EXPECT_EQ(f().txtPrice.Text(), "1.3100");
  // Zero prices stop dealing until a real tick.
  Market(0, 0);
  Tick(0, 0);
  EXPECT_EQ(f().txtPrice.Text(), "   -   ");
  EXPECT_EQ(f().txtSecQty.Text(), "");
  EXPECT_FALSE(CanPlace() || f().cmdBuySell(0).Enabled());
  Market(1.2345, 1.2350);
  Tick(1.2345, 1.2350);
  EXPECT_TRUE(CanPlace() && f().cmdBuySell(1).Enabled());
  // On a price profile the form shows the host's price for it, never the tick.
  probe().m().CurrentAccount.PriceProfile = 7;
  Tick(1.5, 1.51);
  EXPECT_EQ(f().txtBid.Text(), "1.2345");
  // Nor once an order is out (nor while the statement shows: golden orders_of_each_type).
  probe().m().CurrentAccount.PriceProfile = -1;
  probe().m().Status = ORDER_ACTIVE;
  Tick(1.6, 1.61);
  EXPECT_EQ(m().Bid, 1.2345);
}

TEST_F(OrderEntryTest, LimitAndStopAreComparedStrictlyWithAFreshMarket) {
  const struct { Long type; bool buy; double limit, stop; bool passes; } cases[] = {
      {LIMIT_ORDER, true, 1.2349, 0, true},      {LIMIT_ORDER, true, 1.2350, 0, false},
      {LIMIT_ORDER, false, 1.2346, 0, true},     {LIMIT_ORDER, false, 1.2345, 0, false},
      {STOPLOSS_ORDER, true, 0, 1.2351, true},   {STOPLOSS_ORDER, true, 0, 1.2350, false},
      {STOPLOSS_ORDER, false, 0, 1.2344, true},  {STOPLOSS_ORDER, false, 0, 1.2345, false},
      {OCO_ORDER, true, 1.2300, 1.2400, true},   {OCO_ORDER, true, 1.2300, 1.2300, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(testing::Message() << c.type << (c.buy ? " buy " : " sell ") << c.limit << " "
                                    << c.stop);
    probe().f().optBuySell(c.buy ? 0 : 1).setValue(true);
    probe().m().OrderType = c.type;
    probe().m().LimitPrice = c.limit;
    probe().m().StopPrice = c.stop;
    probe().f().optType(4).setValue(c.type == OCO_ORDER);
    // The counter box is blank on an OCO ticket: only the ruling box counts there.
    probe().f().txtSecQty.setText(c.type == OCO_ORDER ? "" : "1.00");
    EXPECT_EQ(Check(), c.passes);
  }
  // Without a two-sided market any non-zero limit passes.
  Market(0, 1.2350);
  probe().f().optBuySell(0).setValue(true);
  probe().m().OrderType = LIMIT_ORDER;
  probe().m().LimitPrice = 9;
  EXPECT_TRUE(Check());
}

TEST_F(OrderEntryTest, PriceBoxesFollowTheirMembersAndStepByOnePip) {
  probe().f().optType(2).setValue(true);  // limit: the box shows and is reseeded
  probe().f().txtLimit.setText("1.2");
  EXPECT_EQ(m().LimitPrice, 1.2);
  probe().m().CurrentAccount.PriceProfile = -1;
  Tick(1.2345, 1.2350);
  EXPECT_EQ(f().txtLimit.Text(), "1.2000");  // the next tick writes it in the pip's format
  probe().f().txtLimit.setText("1.2345");
  form().userSpin(f().udLimit, true);
  EXPECT_EQ(m().LimitPrice, 1.2346);
  form().userClick(f().optType(4));  // OCO: both boxes and spinners show
  probe().f().txtLimit.setText("1.2346");
  probe().f().txtStop.setText("0.0001");
  form().userSpin(f().udStop, false);
  EXPECT_EQ(f().txtStop.Text(), "   -   ");
  EXPECT_EQ(m().StopPrice, 0);
  // One zero price reseeds both from the market.
  Tick(1.2345, 1.2350);
  EXPECT_EQ(m().LimitPrice, 1.2350);
  EXPECT_EQ(m().StopPrice, 1.2350);
}

TEST_F(OrderEntryTest, AccountsLoadOnceSelectingOneAsksForEquityAndEquityIsItsOwn) {
  Call(&Clientticket::LoadAccount, 2, "Hedge", 5);
  EXPECT_EQ(f().cmbAccount.ListIndex(), 0);  // another account selects nothing
  Call(&Clientticket::LoadAccount, 2, "Hedge renamed", 6);
  Call(&Clientticket::LoadAccount, 3, "Third", 6);
  EXPECT_EQ(m().Accounts.size(), 4u);
  EXPECT_EQ(f().cmbAccount.List(1), "Hedge");

  host_.events.clear();
  Market(1.1, 1.2);
  form().userSelect(f().cmbAccount, 1);
  EXPECT_EQ(m().AccountID, 2);
  EXPECT_EQ(m().PriceProfileID, 6);
  EXPECT_EQ(m().Bid, 1.1);  // a new profile fetches its prices
  // The equity question's arguments: golden blank_ticket_de and the failing-yield test.
  // The same profile fetches nothing but still asks for equity.
  Market(1.0, 1.05);
  form().userSelect(f().cmbAccount, 2);
  EXPECT_EQ(m().Bid, 1.1);
  EXPECT_EQ(host_.count("RequestEquity"), 2);

  // Equity for another account leaves the frame alone.
  Call(&Clientticket::ReceivedEquity, 1, -1234.5, 0.0);
  EXPECT_EQ(f().txtEquity.Text(), "");
  Call(&Clientticket::ReceivedEquity, 3, -1234.5, 0.0);
  EXPECT_EQ(f().txtEquity.Text(), "(1,234.50)");
}

// The price look-up of a new profile gets the account's own profile: an update of the account
// that the host makes while it answers is the profile the ticket takes, not undone afterwards.
TEST_F(OrderEntryTest, AnAccountUpdatedWhileItsPricesAreFetchedKeepsTheNewProfile) {
  Call(&Clientticket::LoadAccount, 2, "Hedge", 5);
  host_.inside["VtPriceGetArray"] = [&] { Call(&Clientticket::LoadAccount, 2, "Hedge", 8); };
  form().userSelect(f().cmbAccount, 1);
  EXPECT_EQ(m().Accounts[2].PriceProfile, 8);
  EXPECT_EQ(m().CurrentAccount.PriceProfile, 8);
  EXPECT_EQ(m().PriceProfileID, 8);
}

// A choice of account goes on past a failing step: here host work run in the walk's yield
// throws, and the account is still taken and its equity asked for.
TEST_F(OrderEntryTest, AnAccountChoiceGoesOnPastAFailingYield) {
  Call(&Clientticket::LoadAccount, 2, "Hedge", 0);
  loop_.post([] { throw std::runtime_error("the host's own work failed"); });
  host_.events.clear();
  form().userSelect(f().cmbAccount, 1);
  EXPECT_EQ(m().AccountID, 2);
  ASSERT_NE(host_.last("RequestEquity"), nullptr);
  EXPECT_EQ(host_.last("RequestEquity")->args[0], "2");
}

TEST_F(OrderEntryTest, TheAccountListEndsAt32767Accounts) {
  // The walk counts in 16 bits: past the last of 32767 accounts the count overflows, and a
  // new account is refused with the overflow's number.
  probe().m().Accounts.resize(32768);
  for (Long i = 1; i <= 32767; ++i) probe().m().Accounts[i].AccountID = 100000 + i;
  const auto listed = f().cmbAccount.ListCount();
  host_.events.clear();
  Call(&Clientticket::LoadAccount, 7, "One too many", 0);
  EXPECT_EQ(m().Accounts.size(), 32768u);
  EXPECT_EQ(f().cmbAccount.ListCount(), listed);
  ASSERT_NE(host_.last("ErrorMsg"), nullptr);
  EXPECT_EQ(host_.last("ErrorMsg")->args, (std::vector<std::string>{"6", "", "LoadAccount"}));
  // An account already in the list is still updated.
  Call(&Clientticket::LoadAccount, 132767, "One too many", 0);
  EXPECT_EQ(m().Accounts[32767].AccountName, "One too many");
}

}  // namespace
}  // namespace quillon
