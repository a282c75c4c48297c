// The value date picker: cmdValue_Click, calValueDate_DateClick, calValueDate_KeyPress.

#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::cmdValue_Click() {}

void Clientticket::calValueDate_DateClick(Date DateClicked) { (void)DateClicked; }

void Clientticket::calValueDate_KeyPress(Integer& KeyAscii) { (void)KeyAscii; }

}  // namespace quillon
