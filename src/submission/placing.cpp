// The order statement, placing, withdrawing and closing:
//   Show_Order_Confirm, cmdOKCancel_Click, cmdBuySell_Click, Timer1_Timer.
// None of them reports through ErrorMsg: a failing step is skipped and the next one runs, so
// a half-done sequence always goes on to its end.

#include <cmath>
#include <string>
#include <tuple>

#include "platform/date.h"
#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

constexpr const char* kCrLf = "\r\n";
constexpr Long kBlue = 0x00FF0000;
constexpr Long kRed = 0x000000FF;
constexpr Long kGreen = 0x0000FF00;
constexpr Long kConfirmationMs = 5000;

}  // namespace

void Clientticket::Show_Order_Confirm() {
  ResumeNext([&] { Enable(false); });
  // The ticket cannot be closed while the statement stands.
  ResumeNext([&] { cmdOKCancel(2).setEnabled(false); });
  InstrumentRec inst;
  ResumeNext([&] { inst = Inst_Get_Array(InstrumentID); });

  std::string side;
  ResumeNext([&] {
    if (optBuySell(0).Value()) {
      lblConfCurrs.setForeColor(kBlue);
      lblConfCurrs.setCaption("Buy ");
      side = " to buy";
    } else {
      lblConfCurrs.setForeColor(kRed);
      lblConfCurrs.setCaption("Sell ");
      side = " to sell";
    }
    if (OrderType == TWOWAY_ORDER) {
      lblConfCurrs.setForeColor(kGreen);
      lblConfCurrs.setCaption("");
      side = " for";
    }
  });
  std::string pair;
  ResumeNext([&] { pair = Get_Pair_Desc(); });
  ResumeNext([&] { lblConfCurrs.setCaption(lblConfCurrs.Caption() + " " + pair); });

  // The statement is always in English, built piece by piece on the label itself: what runs
  // in the account search's yields sees it half built.
  auto add = [&](auto piece) {
    ResumeNext([&] {
      const std::string text = piece();
      lblConfirm.setCaption(lblConfirm.Caption() + text);
    });
  };
  ResumeNext([&] { lblConfirm.setCaption(""); });
  add([] { return std::string("To: "); });
  add([] { return std::string(kCompanyNameLong); });
  add([] { return std::string(kCrLf); });
  add([] { return std::string("From: "); });
  add([&] {
    const std::size_t upper = Accounts.size() - 1;
    for (std::size_t i = 1; i <= upper && i < Accounts.size(); ++i) {
      if (Accounts[i].AccountID == AccountID) return Accounts[i].AccountName + kCrLf;
      yield();
    }
    return std::string();
  });
  add([] { return std::string(kCrLf); });
  add([] { return std::string("I wish to place "); });
  add([&] {
    auto price = [&](double p) { return Single_Price_As_String(p, inst.Pip); };
    switch (OrderType) {
      case MARKET_ORDER: return "a market order at " + price(MarketPrice);
      case LIMIT_ORDER: return "a limit order at " + price(LimitPrice);
      case STOPLOSS_ORDER: return "a stop loss order at " + price(StopPrice);
      case OCO_ORDER: {
        // The limit first: formatting a price yields, and the stop is read after it.
        std::string phrase = "two orders worked OCO.  A limit order at " + price(LimitPrice);
        phrase += " and a stop loss order at " + price(StopPrice) + ", both";
        return phrase;
      }
      case TWOWAY_ORDER: return std::string("a two-way quote request");
      case MANUAL_TRADE: return "a manual trade at " + price(MarketPrice);
      default: return std::string();
    }
  });
  add([&] { return side; });
  add([] { return std::string(" "); });
  add([&] { return FormatNumber(Quantity, kAmountPattern, locale()); });
  add([] { return std::string(" "); });
  add([&] { return pair; });
  add([] { return std::string(" "); });
  add([] { return std::string("value "); });
  add([&] { return FormatDateDMY(ValueDate, locale()); });
  add([] { return std::string(" "); });
  add([&] {
    return std::string(Duration == kNoDate || !fraValid.Visible() ? "(GTC)." : "(Day Order).");
  });

  // The note names the bank once; later runs find no token.
  ResumeNext([&] {
    std::string note = Label1(12).Caption();
    Label1(12).setCaption(Change_Chars(note, "[COMPANY_NAME_LONG]", kCompanyNameLong));
  });
  ResumeNext([&] { fraConf.setVisible(true); });
  // The focus stands on No, not on Yes.
  ResumeNext([&] { cmdOKCancel(4).SetFocus(); });
  ResumeNext([&] { Timer1.setInterval(kConfirmationMs); });
  ResumeNext([&] { Timer1.setTimerEnabled(true); });
  if (!FixedSize) {
    ResumeNext([&] {
      Integer action = 1;
      raise(&ClientticketEvents::ResizeTicket, action);
    });
  }
}

