// Live prices: PriceGeneric.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::PriceGeneric(Long& InstrumentID, Long& CounterpartyID, double& Bid,
                                double& Offer, Long& PriceType, Long& SourceID,
                                Date& PriceTime) {
  (void)InstrumentID, (void)CounterpartyID, (void)Bid, (void)Offer, (void)PriceType;
  (void)SourceID, (void)PriceTime;
}

}  // namespace quillon
