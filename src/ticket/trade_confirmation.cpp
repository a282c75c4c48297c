// The trade confirmation: Get_Pair_Desc, Show_Trade_Confirm, Print_Trade_Confirm.

#include "ticket/ticket_model.h"

namespace quillon {

std::string Clientticket::Get_Pair_Desc() { return {}; }

void Clientticket::Show_Trade_Confirm() {}

void Clientticket::Print_Trade_Confirm(std::string& sText, Long& lTradeID) {
  (void)sText, (void)lTradeID;
}

}  // namespace quillon
