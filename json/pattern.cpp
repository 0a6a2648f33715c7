#include "json/pattern.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <locale>
#include <utility>

#include "json/decode.h"

namespace {

// The longest text that a field of kind t, T, e, w, v or % takes. The tool prints shorter ones.
constexpr size_t LongestText = 4096;

bool IsBlank(char character) {
  return character == ' ' || character == '\t';
}

// "fgSrEn" as "fg_sr_en", "BT Profile" as "bt_profile".
std::string SnakeCase(std::string_view name) {
  const std::locale& ascii = std::locale::classic();
  std::string snake;
  for (size_t i = 0; i < name.size(); i++) {
    if (!std::isalnum(name[i], ascii)) {
      if (!snake.empty() && snake.back() != '_') snake += '_';
      continue;
    }
    // A capital begins a word after a small letter or a digit, and before a small letter. The
    // last letter never does, as in "QoS".
    const bool inside = i > 0 && i + 1 < name.size() && std::isupper(name[i], ascii);
    if (inside && std::isalnum(name[i - 1], ascii) &&
        (!std::isupper(name[i - 1], ascii) || std::islower(name[i + 1], ascii))) {
      snake += '_';
    }
    snake += std::tolower(name[i], ascii);
  }
  while (snake.ends_with('_')) snake.pop_back();
  return snake;
}

// A value and how much of the text it is.
struct Reading {
  Json value;
  size_t length;
};

// Nothing if there are no digits or the number is too large.
template <typename Number>
std::optional<Reading> ReadInteger(std::string_view text, int base) {
  Number number = 0;
  const char* end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, base);
  if (result.ec != std::errc()) return {};
  return Reading{number, static_cast<size_t>(result.ptr - text.data())};
}

// A number of kind d, n, x or b.
std::optional<Reading> ReadNumber(std::string_view text, char kind) {
  const bool isDecimal = kind == 'd' || kind == 'n';
  auto number = ReadInteger<uint64_t>(text, isDecimal ? 10 : 16);
  if (!number && isDecimal) number = ReadInteger<int64_t>(text, 10);
  if (!number) return {};
  if (kind == 'b') number->value = number->value.get<uint64_t>() & 0xFF;
  const size_t point = number->length;
  if (kind != 'n' || !text.substr(point).starts_with('.')) return number;
  const size_t end = std::min(text.find_first_not_of("0123456789", point + 1), text.size());
  if (end == point + 1) return number;
  return Reading{std::stod(std::string(text.substr(0, end))), end};
}

std::optional<Reading> ReadFlag(std::string_view text, char kind) {
  static constexpr std::pair<std::string_view, bool> Words[] = {
      {"Y", true},  {"ON", true},   {"V", true},  {"**", true},
      {"N", false}, {"OFF", false}, {"X", false}, {"  ", false}};
  for (const auto& [word, flag] : Words) {
    if (text.starts_with(word)) return Reading{flag, word.size()};
  }
  auto number = ReadNumber(text, 'd');
  const bool isFlag = number && number->value >= 0 && number->value <= 1;
  if (!isFlag) return kind == 'F' ? number : std::nullopt;
  number->value = number->value == 1;
  return number;
}

// The value that kind v reads in a text.
Json NumberOrText(std::string_view text) {
  const std::string_view digits = text.substr(text.starts_with("0x") ? 2 : 0);
  const bool isDecimal = digits.size() == text.size();
  // "007" is a name or a version.
  const bool padded = isDecimal && text.size() > 1 && text[0] == '0' && text[1] != '.';
  const auto number = ReadNumber(digits, isDecimal ? 'n' : 'x');
  if (padded || !number || number->length != digits.size()) return Utf8(text);
  return number->value;
}

// These call each other, once for each field of a pattern.
// NOLINTBEGIN(misc-no-recursion)
// What the pattern finds, as an object. If it finds one value only, that value.
std::optional<Reading> ReadObject(std::string_view pattern, std::string_view text) {
  std::vector<Found> found;
  const auto length = MatchPattern(pattern, text, {}, &found);
  if (!length) return {};
  if (found.size() == 1) return Reading{std::move(found[0].value), *length};
  Json object;
  for (Found& item : found) object[item.name] = std::move(item.value);
  return Reading{std::move(object), *length};
}

