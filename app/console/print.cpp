#include "app/console/print.h"

#include <cstdarg>
#include <cstdint>
#include <cstring>

namespace {

// Where formatted text goes: a stretch of memory, which is written to `file` each time it is full
// and once at the end, or which keeps what fits when there is no file.
struct TextSink {
  char* begin;
  char* end;
  char* next;
  FILE* file;
  size_t total;
};

void Drain(TextSink* sink) {
  (void)fwrite(sink->begin, 1, static_cast<size_t>(sink->next - sink->begin), sink->file);
  sink->next = sink->begin;
}

void PutRun(TextSink* sink, const char* text, size_t length) {
  sink->total += length;
  while (length > 0) {
    auto room = static_cast<size_t>(sink->end - sink->next);
    size_t piece = length < room ? length : room;
    memcpy(sink->next, text, piece);
    sink->next += piece;
    text += piece;
    length -= piece;
    if (length == 0) return;
    if (sink->file == nullptr) return;
    Drain(sink);
  }
}

void PutFill(TextSink* sink, char character, size_t count) {
  char run[32];
  memset(run, character, sizeof(run));
  for (; count > sizeof(run); count -= sizeof(run)) PutRun(sink, run, sizeof(run));
  PutRun(sink, run, count);
}

// One conversion as its format gives it; width and precision are -1 where absent.
struct Conversion {
  bool left;
  bool zero;
  int width;
  int precision;
  int length;  // -2 hh, -1 h, 0 none, 1 l, 2 ll
  char letter;
};

// Pads `text` with blanks to the conversion's width.
void PutPadded(TextSink* sink, const Conversion& conversion, const char* text, size_t length) {
  size_t width = conversion.width > 0 ? static_cast<size_t>(conversion.width) : 0;
  size_t padding = width > length ? width - length : 0;
  if (padding > 0 && !conversion.left) PutFill(sink, ' ', padding);
  PutRun(sink, text, length);
  if (padding > 0 && conversion.left) PutFill(sink, ' ', padding);
}

void PutText(TextSink* sink, const Conversion& conversion, const char* text) {
  size_t length = conversion.precision < 0
                      ? strlen(text)
                      : strnlen(text, static_cast<size_t>(conversion.precision));
  PutPadded(sink, conversion, text, length);
}

// A text of 16-bit little-endian characters at any address.
void PutWideText(TextSink* sink, const void* text) {
  for (const auto* bytes = static_cast<const unsigned char*>(text);; bytes += 2) {
    unsigned character = bytes[0] | static_cast<unsigned>(bytes[1]) << 8;
    if (character == 0) return;
    char narrow = character < 0x80 ? static_cast<char>(character) : '?';
    PutRun(sink, &narrow, 1);
  }
}

void PutNumber(TextSink* sink, const Conversion& conversion, uint64_t magnitude, bool negative) {
  constexpr size_t MostDigits = 20;
  char digits[MostDigits];
  char* first = digits + MostDigits;
  if (conversion.letter == 'x' || conversion.letter == 'X') {
    const char* alphabet = conversion.letter == 'x' ? "0123456789abcdef" : "0123456789ABCDEF";
    for (; magnitude != 0; magnitude >>= 4) *--first = alphabet[magnitude & 15];
  } else {
    for (; magnitude != 0; magnitude /= 10) *--first = static_cast<char>('0' + magnitude % 10);
  }
  auto count = static_cast<size_t>(digits + MostDigits - first);
  size_t least = conversion.precision < 0 ? 1 : static_cast<size_t>(conversion.precision);
  size_t zeros = least > count ? least - count : 0;
  size_t width = conversion.width > 0 ? static_cast<size_t>(conversion.width) : 0;
  size_t used = zeros + count + (negative ? 1 : 0);
  size_t padding = width > used ? width - used : 0;
  if (conversion.zero && !conversion.left && conversion.precision < 0) {
    zeros += padding;
    padding = 0;
  }
  if (padding > 0 && !conversion.left) PutFill(sink, ' ', padding);
  if (negative) PutRun(sink, "-", 1);
  if (zeros > 0) PutFill(sink, '0', zeros);
  PutRun(sink, first, count);
  if (padding > 0 && conversion.left) PutFill(sink, ' ', padding);
}

// What the argument list still holds. A struct, so that it can be handed on by address.
struct Values {
  va_list list;
};

void PutSigned(TextSink* sink, const Conversion& conversion, Values* values) {
  int64_t value = 0;
  if (conversion.length == 2) {
    value = va_arg(values->list, long long);
  } else if (conversion.length == 1) {
    value = va_arg(values->list, long);
  } else {
    value = va_arg(values->list, int);
    if (conversion.length == -1) value = static_cast<int16_t>(value);
    if (conversion.length == -2) value = static_cast<int8_t>(value);
  }
  auto magnitude = static_cast<uint64_t>(value);
  PutNumber(sink, conversion, value < 0 ? 0 - magnitude : magnitude, value < 0);
}

void PutUnsigned(TextSink* sink, const Conversion& conversion, Values* values) {
  uint64_t value = 0;
  if (conversion.length == 2) {
    value = va_arg(values->list, unsigned long long);
  } else if (conversion.length == 1) {
    value = va_arg(values->list, unsigned long);
  } else {
    value = va_arg(values->list, unsigned);
    if (conversion.length == -1) value = static_cast<uint16_t>(value);
    if (conversion.length == -2) value = static_cast<uint8_t>(value);
  }
  PutNumber(sink, conversion, value, false);
}

// The C library's rounding, our padding.
void PutFloat(TextSink* sink, const Conversion& conversion, double value) {
  char digits[352];
  int precision = conversion.precision < 0 ? 6 : conversion.precision;
  int length = snprintf(digits, sizeof(digits), "%.*f", precision > 32 ? 32 : precision, value);
  PutPadded(sink, conversion, digits, static_cast<size_t>(length));
}

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

// Reads a width or precision: digits, or '*' for the next value.
const char* ReadCount(const char* format, Values* values, int* count) {
  if (*format == '*') {
    *count = va_arg(values->list, int);
    return format + 1;
  }
  *count = 0;
  while (IsDigit(*format)) *count = *count * 10 + (*format++ - '0');
  return format;
}

// Reads the conversion behind a '%' and returns what follows it.
const char* ReadConversion(const char* format, Values* values, Conversion* conversion) {
  *conversion = {false, false, -1, -1, 0, 0};
  for (; *format == '-' || *format == '0'; format++) {
    (*format == '-' ? conversion->left : conversion->zero) = true;
  }
  if (IsDigit(*format) || *format == '*') format = ReadCount(format, values, &conversion->width);
  if (*format == '.') format = ReadCount(format + 1, values, &conversion->precision);
  for (; *format == 'l'; format++) conversion->length++;
  for (; *format == 'h'; format++) conversion->length--;
  conversion->letter = *format;
  return *format == 0 ? format : format + 1;
}

void PutFormatted(TextSink* sink, const char* format, Values* values) {
  while (*format != 0) {
    const char* plain = format;
    while (*format != 0 && *format != '%') format++;
    PutRun(sink, plain, static_cast<size_t>(format - plain));
    if (*format == 0) break;
    Conversion conversion = {};
    format = ReadConversion(format + 1, values, &conversion);
    switch (conversion.letter) {
      case 's':
        PutText(sink, conversion, va_arg(values->list, const char*));
        break;
      case 'S':
        PutWideText(sink, va_arg(values->list, const void*));
        break;
      case 'd':
      case 'i':
        PutSigned(sink, conversion, values);
        break;
      case 'u':
      case 'x':
      case 'X':
        PutUnsigned(sink, conversion, values);
        break;
      case 'f':
        PutFloat(sink, conversion, va_arg(values->list, double));
        break;
      case 'c': {
        char character = static_cast<char>(va_arg(values->list, int));
        PutPadded(sink, conversion, &character, 1);
        break;
      }
      default:  // "%%"
        PutRun(sink, &conversion.letter, 1);
        break;
    }
  }
}

void PrintToFile(FILE* file, const char* format, Values* values) {
  char memory[512];
  TextSink sink = {memory, memory + sizeof(memory), memory, file, 0};
  PutFormatted(&sink, format, values);
  Drain(&sink);
}

}  // namespace

void ConsolePrintf(const char* format, ...) {
  Values values = {};
  va_start(values.list, format);
  PrintToFile(stdout, format, &values);
  va_end(values.list);
}

void FilePrintf(FILE* file, const char* format, ...) {
  Values values = {};
  va_start(values.list, format);
  PrintToFile(file, format, &values);
  va_end(values.list);
}

int BoundedPrintf(char* text, size_t size, const char* format, ...) {
  // The zero's byte is kept back; without room even for that, nothing is written.
  char nothing[1];
  char* memory = size > 0 ? text : nothing;
  TextSink sink = {memory, memory + (size > 0 ? size - 1 : 0), memory, nullptr, 0};
  Values values = {};
  va_start(values.list, format);
  PutFormatted(&sink, format, &values);
  va_end(values.list);
  *sink.next = 0;
  return static_cast<int>(sink.total);
}

void ConsoleFlush() {
  (void)fflush(stdout);
}
