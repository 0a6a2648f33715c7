#include "json/pattern.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

namespace {

// The longest text that t, T and their relatives take. The longest that the tool prints is shorter.
constexpr size_t LongestText = 4096;

bool IsDigit(char character) {
  return character >= '0' && character <= '9';
}

bool IsBlank(char character) {
  return character == ' ' || character == '\t';
}

bool IsUpper(char character) {
  return character >= 'A' && character <= 'Z';
}

bool IsLower(char character) {
  return character >= 'a' && character <= 'z';
}

// A value and how much of the text it is.
struct Reading {
  Json value;
  size_t length;
};

// Nothing for no digits and for more than the number holds.
template <typename Number>
std::optional<Reading> ReadNumber(std::string_view text, int base) {
  Number number = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, base);
  if (result.ec != std::errc()) return {};
  return Reading{number, static_cast<size_t>(result.ptr - text.data())};
}

std::optional<Reading> ReadDecimal(std::string_view text) {
  auto number = ReadNumber<int64_t>(text, 10);
  return number ? number : ReadNumber<uint64_t>(text, 10);
}

std::optional<Reading> ReadHexadecimal(std::string_view text) {
  return ReadNumber<uint64_t>(text, 16);
}

std::optional<Reading> ReadFraction(std::string_view text) {
  auto whole = ReadDecimal(text);
  if (!whole || !text.substr(whole->length).starts_with('.')) return whole;
  size_t length = whole->length + 1;
  while (length < text.size() && IsDigit(text[length])) length++;
  if (length == whole->length + 1) return whole;
  return Reading{std::stod(std::string(text.substr(0, length))), length};
}

std::optional<Reading> ReadFlag(std::string_view text) {
  for (const std::string_view word : {"NA", "Y", "ON", "V", "N", "OFF", "X"}) {
    if (!text.starts_with(word)) continue;
    if (word == "NA") return Reading{nullptr, word.size()};
    return Reading{word == "Y" || word == "ON" || word == "V", word.size()};
  }
  auto number = ReadDecimal(text);
  const int64_t flag = number ? number->value.get<int64_t>() : -1;
  if (flag == 0 || flag == 1) number->value = flag == 1;
  return number;
}

std::optional<Reading> ReadMark(std::string_view text) {
  if (text.starts_with("**")) return Reading{true, 2};
  if (text.starts_with("  ")) return Reading{false, 2};
  return {};
}

std::optional<Reading> ReadPower(std::string_view text) {
  auto power = ReadFraction(text);
  if (!power) return {};
  size_t at = power->length;
  for (const std::string_view between : {" dBm (0x", " dBm(0x"}) {
    if (!text.substr(at).starts_with(between)) continue;
    at += between.size();
    const auto byte = ReadHexadecimal(text.substr(at));
    if (!byte || !text.substr(at + byte->length).starts_with(')')) return {};
    // Of a negative power the byte is shown with its sign spread over 32 bits.
    const uint64_t shown = byte->value.get<uint64_t>() & 0xFF;
    return Reading{{{"dbm", power->value}, {"byte", shown}}, at + byte->length + 1};
  }
  return {};
}

std::optional<Reading> ReadByteList(std::string_view text) {
  Reading list = {Json::array(), 0};
  while (text.substr(list.length).starts_with(" 0x")) {
    const auto byte = ReadHexadecimal(text.substr(list.length + 3));
    if (!byte || byte->length != 2) break;
    list.value.push_back(byte->value);
    list.length += 3 + byte->length;
  }
  return list;
}

// The number after a text; `*at` is then past it.
std::optional<Json> NumberAfter(std::string_view before, std::string_view text, size_t* at) {
  if (!text.substr(*at).starts_with(before)) return {};
  auto number = ReadDecimal(text.substr(*at + before.size()));
  if (!number) return {};
  *at += before.size() + number->length;
  return std::move(number->value);
}

std::optional<Reading> ReadBits(std::string_view text) {
  Reading bits = {Json::array(), 0};
  for (size_t at = 0;; bits.length = at) {
    const auto word = NumberAfter("DW", text, &at);
    const auto high = NumberAfter("[", text, &at);
    const auto low = NumberAfter(":", text, &at);
    if (!word || !high || !low || !text.substr(at++).starts_with(']')) break;
    bits.value.push_back({{"word", *word}, {"high", *high}, {"low", *low}});
  }
  if (bits.length == 0) return {};
  return bits;
}

