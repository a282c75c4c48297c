// Whether the order on the form may go out: Check_Order, Contract_Remainder.

#include <bit>
#include <cmath>
#include <cstdint>

#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {

Boolean Clientticket::Check_Order() {
  Boolean result = false;
  try {
    // Limit and stop are compared with a fresh market, not the ticket's last tick.
    const PriceRec market = Price_Get_Array(InstrumentID, CompanyCtrPty, CurrentAccount.PriceProfile);
    const bool primary = PrimarySecondaryQty == QTY_PRIMARY;
    const bool secondary = PrimarySecondaryQty == QTY_SECONDARY;
    const bool onlyRulingBox = optType(OCO_ORDER).Value() || optType(TWOWAY_ORDER).Value();
    [&] {
      if (!(AccountID > 0)) return;
      if (!(InstrumentID > 0)) return;
      if (!optBuySell(0).Value() && !optBuySell(1).Value()) return;
      if (!(onlyRulingBox && secondary) && !boxReadings_.of(txtPrimQty, locale()).numeric) return;
      if (!(onlyRulingBox && primary) && !boxReadings_.of(txtSecQty, locale()).numeric) return;
      if (!(Quantity > 0)) return;
      const double contractSize = primary ? BaseInst.ContractSize : ValueInst.ContractSize;
      if (!(contractSize * MaxOrderSize >= Quantity)) return;
      if (!(contractSize * MinOrderSize <= Quantity)) return;
      if (Contract_Remainder(Quantity, static_cast<Long>(contractSize)) != 0) return;
      if (Quantity != std::trunc(Quantity)) return;
      switch (OrderType) {
        case OCO_ORDER:
          if (LimitPrice == 0 || StopPrice == 0) return;
          break;
        case LIMIT_ORDER:
          if (LimitPrice == 0) return;
          break;
        case STOPLOSS_ORDER:
          if (StopPrice == 0) return;
          break;
        case ONEWAY_QUOTE:
        case TWOWAY_ORDER:
          break;
        default:
          if (MarketPrice == 0) return;
      }
      // Without a two-sided market, limit and stop are compared with nothing.
      if (market.Bid == 0 || market.Offer == 0) {
        result = true;
        return;
      }
      // With the secondary currency ruling the sides are mirrored: buying it sells the primary.
      const bool buysPrimary = optBuySell(0).Value() == primary;
      if (OrderType == LIMIT_ORDER || OrderType == OCO_ORDER) {
        if (buysPrimary ? !(LimitPrice < market.Offer) : !(LimitPrice > market.Bid)) return;
      }
      if (OrderType == STOPLOSS_ORDER || OrderType == OCO_ORDER) {
        if (buysPrimary ? !(StopPrice > market.Offer) : !(StopPrice < market.Bid)) return;
      }
      result = true;
    }();
  } catch (...) {
    Report(CurrentError(), "Check_Order", false);
    result = false;
  }
  ResumeNext([&] { cmdBuySell(0).setEnabled(result); });
  ResumeNext([&] { cmdBuySell(1).setEnabled(result); });
  return result;
}

double Clientticket::Contract_Remainder(double Quantity, Long ContractSize) {
  // The answer depends on these three alone and the work raises nothing that leaves it.
  const auto quantity = std::bit_cast<std::uint64_t>(Quantity);
  const std::uint64_t signs = locale().signsKey();
  if (remainder_.known && remainder_.quantity == quantity &&
      remainder_.contractSize == ContractSize && remainder_.signs == signs)
    return remainder_.result;
  double n = 0;
  double result = 0;
  ResumeNext([&] {
    if (ContractSize == 0) Raise(kDivisionByZero);
    n = Quantity / ContractSize;
  });
  // Rounding through a pattern with no decimals: below half a contract the text is empty and
  // has no value, so n keeps its fraction and the remainder is 0.
  ResumeNext([&] {
    const std::string whole = FormatNumber(n, "####;(####)", locale());
    if (!TryReadNumericText(whole, locale(), n)) Raise(kTypeMismatch);
  });
  ResumeNext([&] { result = n * ContractSize - Quantity; });
  remainder_ = {quantity, ContractSize, signs, result, true};
  return result;
}

}  // namespace quillon
