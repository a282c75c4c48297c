#include "script_holidays.h"

#include "holidays/bank_holidays.h"

#include <cmath>

namespace quillon::script {
namespace {

// The day of a date, as a whole day count. Before day 0 the time is still a fraction counted
// forward from the day (-1.25 is day -1 at 06:00), so the day is the whole part, not the floor.
double DayOf(Date date) { return std::trunc(date); }

}  // namespace

void ScriptHolidays::AddHoliday(Long instrumentID, Date day) {
  days_.insert({instrumentID, DayOf(day)});
}

void ScriptHolidays::SetCurrency(Long instrumentID, const std::string& code) {
  currencies_[instrumentID] = code;
}

Long ScriptHolidays::IsValueDateABankHol(Long instrumentID, Date date) {
  Long result = Answer(instrumentID, date);
  if (onQuestion) onQuestion(instrumentID, date, result);
  return result;
}

Long ScriptHolidays::Answer(Long instrumentID, Date date) const {
  if (!std::isfinite(date)) return 0;
  if (days_.count({instrumentID, DayOf(date)})) return 1;
  auto currency = currencies_.find(instrumentID);
  if (currency != currencies_.end() && calendars_ &&
      calendars_->IsHoliday(currency->second, DayOf(date)))
    return 1;
  return 0;
}

bool QuantLibCalendars::IsHoliday(const std::string& code, Date day) const {
  return BankHolidays::isHoliday(code, day);
}

}  // namespace quillon::script
