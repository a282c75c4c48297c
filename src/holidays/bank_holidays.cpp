// BankHolidays over QuantLib's calendars. QuantLib stays inside this file.

#include "holidays/bank_holidays.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <map>
#include <set>

#include <ql/errors.hpp>
#include <ql/time/calendars/all.hpp>

#include "platform/runtime_error.h"

namespace quillon {
namespace {

namespace ql = QuantLib;

// The calendar of each ISO currency: the payment system's or the interbank market's where
// QuantLib has one, else the country's main exchange.
const std::map<std::string, ql::Calendar>& Calendars() {
  static const std::map<std::string, ql::Calendar> calendars = {
      {"ARS", ql::Argentina()},
      {"AUD", ql::Australia()},
      {"BRL", ql::Brazil(ql::Brazil::Settlement)},
      {"BWP", ql::Botswana()},
      {"CAD", ql::Canada(ql::Canada::Settlement)},
      {"CHF", ql::Switzerland()},
      {"CLP", ql::Chile()},
      // Offshore renminbi settles in Hong Kong, onshore on the mainland's interbank market.
      {"CNH", ql::HongKong()},
      {"CNY", ql::China(ql::China::IB)},
      {"CZK", ql::CzechRepublic()},
      {"DKK", ql::Denmark()},
      {"EUR", ql::TARGET()},
      {"GBP", ql::UnitedKingdom(ql::UnitedKingdom::Settlement)},
      {"HKD", ql::HongKong()},
      {"HUF", ql::Hungary()},
      {"IDR", ql::Indonesia(ql::Indonesia::IDX)},
      {"ILS", ql::Israel(ql::Israel::Settlement)},
      {"INR", ql::India()},
      {"ISK", ql::Iceland()},
      {"JPY", ql::Japan()},
      {"KRW", ql::SouthKorea(ql::SouthKorea::Settlement)},
      {"MXN", ql::Mexico()},
      {"NOK", ql::Norway()},
      {"NZD", ql::NewZealand()},
      {"PLN", ql::Poland()},
      {"RON", ql::Romania(ql::Romania::Public)},
      {"RUB", ql::Russia(ql::Russia::Settlement)},
      {"SAR", ql::SaudiArabia()},
      {"SEK", ql::Sweden()},
      {"SGD", ql::Singapore()},
      {"THB", ql::Thailand()},
      {"TRY", ql::Turkey()},
      {"TWD", ql::Taiwan()},
      {"UAH", ql::Ukraine()},
      {"USD", ql::UnitedStates(ql::UnitedStates::FederalReserve)},
      {"ZAR", ql::SouthAfrica()},
  };
  return calendars;
}

std::string Upper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

// The day of a date, as the ticket counts it (the time of day dropped toward day 0); false for
// a value outside years 100 to 9999.
bool DayOf(Date date, long long& day) {
  constexpr double kFirstDay = -657434;  // 1 Jan 100
  constexpr double kLastDay = 2958465;   // 31 Dec 9999
  if (!std::isfinite(date)) return false;
  const double whole = std::trunc(date);
  if (whole < kFirstDay || whole > kLastDay) return false;
  day = static_cast<long long>(whole);
  return true;
}

}  // namespace

struct BankHolidays::State {
  std::map<Long, std::string> currencies;
  std::map<Long, std::set<long long>> ownDays;
};

BankHolidays::BankHolidays() : state_(std::make_unique<State>()) {}
BankHolidays::~BankHolidays() = default;

bool BankHolidays::setCurrency(Long instrumentID, const std::string& isoCode) {
  const std::string code = Upper(isoCode);
  if (!knowsCurrency(code)) return false;
  state_->currencies[instrumentID] = code;
  return true;
}

std::string BankHolidays::currencyOf(Long instrumentID) const {
  auto it = state_->currencies.find(instrumentID);
  return it == state_->currencies.end() ? std::string() : it->second;
}

bool BankHolidays::addHoliday(Long instrumentID, Date date) {
  long long day = 0;
  if (!DayOf(date, day)) return false;
  state_->ownDays[instrumentID].insert(day);
  return true;
}

bool BankHolidays::knowsCurrency(const std::string& isoCode) {
  return Calendars().count(Upper(isoCode)) != 0;
}

std::vector<std::string> BankHolidays::knownCurrencies() {
  std::vector<std::string> codes;
  for (const auto& entry : Calendars()) codes.push_back(entry.first);
  return codes;
}

bool BankHolidays::isHoliday(const std::string& isoCode, Date date) {
  long long day = 0;
  if (!DayOf(date, day)) return false;
  const std::string code = Upper(isoCode);
  auto calendar = Calendars().find(code);
  if (calendar == Calendars().end()) return false;
  // From 1 March 1900 on, the ticket's day count and QuantLib's serial number agree.
  const long long first = ql::Date::minDate().serialNumber();
  const long long last = ql::Date::maxDate().serialNumber();
  if (day < first || day > last) return false;
  try {
    const ql::Date qlDate(static_cast<ql::Date::serial_type>(day));
    // Saturday and Sunday are the ticket's to judge. A calendar's other weekend days (Friday
    // for ILS and SAR) settle nothing in that currency, so they count as holidays here.
    const ql::Weekday weekday = qlDate.weekday();
    if (weekday == ql::Saturday || weekday == ql::Sunday) return false;
    return !calendar->second.isBusinessDay(qlDate);
  } catch (const std::exception& error) {
    Raise(kInvalidProcedureCall,
          "No holiday calendar for " + code + " on that date: " + error.what());
  }
}

Long BankHolidays::IsValueDateABankHol(Long instrumentID, Date date) {
  constexpr Long kHoliday = -1;
  long long day = 0;
  if (!DayOf(date, day)) return 0;
  auto own = state_->ownDays.find(instrumentID);
  if (own != state_->ownDays.end() && own->second.count(day) != 0) return kHoliday;
  auto currency = state_->currencies.find(instrumentID);
  if (currency == state_->currencies.end()) return 0;
  return isHoliday(currency->second, date) ? kHoliday : 0;
}

}  // namespace quillon
