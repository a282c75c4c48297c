// Intake and routing of every order state, and the display state it leads to:
//   Initialise, Show_Status, Show_Blank_Form.

#include <cmath>
#include <string>

#include "platform/date.h"
#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

constexpr const char* kEmbeddedOrderType = "<OrderType=";

}  // namespace

Variant Clientticket::Initialise(Long& TradeID, Long& OrderID, Long& AccountID,
                                 Long& InstrumentID, double& Quantity,
                                 Long& PrimarySecondaryQty, double& Price, Long& OrderType,
                                 Date& Duration, Date& MarketTime, Date& ValueDate, Long& Status,
                                 Long& LinkID, Long& Action, Integer& Reason,
                                 Long& CounterpartyID, Long& DummyLive, std::string& FreeFormat,
                                 Long& SystemID, Long& CounterPartySystemID,
                                 Long& PriceProfileID, double& Strike, Date& Expiry) {
  (void)DummyLive, (void)Strike, (void)Expiry;  // no effect on the ticket
  TicketMembers& t = *this;
  const TicketEntry entry(life_);
  try {
    // A manual order may carry its real type in its free text.
    if (OrderType == MANUAL_ORDER) {
      std::size_t at = FreeFormat.find(kEmbeddedOrderType);
      if (at != std::string::npos) {
        std::size_t from = at + std::char_traits<char>::length(kEmbeddedOrderType);
        OrderType = CLng(Val(FreeFormat.substr(from, 2)));
      }
    }

    // Does the message belong to this ticket? Compared with the state before this call.
    bool accept = false;
    if (OrderID == t.OrderID || OrderID == t.LinkID || OrderID == 0) {
      accept = true;
    } else if (t.InstrumentID != 0 && t.InstrumentID != InstrumentID) {
      accept = false;
    } else if (t.Status == ORDER_PLACED) {
      accept = true;
    } else if (t.OrderID == 0 &&
               ((Status == ORDER_ACTIVE && t.Status == ORDER_ACTIVE_INTERNAL) ||
                (Status == TRADE_MANUAL && t.Status == TRADE_MANUAL))) {
      accept = true;  // the first live answer to an order this ticket sent
    }
    // While a quote is on show, a valid-to-trade message would take it away.
    if (accept && fraQuote.Visible() && Status == ORDER_VALID_TO_TRADE) accept = false;
    if (!accept) {
      ResumeNext([&] { fraHide.setVisible(false); });
      return {};
    }

    PriceRec price = Price_Get_Array(InstrumentID, CompanyCtrPty, CurrentAccount.PriceProfile);
    InstrumentRec inst = Inst_Get_Array(InstrumentID);

    t.InstrumentID = InstrumentID;
    t.TradeID = TradeID;
    t.OrderID = OrderID;
    t.AccountID = AccountID;
    t.Quantity = Quantity;
    t.Bid = price.Bid;
    t.Offer = price.Offer;
    t.MarketPrice = Price;
    CurrentAccount.PriceProfile = PriceProfileID;
    // A manual order with no embedded type shows as a market order.
    t.OrderType = OrderType == MANUAL_ORDER ? static_cast<Long>(MARKET_ORDER) : OrderType;
    if (OrderType == LIMIT_ORDER) t.LimitPrice = Price;
    if (OrderType == STOPLOSS_ORDER) t.StopPrice = Price;
    t.PrimarySecondaryQty = PrimarySecondaryQty;
    t.MarketTime = MarketTime;
    t.Status = Status;
    t.FreeFormat = FreeFormat;
    t.SystemID = SystemID;
    t.Pip = inst.Pip;
    t.Reason = Reason;
    t.CounterpartyID = CounterpartyID;
    t.ValueDate = ValueDate;
    t.Duration = Duration;
    t.LinkID = LinkID;
    t.Action = Action;
    t.CounterPartySystemID = CounterPartySystemID;
    t.PriceProfileID = PriceProfileID;
    BaseInst = Inst_Get_Array(inst.BaseID);
    ValueInst = Inst_Get_Array(inst.ValueID);

    // The account of the order, if the list has it. The bound is taken once, as the walk
    // starts; the yields let other work run between entries.
    const Long count = cmbAccount.ListCount();
    for (Long entry = 0; entry < count; ++entry) {
      if (cmbAccount.ItemData(entry) == t.AccountID) {
        cmbAccount.setListIndex(entry);
        break;
      }
      yield();
    }

    // The mask covers the ticket while it is rebuilt.
    fraHide.setVisible(true);
    Timer1.setTimerEnabled(false);
    fraOrderEntry.setCaption(inst.LongDesc);
    optType(1).setEnabled(inst.Status != 1 && AllowMarket);
    optType(5).setEnabled(inst.Status == 1 || AllowQuote);
    optType(2).setEnabled(AllowPending);
    optType(3).setEnabled(AllowPending);
    optType(4).setEnabled(AllowPending);

    // From here on the writes run the form's handlers.
    if (t.Action == ACTION_OCO) {
      optType(OCO_ORDER).setValue(true);
    } else if (t.OrderType == MARKET_ORDER) {
      optType(inst.Status == 1 ? TWOWAY_ORDER : MARKET_ORDER).setValue(true);
    } else if (t.OrderType == MANUAL_TRADE) {
      optType(MARKET_ORDER).setValue(true);
    } else {
      // A type with no button (0, 6 to 11, anything else) ends the intake here.
      optType(static_cast<int>(t.OrderType)).setValue(true);
    }

    if (t.Duration != kNoDate) {
      optValid(0).setValue(true);
      optValid(1).setValue(false);
    } else {
      optValid(0).setValue(false);
      optValid(1).setValue(true);
    }

    Label1(4).setCaption(BaseInst.ShortDesc);
    Label1(6).setCaption(ValueInst.ShortDesc);
    if (t.Quantity >= 0) {
      optBuySell(0).setValue(true);
      optBuySell(1).setValue(false);
    } else {
      optBuySell(1).setValue(true);
      optBuySell(0).setValue(false);
    }
    lblValueDate.setCaption(FormatDateDMY(t.ValueDate, locale()));

    txtPrice.setText(Single_Price_As_String(t.MarketPrice, inst.Pip));
    txtBid.setText(Single_Price_As_String(t.Bid, inst.Pip));
    txtOffer.setText(Single_Price_As_String(t.Offer, inst.Pip));
    // The type's handler may have reseeded the order prices: the message's price stands.
    if (Status != ORDER_PLACED) {
      if (OrderType == LIMIT_ORDER) t.LimitPrice = Price;
      if (OrderType == STOPLOSS_ORDER) t.StopPrice = Price;
    }
    txtLimit.setText(Single_Price_As_String(t.LimitPrice, inst.Pip));
    txtStop.setText(Single_Price_As_String(t.StopPrice, inst.Pip));

    if (t.PrimarySecondaryQty == QTY_PRIMARY) {
      txtPrimQty.setText(FormatNumber(std::fabs(t.Quantity), kAmountPattern, locale()));
      txtSecQty.setText(
          FormatNumber(std::fabs(t.Quantity) * t.MarketPrice, kAmountPattern, locale()));
    } else {
      double primary = t.MarketPrice == 0 ? 0 : std::fabs(t.Quantity) / t.MarketPrice;
      txtPrimQty.setText(FormatNumber(primary, kAmountPattern, locale()));
      txtSecQty.setText(FormatNumber(std::fabs(t.Quantity), kAmountPattern, locale()));
    }
    // The ruling box's change handler stored the unsigned amount: the message's sign stands.
    t.Quantity = Quantity;

    lblReason.setCaption("");
    fraQuote.setVisible(false);

    Show_Status(price, inst, Price);
  } catch (const ObjectDestroyed&) {
    entry.ended();
    return {};
  } catch (...) {
    if (!entry.report([&] { Report(CurrentError(), "Initialise", false); })) return {};
  }
  ResumeNext([&] { fraHide.setVisible(false); });
  return {};
}

}  // namespace quillon
