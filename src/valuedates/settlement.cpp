// The settlement calendar: Trading_Day_Of, Valid_Value_Date, Get_Settlement_Day.

#include "ticket/ticket_model.h"

namespace quillon {

Date Clientticket::Trading_Day_Of(Date dt) { return dt; }

Boolean Clientticket::Valid_Value_Date(Long& lInstID, Date& dtValue) {
  (void)lInstID, (void)dtValue;
  return false;
}

Date Clientticket::Get_Settlement_Day(Date& dTradeDate, Date& dtForward, Long& lInstID) {
  (void)dTradeDate, (void)dtForward, (void)lInstID;
  return 0;
}

}  // namespace quillon
