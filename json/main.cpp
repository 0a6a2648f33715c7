// Runs the tool, or reads what it printed, and prints one JSON object.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <optional>
#include <stdexcept>
#include <thread>
#include <utility>

#include "json/decode.h"
#include "json/interpret.h"
#include "json/program.h"

namespace {

constexpr char Help[] = R"(wlanx-json [--eng] COMMAND [ARGUMENT]...
    runs wlanx (with --eng wlanx-eng) from the folder of this program or from PATH, and prints
    what it says as one JSON object
wlanx-json [--eng] --read FILE [--status N] [COMMAND [ARGUMENT]...]
    reads the saved output of a run that ended with status N; FILE may be - for standard
    input, or the file that export_rssi_report wrote
wlanx-json --help | --version

Status: 0 the outcome is "done"; 1 it is not; 2 there is no object.)";

struct Misuse : std::runtime_error {
  explicit Misuse(const std::string& what) : runtime_error(what + '\n' + Help) {}
};

struct Options {
  ToolRun run;                      // the words, and what else is known
  std::optional<std::string> file;  // with saved output
};

int64_t ParseStatus(const std::string& text) {
  int64_t status = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), status);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw Misuse("--status " + text + " is not a number");
  }
  return status;
}

// The tool's words begin with the first one that is no option.
Options ParseOptions(const std::vector<std::string>& arguments) {
  Options options;
  size_t next = 0;
  const auto value = [&] {
    if (next + 1 == arguments.size()) throw Misuse(arguments[next] + " wants a value");
    return arguments[++next];
  };
  for (; next < arguments.size() && arguments[next].starts_with("--"); next++) {
    if (arguments[next] == "--eng") {
      options.run.engineering = true;
    } else if (arguments[next] == "--read") {
      options.file = value();
    } else if (arguments[next] == "--status") {
      options.run.status = ParseStatus(value());
    } else {
      throw Misuse("there is no option " + arguments[next]);
    }
  }
  options.run.words.assign(arguments.begin() + static_cast<ptrdiff_t>(next), arguments.end());
  if (options.run.status && !options.file) throw Misuse("--status belongs to --read");
  if (!options.file && options.run.words.empty()) throw Misuse("COMMAND is missing");
  return options;
}

std::filesystem::path PathOf(const std::string& argument) {
  return std::u8string(argument.begin(), argument.end());
}

std::string ReadSaved(const std::string& name) {
  std::ifstream file;
  if (name != "-") file.open(PathOf(name), std::ios::binary);
  if (!file) throw std::runtime_error("cannot open " + name);
  std::istream& stream = name == "-" ? std::cin : file;
  const auto text = std::make_unique_for_overwrite<char[]>(LongestOutput + 1);
  stream.read(text.get(), LongestOutput + 1);
  if (stream.bad()) throw std::runtime_error("cannot read " + name);
  return {text.get(), static_cast<size_t>(stream.gcount())};
}

// Runs the tool and reads the report that it writes.
void RunTool(ToolRun* run) {
  // The files that may be the report, and when they were last written.
  std::vector<std::pair<std::string, int64_t>> files;
  if (WritesReport(run->words)) {
    for (const std::string& name : {std::string("error.xml"), run->words.back()}) {
      files.emplace_back(name, WriteTime(PathOf(name)));
    }
    // A file that was written just now must get another time if the tool writes it again.
    std::this_thread::sleep_for(std::chrono::milliseconds(40));
  }
  RunProgram(run->engineering ? "wlanx-eng" : "wlanx", run);
  for (const auto& [name, writtenAt] : files) {
    if (WriteTime(PathOf(name)) != writtenAt) run->report = {name, ReadSaved(name)};
  }
}

int Run(const std::vector<std::string>& arguments) {
  if (arguments.size() == 1 && arguments[0] == "--help") {
    (void)std::puts(Help);
    return 0;
  }
  if (arguments.size() == 1 && arguments[0] == "--version") {
    (void)std::puts("wlanx-json " WLANX_VERSION);
    return 0;
  }
  auto [run, file] = ParseOptions(arguments);
  if (file) {
    run.output = DecodeSavedText(ReadSaved(*file));
  } else {
    RunTool(&run);
  }
  if (run.output.size() > LongestOutput) throw NotToolOutput("it is too long");
  bool isDone = false;
  (void)std::puts(InterpretAsLine(run, &isDone).c_str());
  if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
    throw std::runtime_error("cannot write to standard output");
  }
  return isDone ? 0 : 1;
}

}  // namespace

int RunJson(const std::vector<std::string>& arguments) {
  try {
    return Run(arguments);
  } catch (const std::exception& error) {
    (void)std::fprintf(stderr, "wlanx-json: %s\n", error.what());
    return 2;
  }
}
