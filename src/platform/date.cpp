#include "platform/date.h"

#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <string_view>

#include "platform/locale.h"
#include "platform/runtime_error.h"

namespace quillon {

double LinearOf(Date d) {
  if (!std::isfinite(d)) Raise(kOverflow);
  if (d >= 0) return d;
  const double day = std::ceil(d);
  return day + (day - d);
}

Date DateOnLine(double linear) {
  double day = std::floor(linear);
  double time = linear - day;
  // Just below 0 on the line, the time of day -1 rounds to a whole day: that is midnight of
  // day 0, not a day of its own (-1 - 1 would be two days back).
  if (time >= 1) {
    ++day;
    time = 0;
  }
  return day >= 0 ? day + time : day - time;
}

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr long long kSecondsPerDay = 86400;
// Day 0, 30 Dec 1899, counted from the Unix epoch of sys_days.
constexpr long long kDayZero = -25569;
// 1 Jan 100 and 31 Dec 9999: the range of a Date.
constexpr long long kFirstDay = -657434;
constexpr long long kLastDay = 2958465;

// A moment as a calendar day (day count, may be negative) and the seconds into that day.
struct Moment {
  long long day = 0;
  long long second = 0;
};

void CheckDay(long long day) {
  if (day < kFirstDay || day > kLastDay) Raise(kOverflow);
}

Date DateOfLinear(double linear) {
  if (!std::isfinite(linear)) Raise(kOverflow);
  const Date d = DateOnLine(linear);
  CheckDay(static_cast<long long>(std::max(std::min(std::floor(LinearOf(d)), 1e12), -1e12)));
  return d;
}

Moment MomentOf(Date d) {
  const double linear = LinearOf(d);
  if (linear < kFirstDay - 1 || linear > kLastDay + 1) Raise(kOverflow);
  const double day = std::floor(linear);
  Moment m{static_cast<long long>(day), std::llround((linear - day) * kSecondsPerDay)};
  if (m.second >= kSecondsPerDay) {
    ++m.day;
    m.second -= kSecondsPerDay;
  }
  CheckDay(m.day);
  return m;
}

Date DateOfMoment(long long day, long long second) {
  day += second / kSecondsPerDay;
  second %= kSecondsPerDay;
  if (second < 0) {
    second += kSecondsPerDay;
    --day;
  }
  CheckDay(day);
  const double time = static_cast<double>(second) / kSecondsPerDay;
  return day >= 0 ? day + time : day - time;
}

year_month_day CalendarOf(long long day) { return year_month_day{sys_days{days{day + kDayZero}}}; }

long long DayOfCalendar(long long year, long long month, long long day) {
  // Months beyond 1-12 and days beyond the month run on into the next or previous ones.
  const long long monthIndex = year * 12 + (month - 1);
  year = monthIndex >= 0 ? monthIndex / 12 : (monthIndex - 11) / 12;
  month = monthIndex - year * 12 + 1;
  if (year < 100 - 1 || year > 9999 + 1) Raise(kOverflow);
  const sys_days first{std::chrono::year{static_cast<int>(year)} /
                       std::chrono::month{static_cast<unsigned>(month)} / std::chrono::day{1}};
  const long long result = first.time_since_epoch().count() - kDayZero + (day - 1);
  CheckDay(result);
  return result;
}

long long DaysInMonth(int year, int month) {
  const std::chrono::year_month_day_last last{std::chrono::year{year} /
                                              std::chrono::month{static_cast<unsigned>(month)} /
                                              std::chrono::last};
  return static_cast<long long>(static_cast<unsigned>(last.day()));
}

}  // namespace

Date DateSerial(int year, int month, int day) {
  return DateOfMoment(DayOfCalendar(year, month, day), 0);
}

Date TimeSerial(int hour, int minute, int second) {
  const long long total =
      static_cast<long long>(hour) * 3600 + static_cast<long long>(minute) * 60 + second;
  if (total / kSecondsPerDay > kLastDay || total / kSecondsPerDay < kFirstDay) Raise(kOverflow);
  return static_cast<double>(total) / kSecondsPerDay;
}

Date MakeDate(const DateParts& p) {
  const long long seconds =
      static_cast<long long>(p.hour) * 3600 + static_cast<long long>(p.minute) * 60 + p.second;
  return DateOfMoment(DayOfCalendar(p.year, p.month, p.day), seconds);
}