std::optional<Reading> ReadBytes(std::string_view text, size_t count) {
  if (text.size() < count) return {};
  return Reading{Utf8(text.substr(0, count)), count};
}

// The kinds whose text says itself where it ends.
std::optional<Reading> ReadClosed(char kind, std::string_view text) {
  switch (kind) {
    case 'd':
      return ReadDecimal(text);
    case 'x':
      return ReadHexadecimal(text);
    case 'n':
      return ReadFraction(text);
    case 'f':
      return ReadFlag(text);
    case 'm':
      return ReadMark(text);
    case 'p':
      return ReadPower(text);
    case 'L':
      return ReadByteList(text);
    case 'B':
      return ReadBits(text);
    case 'c':
      return ReadBytes(text, 1);
    default:
      return ReadBytes(text, 2);
  }
}

// One try of a pattern. The functions return where the matched text ends, or nothing.
struct Match {
  std::string_view text;
  const std::vector<std::string>* words;
  std::vector<Found>* found;
};

// A field of a pattern.
struct Field {
  std::string_view name;
  char kind;
  std::string_view rest;  // the pattern after it
};

// These call each other as deep as a pattern has fields.
// NOLINTBEGIN(misc-no-recursion)
std::optional<size_t> MatchRest(const Match& match, std::string_view pattern, size_t at);

std::optional<size_t> TakeValue(const Match& match, const Field& field, Json value, size_t end) {
  match.found->push_back({std::string(field.name), std::move(value)});
  const auto matched = MatchRest(match, field.rest, end);
  if (!matched) match.found->pop_back();
  return matched;
}

// The value is made only after the rest has matched, since many ends are tried.
std::optional<size_t> TakeText(const Match& match, const Field& field, size_t at, size_t end) {
  const size_t index = match.found->size();
  const auto matched = TakeValue(match, field, nullptr, end);
  if (!matched) return {};
  const std::string_view taken = match.text.substr(at, end - at);
  (*match.found)[index].value = field.kind == 'v' ? NumberOrText(taken) : Json(Utf8(taken));
  return matched;
}

// Whether what follows the field may stand there. After a blank, \t only finds what it found
// before it.
bool MayFollow(const Match& match, const Field& field, size_t at, size_t end) {
  const char next = field.rest.empty() ? '{' : field.rest[0];
  if (next == '\t') return end == at || !IsBlank(match.text[end - 1]);
  return next == '{' || match.text.substr(end).starts_with(next);
}

std::optional<size_t> MatchLongest(const Match& match, const Field& field, size_t at) {
  for (size_t end = std::min(match.text.size(), at + LongestText) + 1; end-- > at;) {
    if (!MayFollow(match, field, at, end)) continue;
    if (auto matched = TakeText(match, field, at, end)) return matched;
  }
  return {};
}

std::optional<size_t> MatchShortest(const Match& match, const Field& field, size_t at) {
  const bool isWord = field.kind == 'w';
  const bool mayBeEmpty = !isWord && field.kind != '%';
  for (size_t end = at; end <= std::min(match.text.size(), at + LongestText); end++) {
    if ((end > at || mayBeEmpty) && MayFollow(match, field, at, end)) {
      if (auto matched = TakeText(match, field, at, end)) return matched;
    }
    if (end == match.text.size() || match.text[end] == '\n') break;
    if (isWord && IsBlank(match.text[end])) break;
  }
  return {};
}

std::optional<size_t> MatchField(const Match& match, const Field& field, size_t at) {
  if (field.kind == 'T') return MatchLongest(match, field, at);
  if (field.kind == 'e') {
    for (const std::string& word : *match.words) {
      if (!match.text.substr(at).starts_with(word)) continue;
      if (auto matched = TakeText(match, field, at, at + word.size())) return matched;
    }
  }
  if (std::string_view("wtve%").find(field.kind) != std::string_view::npos) {
    return MatchShortest(match, field, at);
  }
  auto reading = ReadClosed(field.kind, match.text.substr(at));
  if (!reading) return {};
  return TakeValue(match, field, std::move(reading->value), at + reading->length);
}

