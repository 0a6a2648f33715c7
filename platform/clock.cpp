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
    return {1899, 0, -1, -1, -1, -1};
  }
  return {fields.tm_year + 1900, fields.tm_mon + 1, fields.tm_mday,
          fields.tm_hour,        fields.tm_min,     fields.tm_sec};
}
