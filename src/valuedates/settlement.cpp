// The settlement calendar: Trading_Day_Of, Valid_Value_Date, Get_Settlement_Day.

#include <string>

#include "platform/date.h"
#include "ticket/ticket_model.h"

namespace quillon {
namespace {

// The longest walk over the calendar, in days: ten years. No real holiday calendar keeps a
// walk going this long, but a holiday source that calls every day a holiday, or a test that
// fails on every date, would keep it going for ever, and a backward roll can reach the trading
// day, before which no date is valid. At the limit Get_Settlement_Day reports and returns.
constexpr Long kWalkLimit = 3660;

[[noreturn]] void RaiseWalkLimit() {
  Raise(kInvalidProcedureCall,
        "No valid value date within " + std::to_string(kWalkLimit) + " days");
}

// Whole seconds since midnight.
Long SecondsOfDay(Date d) {
  const DateParts p = PartsOf(d);
  return p.hour * 3600 + p.minute * 60 + p.second;
}

}  // namespace

Date Clientticket::Trading_Day_Of(Date dt) {
  Date result = 0;
  ResumeNext([&] {
    // At or after the end of the trading day the next calendar day has begun.
    if (SecondsOfDay(dt) >= SecondsOfDay(TradingDayEnd))
      result = AddDays(DateOnly(dt), 1);
    else
      result = DateOnly(dt);
  });
  return result;
}

Boolean Clientticket::Valid_Value_Date(Long& lInstID, Date& dtValue) {
  const TicketEntry entry(life_);
  try {
    const InstrumentRec inst = Inst_Get_Array(lInstID);
    const Date tradingDay = Trading_Day_Of(Get_System_Time());
    // The tests run cheapest first: a date that fails early asks the library nothing.
    if (DiffDays(tradingDay, dtValue) < 1) return false;
    const int weekday = WeekdayOf(dtValue);
    if (weekday == 1 || weekday == 7) return false;
    if (holidays_->IsValueDateABankHol(inst.BaseID, dtValue) != 0) return false;
    if (holidays_->IsValueDateABankHol(inst.ValueID, dtValue) != 0) return false;
    return true;
  } catch (const ObjectDestroyed&) {
    entry.ended();
  } catch (...) {
    entry.report([&] { Report(CurrentError(), "Valid_Value_Date", true); });
  }
  return false;
}

Date Clientticket::Get_Settlement_Day(Date& dTradeDate, Date& dtForward, Long& lInstID) {
  Date w = 0;
  const TicketEntry entry(life_);
  try {
    w = dTradeDate;
    if (dtForward == 0 || dtForward == TimeSerial(23, 59, 59)) dtForward = kNoDate;
    InstrumentRec inst = Inst_Get_Array(lInstID);

    // Spot: the second good day after the trade date.
    for (int walk = 0; walk < 2; ++walk) {
      for (Long steps = 0;;) {
        w = AddDays(w, 1);
        const Boolean good = Valid_Value_Date(inst.InstrumentID, w);
        yield();
        if (good) break;
        if (++steps == kWalkLimit) RaiseWalkLimit();
      }
      yield();
    }

    Integer days = CInt(DiffDays(kNoDate, dtForward));
    if (days == 0) return DateOnly(w);
    if (days < 0) {
      // A code before the sentinel counts from the trade date itself.
      w = dTradeDate;
      days = IntMul(days, -1);
    } else {
      const Integer years = CInt(DiffYears(kNoDate, dtForward));
      w = AddYears(w, years);
      dtForward = AddYears(dtForward, -years);
      const Integer months = CInt(DiffMonths(kNoDate, dtForward));
      w = AddMonths(w, months);
      dtForward = AddMonths(dtForward, -months);
      days = CInt(DiffDays(kNoDate, dtForward));
    }
    w = AddDays(w, days);

    // Roll forward to a good day; once a step crosses a month end (and that day, too, fails)
    // the walk turns back, so a forward never settles in the month after its own.
    bool forward = true;
    for (Long steps = 0;;) {
      if (Valid_Value_Date(inst.InstrumentID, w)) break;
      if (++steps == kWalkLimit) RaiseWalkLimit();
      const int month = MonthOf(w);
      w = AddDays(w, forward ? 1 : -1);
      if (forward && MonthOf(w) != month) forward = false;
      yield();
    }
  } catch (const ObjectDestroyed&) {
    entry.ended();
    return 0;
  } catch (...) {
    if (!entry.report([&] { Report(CurrentError(), "Get_Settlement_Day", true); })) return 0;
  }
  Date result = 0;
  ResumeNext([&] { result = DateOnly(w); });
  return result;
}

}  // namespace quillon
