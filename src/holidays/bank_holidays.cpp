// BankHolidays over QuantLib's calendars. QuantLib stays inside this file.

#include "holidays/bank_holidays.h"

#include <algorithm>
#include <cctype>
#include <cmath>
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

// Holidays declared year by year that our QuantLib's calendars miss: their lists of moving
// feasts (lunar, Islamic, Hindu) end years ago, and some were never kept. Weekdays as
// yyyymmdd, with the substitute days declared for a holiday on a Sunday; the dates are those
// the governments and central banks published (Hong Kong's gazette, China's State Council,
// Singapore's Ministry of Manpower, New Zealand's Act, the Saudi Central Bank, Indonesia's
// joint ministerial decree and Bank Indonesia, Taiwan's Directorate-General of Personnel
// Administration, Korea's Ministry of Personnel Management, the Bank of Thailand), and for INR
// the National Stock Exchange's. A year not yet published is not here, or only with the days
// its law already fixes, as said where it is.
const std::map<std::string, std::set<int>>& DeclaredHolidays() {
  // In 2027 the second day of the Lunar New Year is a Sunday, so the fourth day (9 February)
  // is the holiday instead, and the first weekday after Christmas is Monday 27 December.
  static const std::set<int> hongKong = {
      20240212, 20240213, 20240404, 20240515, 20240610, 20240918, 20241011,  //
      20250129, 20250130, 20250131, 20250404, 20250505, 20251007, 20251029,  //
      20260217, 20260218, 20260219, 20260407, 20260525, 20260619, 20261019,  //
      20270208, 20270209, 20270405, 20270513, 20270609, 20270916, 20271008, 20271227};
  static const std::map<std::string, std::set<int>> declared = {
      // The movable national holidays on the Mondays Law 27.399 moves them to (Güemes to
      // 15 June and National Sovereignty Day to 23 November in 2026; Güemes to 21 June, San
      // Martín to 16 August and Cultural Diversity Day to 11 October in 2027), and the days off
      // for tourism that the Chief of Cabinet's Resolution 164/2025 set for 2026 (23 March,
      // 10 July, 7 December), on which the banks and the exchange market close. National
      // Sovereignty Day 2027 falls on Saturday 20 November, and since Decree 614/2025 the Chief
      // of Cabinet may move such a day to the Friday before or the Monday after; nor are the
      // days off for tourism of 2027 out yet. Both are left out until they are. (The calendar
      // itself puts Güemes and San Martín on the third Mondays of June and August, as the law
      // before 2011 and 2017 did; in 2026 and 2027 those are the same Mondays.)
      {"ARS",
       {20260323, 20260615, 20260710, 20261123, 20261207,  //
        20270621, 20270816, 20271011}},
      // Offshore renminbi settles on Hong Kong's days.
      {"CNH", hongKong},
      {"HKD", hongKong},
      // The weekdays Hungary's yearly decree on the working order around holidays makes rest
      // days, each worked on a Saturday instead; the MNB's payment systems follow the decree,
      // and the Saturdays worked are the ticket's to judge. For 2026 (decree 10/2025 (IV. 30.)
      // NGM): Friday 2 January, Friday 21 August and Thursday 24 December, which the Labour
      // Code itself does not make a holiday. The decree for 2027 is not here yet.
      {"HUF", {20260102, 20260821, 20261224}},
      // The interbank market closes for the State Council's holiday weeks; the Saturdays and
      // Sundays it works instead are the ticket's to judge. For 2027 the State Council has not
      // yet published its weeks: only the weekdays the holiday regulations fix are here (Lunar
      // New Year's Eve and the third day, Qingming, the Dragon Boat and Mid-Autumn Festivals,
      // 1 October). The weekdays given for the holidays on a Saturday or Sunday (the first two
      // days of the Lunar New Year, 1 and 2 May, 2 and 3 October) and any bridging days follow
      // when the notice does.
      {"CNY",
       {20240212, 20240213, 20240214, 20240215, 20240216, 20240404, 20240405, 20240501,
        20240502, 20240503, 20240610, 20240916, 20240917, 20241001, 20241002, 20241003,
        20241004, 20241007,  //
        20250128, 20250129, 20250130, 20250131, 20250203, 20250204, 20250404, 20250501,
        20250502, 20250505, 20250602, 20251001, 20251002, 20251003, 20251006, 20251007,
        20251008,  //
        20260102, 20260216, 20260217, 20260218, 20260219, 20260220, 20260223, 20260406,
        20260501, 20260504, 20260505, 20260619, 20260925, 20261001, 20261002, 20261005,
        20261006, 20261007,  //
        20270205, 20270208, 20270405, 20270609, 20270915, 20271001}},
      // Election days and the temporary holidays the government declared; the substitute days
      // the law gives are reckoned apart. Seoul's brokered interbank market also shuts on the
      // year's last business day, but the banks stay open, so that day is left to a host's own
      // dates.
      {"KRW", {20231002, 20240410, 20241001, 20250127, 20250603, 20260603}},
      // Shavuot on a Friday: Fridays settle since January 2026, and the calendar, which still
      // counts Friday a weekend day, shows no holiday on one.
      {"ILS", {20260522, 20270611}},
      // Matariki, on the Fridays the Act fixes.
      {"NZD",
       {20220624, 20230714, 20240628, 20250620, 20260710, 20270625, 20280714, 20290706,
        20300621}},
      // Chinese New Year, Hari Raya Puasa and Haji, Vesak Day and Deepavali, with the Monday
      // after one on a Sunday (8 February 2027 for the second day of Chinese New Year).
      {"SGD",
       {20240212, 20240410, 20240522, 20240617, 20241031,  //
        20250129, 20250130, 20250331, 20250512, 20251020,  //
        20260217, 20260218, 20260527, 20260601, 20261109,  //
        20270208, 20270310, 20270517, 20270520, 20271028}},
      // The national holidays and the collective leave days on which Bank Indonesia's RTGS and
      // clearing close, and the election days of 2024; the collective leave around Christmas
      // (26 Dec 2024 and 2025, 24 Dec 2026 and 2027) is left out, as Bank Indonesia keeps its
      // systems open for the year's closing.
      {"IDR",
       {20240208, 20240209, 20240214, 20240311, 20240312, 20240408, 20240409, 20240410,
        20240411, 20240412, 20240415, 20240501, 20240510, 20240523, 20240524, 20240617,
        20240618, 20240916, 20241127,  //
        20250127, 20250128, 20250129, 20250328, 20250331, 20250401, 20250402, 20250403,
        20250404, 20250407, 20250501, 20250512, 20250513, 20250530, 20250606, 20250609,
        20250627, 20250905,  //
        20260116, 20260216, 20260217, 20260318, 20260319, 20260320, 20260323, 20260324,
        20260501, 20260515, 20260527, 20260528, 20260601, 20260616, 20260825,  //
        20270105, 20270205, 20270308, 20270309, 20270310, 20270311, 20270312, 20270315,
        20270325, 20270517, 20270518, 20270519, 20270520, 20270601}},
      // The trading holidays of the National Stock Exchange, from its annual circulars and the
      // closures it declared later (the Ram temple consecration on 22 January 2024, the
      // elections in Mumbai on 20 May and 20 November 2024, the municipal elections on
      // 15 January 2026) and the Bakri Id it moved to 29 June 2023. The calendar's lists of
      // festivals end in 2020; only the weekdays it misses are here, not Republic Day, Good
      // Friday, Ambedkar Jayanti, 1 May, 15 August, 2 October or Christmas. Diwali Laxmi Pujan
      // counts though the exchange trades an evening hour on it; days on which only the banks
      // or the clearing close (Gudhi Padwa, 1 April) are left out. The list for 2027 is not
      // out yet.
      {"INR",
       {20210311, 20210329, 20210421, 20210513, 20210721, 20210819, 20210910, 20211015,
        20211104, 20211105, 20211119,  //
        20220301, 20220318, 20220503, 20220809, 20220831, 20221005, 20221024, 20221026,
        20221108,  //
        20230307, 20230330, 20230404, 20230629, 20230919, 20231024, 20231114, 20231127,  //
        20240122, 20240308, 20240325, 20240411, 20240417, 20240520, 20240617, 20240717,
        20241101, 20241115, 20241120,  //
        20250226, 20250314, 20250331, 20250410, 20250827, 20251021, 20251022, 20251105,  //
        20260115, 20260303, 20260326, 20260331, 20260528, 20260626, 20260914, 20261020,
        20261110, 20261124}},
      // The Bank of Thailand's financial institutions' holidays that the calendar misses: in
      // 2026 the extra New Year holiday of 2 January, Makha Bucha, Coronation Day, the Monday
      // for Visakha Bucha on Sunday 31 May, the Queen's Birthday, Asarnha Bucha and
      // Chulalongkorn Day. The list for 2027 is not here yet.
      {"THB", {20260102, 20260303, 20260504, 20260601, 20260603, 20260729, 20261023}},
      // Founding Day and the Eid holidays: the banks' as the Saudi Central Bank declared them
      // for 2024 and 2025, its RTGS's from 2026 (the banks close a day or two longer). A
      // holiday on a Sunday is the ticket's to judge.
      {"SAR",
       {20240222, 20240408, 20240617, 20240618, 20240619, 20240620,  //
        20250605, 20250609, 20250610,                                //
        20260526, 20260527, 20260528,                                //
        20270222, 20270517, 20270518}},
      // The Lunar New Year, Children's and Tomb Sweeping Days, the Dragon Boat and Mid-Autumn
      // Festivals, and from the second half of 2025 Teachers', Retrocession and Constitution
      // Days, with the weekdays observed for one on a Saturday or Sunday (in 2027 the Lunar New
      // Year's 9 and 10 February, Children's Day on 6 April after Tomb Sweeping, Labour Day on
      // 30 April, and 31 December for New Year's Day 2028).
      {"TWD",
       {20240208, 20240209, 20240212, 20240213, 20240214, 20240404, 20240405, 20240610,
        20240917,  //
        20250127, 20250128, 20250129, 20250130, 20250131, 20250403, 20250404, 20250530,
        20250929, 20251006, 20251024, 20251225,  //
        20260216, 20260217, 20260218, 20260219, 20260220, 20260227, 20260403, 20260406,
        20260619, 20260925, 20260928, 20261009, 20261026, 20261225,  //
        20270204, 20270205, 20270208, 20270209, 20270210, 20270301, 20270405, 20270406,
        20270430, 20270609, 20270915, 20270928, 20271011, 20271025, 20271224, 20271231}},
  };
  return declared;
}

