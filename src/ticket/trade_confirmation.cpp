// The trade confirmation: Get_Pair_Desc, Show_Trade_Confirm, Print_Trade_Confirm.
// All three carry on after a failing statement: a printing failure shows nothing.

#include <cmath>
#include <string>

#include "platform/date.h"
#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

constexpr const char* kCrLf = "\r\n";

}  // namespace

std::string Clientticket::Get_Pair_Desc() {
  std::string pair;
  ResumeNext([&] {
    const InstrumentRec inst = Inst_Get_Array(InstrumentID);
    const InstrumentRec base = Inst_Get_Array(inst.BaseID);
    const InstrumentRec value = Inst_Get_Array(inst.ValueID);
    // The currency the amount counts in comes first.
    pair = PrimarySecondaryQty == QTY_PRIMARY ? base.ShortDesc + " vs " + value.ShortDesc
                                              : value.ShortDesc + " vs " + base.ShortDesc;
  });
  return pair;
}

void Clientticket::Show_Trade_Confirm() {
  std::string text;
  // The element found; its name is read where the text names it, since the pair's questions
  // to the host come between the two places. The array only grows, so the place holds.
  std::size_t account = 0;
  ResumeNext([&] { text = "Trade ID: " + std::to_string(TradeID) + kCrLf + kCrLf; });
  ResumeNext([&] { text += "To: "; });
  ResumeNext([&] {
    const std::size_t upper = Accounts.size() - 1;
    for (std::size_t i = 1; i <= upper && i < Accounts.size(); ++i) {
      if (Accounts[i].AccountID == AccountID) {
        account = i;
        break;
      }
      yield();
    }
  });
  const bool found = account != 0;
  if (found) ResumeNext([&] { text += Accounts.at(account).AccountName + kCrLf; });
  ResumeNext([&] { text += std::string("From: ") + kCompanyNameLong + kCrLf + kCrLf; });
  ResumeNext([&] { text += std::string(kCompanyNameLong) + " confirms that you have "; });
  ResumeNext([&] { text += Quantity > 0 ? "bought " : "sold "; });
  ResumeNext([&] {
    // The amount is read before the host is asked for the pair, as the sentence reads.
    text += FormatNumber(std::fabs(Quantity), kAmountPattern, locale()) + " ";
    text += Get_Pair_Desc() + " ";
  });
  ResumeNext([&] { text += "value " + FormatDateDMY(ValueDate, locale()) + " for account "; });
  if (found) ResumeNext([&] { text += Accounts.at(account).AccountName + " at a price of "; });
  ResumeNext([&] { text += Single_Price_As_String(MarketPrice, Pip); });
  ResumeNext([&] { text += std::string(kCrLf) + kCrLf; });
  if (DummyLive == DUMMY_TRADING) {
    ResumeNext([&] { text += " Please note that this is not a live trade. "; });
  } else {
    // The figure comes back through ReceivedEquity once the panel is up.
    ResumeNext([&] { text += "The new tradable equity is "; });
    ResumeNext([&] { raise(&ClientticketEvents::RequestEquity, AccountID, InstrumentID); });
  }
  ResumeNext([&] { lblTradeConf.setCaption(text); });
  ResumeNext([&] { fraTradeConf.setLeft(UserControl.Width() / 2 - fraTradeConf.Width() / 2); });
  ResumeNext([&] { fraTradeConf.setTop(UserControl.Height() / 2 - fraTradeConf.Height() / 2); });
  ResumeNext([&] { fraTradeConf.setVisible(true); });
}

void Clientticket::Print_Trade_Confirm(std::string& sText, Long& lTradeID) {
  (void)lTradeID;  // plays no part in the document
  ResumeNext([&] { Change_Chars(sText, "\r\n\r\n", "</p><p> &nbsp; </p><p>"); });
  ResumeNext([&] { Change_Chars(sText, "\r\n", "</p><p>"); });
  std::string document;
  ResumeNext([&] {
    // Special characters of the text are not escaped: the text is the ticket's own wording.
    document = std::string("<html>") + kCrLf + "<body>" + kCrLf +
               "<p><big><big><strong>Trade Confirmation</strong></big></big></p>" + kCrLf +
               "<p>&nbsp;</p>" + kCrLf + "<p>" + sText + "</p>" + kCrLf + "</body>" + kCrLf +
               "</html>";
  });
  // The document goes out on a white background in black text.
  ResumeNext([&] { WebClient1.setBackColor(TicketColour::kWhite); });
  ResumeNext([&] { WebClient1.setForeColor(TicketColour::kBlack); });
  ResumeNext([&] {
    const Long back = WebClient1.BackColor(), fore = WebClient1.ForeColor();
    outside([&] { printer_->print(document, back, fore); });
  });
}

}  // namespace quillon
