// The dealing side and its captions: Check_Price.

#include <string>
#include <string_view>

#include "ticket/ticket_model.h"

namespace quillon {
namespace {

constexpr Long kBlue = 0x00FF0000;
constexpr Long kRed = 0x000000FF;
constexpr Long kWindowText = static_cast<Long>(0x80000008);

// A currency line's caption: a resource word, one blank and the currency's short name ("Buy
// EUR"). Every tick writes it again and as a rule finds it as it was: the caption is compared
// piece by piece where it stands, and only a new one is put together and stored.
void SetSideCaption(Control& label, const std::string& word, const std::string& currency) {
  const std::string_view now = label.Caption();
  const std::size_t w = word.size();
  if (now.size() == w + 1 + currency.size() && now[w] == ' ' &&
      SameText(now.substr(0, w), word) && SameText(now.substr(w + 1), currency))
    return;
  label.setCaption(word + " " + currency);
}

}  // namespace

void Clientticket::Check_Price(Boolean bReset) {
  try {
    if (bReset) {
      const PriceRec price = Price_Get_Array(InstrumentID, CompanyCtrPty, CurrentAccount.PriceProfile);
      Bid = price.Bid;
      Offer = price.Offer;
    }

    // Blue is the currency the client buys, red the one he sells. The buttons' texts follow
    // the ruling currency alone.
    auto paint = [&](double price, std::string_view left, std::string_view right, bool buysBase) {
      MarketPrice = price;
      cmdBuySell(0).setCaption(left);
      cmdBuySell(1).setCaption(right);
      constexpr double kBuy = 37, kSell = 38;
      Label1(4).setForeColor(buysBase ? kBlue : kRed);
      SetSideCaption(Label1(4), LoadResString(buysBase ? kBuy : kSell), BaseInst.ShortDesc);
      Label1(6).setForeColor(buysBase ? kRed : kBlue);
      SetSideCaption(Label1(6), LoadResString(buysBase ? kSell : kBuy), ValueInst.ShortDesc);
    };
    auto plain = [&] {
      MarketPrice = 0;
      Label1(4).setForeColor(kWindowText);
      Label1(4).setCaption(BaseInst.ShortDesc);
      Label1(6).setForeColor(kWindowText);
      Label1(6).setCaption(ValueInst.ShortDesc);
    };
    const bool primary = PrimarySecondaryQty == QTY_PRIMARY;
    if (OrderType == TWOWAY_ORDER) {
      plain();
    } else if (optBuySell(0).Value()) {
      if (primary) paint(Offer, "Sell Bid", "Buy Offer", true);
      else paint(Bid, "Buy Bid", "Sell Offer", false);
    } else if (optBuySell(1).Value()) {
      if (primary) paint(Bid, "Sell Bid", "Buy Offer", false);
      else paint(Offer, "Buy Bid", "Sell Offer", true);
    } else {
      plain();
    }

    if (!bReset && LimitPrice != 0 && StopPrice != 0) {
      txtLimit.setText(PriceText(LimitPrice, Pip));
      txtStop.setText(PriceText(StopPrice, Pip));
    } else {
      // One zero price reseeds both, from the market as the pip shows it.
      txtLimit.setText(PriceText(MarketPrice, Pip));
      txtStop.setText(PriceText(MarketPrice, Pip));
      LimitPrice = VtDbl(txtLimit);
      StopPrice = VtDbl(txtStop);
    }

    txtPrice.setText(PriceText(MarketPrice, Pip));
    txtBid.setText(PriceText(Bid, Pip));
    txtOffer.setText(PriceText(Offer, Pip));
  } catch (...) {
    Report(CurrentError(), "Check_Price", false);
  }
}

}  // namespace quillon