std::optional<size_t> MatchRest(const Match& match, std::string_view pattern, size_t at) {
  for (; !pattern.empty(); pattern.remove_prefix(1)) {
    if (pattern[0] == '{') {
      const size_t close = pattern.find('}');
      const std::string_view inside = pattern.substr(1, close - 1);
      const size_t divider = std::min(inside.find_first_of(":="), inside.size());
      Field field = {inside.substr(0, divider), '%', pattern.substr(close + 1)};
      if (divider == inside.size()) return MatchField(match, field, at);
      field.kind = inside.substr(divider).size() > 1 ? inside[divider + 1] : 't';
      if (inside[divider] == ':') return MatchField(match, field, at);
      const std::string_view value = inside.substr(divider + 1);
      const bool isFlag = value == "true" || value == "false";
      return TakeValue(match, field, isFlag ? Json(value == "true") : Json(value), at);
    }
    if (pattern[0] == '\t') {
      while (at < match.text.size() && IsBlank(match.text[at])) at++;
    } else if (at == match.text.size() || match.text[at++] != pattern[0]) {
      return {};
    }
  }
  return at;
}
// NOLINTEND(misc-no-recursion)

// The length of the UTF-8 character that the bytes begin with; 0 where they begin with none.
size_t CharacterLength(std::string_view bytes) {
  const auto byteAt = [&](size_t at) { return static_cast<unsigned char>(bytes[at]); };
  const unsigned first = byteAt(0);
  if (first < 0x80) return 1;
  const size_t length = first < 0xC2   ? 0
                        : first < 0xE0 ? 2
                        : first < 0xF0 ? 3
                        : first < 0xF5 ? 4
                                       : 0;
  if (length == 0 || length > bytes.size()) return 0;
  for (size_t i = 1; i < length; i++) {
    if ((byteAt(i) & 0xC0) != 0x80) return 0;
  }
  const unsigned second = byteAt(1);
  const bool tooLong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
  const bool noCharacter = (first == 0xED && second >= 0xA0) || (first == 0xF4 && second >= 0x90);
  return tooLong || noCharacter ? 0 : length;
}

}  // namespace

bool MatchPattern(std::string_view pattern, std::string_view text,
                  const std::vector<std::string>& words, std::vector<Found>* found,
                  size_t* length) {
  const auto end = MatchRest({text, &words, found}, pattern, 0);
  if (!end) return false;
  *length = *end;
  return true;
}

std::string SnakeCase(std::string_view name) {
  std::string snake;
  for (size_t i = 0; i < name.size(); i++) {
    const char character = name[i];
    if (!IsUpper(character) && !IsLower(character) && !IsDigit(character)) {
      if (!snake.empty() && snake.back() != '_') snake += '_';
      continue;
    }
    // A capital begins a word after a small letter or a digit, but not the last one of "QoS", and
    // before a small letter.
    const bool isLast = i + 1 == name.size();
    const bool after = i > 0 && !isLast && (IsLower(name[i - 1]) || IsDigit(name[i - 1]));
    const bool before =
        i > 0 && IsUpper(name[i - 1]) && i + 1 < name.size() && IsLower(name[i + 1]);
    if (IsUpper(character) && (after || before)) snake += '_';
    snake += IsUpper(character) ? static_cast<char>(character - 'A' + 'a') : character;
  }
  while (snake.ends_with('_')) snake.pop_back();
  return snake;
}

Json NumberOrText(std::string_view text) {
  const std::string_view digits = text.substr(text.starts_with("0x") ? 2 : 0);
  const bool isDecimal = digits.size() == text.size();
  // "007" is a name or a version.
  const bool padded = isDecimal && text.size() > 1 && text[0] == '0' && text[1] != '.';
  const auto number = isDecimal ? ReadFraction(text) : ReadHexadecimal(digits);
  if (padded || !number || number->length != digits.size()) return Utf8(text);
  return number->value;
}

std::string Utf8(std::string_view bytes) {
  std::string text;
  while (!bytes.empty()) {
    const size_t length = CharacterLength(bytes);
    if (length == 0) {
      const auto byte = static_cast<unsigned char>(bytes[0]);
      text += static_cast<char>(0xC0 | byte >> 6);
      text += static_cast<char>(0x80 | (byte & 0x3F));
    }
    text += bytes.substr(0, length);
    bytes.remove_prefix(std::max<size_t>(length, 1));
  }
  return text;
}