DateParts PartsOf(Date d) {
  const Moment m = MomentOf(d);
  const year_month_day ymd = CalendarOf(m.day);
  DateParts p;
  p.year = static_cast<int>(ymd.year());
  p.month = static_cast<int>(static_cast<unsigned>(ymd.month()));
  p.day = static_cast<int>(static_cast<unsigned>(ymd.day()));
  p.hour = static_cast<int>(m.second / 3600);
  p.minute = static_cast<int>(m.second / 60 % 60);
  p.second = static_cast<int>(m.second % 60);
  return p;
}

int YearOf(Date d) { return PartsOf(d).year; }
int MonthOf(Date d) { return PartsOf(d).month; }

int WeekdayOf(Date d) {
  const std::chrono::weekday w{sys_days{days{MomentOf(d).day + kDayZero}}};
  return static_cast<int>(w.c_encoding()) + 1;
}

Date DateOnly(Date d) { return DateOfMoment(MomentOf(d).day, 0); }

Date AddDays(Date d, double n) { return DateOfLinear(LinearOf(d) + n); }

Date AddSeconds(Date d, double seconds) {
  return DateOfLinear(LinearOf(d) + seconds / kSecondsPerDay);
}

bool IsCalendarDate(Date d) {
  if (!std::isfinite(d)) return false;
  const double day = std::floor(LinearOf(d));
  return day >= kFirstDay && day <= kLastDay;
}

Date AddMonths(Date d, int months) {
  // The time of day is kept exactly, not rounded to the second.
  const double linear = LinearOf(d);
  const double day = std::floor(linear);
  if (day < kFirstDay || day > kLastDay) Raise(kOverflow);
  const year_month_day ymd = CalendarOf(static_cast<long long>(day));
  const long long monthIndex = static_cast<long long>(static_cast<int>(ymd.year())) * 12 +
                               (static_cast<unsigned>(ymd.month()) - 1) + months;
  const long long year = monthIndex / 12;
  if (monthIndex < 0 || year < 100 || year > 9999) Raise(kOverflow);
  const int month = static_cast<int>(monthIndex % 12) + 1;
  const long long dayOfMonth = std::min<long long>(static_cast<unsigned>(ymd.day()),
                                                   DaysInMonth(static_cast<int>(year), month));
  const long long target = DayOfCalendar(year, month, dayOfMonth);
  return DateOfLinear(static_cast<double>(target) + (linear - day));
}

Date AddYears(Date d, int years) { return AddMonths(d, years * 12); }

Long DiffYears(Date a, Date b) { return LngAdd(YearOf(b), -YearOf(a)); }

Long DiffMonths(Date a, Date b) {
  const DateParts pa = PartsOf(a), pb = PartsOf(b);
  return (pb.year - pa.year) * 12 + (pb.month - pa.month);
}

Long DiffDays(Date a, Date b) { return static_cast<Long>(MomentOf(b).day - MomentOf(a).day); }

double DiffSeconds(Date a, Date b) {
  const Moment ma = MomentOf(a), mb = MomentOf(b);
  return static_cast<double>((mb.day - ma.day) * kSecondsPerDay + (mb.second - ma.second));
}

std::string FormatDateDMY(Date d, const Locale& locale) {
  const DateParts p = PartsOf(d);
  char day[4], year[8];
  std::snprintf(day, sizeof day, "%02d", p.day);
  std::snprintf(year, sizeof year, "%04d", p.year);
  return std::string(day) + "-" + locale.shortMonthName(p.month) + "-" + year;
}

std::string FormatIsoDateTime(Date d) {
  const DateParts p = PartsOf(d);
  char text[32];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", p.year, p.month, p.day, p.hour,
                p.minute, p.second);
  return text;
}

namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// A run of exactly `width` digits at pos (any length of one or more when width is 0).
bool ReadNumber(std::string_view text, std::size_t& pos, std::size_t width, int& out) {
  const std::size_t from = pos;
  long long value = 0;
  while (pos < text.size() && IsDigit(text[pos]) && (width == 0 || pos - from < width) &&
         pos - from < 9)
    value = value * 10 + (text[pos++] - '0');
  if (pos == from || (width != 0 && pos - from != width)) return false;
  out = static_cast<int>(value);
  return true;
}

