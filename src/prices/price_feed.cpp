// Live prices: PriceGeneric, the one door for ticks and for the ticket's own refresh.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::PriceGeneric(Long& InstrumentID, Long& CounterpartyID, double& Bid,
                                double& Offer, Long& PriceType, Long& SourceID,
                                Date& PriceTime) {
  (void)CounterpartyID, (void)PriceTime;  // never read
  const TicketEntry entry(life_);
  try {
    // Only a blank form that is not showing its order statement follows the market.
    if (PriceType != PRICE_TRADED) return;
    if (InstrumentID != TicketMembers::InstrumentID) return;
    if (Status != ORDER_BLANK) return;
    if (fraConf.Visible()) return;

    if (CurrentAccount.PriceProfile == -1) {
      TicketMembers::Bid = Bid;
      TicketMembers::Offer = Offer;
    } else {
      // A client on a price profile sees the host's price for it, never the raw tick.
      const PriceRec price = Price_Get_Array(InstrumentID, SourceID, CurrentAccount.PriceProfile);
      TicketMembers::Bid = price.Bid;
      TicketMembers::Offer = price.Offer;
    }
    MarketPrice = optBuySell(0).Value() ? TicketMembers::Offer : TicketMembers::Bid;
    txtPrice.setText(PriceText(MarketPrice, Pip));
    txtBid.setText(PriceText(TicketMembers::Bid, Pip));
    txtOffer.setText(PriceText(TicketMembers::Offer, Pip));
    Check_Price(false);
    Update_Quantities();
    Check_Order();
  } catch (const ObjectDestroyed&) {
    entry.ended();
  } catch (...) {
    entry.report([&] { Report(CurrentError(), "PriceGeneric", false); });
  }
}

}  // namespace quillon
