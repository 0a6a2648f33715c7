// The clock and the machine's time zone.
#pragma once

#include <cstdint>

// Calendar fields as people read them: month 1 to 12, day 1 to 31, four-digit year.
struct CalendarTime {
  int year;
  int month;
  int day;
  int hour;
  int minute;
  int second;
};

// Seconds since 1970-01-01 00:00:00 UTC.
int64_t CurrentTime();

// Converts seconds since 1970-01-01 00:00:00 UTC to local time, by the machine's time zone and
// daylight saving. Outside 1970-01-01 00:00:00 to 3000-12-31 23:59:59 UTC the conversion is
// refused and every field reads as -1 does in the C runtime's broken-down time: year 1899,
// month 0, all others -1.
CalendarTime LocalCalendarTime(int64_t seconds);