// Korea's lunar holidays as the Korea Astronomy and Space Science Institute reckons them, the
// days our QuantLib lists: Seollal and Chuseok (each with the day before and the day after)
// and Buddha's Birthday, yyyymmdd.
struct KoreanLunarYear {
  int seollal, buddhasBirthday, chuseok;
};
const std::map<int, KoreanLunarYear> kKoreanLunarYears = {
    {2023, {20230122, 20230527, 20230929}}, {2024, {20240210, 20240515, 20240917}},
    {2025, {20250129, 20250505, 20251006}}, {2026, {20260217, 20260524, 20260925}},
    {2027, {20270206, 20270513, 20270915}}, {2028, {20280126, 20280502, 20281003}},
    {2029, {20290213, 20290520, 20290922}}, {2030, {20300203, 20300509, 20300912}},
    {2031, {20310123, 20310528, 20311001}}, {2032, {20320211, 20320516, 20320919}},
};

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
    for (const auto& [year, lunar] : kKoreanLunarYears) years[year] = KoreanAddedDays(year, lunar);
    return years;
  }();
  auto year = added.find(date.year());
  return year != added.end() && year->second.count(date) != 0;
}

// Russia's non-working weekdays in the years whose government decree moving days off is out:
// the Labour Code's holidays (1 to 8 January, 23 February, 8 March, 1 and 9 May, 12 June,
// 4 November) and the weekdays off that the decree moved from weekends, in place of the
// Monday after (decree No. 1335 of 4 October 2024 for 2025, No. 1466 of 24 September 2025 for
// 2026). The decree for 2027 is not here yet: until it is, the Labour Code's days count, and
// the two weekdays off it gives for Saturday 2 and Sunday 3 January 2027 are missing.
const std::map<int, std::set<int>> kRussianDaysOff = {
    {2025,
     {20250101, 20250102, 20250103, 20250106, 20250107, 20250108, 20250501, 20250502, 20250508,
      20250509, 20250612, 20250613, 20251103, 20251104, 20251231}},
    {2026,
     {20260101, 20260102, 20260105, 20260106, 20260107, 20260108, 20260109, 20260223, 20260309,
      20260501, 20260511, 20260612, 20261104, 20261231}},
};

