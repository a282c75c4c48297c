// A dealer's quote: OrderGenericQuote (intake), Quote_Tick (the countdown half of
// Timer1_Timer), cmdQuote_Click (the user's answer).

#include <cmath>
#include <string>
#include <tuple>

#include "platform/date.h"
#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

constexpr Long kRed = 0x000000FF;
constexpr Long kQuoteTickMs = 1000;

}  // namespace

Variant Clientticket::OrderGenericQuote(Long& FromID, Long& OrderID, Long& AccountID,
                                        Long& InstrumentID, double& Quantity,
                                        Long& PrimarySecondaryQty, double& Bid, double& Offer,
                                        Long& OrderType, Date& Duration, Date& MarketTime,
                                        Date& ValueDate, Long& Status, Integer& Reason,
                                        Long& CounterpartyID, Long& DummyLive,
                                        std::string& FreeFormat, Long& SystemID,
                                        Boolean& Encrypt, Long& CounterPartySystemID,
                                        Long& PriceProfileID, double& Strike, Date& Expiry) {
  // The order's own type, value date and status stand; these arguments are not read.
  (void)FromID, (void)AccountID, (void)InstrumentID, (void)OrderType, (void)MarketTime;
  (void)ValueDate, (void)Status, (void)DummyLive, (void)FreeFormat, (void)SystemID;
  (void)Encrypt, (void)Strike, (void)Expiry;
  TicketMembers& t = *this;
  const TicketEntry entry(life_);
  try {
    if (OrderID != t.OrderID) return {};
    t.Quantity = Quantity;
    t.PrimarySecondaryQty = PrimarySecondaryQty;
    t.Bid = Bid;
    t.Offer = Offer;
    t.CounterpartyID = CounterpartyID;
    t.CounterPartySystemID = CounterPartySystemID;
    t.PriceProfileID = PriceProfileID;
    t.Reason = Reason;
    Set_Ticket_Colour(TicketColour::kYellow, TicketColour::kYellow);

    if (Bid != 0 || Offer != 0) {
      // The quote's life in seconds travels as a date after "1-Jan-1990", counted in 16 bits.
      const Integer seconds = CInt(DiffSeconds(kNoDate, Duration));
      Enable(false);
      cmdOKCancel(2).setEnabled(false);
      // A requote finds the panel up: its buttons wait for the next tick.
      for (int i = 0; i <= 2; ++i) cmdQuote(i).setEnabled(!fraQuote.Visible());
      lblQuoteTime.setCaption(std::to_string(seconds));

      const bool twoWay = t.OrderType == TWOWAY_ORDER;
      const bool sells = t.Quantity <= 0;
      const bool primary = t.PrimarySecondaryQty == QTY_PRIMARY;
      cmdQuote(0).setLeft(390);
      cmdQuote(1).setLeft(twoWay ? 1890 : 3450);
      cmdQuote(2).setLeft(twoWay ? 3450 : 390);
      if (twoWay) {
        lblQuotePrice.setCaption(Spread_Price_As_String(t.Bid, t.Offer, Pip));
        cmdQuote(0).setVisible(true);
        cmdQuote(1).setVisible(true);
        cmdQuote(2).setVisible(true);
      } else {
        // A secondary amount takes the other side of the price.
        t.MarketPrice = (sells == primary) ? t.Bid : t.Offer;
        lblQuotePrice.setCaption(Single_Price_As_String(t.MarketPrice, Pip));
        cmdQuote(0).setVisible(sells);
        cmdQuote(2).setVisible(!sells);
      }
      Update_Quantities();

      // Read from left to right: the price and the amount are taken before the pair's questions
      // to the host, which may answer with a requote of its own. The kind of quote is read here
      // too, not taken from the layout: the quantities have asked the host for a price since.
      std::string message = "You have received a new quote of " + lblQuotePrice.Caption();
      message += t.OrderType == TWOWAY_ORDER ? " for " : t.Quantity <= 0 ? " to sell " : " to buy ";
      message += FormatNumber(std::fabs(t.Quantity), kAmountPattern, locale()) + " ";
      message += Get_Pair_Desc();
      message += " value " + FormatDateDMY(t.ValueDate, locale()) + " from " + kCompanyNameLong +
                 ".\r\n\r\nThis quote will be cancelled when the number of seconds reaches zero.";
      lblQuoteMsg.setCaption(message);
      // Off and on: a running timer restarts, so the next tick is a full second away.
      Timer1.setInterval(kQuoteTickMs);
      Timer1.setTimerEnabled(false);
      Timer1.setTimerEnabled(true);
    } else {
      cmdQuote(0).setEnabled(false);
      cmdQuote(2).setEnabled(false);
      Timer1.setTimerEnabled(false);
      lblQuoteTime.setCaption("");
      lblQuotePrice.setCaption("Quote Off");
      lblQuoteMsg.setForeColor(kRed);
      lblQuoteMsg.setCaption(std::string("The quote has been suspended. ") + "\r\n" +
                             "Please wait for " + kCompanyNameLong + "to send a new quote.");
    }
    fraQuote.setVisible(true);
    if (cmdQuote(1).Enabled()) cmdQuote(1).SetFocus();
  } catch (const ObjectDestroyed&) {
    entry.ended();
  } catch (...) {
    entry.report([&] { Report(CurrentError(), "OrderGenericQuote", false); });
  }
  return {};
}

