// A dealer's quote: OrderGenericQuote, cmdQuote_Click.

#include "ticket/ticket_model.h"

namespace quillon {

Variant Clientticket::OrderGenericQuote(Long& FromID, Long& OrderID, Long& AccountID,
                                        Long& InstrumentID, double& Quantity,
                                        Long& PrimarySecondaryQty, double& Bid, double& Offer,
                                        Long& OrderType, Date& Duration, Date& MarketTime,
                                        Date& ValueDate, Long& Status, Integer& Reason,
                                        Long& CounterpartyID, Long& DummyLive,
                                        std::string& FreeFormat, Long& SystemID,
                                        Boolean& Encrypt, Long& CounterPartySystemID,
                                        Long& PriceProfileID, double& Strike, Date& Expiry) {
  (void)FromID, (void)OrderID, (void)AccountID, (void)InstrumentID, (void)Quantity;
  (void)PrimarySecondaryQty, (void)Bid, (void)Offer, (void)OrderType, (void)Duration;
  (void)MarketTime, (void)ValueDate, (void)Status, (void)Reason, (void)CounterpartyID;
  (void)DummyLive, (void)FreeFormat, (void)SystemID, (void)Encrypt, (void)CounterPartySystemID;
  (void)PriceProfileID, (void)Strike, (void)Expiry;
  return {};
}

void Clientticket::cmdQuote_Click(Integer Index) { (void)Index; }

}  // namespace quillon
