// The dealing side and its captions: Check_Price.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::Check_Price(Boolean bReset) { (void)bReset; }

}  // namespace quillon
