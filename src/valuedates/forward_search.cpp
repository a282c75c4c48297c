// Forward instruments: Get_Inst_Family, Find_New_Inst.

#include "ticket/ticket_model.h"

namespace quillon {

Boolean Clientticket::Get_Inst_Family(Long lInstID, std::vector<Long>& Family) {
  (void)lInstID, (void)Family;
  return false;
}

Long Clientticket::Find_New_Inst(Long& lInstID, Date& dtValue) {
  (void)lInstID, (void)dtValue;
  return -1;
}

}  // namespace quillon
