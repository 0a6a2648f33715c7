// Hostile output: wlanx-json reads a run of any command, of which the input chooses every printed
// byte. The input is
//
//   byte   the command: the word of this number in the rules; the next number is no
//          command, and the one after it is a run without a word
//   byte   the status and flags, see below
//   text   the arguments, divided by blanks, up to a line end
//   bytes  what was printed after the banner; with SavedBytes the file that was saved
//
// It is a finding when an exception gets out, when the object is not as docs/json.md promises, when
// a printed line is lost, or when another encoding or other line ends change the object.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "json/decode.h"
#include "json/forms.h"
#include "json/interpret.h"
#include "json/pattern.h"

namespace {

constexpr std::optional<int64_t> AllStatuses[] = {{}, 0, 1, 3, 2, 77, 139, -1};
constexpr uint8_t StatusBits = 7;
constexpr uint8_t Engineering = 8;
constexpr uint8_t SavedBytes = 16;
constexpr uint8_t AsReport = 32;
constexpr uint8_t MarkedLines = 64;  // a line that no form knows follows each line
constexpr uint8_t Repeated = 128;    // the bytes are repeated up to this size
constexpr size_t RepeatedSize = 8192;

constexpr char Banner[] = "\nWLANX tool, Version 1.00.00.0070\nA notice.\n\n";
constexpr std::string_view Mark = "unknown-line";

void Require(bool holds, const char* what, const Json& result) {
  if (holds) return;
  std::fprintf(stderr, "%s: %s\n", what, result.dump().c_str());
  std::abort();
}

std::vector<std::string> Split(const std::string& text, char between) {
  std::vector<std::string> pieces;
  std::istringstream stream(text);
  for (std::string piece; std::getline(stream, piece, between);) pieces.push_back(piece);
  return pieces;
}

// The words of a run of the command of this number.
std::vector<std::string> Words(size_t command, const std::string& arguments) {
  std::vector<std::string> names;
  for (const CommandRule& rule : CommandRules()) {
    for (std::string& name : Split(std::string(rule.names), ' ')) names.push_back(std::move(name));
  }
  names.emplace_back("nothing");
  command %= names.size() + 1;
  if (command == names.size()) return {};
  std::vector<std::string> words = {names[command]};
  for (std::string& word : Split(arguments, ' ')) words.push_back(std::move(word));
  return words;
}

size_t CountMarks(const std::string& text) {
  size_t count = 0;
  for (size_t at = 0; (at = text.find(Mark, at)) != std::string::npos; at++) count++;
  return count;
}

std::string WithMarks(const std::string& text) {
  std::string marked;
  for (const std::string& line : Split(text, '\n')) marked += line + '\n' + Mark.data() + '\n';
  return marked;
}

// What every object has to be.
void CheckObject(const ToolRun& run, const Json& result) {
  static constexpr const char* Names[] = {"command", "program", "version", "status", "outcome",
                                          "fault",   "error",   "values",  "text",   "unread"};
  Require(Json::parse(result.dump(-1, ' ', true)) == result, "it reads back differently", result);
  Require(
      std::ranges::equal(result.items(), Names, {}, [](const auto& item) { return item.key(); }),
      "wrong names", result);
  Require(result["outcome"].is_null() != result["fault"].is_null(), "outcome and fault", result);
  Require(result["command"].size() == run.words.size(), "wrong words", result);
  Require(result["status"] == (run.status ? Json(*run.status) : Json()), "wrong status", result);
  Require(result["values"].is_object(), "no values", result);
  const Json& error = result["error"];
  Require(error.is_null() ||
              (!error["lines"].empty() && error.contains("code") == error.contains("name")),
          "wrong error", result);
}

// All that was printed is in `text`, and what was not understood in `unread`, in the same order.
void CheckLines(const std::string& printed, const Json& result) {
  const std::string text = Utf8(printed);
  Require(result["text"] == text, "wrong text", result);
  size_t at = 0;
  for (const Json& unread : result["unread"]) {
    const auto& line = unread.get_ref<const std::string&>();
    at = text.find(line, at);
    Require(at != std::string::npos, "unread lines that were not printed", result);
    at += line.size();
  }
  size_t marks = 0;
  for (const char* name : {"error", "values", "unread"}) marks += CountMarks(result[name].dump());
  const auto printedMarks = std::ranges::count(Split(printed, '\n'), Mark);
  Require(marks >= static_cast<size_t>(printedMarks), "lost lines", result);
}

// The run's output as another host or shell saves it, in one of several ways.
std::string Saved(const std::string& output, size_t way) {
  std::string text;
  for (const char character : output) {
    text += way % 2 == 1 && character == '\n' ? "\r\n" : std::string{character};
  }
  const bool isAscii = std::ranges::all_of(text, [](char character) { return character > 0; });
  if (!isAscii || way < 3) return "\xEF\xBB\xBF" + text;
  std::string bytes = way == 3 ? "\xFE\xFF" : "";
  for (const char character : text) {
    bytes += way == 3 ? std::string{0, character} : std::string{character, 0};
  }
  return bytes;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const uint8_t flags = data[1];
  const std::string rest(data + 2, data + size);
  const size_t lineEnd = std::min(rest.find('\n'), rest.size());
  std::string printed = rest.substr(std::min(lineEnd + 1, rest.size()));
  if ((flags & MarkedLines) != 0) printed = WithMarks(printed);
  if ((flags & Repeated) != 0) {
    const std::string once = printed;
    while (!once.empty() && printed.size() < RepeatedSize) printed += once;
  }
  ToolRun run = {.words = Words(data[0], rest.substr(0, lineEnd)),
                 .engineering = (flags & Engineering) != 0,
                 .output = Banner,
                 .status = AllStatuses[flags & StatusBits]};
  if ((flags & SavedBytes) != 0) {
    run.output = DecodeSavedText(printed);
    try {
      CheckObject(run, Interpret(run));
    } catch (const NotToolOutput&) {
    }
    return 0;
  }
  if ((flags & AsReport) != 0 && WritesReport(run.words)) {
    run.report = {"out.xml", printed};
    CheckObject(run, Interpret(run));
    return 0;
  }
  run.output += printed;
  const Json result = Interpret(run);
  CheckObject(run, result);
  CheckLines(printed, result);
  run.output = DecodeSavedText(Saved(run.output, size % 5));
  Require(Interpret(run) == result, "another object of the same output", result);
  return 0;
}
