// Accounts and equity: LoadAccount, cmbAccount_Click, ReceivedEquity.

#include <string>

#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::LoadAccount(Long& AccountID, std::string& AccountName, Long& PriceProfile) {
  const TicketEntry entry(life_);
  try {
    // The walk counts in 16 bits: past 32767 accounts the bound, and after the 32767th
    // account the count itself, overflows.
    const Integer upper = CInt(static_cast<double>(Accounts.size()) - 1);
    for (Integer i = 1; i <= upper; i = IntAdd(i, 1)) {
      AccountRec& account = Accounts.at(i);
      if (account.AccountID == AccountID) {
        // An update keeps the list's entry and its old text.
        account.AccountName = AccountName;
        account.PriceProfile = PriceProfile;
        return;
      }
      yield();
    }
    Accounts.push_back(AccountRec{AccountID, AccountName, PriceProfile});
    cmbAccount.AddItem(AccountName);
    const Long newIndex = cmbAccount.ListCount() - 1;
    cmbAccount.setItemData(newIndex, AccountID);
    if (AccountID == TicketMembers::AccountID) cmbAccount.setListIndex(newIndex);
  } catch (const ObjectDestroyed&) {
    entry.ended();
  } catch (...) {
    entry.report([&] { Report(CurrentError(), "LoadAccount", false); });
  }
}

void Clientticket::cmbAccount_Click() {
  Long id = 0;
  ResumeNext([&] { id = cmbAccount.ItemData(cmbAccount.ListIndex()); });
  // The walk's bound is taken once; the array only grows while the walk yields.
  const std::size_t upper = Accounts.size() - 1;
  for (std::size_t i = 1; i <= upper && i < Accounts.size(); ++i) {
    if (Accounts[i].AccountID == id) {
      ResumeNext([&] {
        if (CurrentAccount.PriceProfile != Accounts[i].PriceProfile) {
          // The look-up gets the element's profile by reference: what the host writes there
          // lands in the element. A held copy is written back only when the host changed it,
          // so a LoadAccount that the host ran while answering keeps the profile it gave.
          const Long asked = Accounts[i].PriceProfile;
          Long profile = asked;
          const PriceRec price = Price_Get_Array(InstrumentID, CompanyCtrPty, profile);
          if (profile != asked && i < Accounts.size()) Accounts[i].PriceProfile = profile;
          Bid = price.Bid;
          Offer = price.Offer;
          Check_Price(false);
          Update_Quantities();
        }
      });
      ResumeNext([&] { CurrentAccount = Accounts.at(i); });
      ResumeNext([&] { PriceProfileID = Accounts.at(i).PriceProfile; });
      break;
    }
    ResumeNext([&] { yield(); });  // work run in the yield may fail; the walk goes on
  }
  AccountID = id;
  Long allInstruments = -1;
  ResumeNext([&] { raise(&ClientticketEvents::RequestEquity, AccountID, allInstruments); });
  ResumeNext([&] { cmdOKCancel(0).setEnabled(Check_Order()); });
}

Variant Clientticket::ReceivedEquity(Long& Account, double& Equity, double& TradingLimit) {
  const TicketEntry entry(life_);
  try {
    if (!fraTradeConf.Visible()) {
      if (Account != AccountID) return {};
      txtEquity.setText(FormatNumber(Equity, kAmountPattern, locale()));
      txtTradLimit.setText(FormatNumber(TradingLimit, kAmountPattern, locale()));
    } else if (DummyLive == LIVE_TRADING && Account == AccountID && !EquityShown) {
      // The confirmation of a live user ends in "The new tradable equity is ", waiting for this.
      EquityShown = true;
      lblTradeConf.setCaption(lblTradeConf.Caption() +
                              FormatNumber(Equity, kAmountPattern, locale()) + "\r\n" +
                              "Unless stated otherwise, " + kCompanyNameLong +
                              " acts as a principal in all trades.");
    }
  } catch (const ObjectDestroyed&) {
    entry.ended();
  } catch (...) {
    entry.report([&] { Report(CurrentError(), "ReceivedEquity", false); });
  }
  return {};
}

}  // namespace quillon
