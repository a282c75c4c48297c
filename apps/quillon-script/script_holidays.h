// The bank-holiday library of the script host: holidays a script names, per instrument, and
// currency instruments tied to the calendar of an ISO currency.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "platform/holidays.h"

namespace quillon::script {

// The real holiday calendars of ISO currencies.
class CurrencyCalendars {
 public:
  virtual ~CurrencyCalendars() = default;
  // Whether `day` is a bank holiday in the calendar of ISO currency `code`.
  virtual bool IsHoliday(const std::string& code, Date day) const = 0;
};

// The calendars of the bank-holiday library (QuantLib underneath).
class QuantLibCalendars : public CurrencyCalendars {
 public:
  bool IsHoliday(const std::string& code, Date day) const override;
};

class ScriptHolidays : public HolidayLibrary {
 public:
  // Makes `day` a bank holiday of the currency of instrument `instrumentID`.
  void AddHoliday(Long instrumentID, Date day);
  // Ties instrument `instrumentID` to the calendar of ISO currency `code`.
  void SetCurrency(Long instrumentID, const std::string& code);
  // The calendars that answer for tied instruments; nullptr (the default) answers no
  // holidays for them beyond the ones added. Not owned.
  void SetCalendars(const CurrencyCalendars* calendars) { calendars_ = calendars; }
  // Called after every question with its arguments and answer.
  std::function<void(Long instrumentID, Date date, Long result)> onQuestion;

  // 1 when `date` (its day) is a holiday of the instrument, else 0.
  Long IsValueDateABankHol(Long instrumentID, Date date) override;

 private:
  Long Answer(Long instrumentID, Date date) const;

  std::set<std::pair<Long, double>> days_;  // instrument, day count without the time
  std::map<Long, std::string> currencies_;
  const CurrencyCalendars* calendars_ = nullptr;
};

}  // namespace quillon::script
