// The two amounts of an order:
//   VtDbl, Update_Quantities, the txtPrimQty and txtSecQty handlers, the udPrim and udSec
//   handlers, cmdContract_Click.

#include "platform/number_format.h"
#include "ticket/ticket_model.h"

namespace quillon {

double Clientticket::VtDbl(const std::string& Text) {
  try {
    return IsNumericText(Text, locale()) ? ReadNumericText(Text, locale()) : 0.0;
  } catch (...) {
    Report(CurrentError(), "VtDbl", false);
  }
  return 0.0;
}

void Clientticket::Update_Quantities() {}

void Clientticket::txtPrimQty_Change() {}
void Clientticket::txtPrimQty_GotFocus() {}
void Clientticket::txtPrimQty_KeyPress(Integer& KeyAscii) { (void)KeyAscii; }
void Clientticket::txtPrimQty_LostFocus() {}

void Clientticket::txtSecQty_Change() {}
void Clientticket::txtSecQty_GotFocus() {}
void Clientticket::txtSecQty_KeyPress(Integer& KeyAscii) { (void)KeyAscii; }
void Clientticket::txtSecQty_LostFocus() {}

void Clientticket::udPrim_Change() {}
// A spinner rests at 0: releasing the mouse puts it back, which runs the change handler with
// nothing to do.
void Clientticket::udPrim_MouseUp() { ResumeNext([&] { udPrim.setValue(0); }); }
void Clientticket::udSec_Change() {}
void Clientticket::udSec_MouseUp() { ResumeNext([&] { udSec.setValue(0); }); }

void Clientticket::cmdContract_Click(Integer Index) { (void)Index; }

}  // namespace quillon
