// Initialise: whether a message belongs to the ticket, how it is loaded, and its error path.

#include "ticket/ticket_fixture.h"

namespace quillon {
namespace {

class IntakeTest : public TicketTest {
 protected:
  // Puts the ticket into a state as if earlier messages had left it there.
  void Hold(Long status, Long orderID, Long instrument, Long linkID = 0) {
    ticket_->setLanguage(1);
    ticket_->setAccountType(0x0004 | 0x0400 | 0x0080);
    Initialise(Msg{.InstrumentID = instrument, .Quantity = 100000, .Status = 0});
    probe().m().Status = status;
    probe().m().OrderID = orderID;
    probe().m().LinkID = linkID;
  }
  // Whether a message for 250,000 (the held ticket has 100,000) is taken in.
  bool Accepted(Long orderID, Long instrument, Long status) {
    Initialise(Msg{.OrderID = orderID, .InstrumentID = instrument, .Quantity = 250000, .Price = 1.2,
                   .Status = status});
    return m().Quantity == 250000;
  }
};

TEST_F(IntakeTest, BelongingRulesInTheirOrder) {
  const struct {
    const char* what; Long ticketStatus, ticketOrder, ticketInstrument, ticketLink;
    Long msgOrder, msgInstrument, msgStatus; bool accepted;
  } cases[] = {
      // Its own order number, the linked order, order number 0, a foreign order while placed
      // and the first live answer to a sent order: golden orders_of_each_type, the quote
      // tests and the demo desk.
      {"foreign order, other instrument", 0, 0, kEurUsd, 0, 55, kGbpUsd, 1, false},
      {"live answer on another instrument", 21, 0, kEurUsd, 0, 55, kGbpUsd, 1, false},
      {"pending is no first answer", 21, 0, kEurUsd, 0, 55, kEurUsd, 5, false},
      {"sent order with a number adopts nothing", 21, 12, kEurUsd, 0, 55, kEurUsd, 1, false},
      {"manual trade answers a manual trade", 20, 0, kEurUsd, 0, 55, kEurUsd, 20, true},
      {"blank form takes no foreign order", -1, 0, kEurUsd, 0, 55, kEurUsd, 1, false},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.what);
    ticket_ = std::make_unique<Clientticket>(TicketServices{&loop_, nullptr, nullptr, &locale_});
    ticket_->setHost(&host_);
    Hold(c.ticketStatus, c.ticketOrder, c.ticketInstrument, c.ticketLink);
    EXPECT_EQ(Accepted(c.msgOrder, c.msgInstrument, c.msgStatus), c.accepted);
    EXPECT_FALSE(f().fraHide.Visible());
    EXPECT_EQ(m().OrderID, c.accepted ? c.msgOrder : c.ticketOrder);
    if (c.accepted) EXPECT_EQ(m().InstrumentID, c.msgInstrument);
    else EXPECT_EQ(m().Status, c.ticketStatus);
  }
}

TEST_F(IntakeTest, EmbeddedOrderTypeIsReadFromManualOrdersOnly) {
  OpenBlank();
  // The type, the text, what the caller's argument holds afterwards and what the member does.
  const struct { Long type; const char* text; Long typeAfter, stored; } cases[] = {
      {MANUAL_ORDER, "x<OrderType=2>", 2, LIMIT_ORDER},
      {MANUAL_ORDER, "no marker", MANUAL_ORDER, MARKET_ORDER},
      {MANUAL_ORDER, "<ordertype=2>", MANUAL_ORDER, MARKET_ORDER},  // case counts
      {LIMIT_ORDER, "<OrderType=3>", LIMIT_ORDER, LIMIT_ORDER},
      {MANUAL_ORDER, "<OrderType=x1>", 0, 0},  // no digits: type 0, which has no button
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    Msg msg{.InstrumentID = kEurUsd, .Quantity = 250000, .Price = 1.1111, .OrderType = c.type,
            .Status = 1, .FreeFormat = c.text};
    probe().m().LimitPrice = 1.5;
    probe().m().StopPrice = 1.6;
    Initialise(msg);
    EXPECT_EQ(msg.OrderType, c.typeAfter);
    EXPECT_EQ(m().OrderType, c.stored);
    EXPECT_EQ(m().LimitPrice, c.stored == LIMIT_ORDER ? 1.1111 : 1.5);
    EXPECT_EQ(m().StopPrice, 1.6);
  }
}

TEST_F(IntakeTest, OrderTypeWithoutButtonStopsHalfBuiltButStoresTheMessage) {
  OpenBlank();
  host_.events.clear();
  Initialise(Msg{.InstrumentID = kEurUsd, .Quantity = 250000, .OrderType = ONEWAY_QUOTE,
                 .Status = ORDER_ACTIVE, .Reason = 7});
  EXPECT_EQ(host_.last("ErrorMsg")->args, (std::vector<std::string>{"9", "", "Initialise"}));
  EXPECT_EQ(m().Status, ORDER_ACTIVE);
  EXPECT_EQ(m().OrderType, ONEWAY_QUOTE);
  EXPECT_EQ(m().Reason, 7);
  EXPECT_EQ(m().Quantity, 250000);
  EXPECT_TRUE(f().optType(1).Value());
  // The display stage did not run: the blank form's words stay.
  EXPECT_EQ(f().lblReason.Caption(), "Please enter your order details.");
}

TEST_F(IntakeTest, LoadsSideAmountsTypeAndPrices) {
  OpenBlank();
  // A secondary amount at no price leaves the primary box at nothing.
  Msg secondary{.InstrumentID = kEurUsd, .Quantity = 125000, .PrimarySecondaryQty = QTY_SECONDARY,
                .Status = ORDER_ACTIVE};
  Initialise(secondary);
  EXPECT_EQ(f().txtPrimQty.Text(), "0.00");
  EXPECT_EQ(f().txtSecQty.Text(), "125,000.00");
  secondary.Price = 1.25;
  Initialise(secondary);
  EXPECT_EQ(f().txtPrimQty.Text(), "100,000.00");
  // A pending sell limit, good till cancelled.
  Initialise(Msg{.InstrumentID = kEurUsd, .Quantity = -5000, .Price = 1.23,
                 .OrderType = LIMIT_ORDER, .Duration = kNoDate, .Status = ORDER_PENDING});
  EXPECT_TRUE(f().optBuySell(1).Value());
  EXPECT_EQ(f().txtPrimQty.Text(), "5,000.00");
  EXPECT_EQ(f().txtLimit.Text(), "1.2300");
  EXPECT_TRUE(f().optValid(1).Value() && f().optType(2).Value());
}

TEST_F(IntakeTest, InstrumentLookupAndUnknownNames) {
  ticket_->setLanguage(1);
  host_.events.clear();
  EXPECT_EQ(probe().InstGetArray(0), InstrumentRec{});
  EXPECT_TRUE(host_.events.empty());
  InstrumentRec unknown = probe().InstGetArray(999);
  EXPECT_EQ(unknown.InstrumentID, 999);
  EXPECT_EQ(unknown.LongDesc, "Unknown");
  probe().m().Language = 2;
  EXPECT_EQ(probe().InstGetArray(999).LongDesc, "Unbekannt");
  probe().m().Language = 0;  // no strings at all: the names stay empty
  EXPECT_EQ(probe().InstGetArray(999).ShortDesc, "");
}

TEST_F(IntakeTest, AccountTypeDerivesItsFlags) {
  const struct { Integer bits; bool market, quote, pending, fixed, liveFlag; Long dummyLive; }
      cases[] = {
      {0x0200, false, false, true, false, false, DUMMY_TRADING},
      {0x0008, false, false, false, true, false, LIVE_TRADING},
      {0x0002, false, false, false, false, false, LIVE_TRADING},
      {0x0800, false, false, false, false, true, LIVE_TRADING},
      {0x0484, true, true, true, false, false, DUMMY_TRADING},
      {static_cast<Integer>(0x8000), false, false, false, false, false, DUMMY_TRADING},
      {-1, true, true, true, true, true, LIVE_TRADING},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.bits);
    ticket_->setAccountType(c.bits);
    EXPECT_EQ((std::vector<bool>{m().AllowMarket, m().AllowQuote, m().AllowPending,
                                 m().FixedSize, m().LiveFlag}),
              (std::vector<bool>{c.market, c.quote, c.pending, c.fixed, c.liveFlag}));
    EXPECT_EQ(m().DummyLive, c.dummyLive);
  }
}

}  // namespace
}  // namespace quillon
