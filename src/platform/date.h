// Date arithmetic on the day count: day 0 is 30 December 1899, the fraction the time of day.
#pragma once

#include <string>

#include "platform/types.h"

namespace quillon {

class Locale;

struct DateParts {
  int year = 1899, month = 12, day = 30;
  int hour = 0, minute = 0, second = 0;
};

// Day count of a calendar date and a time of day; a month or day out of its range runs on into
// the next or previous ones (month 13 is January of the next year, day 0 the last day of the
// month before). Every operation here raises "Overflow" for a date outside years 100-9999.
Date DateSerial(int year, int month, int day);
Date TimeSerial(int hour, int minute, int second);
Date MakeDate(const DateParts& parts);

// The parts of a date, the time rounded to the second. A negative day count keeps its time
// of day as a positive fraction (-1.25 is 29 Dec 1899 06:00).
DateParts PartsOf(Date d);
int YearOf(Date d);
int MonthOf(Date d);
// 1 = Sunday ... 7 = Saturday.
int WeekdayOf(Date d);

// The date without its time of day.
Date DateOnly(Date d);

// The time line position of a date, and the date at a position: unlike the day count, the line
// grows with time across day 0 (-1.25 is day -1 at 06:00, that is -0.75 on the line).
// LinearOf raises overflow for a value that is no number; DateOnLine checks no range.
double LinearOf(Date d);
Date DateOnLine(double linear);
// Whether a value is a date of the years 100 to 9999.
bool IsCalendarDate(Date d);

// Adding calendar units. Months and years clamp the day to the end of the target month
// (31 Jan + 1 month = 28 or 29 Feb); the time of day is kept.
Date AddDays(Date d, double days);
Date AddMonths(Date d, int months);
Date AddYears(Date d, int years);
Date AddSeconds(Date d, double seconds);

// Calendar differences b - a: the number of year, month or day boundaries crossed,
// and whole seconds between the two moments, each taken to the second.
Long DiffYears(Date a, Date b);
Long DiffMonths(Date a, Date b);
Long DiffDays(Date a, Date b);
double DiffSeconds(Date a, Date b);

// "dd-mmm-yyyy": two-digit day, the locale's short month name, four-digit year.
std::string FormatDateDMY(Date d, const Locale& locale);
// "YYYY-MM-DDTHH:MM:SS", rounded to the second.
std::string FormatIsoDateTime(Date d);

// Reads a date text: "1-Jan-1990", "01-Jan-1990", "1 January 1990" (month names of the
// locale or of English, any case, perhaps with a period; "/" also separates), each perhaps
// followed by a blank and "HH:MM[:SS]", "1990-01-01" and "1990-01-01T10:00:00". Raises
// "Type mismatch" on anything else.
Date ParseDate(const std::string& text, const Locale& locale);
// Reads "YYYY-MM-DD" or "YYYY-MM-DDTHH:MM:SS"; false on anything else.
bool TryParseIsoDate(const std::string& text, Date& out);

// The sentinel date "1-Jan-1990": good till cancelled in Duration, no date elsewhere.
constexpr Date kNoDate = 32874.0;

}  // namespace quillon
