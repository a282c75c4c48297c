// BankHolidays over QuantLib's calendars. QuantLib stays inside this file.

#include "holidays/bank_holidays.h"

#include "holidays/declared_holidays.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <initializer_list>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include <ql/errors.hpp>
#include <ql/time/calendars/all.hpp>

#include "platform/runtime_error.h"

namespace quillon {
namespace {

namespace ql = QuantLib;
using holidays::DeclaredHolidays;
using holidays::KoreanLunarYear;
using holidays::KoreanLunarYears;
using holidays::RussianDaysOff;

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
      // Colombia's national holidays, on which the banks and the foreign exchange market close.
      {"COP", ql::WeekendsOnly()},
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
      // Peru's national holidays, on which the banks close.
      {"PEN", ql::WeekendsOnly()},
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

// Easter Sunday of a Gregorian year, as a QuantLib date.
ql::Date EasterSunday(int year) {
  const int a = year % 19, b = year / 100, c = year % 100, d = b / 4, e = b % 4;
  const int f = (b + 8) / 25, g = (b - f + 1) / 3, h = (19 * a + b - d - g + 15) % 30;
  const int i = c / 4, k = c % 4, l = (32 + 2 * e + 2 * i - h - k) % 7;
  const int m = (a + 11 * h + 22 * l) / 451;
  const int month = (h + l - 7 * m + 114) / 31, day = (h + l - 7 * m + 114) % 31 + 1;
  return ql::Date(day, static_cast<ql::Month>(month), year);
}

// Orthodox Easter Sunday of a year from 1900 to 2099, as a Gregorian QuantLib date: the Julian
// calendar's Easter, thirteen days behind the Gregorian calendar in those years.
ql::Date OrthodoxEasterSunday(int year) {
  const int a = year % 4, b = year % 7, c = year % 19;
  const int d = (19 * c + 15) % 30, e = (2 * a + 4 * b - d + 34) % 7;
  const int month = (d + e + 114) / 31, day = (d + e + 114) % 31 + 1;
  return ql::Date(day, static_cast<ql::Month>(month), year) + 13;
}

// Whether a day is one of a year's holidays given as days from Easter Sunday and as dates
// (month * 100 + day).
bool OnHoliday(const ql::Date& date, std::initializer_list<int> fromEaster,
               std::initializer_list<int> monthDays) {
  const ql::Date easter = EasterSunday(date.year());
  for (int days : fromEaster)
    if (date == easter + days) return true;
  const int monthDay = date.month() * 100 + date.dayOfMonth();
  return std::find(monthDays.begin(), monthDays.end(), monthDay) != monthDays.end();
}

ql::Date FromYmd(int ymd) {
  return ql::Date(ymd % 100, static_cast<ql::Month>(ymd / 100 % 100), ymd / 10000);
}

// The weekdays of a year of the lunar table that are Korean holidays our QuantLib's calendar
// misses: Constitution Day, a holiday again from 2026, and the substitute days of the
// Regulation on Holidays of Government Offices. A day of Seollal or Chuseok that falls on a
// Sunday or on another holiday gives the first day after the three that is no holiday;
// Samiljeol, Constitution, Liberation, National Foundation and Hangul Days, Children's Day,
// Buddha's Birthday and Christmas give the first day after them that is no holiday when they
// fall on a Saturday, a Sunday or another holiday. A day bearing two holidays gives one
// substitute (Children's Day and Buddha's Birthday on 5 May 2025 gave 6 May). Only the years of
// the lunar table count; our QuantLib's own lunar holidays end with it, in 2032.
std::set<ql::Date> KoreanAddedDays(int year, const KoreanLunarYear& lunar) {
  const bool constitutionDay = year >= 2026;

  // Each holiday of the year: its day, whether a Saturday gives a substitute, and the day the
  // substitute comes after (the last of the three for Seollal and Chuseok).
  struct Holiday {
    ql::Date day;
    bool saturdayCounts;
    ql::Date after;
  };
  std::vector<Holiday> holidays;
  auto fixed = [&](int day, ql::Month month, bool substituted) {
    const ql::Date d(day, month, year);
    holidays.push_back({d, substituted, substituted ? d : ql::Date()});
  };
  fixed(1, ql::January, false);
  fixed(1, ql::March, true);
  fixed(5, ql::May, true);
  fixed(6, ql::June, false);
  if (constitutionDay) fixed(17, ql::July, true);
  fixed(15, ql::August, true);
  fixed(3, ql::October, true);
  fixed(9, ql::October, true);
  fixed(25, ql::December, true);
  const ql::Date buddha = FromYmd(lunar.buddhasBirthday);
  holidays.push_back({buddha, true, buddha});
  for (int middle : {lunar.seollal, lunar.chuseok})
    for (int offset = -1; offset <= 1; ++offset)
      holidays.push_back({FromYmd(middle) + offset, false, FromYmd(middle) + 1});

  // The days that already had their substitute, and the substitutes given so far.
  std::set<ql::Date> substituted, substitutes;
  auto isHoliday = [&](const ql::Date& d) {
    if (d.weekday() == ql::Sunday || substitutes.count(d) != 0) return true;
    for (const Holiday& h : holidays)
      if (h.day == d) return true;
    return false;
  };
  // Substitutes are given in the order of the holidays they follow, an earlier one first.
  std::sort(holidays.begin(), holidays.end(),
            [](const Holiday& a, const Holiday& b) { return a.after < b.after; });
  for (const Holiday& h : holidays) {
    if (h.after == ql::Date() || substituted.count(h.day) != 0) continue;
    int onTheDay = 0;
    for (const Holiday& other : holidays) onTheDay += other.day == h.day;
    const ql::Weekday weekday = h.day.weekday();
    if (weekday != ql::Sunday && onTheDay < 2 && !(h.saturdayCounts && weekday == ql::Saturday))
      continue;
    substituted.insert(h.day);
    ql::Date next = h.after + 1;
    while (isHoliday(next)) ++next;
    substitutes.insert(next);
  }
  if (constitutionDay) substitutes.insert(ql::Date(17, ql::July, year));
  return substitutes;
}

bool KoreanAddedHoliday(const ql::Date& date) {
  // Worked out once for every year of the table: a value date's search asks day by day.
  static const std::map<int, std::set<ql::Date>> added = [] {
    std::map<int, std::set<ql::Date>> years;
    for (const auto& [year, lunar] : KoreanLunarYears()) years[year] = KoreanAddedDays(year, lunar);
    return years;
  }();
  auto year = added.find(date.year());
  return year != added.end() && year->second.count(date) != 0;
}

// Argentina's bank holidays that our QuantLib's calendar, the Buenos Aires exchange's, misses
// in every year: the national holidays Law 27.399 keeps on their day (Carnival Monday and
// Tuesday, 24 March, 2 April, 20 June, Christmas) and Bankers' Day, 6 November, on which the
// banks close under their collective agreement and neither the clearing houses nor the
// exchange market work. Holy Thursday, a day off, and Christmas Eve and New Year's Eve, on
// which the central bank gives its staff the day off every year and the banks follow, are
// the calendar's already. Reckoned from 2026: earlier years keep the calendar's answer.
bool ArgentineFixedHoliday(const ql::Date& date) {
  return OnHoliday(date, {-48, -47}, {324, 402, 620, 1106, 1225});
}

// Colombia's national holidays as Law 51 of 1983, the Emiliani law, has them: New Year's Day,
// Maundy Thursday, Good Friday, Labour Day, 20 July, 7 August, 8 December and Christmas on
// their day; Epiphany, Saint Joseph, Saints Peter and Paul, the Assumption, the Day of the Race,
// All Saints and the independence of Cartagena (6 January, 19 March, 29 June, 15 August,
// 12 October, 1 and 11 November) on the Monday on or after it; and Ascension, Corpus Christi and
// the Sacred Heart on the Mondays 43, 64 and 71 days after Easter. Reckoned from 2026.
bool ColombianHoliday(const ql::Date& date) {
  if (OnHoliday(date, {-3, -2, 43, 64, 71}, {101, 501, 720, 807, 1208, 1225})) return true;
  if (date.weekday() != ql::Monday) return false;
  for (int moved : {106, 319, 629, 815, 1012, 1101, 1111}) {
    const ql::Date day(moved % 100, static_cast<ql::Month>(moved / 100), date.year());
    if (date >= day && date - day < 7) return true;
  }
  return false;
}

// Peru's national holidays, sixteen from 2026: New Year's Day, Maundy Thursday, Good Friday,
// Labour Day, Flag Day (7 June), Saints Peter and Paul, the Air Force's Day (23 July), the
// Fiestas Patrias (28 and 29 July), the Battles of Junin (6 August), Angamos (8 October) and
// Ayacucho (9 December), Saint Rose of Lima, All Saints, the Immaculate Conception and
// Christmas. Each is kept on its day. The days off the government declares by decree for the
// public sector are not bank holidays and are not here. Reckoned from 2026.
bool PeruvianHoliday(const ql::Date& date) {
  return OnHoliday(date, {-3, -2},
                   {101, 501, 607, 629, 723, 728, 729, 806, 830, 1008, 1101, 1208, 1209, 1225});
}

// Thailand's royal holidays on fixed dates, which the Bank of Thailand gives financial
// institutions every year: Coronation Day (4 May) and Queen Suthida's Birthday (3 June), both
// since 2019, and Chulalongkorn Day (23 October). One on a Saturday or Sunday gives the Monday
// after, as the Cabinet's rule on substitute days has it. Our QuantLib's calendar lists them
// only for the years it lists; the Buddhist holidays follow the lunar calendar and wait for the
// Bank of Thailand's list.
bool ThaiRoyalHoliday(const ql::Date& date) {
  for (auto [day, month] : {std::pair{4, ql::May}, {3, ql::June}, {23, ql::October}}) {
    const ql::Date holiday(day, month, date.year());
    if (date == holiday) return true;
    const ql::Weekday weekday = holiday.weekday();
    if (weekday == ql::Saturday || weekday == ql::Sunday)
      if (date.weekday() == ql::Monday && date > holiday && date - holiday <= 2) return true;
  }
  return false;
}

// Romania's holidays that our QuantLib's calendar misses: Orthodox Good Friday (since 2018)
// and Epiphany and Saint John's Day, 6 and 7 January (since 2024). Reckoned from 2026.
bool RomanianAddedHoliday(const ql::Date& date) {
  if (date == OrthodoxEasterSunday(date.year()) - 2) return true;
  return date.month() == ql::January && (date.dayOfMonth() == 6 || date.dayOfMonth() == 7);
}

// Botswana's holidays that our QuantLib's calendar misses: 2 January (the Monday after when
// it falls on a Sunday, the Tuesday after when New Year's Day on a Sunday takes the Monday),
// and the day after Presidents' Day, the Tuesday after the third Monday of July, which the
// Bank of Botswana and the banks keep. Reckoned from 2026.
bool BotswanaAddedHoliday(const ql::Date& date) {
  if (date.month() == ql::January) {
    const ql::Weekday second = ql::Date(2, ql::January, date.year()).weekday();
    return date.dayOfMonth() == (second == ql::Sunday || second == ql::Monday ? 3 : 2);
  }
  return date.month() == ql::July && date.weekday() == ql::Tuesday && date.dayOfMonth() >= 16 &&
         date.dayOfMonth() <= 22;
}

// Holidays made or abolished by law after our QuantLib's calendars were written, and those
// declared year by year that they miss: true or false where the law now says otherwise than
// the calendar, else no answer.
std::optional<bool> LawChange(const std::string& code, const ql::Date& date) {
  const int year = date.year();
  const int monthDay = date.month() * 100 + date.dayOfMonth();
  const int ymd = year * 10000 + monthDay;
  auto declared = DeclaredHolidays().find(code);
  if (declared != DeclaredHolidays().end() && declared->second.count(ymd) != 0) return true;
  if (code == "BRL" && year >= 2024 && monthDay == 1120)
    return true;  // Black Consciousness Day, a national holiday from 2024 (Law 14.759/2023)
  if (code == "KRW" && KoreanAddedHoliday(date)) return true;
  if (code == "DKK" && year >= 2024 && date == EasterSunday(year) + 26)
    return false;  // Great Prayer Day, abolished from 2024
  // Danmarks Nationalbank and the banks close on Christmas Eve, New Year's Eve and the Friday
  // after Ascension (a bank closing day since 2009), which our QuantLib's calendar counts as
  // business days.
  if (code == "DKK" && (monthDay == 1224 || monthDay == 1231 ||
                        (year >= 2009 && date == EasterSunday(year) + 40)))
    return true;
  // Israel's markets work Monday to Friday from 5 January 2026: a Friday since then settles
  // (and Sunday, which the calendar still counts a business day, is a weekend day the ticket
  // refuses itself), save the holidays declared above, which the calendar cannot tell on its
  // Friday weekend.
  if (code == "ILS" && date.weekday() == ql::Friday && date >= ql::Date(5, ql::January, 2026))
    return false;
  // The Federal Reserve keeps a Saturday holiday on no other day: the Friday before Juneteenth
  // on a Saturday (18 June 2027) is open, though our QuantLib's calendar closes it.
  if (code == "USD" && year >= 2022 && monthDay == 618 && date.weekday() == ql::Friday)
    return false;
  // Mexico's Federal Labour Law makes 1 October a rest day every six years, when the President
  // takes office (2024, 2030, ...), and the banks close on it; our QuantLib's calendar misses it.
  if (code == "MXN" && year >= 2024 && (year - 2024) % 6 == 0 && monthDay == 1001)
    return true;
  if (code == "THB" && year >= 2026 && ThaiRoyalHoliday(date)) return true;
  if (code == "RON" && year >= 2026 && RomanianAddedHoliday(date)) return true;
  if (code == "BWP" && year >= 2026 && BotswanaAddedHoliday(date)) return true;
  if (code == "PLN" && year >= 2025 && monthDay == 1224)
    return true;  // Christmas Eve, a holiday from 2025
  if (code == "RUB") {
    auto decreed = RussianDaysOff().find(year);
    if (decreed != RussianDaysOff().end()) return decreed->second.count(ymd) != 0;
    // The New Year holidays run to 8 January; the calendar stops at 5 (and Christmas, 7).
    if (year >= 2013 && monthDay <= 108) return true;
  }
  if (code == "ARS" && year >= 2026 && ArgentineFixedHoliday(date)) return true;
  // Colombia and Peru: the calendar counts weekends only, every holiday is reckoned here.
  if (code == "COP" && year >= 2026) return ColombianHoliday(date);
  if (code == "PEN" && year >= 2026) return PeruvianHoliday(date);
  // Chile's banks close on 31 December and it is no bank business day: bills falling due then
  // are paid the day after. The Fintech Law's rules dropped the day in August 2025, and Law
  // 21.791 of December 2025 brought it back.
  if (code == "CLP" && year >= 2025 && monthDay == 1231)
    return true;
  // Law 21.357 keeps the National Day of Indigenous Peoples on the day of the winter solstice.
  // In Chile's time that is 20 June in a leap year and the year after, 21 June in the two years
  // between, up to 2049; our QuantLib's calendar keeps it on 21 June in every year.
  if (code == "CLP" && year >= 2026 && year <= 2049 && (monthDay == 620 || monthDay == 621))
    return monthDay == (year % 4 < 2 ? 620 : 621);
  // Ukraine has been under martial law since 24 February 2022, and while it lasts the Labour
  // Code's public holidays are working days. The National Bank's payment system runs every day
  // around the clock, and the foreign exchange market worked on New Year's Day 2026 as on any
  // other day, so no weekday is a UAH holiday. When martial law ends the holidays come back as
  // amended in 2023 (Christmas on 25 December rather than 7 January, Defenders' Day on
  // 1 October rather than 14 October), and belong here then.
  if (code == "UAH" && year >= 2023) return false;
  // The Ramadan Bayram of 2027 runs from Tuesday 9 to Thursday 11 March by the Diyanet's
  // calendar, a day before the calendar's 10 to 12 March; its eve, Monday 8 March, is a half
  // day, and settles.
  if (code == "TRY" && year == 2027 && monthDay >= 309 && monthDay <= 312)
    return monthDay <= 311;
  return std::nullopt;
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
    // for SAR, and for ILS before 2026) settle nothing in that currency, so they count as
    // holidays here.
    const ql::Weekday weekday = qlDate.weekday();
    if (weekday == ql::Saturday || weekday == ql::Sunday) return false;
    if (const std::optional<bool> changed = LawChange(code, qlDate)) return *changed;
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
