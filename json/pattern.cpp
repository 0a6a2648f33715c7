#include "json/pattern.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "json/decode.h"

namespace {

// The longest text that a field of kind t, T, e, w, v or % takes. The tool prints none that long.
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

// Nothing if there are no digits or the number is too large.
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

std::optional<Reading> ReadBytes(std::string_view text, size_t count) {
  if (text.size() < count) return {};
  return Reading{Utf8(text.substr(0, count)), count};
}

std::optional<Reading> ReadTwoDigits(std::string_view text) {
  auto byte = ReadHexadecimal(text.substr(0, 2));
  return byte && byte->length == 2 ? byte : std::nullopt;
}

// These call each other as deep as a pattern has fields.
// NOLINTBEGIN(misc-no-recursion)
// An object of what the pattern finds, or the value alone where it has no name.
std::optional<Reading> ReadObject(std::string_view pattern, std::string_view text) {
  std::vector<Found> found;
  Reading object = {Json::object(), 0};
  if (!MatchPattern(pattern, text, {}, &found, &object.length)) return {};
  if (found[0].name.empty()) return Reading{found[0].value, object.length};
  for (Found& item : found) object.value[item.name] = std::move(item.value);
  return object;
}

// A list of what the pattern finds, as often as it does.
Reading ReadList(std::string_view pattern, std::string_view text) {
  Reading list = {Json::array(), 0};
  while (auto item = ReadObject(pattern, text.substr(list.length))) {
    list.value.push_back(std::move(item->value));
    list.length += item->length;
  }
  return list;
}

std::optional<Reading> ReadPower(std::string_view text) {
  auto power = ReadObject("{dbm:n} dBm\t(0x{byte:x})", text);
  if (!power) return {};
  // The byte of a negative power is shown with its sign spread over 32 bits.
  power->value["byte"] = power->value["byte"].get<uint64_t>() & 0xFF;
  return power;
}

std::optional<Reading> ReadBits(std::string_view text) {
  auto bits = ReadList("DW{word:d}[{high:d}:{low:d}]", text);
  if (bits.length == 0) return {};
  return bits;
}

// Reads a field of a kind that needs not know what follows it.
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
    case 'h':
      return ReadTwoDigits(text);
    case 'L':
      return ReadList(" 0x{:h}", text);
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

// Whether the pattern's next character may stand at this end. An end after a blank is not tried
// before \t, since the \t finds the same from the end before the blank.
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
      return TakeValue(match, field, isFlag ? Json(value == "true") : NumberOrText(value), at);
    }
    if (pattern[0] == '\t') {
      while (at < match.text.size() && IsBlank(match.text[at])) at++;
    } else if (at == match.text.size() || match.text[at++] != pattern[0]) {
      return {};
    }
  }
  return at;
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
// NOLINTEND(misc-no-recursion)

std::string SnakeCase(std::string_view name) {
  std::string snake;
  for (size_t i = 0; i < name.size(); i++) {
    const char character = name[i];
    if (!IsUpper(character) && !IsLower(character) && !IsDigit(character)) {
      if (!snake.empty() && snake.back() != '_') snake += '_';
      continue;
    }
    // A capital begins a word after a small letter or a digit, and before a small letter, but not
    // the last one of "QoS".
    const bool inside = i > 0 && i + 1 < name.size() && IsUpper(character);
    if (inside && (IsLower(name[i - 1]) || IsDigit(name[i - 1]) ||
                   (IsUpper(name[i - 1]) && IsLower(name[i + 1])))) {
      snake += '_';
    }
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
