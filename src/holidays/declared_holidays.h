// The holidays that authorities publish year by year, as weekdays in yyyymmdd: the dates our
// QuantLib's calendars miss, kept apart from the rules so that each year's lists go in here
// as they come out. Used by the holiday library alone.
#pragma once

#include <map>
#include <set>
#include <string>

namespace quillon::holidays {

// Holidays declared year by year that our QuantLib's calendars miss: their lists of moving
// feasts (lunar, Islamic, Hindu) end years ago, and some were never kept. Weekdays as
// yyyymmdd, with the substitute days declared for a holiday on a Sunday; the dates are those
// the governments and central banks published (Hong Kong's gazette, China's State Council,
// Singapore's Ministry of Manpower, New Zealand's Act, the Saudi Central Bank, Indonesia's
// joint ministerial decree and Bank Indonesia, Taiwan's Directorate-General of Personnel
// Administration, Korea's Ministry of Personnel Management, the Bank of Thailand), and for INR
// the National Stock Exchange's. A year not yet published is not here, or only with the days
// its law already fixes, as said where it is.
const std::map<std::string, std::set<int>>& DeclaredHolidays();

// Korea's lunar holidays as the Korea Astronomy and Space Science Institute reckons them, the
// days our QuantLib lists: Seollal and Chuseok (each with the day before and the day after)
// and Buddha's Birthday, yyyymmdd.
struct KoreanLunarYear {
  int seollal, buddhasBirthday, chuseok;
};
const std::map<int, KoreanLunarYear>& KoreanLunarYears();

// Russia's non-working weekdays in the years whose government decree moving days off is out:
// the Labour Code's holidays (1 to 8 January, 23 February, 8 March, 1 and 9 May, 12 June,
// 4 November) and the weekdays off that the decree moved from weekends, in place of the
// Monday after (decree No. 1335 of 4 October 2024 for 2025, No. 1466 of 24 September 2025 for
// 2026). The decree for 2027 is not here yet: until it is, the Labour Code's days count, and
// the two weekdays off it gives for Saturday 2 and Sunday 3 January 2027 are missing.
const std::map<int, std::set<int>>& RussianDaysOff();

}  // namespace quillon::holidays