// Applies the pattern as often as it fits, and lists what it finds.
Reading ReadList(std::string_view pattern, std::string_view text) {
  Reading list = {Json::array(), 0};
  while (auto item = ReadObject(pattern, text.substr(list.length))) {
    list.value.push_back(std::move(item->value));
    list.length += item->length;
  }
  return list;
}

// Reads a field whose end does not depend on what follows it.
std::optional<Reading> ReadClosed(char kind, std::string_view text) {
  if (std::string_view("dnxb").find(kind) != std::string_view::npos) return ReadNumber(text, kind);
  if (kind == 'f' || kind == 'F') return ReadFlag(text, kind);
  if (kind == 'p') return ReadObject("{dbm:n} dBm\t(0x{byte:b})", text);
  if (kind == 'L') return ReadList(" 0x{byte:b}", text);
  if (kind == 'B') return ReadList("DW{word:d}[{high:d}:{low:d}]", text);
  const auto count = static_cast<size_t>(kind - '0');
  if (text.size() < count) return {};
  return Reading{Utf8(text.substr(0, count)), count};
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
  match.found->push_back({std::string(field.name), std::move(value), field.name == "%"});
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

// Tries each end that the field's text may have: the nearest first, for kind T the farthest first.
std::optional<size_t> MatchText(const Match& match, const Field& field, size_t at) {
  std::string_view text = match.text.substr(at, LongestText);
  if (field.kind == 'w') text = text.substr(0, text.find_first_of(" \t\n"));
  if (field.kind != 'T') text = text.substr(0, text.find('\n'));
  const size_t least = field.kind == 'w' || field.kind == '%' ? 1 : 0;
  for (size_t length = least; length <= text.size(); length++) {
    const size_t end = at + (field.kind == 'T' ? text.size() - length : length);
    if (!MayFollow(match, field, at, end)) continue;
    if (auto matched = TakeText(match, field, at, end)) return matched;
  }
  return {};
}

std::optional<size_t> MatchField(const Match& match, const Field& field, size_t at) {
  if (field.kind == 'e') {
    for (const std::string& word : *match.words) {
      if (!match.text.substr(at).starts_with(word)) continue;
      if (auto matched = TakeText(match, field, at, at + word.size())) return matched;
    }
  }
  if (field.kind == '*') {
    const size_t last = match.text.size() - std::min(field.rest.size(), match.text.size());
    return TakeText(match, field, at, std::max(at, last));
  }
  if (std::string_view("wtveT%").find(field.kind) != std::string_view::npos) {
    return MatchText(match, field, at);
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
      const size_t divider = inside.find_first_of(":=");
      const Field field = {inside.substr(0, divider), inside.back(), pattern.substr(close + 1)};
      if (divider == std::string_view::npos || inside[divider] == ':') {
        return MatchField(match, field, at);
      }
      const std::string_view text = inside.substr(divider + 1);
      Json value = Json::parse(text, nullptr, false);
      if (value.is_discarded()) value = text;
      return TakeValue(match, field, std::move(value), at);
    }
    if (pattern[0] == '\t') {
      while (at < match.text.size() && IsBlank(match.text[at])) at++;
    } else if (at == match.text.size() || match.text[at++] != pattern[0]) {
      return {};
    }
  }
  return at;
}

// The name that a line gives, in snake_case. A name with an index becomes that of a list.
std::string NameOf(std::string_view text) {
  const size_t bracket = text.ends_with(']') ? text.rfind('[') : std::string::npos;
  return SnakeCase(text.substr(0, bracket)) + (bracket != std::string::npos ? "[]" : "");
}

}  // namespace

std::optional<size_t> MatchPattern(std::string_view pattern, std::string_view text,
                                   const std::vector<std::string>& words,
                                   std::vector<Found>* found) {
  std::vector<Found> fields;
  const auto length = MatchRest({text, &words, &fields}, pattern, 0);
  if (!length) return {};
  std::string lineName;
  for (Found& field : fields) {
    if (field.name == "%" && lineName.empty()) {
      lineName = field.value.get<std::string>();
      continue;
    }
    if (field.name == "%") field.name = NameOf(std::exchange(lineName, ""));
    if (!field.name.empty()) found->push_back(std::move(field));
  }
  return length;
}
// NOLINTEND(misc-no-recursion)
