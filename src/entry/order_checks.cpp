// Whether the order on the form may go out:
//   Check_Order, Contract_Remainder.

#include "ticket/ticket_model.h"

namespace quillon {

// Until the checks are in, no order may go out.
Boolean Clientticket::Check_Order() { return false; }

double Clientticket::Contract_Remainder(double Quantity, Long ContractSize) {
  (void)Quantity, (void)ContractSize;
  return 0;
}

}  // namespace quillon
