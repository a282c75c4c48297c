// The host's properties, in interface order. Each accessor lets nothing escape.

#include "ticket/ticket_model.h"

namespace quillon {

std::string Clientticket::getCompanyName() const { return CompanyName; }
void Clientticket::setCompanyName(const std::string& value) {
  ResumeNext([&] { CompanyName = value; });
}

Long Clientticket::getLinkInstID() const { return -1; }

Integer Clientticket::getAccountType() const { return AccountType; }
void Clientticket::setAccountType(Integer value) {
  // Only the bits of the table count: a negative mask means nothing of its own.
  AccountType = value;
  AllowMarket = (value & AccountBits::kMarket) != 0;
  AllowQuote = (value & AccountBits::kQuote) != 0;
  AllowPending = (value & (AccountBits::kPendingA | AccountBits::kPendingB)) != 0;
  FixedSize = (value & AccountBits::kFixedSize) != 0;
  LiveFlag = (value & AccountBits::kLiveFlag) != 0;
  DummyLive = (value & (AccountBits::kLive | AccountBits::kFixedSize | AccountBits::kLiveFlag))
                  ? LIVE_TRADING
                  : DUMMY_TRADING;
}

Long Clientticket::getInstrumentID() const { return InstrumentID; }

double Clientticket::getMinOrderSize() const { return MinOrderSize; }
void Clientticket::setMinOrderSize(double value) { MinOrderSize = value; }

Long Clientticket::getCompanyCtrPty() const { return CompanyCtrPty; }
void Clientticket::setCompanyCtrPty(Long value) { CompanyCtrPty = value; }

Long Clientticket::getDealingGateway() const { return DealingGateway; }
void Clientticket::setDealingGateway(Long value) { DealingGateway = value; }

Boolean Clientticket::getEncrypt() const { return Encrypt; }
void Clientticket::setEncrypt(Boolean value) { Encrypt = value; }

Long Clientticket::getAccountID() const { return AccountID; }

Long Clientticket::getPrimSec() const { return PrimarySecondaryQty; }

Integer Clientticket::getLanguage() const { return Language; }
// setLanguage, with its walk over the captions, is in language/language.cpp.

Long Clientticket::getLinkID() const { return LinkID; }

double Clientticket::getMaxOrderSize() const { return MaxOrderSize; }
void Clientticket::setMaxOrderSize(double value) { MaxOrderSize = value; }

Long Clientticket::getOrderID() const { return OrderID; }

Long Clientticket::getPriceRequestGroup() const { return PriceRequestGroup; }
void Clientticket::setPriceRequestGroup(Long value) { PriceRequestGroup = value; }

Date Clientticket::getTradingDayEnd() const { return TradingDayEnd; }
void Clientticket::setTradingDayEnd(Date value) { TradingDayEnd = value; }

}  // namespace quillon
