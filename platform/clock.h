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
// daylight saving. Times outside 1970-01-01 00:00:00 to 3000-12-31 23:59:59 UTC are not converted:
// their year is 1899, their month 0, and all other fields are -1, as if the C runtime's fields were
// all -1.
CalendarTime LocalCalendarTime(int64_t seconds);