void Clientticket::cmdOKCancel_Click(Integer Index) {
  // Place Order, Cancel Req and Yes need a connection; without one the user is told, and
  // nothing else happens (a running confirmation clock keeps running).
  if (Index == 0 || Index == 1 || Index == 3) {
    Boolean connected = false;
    ResumeNext([&] { connected = Is_Connected(); });
    if (!connected) {
      ResumeNext([&] { raise(&ClientticketEvents::Message, LoadResString(603)); });
      return;
    }
  }
  auto resizeBack = [&] {
    if (!FixedSize) {
      ResumeNext([&] {
        Integer action = 2;
        raise(&ClientticketEvents::ResizeTicket, action);
      });
    }
  };

  switch (Index) {
    case 0:  // Place Order: the statement and its clock
      ResumeNext([&] { Set_Ticket_Colour(TicketColour::kButtonFace, TicketColour::kHighlightText); });
      ResumeNext([&] { Show_Order_Confirm(); });
      return;

    case 1: {  // Cancel Req: one press sends one message
      ResumeNext([&] { cmdOKCancel(1).setEnabled(false); });
      const bool pending = Status == ORDER_PENDING || Status == ORDER_CANCEL_REQUEST;
      const Long sentStatus = pending ? ORDER_CANCEL_REQUEST : ORDER_CLIENT_CANCELLED;
      ResumeNext([&] {
        const Date duration = fraValid.Visible() ? Duration : kNoDate;
        raiseWithGid(
            &ClientticketEvents::VtOrderGenericNew,
            std::make_tuple(DealingGateway, OrderID, AccountID, InstrumentID, Quantity,
                            PrimarySecondaryQty, MarketPrice, OrderType, duration, MarketTime,
                            ValueDate, sentStatus, LinkID, CInt(Action), Integer{6},
                            CounterpartyID, Encrypt, DummyLive, FreeFormat, SystemID),
            CounterPartySystemID);
      });
      // Written after the event: an answer given inside it keeps its display, not its Status.
      Status = pending ? ORDER_CANCEL_REQUEST : ORDER_CANCELLED_INTERNAL;
      return;
    }

    case 2:
      // Close ends the ticket: the host destroys it, so nothing may follow the event. An
      // order in flight stays out.
      ResumeNext([&] { raise(&ClientticketEvents::CloseTicket); });
      return;

    case 3: {  // Yes: exactly one event carries the order out
      // The clock stops first, so the expiry cannot overtake a confirmed order.
      ResumeNext([&] { Timer1.setTimerEnabled(false); });
      ResumeNext([&] { lblReason.setCaption("Placing order, please wait..."); });
      Status = ORDER_ACTIVE_INTERNAL;
      ResumeNext([&] { Enable(false); });
      ResumeNext([&] { cmdOKCancel(2).setEnabled(true); });
      ResumeNext([&] { fraConf.setVisible(false); });
      const bool buy = [&] {
        bool value = true;
        ResumeNext([&] { value = optBuySell(0).Value(); });
        return value;
      }();
      if (OrderType == MANUAL_TRADE) {
        Status = TRADE_MANUAL;
        OrderID = 0;
        ResumeNext([&] {
          const double quantity = buy ? std::fabs(Quantity) : -std::fabs(Quantity);
          const Date now = loop().now();
          raiseWithGid(
              &ClientticketEvents::VtTradeGenericNew,
              std::make_tuple(DealingGateway, Long{0}, AccountID, InstrumentID, quantity,
                              PrimarySecondaryQty, MarketPrice, static_cast<Integer>(OrderType),
                              now, ValueDate, static_cast<Integer>(Status), Reason, Long{0},
                              CounterpartyID, LinkID, Encrypt, DummyLive, FreeFormat, SystemID),
              CounterpartyID);
        });
      } else if (OrderType == OCO_ORDER) {
        ResumeNext([&] {
          // The two legs: element 1 the limit, element 2 the stop. Not guaranteed.
          const double limit = LimitPrice, stop = StopPrice;
          const double quantity = buy ? Quantity : -Quantity;
          auto legs = [](Variant one, Variant two) {
            VariantArray array;
            array.lowerBound = 1;
            array.elements = {std::move(one), std::move(two)};
            return Variant::FromArray(std::move(array));
          };
          auto both = [&](Variant v) { return legs(v, v); };
          Variant orderID = both(Variant::FromLong(0));
          Variant accountID = both(Variant::FromLong(AccountID));
          Variant instrumentID = both(Variant::FromLong(InstrumentID));
          Variant quantities = both(Variant::FromDouble(quantity));
          Variant primSec = both(Variant::FromInteger(CInt(PrimarySecondaryQty)));
          Variant prices = legs(Variant::FromDouble(limit), Variant::FromDouble(stop));
          Variant types = legs(Variant::FromInteger(LIMIT_ORDER), Variant::FromInteger(STOPLOSS_ORDER));
          Variant durations = both(Variant::FromDate(Duration));
          const Date firstTime = loop().now();
          const Date secondTime = loop().now();
          Variant marketTimes = legs(Variant::FromDate(firstTime), Variant::FromDate(secondTime));
          Variant valueDates = both(Variant::FromDate(ValueDate));
          Variant statuses = both(Variant::FromInteger(ORDER_PLACED));
          Variant reasons = both(Variant::FromLong(Reason));
          Variant counterparties = both(Variant::FromLong(CounterpartyID));
          Variant freeFormats = both(Variant::FromString(FreeFormat));
          Variant linkIDs = both(Variant::FromLong(LinkID));
          Variant actions = both(Variant::FromInteger(CInt(Action)));
          Variant systemIDs = both(Variant::FromLong(SystemID));
          Variant cpSystemIDs = both(Variant::FromLong(CounterPartySystemID));
          Variant profiles = both(Variant::FromLong(PriceProfileID));
          // The gateway, the live flag and the encryption go by reference as the members
          // themselves: what the host writes into them stays with the ticket.
          Integer gid = -1;
          Integer priority = 0;
          raise(&ClientticketEvents::VtOrderGenericArray, DealingGateway, orderID, accountID,
                instrumentID, quantities, primSec, prices, types, durations, marketTimes,
                valueDates, statuses, reasons, counterparties, freeFormats, linkIDs, actions,
                systemIDs, cpSystemIDs, profiles, DummyLive, Encrypt, gid, priority);
        });
      } else {
        ResumeNext([&] {
          const double quantity = buy ? Quantity : -Quantity;
          const double price = OrderType == LIMIT_ORDER      ? LimitPrice
                               : OrderType == STOPLOSS_ORDER ? StopPrice
                                                             : MarketPrice;
          // Good till cancelled unless the validity frame offered a choice.
          const Date duration = fraValid.Visible() ? Duration : kNoDate;
          const Date now = loop().now();
          raiseWithGid(
              &ClientticketEvents::VtOrderGenericNew,
              std::make_tuple(DealingGateway, Long{0}, AccountID, InstrumentID, quantity,
                              PrimarySecondaryQty, price, OrderType, duration, now, ValueDate,
                              Long{ORDER_PLACED}, LinkID, CInt(Action), Reason,
                              CounterpartyID, Encrypt, DummyLive, FreeFormat, SystemID),
              CounterPartySystemID);
        });
      }
      resizeBack();
      return;
    }

    case 4: {  // No, and the expiry of the statement: back to the form as it was
      ResumeNext([&] { Timer1.setTimerEnabled(false); });
      ResumeNext([&] { fraConf.setVisible(false); });
      if (Status == TRADE_MANUAL || Status == ORDER_CANCELLED) {
        ResumeNext([&] { Enable(false); });
        ResumeNext([&] { cmdOKCancel(0).setEnabled(true); });
        resizeBack();
        return;
      }
      ResumeNext([&] { Enable(true); });
      ResumeNext([&] { cmdOKCancel(2).setEnabled(true); });
      ResumeNext([&] { cmdOKCancel(1).setEnabled(false); });
      ResumeNext([&] { cmdOKCancel(0).setEnabled(Check_Order()); });
      Status = ORDER_BLANK;
      // The prices the panel held back are caught up on as if they had just arrived.
      ResumeNext([&] {
        PriceRec price = Price_Get_Array(InstrumentID, CompanyCtrPty, CurrentAccount.PriceProfile);
        Long instrument = InstrumentID;
        PriceGeneric(instrument, price.CounterpartyID, price.Bid, price.Offer, price.PriceType,
                     price.SourceID, price.PriceTime);
      });
      ResumeNext([&] { txtPrimQty.SetFocus(); });
      resizeBack();
      return;
    }

    case 5:
      // OK uncovers the executed order below the panel.
      ResumeNext([&] { fraTradeConf.setVisible(false); });
      ResumeNext([&] { cmdOKCancel(2).SetFocus(); });
      return;

    case 6:
      ResumeNext([&] {
        std::string text = lblTradeConf.Caption();
        Long tradeID = TradeID;
        Print_Trade_Confirm(text, tradeID);
      });
      return;

    default:
      return;
  }
}

// A quick deal picks the side from the button and the ruling currency, then places the order.
void Clientticket::cmdBuySell_Click(Integer Index) {
  if (Index != 0 && Index != 1) return;
  const bool primary = PrimarySecondaryQty == QTY_PRIMARY;
  const bool buy = (Index == 1) == primary;
  ResumeNext([&] { optBuySell(0).setValue(buy); });
  ResumeNext([&] { optBuySell(1).setValue(!buy); });
  ResumeNext([&] { cmdOKCancel_Click(0); });
}

void Clientticket::Timer1_Timer() {
  // The confirmation clock runs on a blank form; the quote clock on a quoted order.
  if (Status == ORDER_BLANK) {
    ResumeNext([&] { cmdOKCancel_Click(4); });
    return;
  }
  Quote_Tick();
}

}  // namespace quillon
