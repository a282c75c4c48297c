// Order type, side and validity:
//   optType_Click, optBuySell_Click, optValid_Click, Set_Valid_Option.

#include "ticket/ticket_model.h"

namespace quillon {

// Reshaping the form by type comes with the order-entry work.
void Clientticket::optType_Click(Integer Index) { (void)Index; }

void Clientticket::optBuySell_Click(Integer Index) { (void)Index; }

void Clientticket::optValid_Click(Integer Index) { (void)Index; }

void Clientticket::Set_Valid_Option() {}

}  // namespace quillon
