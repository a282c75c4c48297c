// The price boxes and the one-pip spinners of limit and stop:
//   txtPrice_Change, txtLimit_Change, txtStop_Change, udLimit and udStop handlers.
// Each box and its member stay equal: the member holds the value of the text.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::txtPrice_Change() {
  ResumeNext([&] { MarketPrice = VtDbl(txtPrice); });
  ResumeNext([&] { Update_Quantities(); });
}

void Clientticket::txtLimit_Change() {
  ResumeNext([&] { LimitPrice = VtDbl(txtLimit); });
  ResumeNext([&] { Update_Quantities(); });
}

void Clientticket::txtStop_Change() {
  ResumeNext([&] { StopPrice = VtDbl(txtStop); });
  ResumeNext([&] { Update_Quantities(); });
}

// One pip a click, through the box, so the member takes the value of the new text. There is
// no bound: the price may step through 0.
void Clientticket::udLimit_Change() {
  ResumeNext([&] {
    if (udLimit.Value() > 0) {
      txtLimit.setText(Single_Price_As_String(LimitPrice + Pip, Pip));
    } else if (udLimit.Value() < 0) {
      txtLimit.setText(Single_Price_As_String(LimitPrice - Pip, Pip));
    }
  });
}

void Clientticket::udLimit_MouseUp() { ResumeNext([&] { udLimit.setValue(0); }); }

void Clientticket::udStop_Change() {
  ResumeNext([&] {
    if (udStop.Value() > 0) {
      txtStop.setText(Single_Price_As_String(StopPrice + Pip, Pip));
    } else if (udStop.Value() < 0) {
      txtStop.setText(Single_Price_As_String(StopPrice - Pip, Pip));
    }
  });
}

void Clientticket::udStop_MouseUp() { ResumeNext([&] { udStop.setValue(0); }); }

}  // namespace quillon
