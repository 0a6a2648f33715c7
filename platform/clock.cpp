#include "platform/clock.h"

#include <ctime>

namespace {

constexpr int64_t LastSecond = 32535215999;  // 3000-12-31 23:59:59 UTC

// Returns false if the runtime cannot convert.
bool BreakDown(int64_t seconds, tm* fields) {
#ifdef _WIN32
  const tm* converted = _localtime64(&seconds);
  if (converted == nullptr) return false;
  *fields = *converted;
  return true;
#else
  tzset();
  time_t clock = seconds;
  return localtime_r(&clock, fields) != nullptr;
#endif
}

}  // namespace

int64_t CurrentTime() {
  return time(nullptr);
}

CalendarTime LocalCalendarTime(int64_t seconds) {
  tm fields = {};
  if (seconds < 0 || seconds > LastSecond || !BreakDown(seconds, &fields)) {
    return {.year = 1899, .month = 0, .day = -1, .hour = -1, .minute = -1, .second = -1};
  }
  return {.year = fields.tm_year + 1900,
          .month = fields.tm_mon + 1,
          .day = fields.tm_mday,
          .hour = fields.tm_hour,
          .minute = fields.tm_min,
          .second = fields.tm_sec};
}
