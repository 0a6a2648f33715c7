#include "app/console/scan.h"

#include <cctype>
#include <cstdarg>
#include <cstdint>
#include <cstring>

#include "app/console/digit.h"

namespace {

bool IsSpace(char character) {
  return isspace(static_cast<unsigned char>(character)) != 0;
}

const char* SkipSpaces(const char* text) {
  while (IsSpace(*text)) text++;
  return text;
}

// One conversion as its format gives it.
struct Field {
  size_t width;  // SIZE_MAX if the format has none
  int halves;    // how many 'h' stand before the letter
  char letter;
};

// Reads the conversion after a '%' and returns what follows it.
const char* ReadField(const char* format, Field* field) {
  *field = {0, 0, 0};
  while (*format >= '0' && *format <= '9') {
    field->width = field->width * 10 + static_cast<size_t>(*format++ - '0');
  }
  if (field->width == 0) field->width = SIZE_MAX;
  for (; *format == 'h'; format++) field->halves++;
  field->letter = *format;
  return format + 1;
}

// The magnitude of a run of digits of the given base, at most `width` of them; saturates at 64
// bits and reports that. Moves `text` past the digits. Returns false if there is none.
bool ReadDigits(const char** text, size_t width, unsigned base, uint64_t* magnitude,
                bool* saturated) {
  const char* start = *text;
  *saturated = false;
  *magnitude = 0;
  for (; width > 0; width--, (*text)++) {
    unsigned digit = DigitValue(**text);
    if (digit >= base) break;
    if (*magnitude > (UINT64_MAX - digit) / base) *saturated = true;
    *magnitude = *magnitude * base + digit;
  }
  if (*saturated) *magnitude = UINT64_MAX;
  return *text != start;
}

// Saturates at the limits of the signed 64-bit range.
uint64_t ApplySign(uint64_t magnitude, bool negative) {
  constexpr uint64_t Highest = INT64_MAX;
  if (negative) return magnitude > Highest ? Highest + 1 : 0 - magnitude;
  return magnitude > Highest ? Highest : magnitude;
}

// Reads a number and moves `text` past it. Returns false if there is none.
bool ReadNumber(const char** text, const Field& field, uint64_t* value) {
  const char* next = *text;
  size_t width = field.width;
  bool negative = *next == '-';
  if (*next == '-' || *next == '+') {
    next++;
    width--;
  }
  unsigned base = field.letter == 'x' ? 16 : 10;
  if (base == 16 && width >= 2 && next[0] == '0' && (next[1] == 'x' || next[1] == 'X')) {
    next += 2;
    width -= 2;
  }
  uint64_t magnitude = 0;
  bool saturated = false;
  if (!ReadDigits(&next, width, base, &magnitude, &saturated)) return false;
  if (field.letter == 'd') {
    *value = ApplySign(magnitude, negative);
  } else {
    *value = negative && !saturated ? 0 - magnitude : magnitude;
  }
  *text = next;
  return true;
}

void StoreNumber(void* target, int halves, uint64_t value) {
  auto low32 = static_cast<uint32_t>(value);
  auto low16 = static_cast<uint16_t>(value);
  auto low8 = static_cast<uint8_t>(value);
  if (halves == 0) memcpy(target, &low32, sizeof(low32));
  if (halves == 1) memcpy(target, &low16, sizeof(low16));
  if (halves == 2) memcpy(target, &low8, sizeof(low8));
}

// Reads a word into `target`. Returns false if it does not fit with its zero.
bool ReadWord(const char** text, const Field& field, char* target, size_t size) {
  const char* start = *text;
  size_t length = 0;
  while (length < field.width && start[length] != 0 && !IsSpace(start[length])) length++;
  if (length >= size) return false;
  memcpy(target, start, length);
  target[length] = 0;
  *text = start + length;
  return true;
}

}  // namespace

int ScanArgument(const char* text, const char* format, ...) {
  va_list targets;
  va_start(targets, format);
  int converted = 0;
  bool ended = false;  // the text ended before a literal or a field
  while (*format != 0) {
    if (*format != '%') {
      ended = *text == 0;
      if (*text != *format) break;
      text++;
      format++;
      continue;
    }
    Field field = {};
    format = ReadField(format + 1, &field);
    text = SkipSpaces(text);
    ended = *text == 0;
    if (ended) break;
    void* target = va_arg(targets, void*);
    if (field.letter == 's') {
      size_t size = va_arg(targets, unsigned);
      if (!ReadWord(&text, field, static_cast<char*>(target), size)) break;
    } else {
      uint64_t value = 0;
      if (!ReadNumber(&text, field, &value)) break;
      StoreNumber(target, field.halves, value);
    }
    converted++;
  }
  va_end(targets);
  return converted == 0 && ended ? -1 : converted;
}

int ParseInteger(const char* text) {
  text = SkipSpaces(text);
  Field field = {SIZE_MAX, 0, 'd'};
  uint64_t bits = 0;
  if (!ReadNumber(&text, field, &bits)) return 0;
  auto value = static_cast<int64_t>(bits);
  if (value > INT32_MAX) return INT32_MAX;
  if (value < INT32_MIN) return INT32_MIN;
  return static_cast<int>(value);
}
