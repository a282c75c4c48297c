// libquillon-holidays: the bank holidays of currencies, for the ticket's value dates.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/holidays.h"
#include "platform/types.h"

namespace quillon {

// Bank holidays per currency instrument: the holiday calendar of the instrument's ISO currency
// (EUR by TARGET, USD by the Federal Reserve's days, GBP, JPY, CHF and more), plus dates a host
// adds. Saturdays and Sundays are no holidays here, the ticket judges them itself; a calendar's
// other weekend days (Friday for SAR, and for ILS before 2026) are holidays. An instrument with
// neither a currency nor dates of its own has no holidays.
class BankHolidays : public HolidayLibrary {
 public:
  BankHolidays();
  ~BankHolidays() override;
  BankHolidays(const BankHolidays&) = delete;
  BankHolidays& operator=(const BankHolidays&) = delete;

  // Ties a currency instrument to the calendar of an ISO 4217 code (any case); false, and the
  // instrument keeps what it had, for a code with no calendar.
  bool setCurrency(Long instrumentID, const std::string& isoCode);
  // The ISO code tied to the instrument, upper case; empty for none.
  std::string currencyOf(Long instrumentID) const;
  // Makes the day of `date` (its time of day aside) a holiday of the instrument, beside its
  // calendar; false for a value that is no date of years 100 to 9999.
  bool addHoliday(Long instrumentID, Date date);

  // Whether an ISO code has a calendar here.
  static bool knowsCurrency(const std::string& isoCode);
  // The ISO codes with a calendar, in alphabetical order.
  static std::vector<std::string> knownCurrencies();
  // Whether the day of `date` is a holiday in the calendar of an ISO code alone, Saturdays and
  // Sundays aside; false for a code with no calendar and for years outside 1901 to 2199.
  static bool isHoliday(const std::string& isoCode, Date date);

  // -1 when the day of `date` is a bank holiday of the instrument, else 0. Calendars cover
  // 1901 to 2199; outside those years only a host's own dates count. A calendar that cannot
  // judge a date raises a run-time error with its reason.
  Long IsValueDateABankHol(Long instrumentID, Date date) override;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quillon
