#include "app/console/print.h"

#include <cstdarg>
#include <cstdint>
#include <cstring>

#include "platform/process.h"

namespace {

// Where formatted text goes: a stretch of memory, and what becomes of a text that it has no room
// for.
struct TextSink {
  char* begin;
  char* next;
  char* end;
  void (*overflow)(TextSink* sink, const char* text, size_t length);
  FILE* file;   // of FilePrintf
  size_t lost;  // characters that BoundedPrintf had no room for
};

void WriteOut(TextSink* sink, const char* text, size_t length);

// What is printed and not yet written out.
TextSink* Console() {
  static char memory[1 << 16];
  static TextSink sink = {memory, memory, memory + sizeof(memory), WriteOut, nullptr, 0};
  return &sink;
}

void PutRun(TextSink* sink, const char* text, size_t length) {
  if (length > static_cast<size_t>(sink->end - sink->next)) {
    sink->overflow(sink, text, length);
    return;
  }
  char* target = sink->next;
  sink->next += length;
  memcpy(target, text, length);
}

void WriteOut(TextSink* sink, const char* text, size_t length) {
  ConsoleFlush();
  if (length > static_cast<size_t>(sink->end - sink->next)) {
    WriteStandardOutput(text, length);
  } else {
    PutRun(sink, text, length);
  }
}

void WriteIntoFile(TextSink* sink, const char* text, size_t length) {
  (void)fwrite(text, 1, length, sink->file);
}

void KeepWhatFits(TextSink* sink, const char* text, size_t length) {
  auto room = static_cast<size_t>(sink->end - sink->next);
  PutRun(sink, text, room);
  sink->lost += length - room;
}

constexpr size_t ShortText = 16;

// Puts a text out of memory that goes on for ShortText bytes: one copy of fixed size is a few
// instructions, and the next text is written over what was too much.
void PutShort(TextSink* sink, const char* text, size_t length) {
  if (length > ShortText || ShortText > static_cast<size_t>(sink->end - sink->next)) {
    PutRun(sink, text, length);
    return;
  }
  memcpy(sink->next, text, ShortText);
  sink->next += length;
}

void PutBlanks(TextSink* sink, size_t count) {
  static constexpr char Blanks[ShortText + 1] = "                ";
  for (; count > ShortText; count -= ShortText) PutShort(sink, Blanks, ShortText);
  PutShort(sink, Blanks, count);
}

// One conversion as its format gives it; the precision is -1 where absent.
struct Conversion {
  bool left;
  bool zero;
  bool wide;  // ll
  int width;
  int precision;
};

// What the argument list still holds. A struct, so that it can be handed on by address.
struct Values {
  va_list list;
};

// Reads a width or precision: digits, or '*' for the next value.
const char* ReadCount(const char* format, Values* values, int* count) {
  if (*format == '*') {
    *count = va_arg(values->list, int);
    return format + 1;
  }
  int number = 0;
  for (; *format >= '0' && *format <= '9'; format++) number = number * 10 + *format - '0';
  *count = number;
  return format;
}

// Reads a conversion from behind its '%' up to its letter.
const char* ReadConversion(const char* format, Values* values, Conversion* conversion) {
  *conversion = {false, false, false, 0, -1};
  if (*format < 'A') {  // something stands before the letters
    conversion->left = *format == '-';
    if (conversion->left) format++;
    conversion->zero = !conversion->left && *format == '0';
    format = ReadCount(format, values, &conversion->width);
    if (*format == '.') format = ReadCount(format + 1, values, &conversion->precision);
  }
  if (*format == 'l') {
    conversion->wide = true;
    format += 2;
  }
  return format;
}

// A number's sign and magnitude.
struct Number {
  bool negative;
  uint64_t magnitude;
};

Number ReadSigned(const Conversion& conversion, Values* values) {
  int64_t value = conversion.wide ? va_arg(values->list, long long) : va_arg(values->list, int);
  auto magnitude = static_cast<uint64_t>(value);
  return {value < 0, value < 0 ? 0 - magnitude : magnitude};
}

Number ReadUnsigned(const Conversion& conversion, Values* values) {
  return {false, conversion.wide ? va_arg(values->list, unsigned long long)
                                 : va_arg(values->list, unsigned)};
}

constexpr int MostDigits = 32;  // whatever a format asks for

// Writes a number so that it ends before `end`; returns where it begins.
char* WriteNumber(char* end, const Conversion& conversion, char letter, Number number) {
  int least = conversion.precision;
  if (least < 0) least = conversion.zero ? conversion.width - (number.negative ? 1 : 0) : 1;
  if (least < 1 && conversion.precision != 0) least = 1;
  char* const filled = end - (least < MostDigits ? least : MostDigits);
  memset(end - MostDigits, '0', MostDigits);
  char* first = end;
  uint64_t rest = number.magnitude;
  if (letter == 'd' || letter == 'u') {
    for (; rest != 0; rest /= 10) *--first = static_cast<char>('0' + rest % 10);
  } else {
    const char* alphabet = letter == 'x' ? "0123456789abcdef" : "0123456789ABCDEF";
    for (; rest != 0; rest >>= 4) *--first = alphabet[rest & 15];
  }
  if (first > filled) first = filled;
  if (number.negative) *--first = '-';
  return first;
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

// Puts a format up to its next '%' and returns where that is, or its end. Most such stretches are
// short: copied as they are read.
const char* PutPlain(TextSink* sink, const char* format) {
  char* next = sink->next;
  char* const end = sink->end;
  for (;; format++) {
    char character = *format;
    if (character == '%') break;
    if (character == 0) break;
    if (next == end) {
      const size_t rest = strcspn(format, "%");
      sink->next = next;
      PutRun(sink, format, rest);
      return format + rest;
    }
    *next++ = character;
  }
  sink->next = next;
  return format;
}

void PutFormatted(TextSink* sink, const char* format, Values* values) {
  for (;;) {
    format = PutPlain(sink, format);
    if (*format == 0) return;
    if (format[1] == 's') {  // as most are, without anything between
      const char* text = va_arg(values->list, const char*);
      PutRun(sink, text, strlen(text));
      format += 2;
      continue;
    }

    Conversion conversion = {};
    format = ReadConversion(format + 1, values, &conversion);
    char letter = *format++;
    char field[MostDigits + 1 + ShortText];  // a sign, digits, and what PutShort reads behind them
    char* const fieldEnd = field + MostDigits + 1;
    const char* text = fieldEnd - 1;
    size_t length = 1;
    switch (letter) {
      case 's':
        text = va_arg(values->list, const char*);
        length = conversion.precision < 0
                     ? strlen(text)
                     : strnlen(text, static_cast<size_t>(conversion.precision));
        break;
      case 'S':
        PutWideText(sink, va_arg(values->list, const void*));
        continue;
      case 'd':
      case 'u':
      case 'x':
      case 'X': {
        Number number =
            letter == 'd' ? ReadSigned(conversion, values) : ReadUnsigned(conversion, values);
        text = WriteNumber(fieldEnd, conversion, letter, number);
        length = static_cast<size_t>(fieldEnd - text);
        break;
      }
      case 'c':
        fieldEnd[-1] = static_cast<char>(va_arg(values->list, int));
        break;
      default:  // "%%"
        fieldEnd[-1] = letter;
        break;
    }
    auto width = static_cast<size_t>(conversion.width);
    size_t padding = width > length ? width - length : 0;
    if (padding > 0 && !conversion.left) PutBlanks(sink, padding);
    if (letter == 's') {
      PutRun(sink, text, length);
    } else {
      PutShort(sink, text, length);
    }
    if (padding > 0 && conversion.left) PutBlanks(sink, padding);
  }
}

}  // namespace

void ConsolePrintf(const char* format, ...) {
  Values values = {};
  va_start(values.list, format);
  PutFormatted(Console(), format, &values);
  va_end(values.list);
}

void ConsoleFlush() {
  TextSink* sink = Console();
  WriteStandardOutput(sink->begin, static_cast<size_t>(sink->next - sink->begin));
  sink->next = sink->begin;
}

void FilePrintf(FILE* file, const char* format, ...) {
  char none[1];  // the file has memory of its own
  TextSink sink = {none, none, none, WriteIntoFile, file, 0};
  Values values = {};
  va_start(values.list, format);
  PutFormatted(&sink, format, &values);
  va_end(values.list);
}

int BoundedPrintf(char* text, size_t size, const char* format, ...) {
  // The zero's byte is kept back; without room even for that, nothing is written.
  char none[1];
  char* memory = size > 0 ? text : none;
  TextSink sink = {memory, memory, memory + (size > 0 ? size - 1 : 0), KeepWhatFits, nullptr, 0};
  Values values = {};
  va_start(values.list, format);
  PutFormatted(&sink, format, &values);
  va_end(values.list);
  *sink.next = 0;
  return static_cast<int>(static_cast<size_t>(sink.next - sink.begin) + sink.lost);
}
