// The value date picker: cmdValue_Click, calValueDate_DateClick, calValueDate_KeyPress.
// Each step carries on after a failing one; the date procedures report their own failures.

#include "platform/date.h"
#include "ticket/ticket_model.h"

namespace quillon {

void Clientticket::cmdValue_Click() {
  if (!calValueDate.Visible()) {
    ResumeNext([&] { calValueDate.setMinDate(Trading_Day_Of(Get_System_Time())); });
    ResumeNext([&] { calValueDate.setMaxDate(AddYears(calValueDate.MinDate(), 5)); });
    ResumeNext([&] { calValueDate.setValue(ValueDate); });
    ResumeNext([&] { calValueDate.setVisible(true); });
    return;
  }

  // Each step reads the calendar's day afresh: the test asks the host, and a day moved meanwhile
  // is the day searched for and taken.
  Date chosen = calValueDate.Value();
  if (Valid_Value_Date(InstrumentID, chosen)) {
    chosen = calValueDate.Value();
    const Long found = Find_New_Inst(InstrumentID, chosen);
    if (found == -1) return;  // the calendar stays open
    InstrumentID = found;
    ResumeNext([&] { ValueDate = calValueDate.Value(); });
    ResumeNext([&] { lblValueDate.setCaption(FormatDateDMY(calValueDate.Value(), locale())); });
    ResumeNext([&] { fraOrderEntry.setCaption(Inst_Get_Array(InstrumentID).LongDesc); });
    ResumeNext([&] { Check_Price(true); });
    ResumeNext([&] { Update_Quantities(); });
  }
  ResumeNext([&] { calValueDate.setVisible(false); });
}

void Clientticket::calValueDate_DateClick(Date DateClicked) {
  if (!Valid_Value_Date(InstrumentID, DateClicked)) return;
  if (calValueDate.Value() != ValueDate) {
    const Long found = Find_New_Inst(InstrumentID, DateClicked);
    if (found == -1) return;  // the calendar stays open
    InstrumentID = found;
    ValueDate = DateClicked;
    ResumeNext([&] { lblValueDate.setCaption(FormatDateDMY(ValueDate, locale())); });
    ResumeNext([&] { fraOrderEntry.setCaption(Inst_Get_Array(InstrumentID).LongDesc); });
    ResumeNext([&] { Check_Price(true); });
    ResumeNext([&] { Update_Quantities(); });
  }
  ResumeNext([&] { calValueDate.setVisible(false); });
}

void Clientticket::calValueDate_KeyPress(Integer& KeyAscii) {
  if (KeyAscii == 13 || KeyAscii == 32) calValueDate_DateClick(calValueDate.Value());
}

}  // namespace quillon