// Argentina's bank holidays that our QuantLib's calendar, the Buenos Aires exchange's, misses
// in every year: the national holidays Law 27.399 keeps on their day (Carnival Monday and
// Tuesday, 24 March, 2 April, 20 June, Christmas) and Bankers' Day, 6 November, on which the
// banks close under their collective agreement and neither the clearing houses nor the
// exchange market work. Holy Thursday, a day off, and Christmas Eve and New Year's Eve, on
// which the central bank gives its staff the day off every year and the banks follow, are
// the calendar's already. Reckoned from 2026: earlier years keep the calendar's answer.
bool ArgentineFixedHoliday(const ql::Date& date) {
  const ql::Date easter = EasterSunday(date.year());
  if (date == easter - 48 || date == easter - 47) return true;
  const int monthDay = date.month() * 100 + date.dayOfMonth();
  return monthDay == 324 || monthDay == 402 || monthDay == 620 || monthDay == 1106 ||
         monthDay == 1225;
}

// Colombia's national holidays as Law 51 of 1983, the Emiliani law, has them: New Year's Day,
// Maundy Thursday, Good Friday, Labour Day, 20 July, 7 August, 8 December and Christmas on
// their day; Epiphany, Saint Joseph, Saints Peter and Paul, the Assumption, the Day of the Race,
// All Saints and the independence of Cartagena (6 January, 19 March, 29 June, 15 August,
// 12 October, 1 and 11 November) on the Monday on or after it; and Ascension, Corpus Christi and
// the Sacred Heart on the Mondays 43, 64 and 71 days after Easter. Reckoned from 2026.
bool ColombianHoliday(const ql::Date& date) {
  const ql::Date easter = EasterSunday(date.year());
  for (int days : {-3, -2, 43, 64, 71})
    if (date == easter + days) return true;
  const int monthDay = date.month() * 100 + date.dayOfMonth();
  for (int fixed : {101, 501, 720, 807, 1208, 1225})
    if (monthDay == fixed) return true;
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
  const ql::Date easter = EasterSunday(date.year());
  if (date == easter - 3 || date == easter - 2) return true;
  const int monthDay = date.month() * 100 + date.dayOfMonth();
  for (int fixed : {101, 501, 607, 629, 723, 728, 729, 806, 830, 1008, 1101, 1208, 1209, 1225})
    if (monthDay == fixed) return true;
  return false;
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
  const int ymd = year * 10000 + date.month() * 100 + date.dayOfMonth();
  auto declared = DeclaredHolidays().find(code);
  if (declared != DeclaredHolidays().end() && declared->second.count(ymd) != 0) return true;
  if (code == "BRL" && year >= 2024 && date.month() == ql::November && date.dayOfMonth() == 20)
    return true;  // Black Consciousness Day, a national holiday from 2024 (Law 14.759/2023)
  if (code == "KRW" && KoreanAddedHoliday(date)) return true;
  if (code == "DKK" && year >= 2024 && date == EasterSunday(year) + 26)
    return false;  // Great Prayer Day, abolished from 2024
  // Danmarks Nationalbank and the banks close on Christmas Eve, New Year's Eve and the Friday
  // after Ascension (a bank closing day since 2009), which our QuantLib's calendar counts as
  // business days.
  if (code == "DKK" && ((date.month() == ql::December &&
                         (date.dayOfMonth() == 24 || date.dayOfMonth() == 31)) ||
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
  if (code == "USD" && year >= 2022 && date.month() == ql::June && date.dayOfMonth() == 18 &&
      date.weekday() == ql::Friday)
    return false;
  // Mexico's Federal Labour Law makes 1 October a rest day every six years, when the President
  // takes office (2024, 2030, ...), and the banks close on it; our QuantLib's calendar misses it.
  if (code == "MXN" && year >= 2024 && (year - 2024) % 6 == 0 && date.month() == ql::October &&
      date.dayOfMonth() == 1)
    return true;
  if (code == "THB" && year >= 2026 && ThaiRoyalHoliday(date)) return true;
  if (code == "RON" && year >= 2026 && RomanianAddedHoliday(date)) return true;
  if (code == "BWP" && year >= 2026 && BotswanaAddedHoliday(date)) return true;
  if (code == "PLN" && year >= 2025 && date.month() == ql::December && date.dayOfMonth() == 24)
    return true;  // Christmas Eve, a holiday from 2025
  if (code == "RUB") {
    auto decreed = kRussianDaysOff.find(year);
    if (decreed != kRussianDaysOff.end()) return decreed->second.count(ymd) != 0;
    // The New Year holidays run to 8 January; the calendar stops at 5 (and Christmas, 7).
    if (year >= 2013 && date.month() == ql::January && date.dayOfMonth() <= 8) return true;
  }
  if (code == "ARS" && year >= 2026 && ArgentineFixedHoliday(date)) return true;
  // Colombia and Peru: the calendar counts weekends only, every holiday is reckoned here.
  if (code == "COP" && year >= 2026) return ColombianHoliday(date);
  if (code == "PEN" && year >= 2026) return PeruvianHoliday(date);
  // Chile's banks close on 31 December and it is no bank business day: bills falling due then
  // are paid the day after. The Fintech Law's rules dropped the day in August 2025, and Law
  // 21.791 of December 2025 brought it back.
  if (code == "CLP" && year >= 2025 && date.month() == ql::December && date.dayOfMonth() == 31)
    return true;
  // Law 21.357 keeps the National Day of Indigenous Peoples on the day of the winter solstice.
  // In Chile's time that is 20 June in a leap year and the year after, 21 June in the two years
  // between, up to 2049; our QuantLib's calendar keeps it on 21 June in every year.
  if (code == "CLP" && year >= 2026 && year <= 2049 && date.month() == ql::June &&
      (date.dayOfMonth() == 20 || date.dayOfMonth() == 21))
    return date.dayOfMonth() == (year % 4 < 2 ? 20 : 21);
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
  if (code == "TRY" && year == 2027 && date.month() == ql::March && date.dayOfMonth() >= 9 &&
      date.dayOfMonth() <= 12)
    return date.dayOfMonth() <= 11;
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
