// The order statement, placing, withdrawing and closing:
//   Show_Order_Confirm, cmdOKCancel_Click, cmdBuySell_Click, Timer1_Timer.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::Show_Order_Confirm() {}

void Clientticket::cmdOKCancel_Click(Integer Index) {
  // The close button ends the ticket: the host destroys it, so nothing may follow the event.
  if (Index == 2) {
    ResumeNext([&] { host().CloseTicket(); });
    return;
  }
}

void Clientticket::cmdBuySell_Click(Integer Index) { (void)Index; }

void Clientticket::Timer1_Timer() {}

}  // namespace quillon