void Clientticket::Quote_Tick() {
  // The caption is the countdown's only store.
  double left = 0;
  ResumeNext([&] {
    lblQuoteTime.setCaption(GeneralNumber(Val(lblQuoteTime.Caption()) - 1, locale()));
  });
  ResumeNext([&] { left = Val(lblQuoteTime.Caption()); });
  if (left <= 0) {
    ResumeNext([&] { Timer1.setTimerEnabled(false); });
    Boolean connected = false;
    ResumeNext([&] { connected = Is_Connected(); });
    if (!connected) return;
    // The expiry is not guaranteed: it draws no number.
    ResumeNext([&] {
      raise(&ClientticketEvents::VtOrderGenericNew, DealingGateway, OrderID, AccountID,
            InstrumentID, Quantity, PrimarySecondaryQty, MarketPrice, OrderType, Duration,
            MarketTime, ValueDate, ORDER_CLIENT_CANCELLED, 0, 0, 2, CounterpartyID, Encrypt,
            DummyLive, FreeFormat, SystemID, -1, CounterPartySystemID, PriceProfileID, 0);
    });
    Status = ORDER_CANCELLED_INTERNAL;
    return;
  }
  // Each second makes the buttons live again and takes back the red of a suspension.
  if (OrderType == TWOWAY_ORDER) {
    ResumeNext([&] { cmdQuote(0).setEnabled(true); });
    ResumeNext([&] { cmdQuote(2).setEnabled(true); });
  } else if (Quantity <= 0) {
    ResumeNext([&] { cmdQuote(0).setEnabled(true); });
  } else {
    ResumeNext([&] { cmdQuote(2).setEnabled(true); });
  }
  ResumeNext([&] { cmdQuote(1).setEnabled(true); });
  ResumeNext([&] { lblQuoteMsg.setForeColor(UserControl.ForeColor()); });
}

void Clientticket::cmdQuote_Click(Integer Index) {
  if (Index < 0 || Index > 2) return;
  ResumeNext([&] { cmdQuote(Index).setEnabled(false); });
  auto connectedOrSay = [&] {
    Boolean connected = false;
    ResumeNext([&] { connected = Is_Connected(); });
    if (!connected) ResumeNext([&] { raise(&ClientticketEvents::Message, LoadResString(603)); });
    return connected;
  };
  if (!connectedOrSay()) return;
  ResumeNext([&] {
    // The sign of the quantity says the side, whatever the member's sign.
    const double quantity = Index == 0   ? -std::fabs(Quantity)
                            : Index == 2 ? std::fabs(Quantity)
                                         : Quantity;
    const double price = Index == 0 ? Bid : Index == 2 ? Offer : MarketPrice;
    const Long status = Index == 1 ? ORDER_CLIENT_CANCELLED : ORDER_CLIENT_ACCEPTED;
    const Integer reason = Index == 2 ? Reason : Integer{6};
    raiseWithGid(&ClientticketEvents::VtOrderGenericNew,
                 std::make_tuple(DealingGateway, OrderID, AccountID, InstrumentID, quantity,
                                 PrimarySecondaryQty, price, OrderType, Duration, MarketTime,
                                 ValueDate, status, Long{0}, Integer{0}, reason, CounterpartyID,
                                 Encrypt, DummyLive, FreeFormat, SystemID),
                 CounterPartySystemID);
  });
  Status = Index == 1 ? ORDER_CANCELLED_INTERNAL : ORDER_EXECUTED_INTERNAL;
  connectedOrSay();
}

}  // namespace quillon
