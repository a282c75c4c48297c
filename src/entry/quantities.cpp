// The two amounts of an order:
//   VtDbl, Update_Quantities, Refresh_Quantity, the txtPrimQty and txtSecQty handlers, the udPrim and udSec
//   handlers, cmdContract_Click.

#include <bit>
#include <cmath>
#include <cstdint>

#include "platform/number_format.h"
#include "platform/short_text.h"
#include "ticket/ticket_model.h"

namespace quillon {

double Clientticket::VtDbl(const TextBox& Box) {
  try {
    return boxReadings_.of(Box, locale()).value;
  } catch (...) {
    Report(CurrentError(), "VtDbl", false);
  }
  return 0.0;
}

void Clientticket::Update_Quantities() {
  double price = 0;
  ResumeNext([&] {
    switch (OrderType) {
      case MARKET_ORDER: price = MarketPrice; break;
      case LIMIT_ORDER: price = LimitPrice; break;
      case STOPLOSS_ORDER: price = StopPrice; break;
      default: price = 0; break;  // OCO and quotes deal at no single price
    }
  });
  // The ruling box is never rewritten here; writing the counter box runs its change handler,
  // which does nothing because that box does not rule.
  if (PrimarySecondaryQty == QTY_PRIMARY) {
    ResumeNext([&] {
      if (price * Quantity == 0) txtSecQty.setText(std::string());
      else WriteAmount(txtSecQty, std::fabs(Quantity) * price);
    });
    ResumeNext([&] { txtPrimQty.setBackColor(TicketColour::kHighlightText); });
    ResumeNext([&] { txtSecQty.setBackColor(TicketColour::kButtonFace); });
  } else if (PrimarySecondaryQty == QTY_SECONDARY) {
    ResumeNext([&] { WriteAmount(txtPrimQty, price == 0 ? 0.0 : std::fabs(Quantity) / price); });
    ResumeNext([&] { txtPrimQty.setBackColor(TicketColour::kButtonFace); });
    ResumeNext([&] { txtSecQty.setBackColor(TicketColour::kHighlightText); });
  }
  ResumeNext([&] { cmdOKCancel(0).setEnabled(Check_Order() && Status == ORDER_BLANK); });
}

// A box that still holds the text written for the same amount under the same signs (the same
// stamp: no text has come in between) would take that text again, which changes nothing and
// runs no handler; the write is left out. The handler of a new text may write the box again,
// so the amount is kept only while the box holds its text.
void Clientticket::WriteAmount(TextBox& Box, double Amount) {
  const auto amount = std::bit_cast<std::uint64_t>(Amount);
  const std::uint64_t signs = locale().signsKey();
  const AmountWritten& last = amountWritten_;
  if (last.box == &Box && last.stamp == Box.textStamp() && last.amount == amount &&
      last.signs == signs)
    return;
  const std::string text = FormatNumberUnkept(Amount, kAmountPattern, locale());
  Box.setText(text);
  if (SameText(Box.Text(), text)) amountWritten_ = {&Box, Box.textStamp(), amount, signs};
}

// A change of the ruling amount refreshes the form the way a tick does, from the members.
void Clientticket::Refresh_Quantity() {
  Long instrument = InstrumentID, counterparty = CompanyCtrPty, priceType = PRICE_TRADED,
       source = CompanyCtrPty;
  double bid = Bid, offer = Offer;
  Date now = loop().now();
  PriceGeneric(instrument, counterparty, bid, offer, priceType, source, now);
}

void Clientticket::txtPrimQty_Change() {
  if (PrimarySecondaryQty != QTY_PRIMARY) return;
  ResumeNext([&] { Quantity = VtDbl(txtPrimQty); });
  ResumeNext([&] { Refresh_Quantity(); });
}

void Clientticket::txtPrimQty_GotFocus() {
  ResumeNext([&] {
    if (VtDbl(txtPrimQty) == 0) {
      txtPrimQty.setText("");  // the user starts on an empty box
    } else {
      txtPrimQty.setSelStart(0);
      txtPrimQty.setSelLength(static_cast<Long>(txtPrimQty.Text().size()));
    }
  });
}

// A key stroke claims the ruling role; the key itself goes through untouched.
void Clientticket::txtPrimQty_KeyPress(Integer& KeyAscii) {
  (void)KeyAscii;
  PrimarySecondaryQty = QTY_PRIMARY;
}

void Clientticket::txtPrimQty_LostFocus() {
  ResumeNext([&] {
    if (VtDbl(txtPrimQty) == 0) txtPrimQty.setText(FormatNumber(0, kAmountPattern, locale()));
  });
}

void Clientticket::txtSecQty_Change() {
  if (PrimarySecondaryQty != QTY_SECONDARY) return;
  ResumeNext([&] { Quantity = VtDbl(txtSecQty); });
  ResumeNext([&] { Refresh_Quantity(); });
}

void Clientticket::txtSecQty_GotFocus() {
  ResumeNext([&] {
    if (VtDbl(txtSecQty) != 0) {
      txtSecQty.setSelStart(0);
      txtSecQty.setSelLength(static_cast<Long>(txtSecQty.Text().size()));
    }
  });
}

// The secondary box claims nothing on a key stroke and leaves a zero as it is.
void Clientticket::txtSecQty_KeyPress(Integer& KeyAscii) { (void)KeyAscii; }
void Clientticket::txtSecQty_LostFocus() {}

void Clientticket::udPrim_Change() {
  const Long before = PrimarySecondaryQty;
  ResumeNext([&] {
    if (udPrim.Value() > 0) {
      PrimarySecondaryQty = QTY_PRIMARY;
      txtPrimQty.setText(FormatNumber(VtDbl(txtPrimQty) + BaseInst.ContractSize,
                                      kAmountPattern, locale()));
    } else if (Quantity > BaseInst.ContractSize && udPrim.Value() < 0) {
      // Down stops at one contract; the test reads Quantity, whichever side rules.
      PrimarySecondaryQty = QTY_PRIMARY;
      txtPrimQty.setText(FormatNumber(VtDbl(txtPrimQty) - BaseInst.ContractSize,
                                      kAmountPattern, locale()));
    }
  });
  if (PrimarySecondaryQty != before) {
    ResumeNext([&] { Check_Price(true); });
    ResumeNext([&] { Update_Quantities(); });
  }
}

// A spinner rests at 0: releasing the mouse puts it back, which runs the change handler with
// nothing to do.
void Clientticket::udPrim_MouseUp() { ResumeNext([&] { udPrim.setValue(0); }); }

void Clientticket::udSec_Change() {
  const Long before = PrimarySecondaryQty;
  ResumeNext([&] {
    if (udSec.Value() > 0) {
      PrimarySecondaryQty = QTY_SECONDARY;
      txtSecQty.setText(FormatNumber(VtDbl(txtSecQty) + ValueInst.ContractSize,
                                     kAmountPattern, locale()));
    } else if (VtDbl(txtSecQty) > ValueInst.ContractSize && udSec.Value() < 0) {
      PrimarySecondaryQty = QTY_SECONDARY;
      txtSecQty.setText(FormatNumber(VtDbl(txtSecQty) - ValueInst.ContractSize,
                                     kAmountPattern, locale()));
    }
  });
  if (PrimarySecondaryQty != before) {
    ResumeNext([&] { Check_Price(true); });
    ResumeNext([&] { Update_Quantities(); });
  }
}

void Clientticket::udSec_MouseUp() { ResumeNext([&] { udSec.setValue(0); }); }

// The contract buttons set the amount to one, five or ten contracts; they do not add.
void Clientticket::cmdContract_Click(Integer Index) {
  const Long before = PrimarySecondaryQty;
  ResumeNext([&] {
    static constexpr Long kMultiple[] = {1, 5, 10};
    if (Index < 0 || Index > 5) Raise(kSubscriptOutOfRange);
    const bool primary = Index < 3;
    PrimarySecondaryQty = primary ? QTY_PRIMARY : QTY_SECONDARY;
    // A 32-bit product: on overflow the box keeps its text.
    const Long amount = LngMul(kMultiple[Index % 3],
                               primary ? BaseInst.ContractSize : ValueInst.ContractSize);
    (primary ? txtPrimQty : txtSecQty).setText(FormatNumber(amount, kAmountPattern, locale()));
  });
  ResumeNext([&] { Check_Price(PrimarySecondaryQty != before); });
  ResumeNext([&] { Update_Quantities(); });
}

}  // namespace quillon
