// The order and trade messages, and the guaranteed-delivery handshake:
//   OrderGeneric, OrderGenericCancel, OrderGenericPending, TradeGeneric, GuaranteedMsgAck.
// The four messages fill what their shape lacks and hand over to Initialise; an error inside
// Initialise is reported there, and the message method carries on to its end. Nothing of the
// ticket is touched after Initialise: a ticket destroyed inside it ends the call there.

#include <cmath>

#include "ticket/ticket_model.h"

namespace quillon {

Variant Clientticket::OrderGeneric(Long& FromID, Long& OrderID, Long& AccountID,
                                   Long& InstrumentID, double& Quantity,
                                   Long& PrimarySecondaryQty, double& Price, Long& OrderType,
                                   Date& Duration, Date& MarketTime, Date& ValueDate,
                                   Long& Status, Long& LinkID, Long& Action, Integer& Reason,
                                   Long& CounterpartyID, Long& DummyLive,
                                   std::string& FreeFormat, Long& SystemID, Boolean& Encrypt,
                                   Long& CounterPartySystemID, Long& PriceProfileID,
                                   double& Strike, Date& Expiry) {
  (void)FromID, (void)Encrypt;
  ResumeNext([&] {
    Long tradeID = 0;
    Initialise(tradeID, OrderID, AccountID, InstrumentID, Quantity, PrimarySecondaryQty, Price,
               OrderType, Duration, MarketTime, ValueDate, Status, LinkID, Action, Reason,
               CounterpartyID, DummyLive, FreeFormat, SystemID, CounterPartySystemID,
               PriceProfileID, Strike, Expiry);
  });
  return {};
}

Variant Clientticket::OrderGenericCancel(Long& FromID, Long& OrderID, Long& AccountID,
                                         Long& InstrumentID, double& Quantity,
                                         Long& PrimarySecondaryQty, double& Price,
                                         Long& OrderType, Date& Duration, Date& MarketTime,
                                         Date& ValueDate, Long& Status, Integer& Reason,
                                         Long& CounterpartyID, Long& DummyLive,
                                         std::string& FreeFormat, Long& SystemID,
                                         Boolean& Encrypt, Long& CounterPartySystemID,
                                         Long& PriceProfileID, double& Strike, Date& Expiry) {
  (void)FromID, (void)Encrypt;
  ResumeNext([&] {
    Long tradeID = 0;
    Long linkID = 0;
    Long action = ACTION_NONE;
    Initialise(tradeID, OrderID, AccountID, InstrumentID, Quantity, PrimarySecondaryQty, Price,
               OrderType, Duration, MarketTime, ValueDate, Status, linkID, action, Reason,
               CounterpartyID, DummyLive, FreeFormat, SystemID, CounterPartySystemID,
               PriceProfileID, Strike, Expiry);
  });
  return {};
}

Variant Clientticket::OrderGenericPending(Long& FromID, Long& OrderID, Long& AccountID,
                                          Long& InstrumentID, double& Quantity,
                                          Long& PrimarySecondaryQty, double& Price,
                                          Long& OrderType, Date& Duration, Date& MarketTime,
                                          Date& ValueDate, Long& Status, Long& LinkID,
                                          Long& Action, Integer& Reason, Long& CounterpartyID,
                                          Long& DummyLive, std::string& FreeFormat,
                                          Long& SystemID, Boolean& Encrypt,
                                          Long& CounterPartySystemID, Long& PriceProfileID) {
  (void)FromID, (void)Encrypt;
  ResumeNext([&] {
    Long tradeID = 0;
    double strike = 0;
    Date expiry = 0;
    Initialise(tradeID, OrderID, AccountID, InstrumentID, Quantity, PrimarySecondaryQty, Price,
               OrderType, Duration, MarketTime, ValueDate, Status, LinkID, Action, Reason,
               CounterpartyID, DummyLive, FreeFormat, SystemID, CounterPartySystemID,
               PriceProfileID, strike, expiry);
  });
  return {};
}

Variant Clientticket::TradeGeneric(Long& FromID, Long& TradeID, Long& AccountID,
                                   Long& InstrumentID, double& Quantity,
                                   Long& PrimarySecondaryQty, double& Price, Long& TradeType,
                                   Date& MarketTime, Date& ValueDate, Long& Status,
                                   Integer& Reason, Long& OrderID, Long& CounterpartyID,
                                   Long& LinkID, Long& DummyLive, std::string& FreeFormat,
                                   Long& SystemID, Boolean& Encrypt,
                                   Long& CounterPartySystemID, Long& PriceProfileID,
                                   double& Strike, Date& Expiry) {
  (void)FromID, (void)Encrypt;
  ResumeNext([&] {
    Date duration = loop().now();
    Long action = ACTION_NONE;
    Initialise(TradeID, OrderID, AccountID, InstrumentID, Quantity, PrimarySecondaryQty, Price,
               TradeType, duration, MarketTime, ValueDate, Status, LinkID, action, Reason,
               CounterpartyID, DummyLive, FreeFormat, SystemID, CounterPartySystemID,
               PriceProfileID, Strike, Expiry);
  });
  return {};
}

Variant Clientticket::GuaranteedMsgAck(Long& FromID, Integer& GID, Boolean& Success) {
  (void)FromID;
  const TicketEntry entry(life_);
  try {
    if (GID != TicketMembers::GID) return {};
    TicketMembers::GID = -1;
    if (Success) return {};
    if (Status != ORDER_ACTIVE_INTERNAL) return {};
    fraConf.setVisible(false);
    Reason = 101;
    // The replay redraws the order as it was sent. The members alone would lose its price
    // (Price is never assigned) and its side (Quantity holds the unsigned amount of the form),
    // and a user told that an order may not have arrived needs to see which order that was:
    // so the replay carries the price the order went out at and the side the form showed.
    Long tradeID = TradeID, orderID = OrderID, accountID = AccountID,
         instrumentID = InstrumentID;
    bool buy = true;
    ResumeNext([&] { buy = optBuySell(0).Value(); });
    double quantity = buy ? std::fabs(Quantity) : -std::fabs(Quantity);
    Long primSec = PrimarySecondaryQty;
    double price = OrderType == LIMIT_ORDER      ? LimitPrice
                   : OrderType == STOPLOSS_ORDER ? StopPrice
                                                 : MarketPrice;
    Long orderType = OrderType;
    Date duration = Duration, marketTime = MarketTime, valueDate = ValueDate;
    Long status = Status, linkID = LinkID, action = Action;
    Integer reason = Reason;
    Long counterpartyID = CounterpartyID, dummyLive = DummyLive;
    std::string freeFormat = FreeFormat;
    Long systemID = SystemID, counterPartySystemID = CounterPartySystemID,
         priceProfileID = PriceProfileID;
    double strike = 0;
    Date expiry = 0;
    Initialise(tradeID, orderID, accountID, instrumentID, quantity, primSec, price, orderType,
               duration, marketTime, valueDate, status, linkID, action, reason, counterpartyID,
               dummyLive, freeFormat, systemID, counterPartySystemID, priceProfileID, strike,
               expiry);
  } catch (const ObjectDestroyed&) {
    entry.ended();
  } catch (...) {
    entry.report([&] { Report(CurrentError(), "MessageAck", false); });
  }
  return {};
}

}  // namespace quillon
