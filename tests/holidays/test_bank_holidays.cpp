// The bank-holiday library on real calendars.

#include "holidays/bank_holidays.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "platform/date.h"

namespace quillon {
namespace {

Date D(int year, int month, int day) { return DateSerial(year, month, day); }

class BankHolidaysTest : public ::testing::Test {
 protected:
  static constexpr Long kEur = 1, kUsd = 2, kGbp = 3, kJpy = 4, kChf = 5, kIls = 6, kSar = 7;
  static constexpr Long kHkd = 8, kCnh = 9, kCny = 10, kSgd = 11, kIdr = 12, kTwd = 13;
  static constexpr Long kBrl = 14, kKrw = 15, kRub = 16, kThb = 17, kInr = 18, kArs = 19;
  static constexpr Long kClp = 20, kHuf = 21, kUah = 22, kTry = 23, kCop = 24, kPen = 25;
  static constexpr Long kDkk = 26, kMxn = 27, kRon = 28, kBwp = 29;
  static constexpr Long kUnknown = 99;
  BankHolidaysTest() {  // each constant above is its code's place in this list, from 1
    const char* codes[] = {"EUR", "usd", "GBP", "JPY", "CHF", "ILS", "SAR", "HKD", "CNH", "CNY",
                           "SGD", "IDR", "TWD", "BRL", "KRW", "RUB", "THB", "INR", "ARS", "CLP",
                           "HUF", "UAH", "TRY", "COP", "PEN", "DKK", "MXN", "RON", "BWP"};
    for (Long id = kEur; id <= kBwp; ++id)
      EXPECT_TRUE(library.setCurrency(id, codes[id - 1])) << codes[id - 1];
  }
  bool Holiday(Long instrument, Date date) { return library.IsValueDateABankHol(instrument, date); }

