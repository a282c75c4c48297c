// The holidays that authorities published, year by year; each table's comment, in the
// header, names its sources.

#include "holidays/declared_holidays.h"

namespace quillon::holidays {

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

const std::map<int, KoreanLunarYear>& KoreanLunarYears() {
  static const std::map<int, KoreanLunarYear> years = {
      {2023, {20230122, 20230527, 20230929}}, {2024, {20240210, 20240515, 20240917}},
      {2025, {20250129, 20250505, 20251006}}, {2026, {20260217, 20260524, 20260925}},
      {2027, {20270206, 20270513, 20270915}}, {2028, {20280126, 20280502, 20281003}},
      {2029, {20290213, 20290520, 20290922}}, {2030, {20300203, 20300509, 20300912}},
      {2031, {20310123, 20310528, 20311001}}, {2032, {20320211, 20320516, 20320919}},
  };
  return years;
}

const std::map<int, std::set<int>>& RussianDaysOff() {
  static const std::map<int, std::set<int>> days = {
      {2025,
       {20250101, 20250102, 20250103, 20250106, 20250107, 20250108, 20250501, 20250502, 20250508,
        20250509, 20250612, 20250613, 20251103, 20251104, 20251231}},
      {2026,
       {20260101, 20260102, 20260105, 20260106, 20260107, 20260108, 20260109, 20260223, 20260309,
        20260501, 20260511, 20260612, 20261104, 20261231}},
  };
  return days;
}

}  // namespace quillon::holidays