bool ValidDate(int year, int month, int day) {
  return year >= 100 && year <= 9999 && month >= 1 && month <= 12 && day >= 1 &&
         day <= DaysInMonth(year, month);
}

bool ValidTime(int hour, int minute, int second) {
  return hour >= 0 && hour < 24 && minute >= 0 && minute < 60 && second >= 0 && second < 60;
}

// Reads "HH:MM" or "HH:MM:SS" from pos to the end.
bool ReadTime(std::string_view text, std::size_t pos, DateParts& p) {
  if (!ReadNumber(text, pos, 0, p.hour) || pos >= text.size() || text[pos++] != ':' ||
      !ReadNumber(text, pos, 2, p.minute))
    return false;
  if (pos < text.size() && text[pos] == ':') {
    ++pos;
    if (!ReadNumber(text, pos, 2, p.second)) return false;
  }
  return pos == text.size() && ValidTime(p.hour, p.minute, p.second);
}

bool SameName(const std::string& a, const std::string& b) {
  return icu::UnicodeString::fromUTF8(a).caseCompare(icu::UnicodeString::fromUTF8(b),
                                                     U_FOLD_CASE_DEFAULT) == 0;
}

int MonthOfName(std::string name, const Locale& locale) {
  if (!name.empty() && name.back() == '.') name.pop_back();
  const Locale& english = Locale::Default();
  for (int m = 1; m <= 12; ++m) {
    if (SameName(name, locale.shortMonthName(m)) || SameName(name, locale.longMonthName(m)) ||
        SameName(name, english.shortMonthName(m)) || SameName(name, english.longMonthName(m)))
      return m;
  }
  return 0;
}

}  // namespace

bool TryParseIsoDate(const std::string& text, Date& out) {
  std::string_view t = text;
  std::size_t pos = 0;
  DateParts p;
  if (!ReadNumber(t, pos, 4, p.year) || pos >= t.size() || t[pos++] != '-' ||
      !ReadNumber(t, pos, 2, p.month) || pos >= t.size() || t[pos++] != '-' ||
      !ReadNumber(t, pos, 2, p.day) || !ValidDate(p.year, p.month, p.day))
    return false;
  if (pos < t.size()) {
    if (t[pos] != 'T' || !ReadTime(t, pos + 1, p)) return false;
  }
  out = MakeDate(p);
  return true;
}

Date ParseDate(const std::string& text, const Locale& locale) {
  std::size_t begin = text.find_first_not_of(" \t");
  std::size_t end = text.find_last_not_of(" \t");
  if (begin == std::string::npos) Raise(kTypeMismatch);
  const std::string trimmed = text.substr(begin, end - begin + 1);

  Date iso = 0;
  if (TryParseIsoDate(trimmed, iso)) return iso;

  // Day, month name and year, separated by blanks, hyphens or slashes; then perhaps a time.
  std::string_view t = trimmed;
  std::size_t pos = 0;
  DateParts p;
  const auto skipSeparators = [&] {
    const std::size_t from = pos;
    while (pos < t.size() && (t[pos] == ' ' || t[pos] == '-' || t[pos] == '/')) ++pos;
    return pos > from;
  };
  if (!ReadNumber(t, pos, 0, p.day) || !skipSeparators()) Raise(kTypeMismatch);
  const std::size_t nameFrom = pos;
  while (pos < t.size() && t[pos] != ' ' && t[pos] != '-' && t[pos] != '/' && !IsDigit(t[pos]))
    ++pos;
  p.month = MonthOfName(std::string(t.substr(nameFrom, pos - nameFrom)), locale);
  if (p.month == 0 || !skipSeparators() || !ReadNumber(t, pos, 0, p.year) ||
      !ValidDate(p.year, p.month, p.day))
    Raise(kTypeMismatch);
  if (pos < t.size()) {
    while (pos < t.size() && t[pos] == ' ') ++pos;
    if (pos == t.size() || t[pos - 1] != ' ' || !ReadTime(t, pos, p)) Raise(kTypeMismatch);
  }
  return MakeDate(p);
}

}  // namespace quillon