  BankHolidays library;
};

TEST_F(BankHolidaysTest, CalendarsPerCurrency) {
  struct Case { Long currency; Date date; bool holiday; } cases[] = {
      {kEur, D(2025, 4, 18), true},   // Good Friday
      {kUsd, D(2025, 4, 18), false},  // the Fed works on Good Friday
      {kEur, D(2025, 5, 1), true},    {kGbp, D(2025, 5, 1), false},
      {kUsd, D(2025, 11, 27), true},  // Thanksgiving
      // Juneteenth: the Monday after a Sunday one is a holiday, the Friday before a Saturday
      // one is not.
      {kUsd, D(2022, 6, 20), true},   {kUsd, D(2027, 6, 18), false},
      {kJpy, D(2025, 1, 2), true},    {kChf, D(2025, 8, 1), true},
      // Saturday and Sunday are the ticket's business: Saturday 27 December 2025 is no holiday
      // here. Friday, the first day of the weekend in Saudi Arabia, is; in Israel it was until
      // the markets moved to a Monday-to-Friday week in January 2026.
      {kEur, D(2025, 12, 27), false}, {kIls, D(2025, 6, 6), true}, {kSar, D(2025, 6, 6), true},
      {kIls, D(2025, 6, 5), false},   {kIls, D(2025, 6, 8), false},
      {kIls, D(2026, 1, 2), true},    {kIls, D(2026, 1, 9), false}, {kSar, D(2026, 1, 9), true},
      {kIls, D(2026, 5, 22), true},  // Shavuot, on a Friday
      // Holidays declared year by year that the calendars' lists miss, and the days next to
      // them: the Lunar New Year (Hong Kong's fourth day for the second on a Sunday in 2027),
      // China's holiday weeks and the 2027 days fixed ahead of the State Council's notice,
      // Singapore's Monday for a Sunday, Saudi Eid al-Adha (the RTGS reopening before the
      // banks), Indonesia's Christmas leave on which Bank Indonesia works.
      {kHkd, D(2026, 2, 17), true},   {kHkd, D(2026, 2, 20), false},
      {kCnh, D(2027, 2, 9), true},    {kHkd, D(2027, 2, 10), false},
      {kCny, D(2026, 2, 23), true},   {kCny, D(2026, 2, 24), false},
      {kCny, D(2027, 2, 5), true},    {kSgd, D(2027, 2, 8), true},
      {kSar, D(2027, 5, 18), true},   {kSar, D(2027, 5, 19), false},
      {kTwd, D(2027, 2, 10), true},   {kIdr, D(2027, 12, 24), false},
      // Holidays the law made after the calendars were written: Brazil's Black Consciousness
      // Day from 2024.
      {kBrl, D(2026, 11, 20), true},  {kBrl, D(2023, 11, 20), false},
      // Korea's substitute days: a national holiday, Buddha's Birthday or Christmas on a
      // Saturday or Sunday, a day of Seollal on Sunday, two holidays on one day (Children's Day
      // and Buddha's Birthday in 2025, Chuseok and National Foundation Day in 2028); the local
      // elections of 2026 and Constitution Day, a holiday again from 2026.
      {kKrw, D(2026, 3, 2), true},    {kKrw, D(2026, 5, 25), true},
      {kKrw, D(2026, 10, 5), true},   {kKrw, D(2027, 12, 27), true},
      {kKrw, D(2023, 5, 29), true},   {kKrw, D(2027, 2, 8), true},
      {kKrw, D(2025, 5, 6), true},    {kKrw, D(2028, 10, 5), true},
      {kKrw, D(2026, 6, 3), true},    {kKrw, D(2026, 7, 17), true},
      // Russia's New Year holidays to 8 January, and the days off the government moved: in
      // 2025 the Saturday 8 March went to Friday 13 June, not to the Monday after.
      {kRub, D(2027, 1, 6), true},    {kRub, D(2026, 1, 9), true},
      {kRub, D(2025, 6, 13), true},   {kRub, D(2025, 3, 10), false},
      // Thailand's Monday for Visakha Bucha on a Sunday in 2026.
      {kThb, D(2026, 6, 1), true},
      // Its royal holidays on fixed dates in 2027: Coronation Day, Queen Suthida's Birthday, and
      // the Monday for Chulalongkorn Day on a Saturday.
      {kThb, D(2027, 5, 4), true},    {kThb, D(2027, 6, 3), true},
      {kThb, D(2027, 10, 25), true},
      // India's exchange holidays after the calendar's lists end: Diwali (the day between
      // Laxmi Pujan and Balipratipada open), the election of 15 January 2026.
      {kInr, D(2022, 10, 26), true},  {kInr, D(2022, 10, 25), false},
      {kInr, D(2026, 1, 15), true},   {kInr, D(2026, 11, 25), false},
      // Argentina's national holidays the exchange's calendar lacks: Christmas, Carnival,
      // Malvinas on a Friday, Bankers' Day; National Sovereignty Day on the Monday after, and a
      // day off for tourism.
      {kArs, D(2026, 12, 25), true},  {kArs, D(2027, 2, 9), true},
      {kArs, D(2027, 4, 2), true},    {kArs, D(2028, 11, 6), true},
      {kArs, D(2026, 11, 23), true},  {kArs, D(2026, 12, 7), true},
      // Denmark's bank closing days: Christmas Eve, New Year's Eve, the Friday after Ascension.
      {kDkk, D(2026, 12, 24), true},  {kDkk, D(2026, 12, 31), true},
      {kDkk, D(2027, 5, 7), true},
      // Mexico's inauguration day, every six years.
      {kMxn, D(2030, 10, 1), true},
      // Chile's banks' New Year's Eve, and the Day of Indigenous Peoples on the solstice.
      {kClp, D(2026, 12, 31), true},  {kClp, D(2027, 12, 31), true},
      {kClp, D(2028, 6, 20), true},   {kClp, D(2028, 6, 21), false},
      // Hungary's rest day of 2026, worked on a Saturday instead.
      {kHuf, D(2026, 12, 24), true},
      // Ukraine's holidays are working days under martial law.
      {kUah, D(2027, 1, 7), false},   {kUah, D(2027, 8, 24), false},
      // Turkey's Ramadan Bayram of 2027, from Tuesday 9 to Thursday 11 March.
      {kTry, D(2027, 3, 9), true},    {kTry, D(2027, 3, 12), false},
      // Colombia: 8 December, and Epiphany, Saint Joseph and Ascension moved to a Monday;
      // the Thursday of Ascension itself settles.
      {kCop, D(2026, 12, 8), true},   {kCop, D(2027, 1, 11), true},
      {kCop, D(2027, 3, 22), true},   {kCop, D(2027, 5, 10), true},
      {kCop, D(2027, 5, 6), false},
      // Peru: the Battle of Ayacucho, Flag Day, the Air Force's Day.
      {kPen, D(2026, 12, 9), true},   {kPen, D(2027, 6, 7), true},
      {kPen, D(2027, 7, 23), true},
      // Romania: Orthodox Good Friday (not the Western one), 6 and 7 January.
      {kRon, D(2026, 4, 10), true},   {kRon, D(2027, 4, 30), true},
      {kRon, D(2027, 3, 26), false},  {kRon, D(2027, 1, 6), true},
      {kRon, D(2027, 1, 7), true},
      // Botswana: 2 January, or the Monday or Tuesday it moves to, and the Tuesday after
      // Presidents' Day.
      {kBwp, D(2026, 1, 2), true},    {kBwp, D(2028, 1, 3), true},
      {kBwp, D(2034, 1, 3), true},    {kBwp, D(2027, 7, 20), true},
      {kBwp, D(2027, 7, 21), false},
      // The time of day does not matter.
      {kEur, D(2025, 12, 25) + 0.75, true},
      // Outside the calendars' years only a host's dates count.
      {kEur, D(1900, 12, 25), false}, {kEur, D(2200, 12, 25), false},
      {kUnknown, D(2025, 12, 25), false},
  };
  for (const Case& c : cases)
    EXPECT_EQ(Holiday(c.currency, c.date), c.holiday) << c.currency << " on " << c.date;
  EXPECT_EQ(library.IsValueDateABankHol(kEur, D(2025, 12, 25)), -1);
}

TEST_F(BankHolidaysTest, HostDatesAndCurrencyCodes) {
  // A host's own dates add to a calendar, to an instrument without one, and outside the
  // calendars' years; the time of day is dropped.
  EXPECT_TRUE(library.addHoliday(kEur, D(2025, 6, 10) + 0.5));
  EXPECT_TRUE(library.addHoliday(kUnknown, D(2025, 6, 11)));
  EXPECT_TRUE(library.addHoliday(kUsd, D(1850, 1, 2)));
  EXPECT_TRUE(Holiday(kEur, D(2025, 6, 10)));
  EXPECT_TRUE(Holiday(kUnknown, D(2025, 6, 11) + 0.25));
  EXPECT_TRUE(Holiday(kUsd, D(1850, 1, 2)));
  // Values that are no dates are refused, and never holidays.
  for (double bad : {std::nan(""), 1e300, -1e7, 3e6}) {
    EXPECT_FALSE(library.addHoliday(kEur, bad)) << bad;
    EXPECT_FALSE(Holiday(kEur, bad)) << bad;
  }

  EXPECT_FALSE(library.setCurrency(kEur, "XYZ"));
  EXPECT_EQ(library.currencyOf(kEur), "EUR");  // unchanged by a refused code
  EXPECT_EQ(library.currencyOf(kUsd), "USD");
  // Remapping follows the new calendar.
  EXPECT_TRUE(library.setCurrency(kEur, "gbp"));
  EXPECT_TRUE(Holiday(kEur, D(2025, 8, 25)));

  // A calendar alone, by its code.
  EXPECT_TRUE(BankHolidays::isHoliday("usd", D(2025, 7, 4)));
  EXPECT_FALSE(BankHolidays::isHoliday("GBP", D(2025, 7, 4)));
  // Holidays the law made or abolished lately: Matariki, Polish Christmas Eve from 2025, and
  // the Danish Great Prayer Day no more from 2024.
  EXPECT_TRUE(BankHolidays::isHoliday("NZD", D(2025, 6, 20)));
  EXPECT_TRUE(BankHolidays::isHoliday("PLN", D(2025, 12, 24)));
  EXPECT_FALSE(BankHolidays::isHoliday("PLN", D(2024, 12, 24)));
  EXPECT_FALSE(BankHolidays::isHoliday("DKK", D(2024, 4, 26)));
  EXPECT_TRUE(BankHolidays::isHoliday("DKK", D(2023, 5, 5)));
  // Offshore renminbi keeps Hong Kong's days.
  EXPECT_TRUE(BankHolidays::isHoliday("cnh", D(2025, 7, 1)));
  EXPECT_FALSE(BankHolidays::isHoliday("XYZ", D(2025, 12, 25)));
}

}  // namespace
}  // namespace quillon
