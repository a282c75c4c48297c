// The price boxes and the one-pip spinners of limit and stop:
//   txtPrice_Change, txtLimit_Change, txtStop_Change, udLimit and udStop handlers.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::txtPrice_Change() {}
void Clientticket::txtLimit_Change() {}
void Clientticket::txtStop_Change() {}

void Clientticket::udLimit_Change() {}
void Clientticket::udLimit_MouseUp() { ResumeNext([&] { udLimit.setValue(0); }); }
void Clientticket::udStop_Change() {}
void Clientticket::udStop_MouseUp() { ResumeNext([&] { udStop.setValue(0); }); }

}  // namespace quillon
