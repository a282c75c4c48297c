// Accounts and equity: LoadAccount, cmbAccount_Click, ReceivedEquity.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::LoadAccount(Long& AccountID, std::string& AccountName, Long& PriceProfile) {
  (void)AccountID, (void)AccountName, (void)PriceProfile;
}

void Clientticket::cmbAccount_Click() {}

Variant Clientticket::ReceivedEquity(Long& Account, double& Equity, double& TradingLimit) {
  (void)Account, (void)Equity, (void)TradingLimit;
  return {};
}

}  // namespace quillon
