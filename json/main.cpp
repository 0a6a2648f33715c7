// Runs the tool, or reads what it printed, and prints one JSON object.
#include <charconv>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <thread>

#include "json/decode.h"
#include "json/interpret.h"
#include "json/program.h"

namespace {

constexpr char Help[] =
    "wlanx-json [--eng] COMMAND [ARGUMENT]...\n"
    "    runs wlanx (with --eng wlanx-eng) from the folder of this program or from PATH and "
    "prints\n"
    "    one JSON object with what it says\n"
    "wlanx-json [--eng] --read FILE [--status N] [COMMAND [ARGUMENT]...]\n"
    "    reads the saved output of a run that ended with status N; FILE may be - for standard\n"
    "    input, or the file that export_rssi_report wrote\n"
    "wlanx-json --help | --version\n"
    "\n"
    "Status: 0 the outcome is \"done\"; 1 it is not; 2 there is no object.\n";

struct Misuse : std::runtime_error {
  using runtime_error::runtime_error;
};

struct Options {
  bool engineering = false;
  std::optional<std::string> file;
  std::optional<int64_t> status;
  std::vector<std::string> words;
};

int64_t ParseStatus(const std::string& text) {
  int64_t status = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), status);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw Misuse("--status " + text + " is no number");
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
      options.engineering = true;
    } else if (arguments[next] == "--read") {
      options.file = value();
    } else if (arguments[next] == "--status") {
      options.status = ParseStatus(value());
    } else {
      throw Misuse("there is no option " + arguments[next]);
    }
  }
  options.words.assign(arguments.begin() + static_cast<ptrdiff_t>(next), arguments.end());
  if (options.status && !options.file) throw Misuse("--status belongs to --read");
  if (!options.file && options.words.empty()) throw Misuse("which COMMAND?");
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
  std::string text(LongestOutput + 1, '\0');
  stream.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<size_t>(stream.gcount()));
  if (stream.bad()) throw std::runtime_error("cannot read " + name);
  return text;
}

std::filesystem::path FindTool(const std::string& name) {
  std::filesystem::path folder = OwnFolder();
  std::basic_istringstream list(ProgramFolders());
  do {
    std::error_code ignored;
    auto path = folder / (name + ProgramSuffix);
    if (std::filesystem::is_regular_file(path, ignored)) return path;
    std::filesystem::path::string_type next;
    std::getline(list, next, ProgramFolderDivider);
    folder = next;
  } while (list);
  throw std::runtime_error("there is no " + name + " beside this program or in PATH");
}

// The file of a report, and the time of its last writing before the tool ran.
struct ReportFile {
  std::string name;
  int64_t writtenAt;
};

// The files that the tool may write its report into.
std::vector<ReportFile> ReportFiles(const std::vector<std::string>& words) {
  std::vector<ReportFile> files;
  if (!WritesReport(words)) return files;
  for (const std::string& name : {std::string("error.xml"), words.back()}) {
    files.push_back({name, WriteTime(PathOf(name))});
  }
  // A file that was written just now must get another time if the tool writes it again.
  std::this_thread::sleep_for(std::chrono::milliseconds(40));
  return files;
}

ToolRun RunTool(const Options& options) {
  const auto path = FindTool(options.engineering ? "wlanx-eng" : "wlanx");
  const auto reports = ReportFiles(options.words);
  ProgramResult result = RunProgram(path, options.words);
  ToolRun run = {.words = options.words,
                 .engineering = options.engineering,
                 .output = std::move(result.output),
                 .status = result.status};
  for (const ReportFile& file : reports) {
    if (WriteTime(PathOf(file.name)) == file.writtenAt) continue;
    run.report = {file.name, ReadSaved(file.name)};
  }
  return run;
}

int Run(const std::vector<std::string>& arguments) {
  if (arguments.size() == 1 && arguments[0] == "--help") {
    (void)std::fputs(Help, stdout);
  } else if (arguments.size() == 1 && arguments[0] == "--version") {
    (void)std::puts("wlanx-json " WLANX_VERSION);
  } else {
    const Options options = ParseOptions(arguments);
    const ToolRun run = options.file ? ToolRun{.words = options.words,
                                               .engineering = options.engineering,
                                               .output = DecodeSavedText(ReadSaved(*options.file)),
                                               .status = options.status}
                                     : RunTool(options);
    if (run.output.size() > LongestOutput) throw NotToolOutput("it is too long");
    const Json result = Interpret(run);
    // ASCII looks the same in every code page of a console.
    (void)std::puts(result.dump(-1, ' ', true).c_str());
    if (std::fflush(stdout) != 0 || std::ferror(stdout) != 0) {
      throw std::runtime_error("cannot write to standard output");
    }
    return result["outcome"] == "done" ? 0 : 1;
  }
  return 0;
}

}  // namespace

int RunJson(const std::vector<std::string>& arguments) {
  const auto fail = [](const char* before, const char* what) {
    (void)std::fprintf(stderr, "wlanx-json: %s%s\n", before, what);
    return 2;
  };
  try {
    return Run(arguments);
  } catch (const Misuse& misuse) {
    (void)fail("", misuse.what());
    (void)std::fputs(Help, stderr);
    return 2;
  } catch (const NotToolOutput& error) {
    return fail("this is no output of the tool: ", error.what());
  } catch (const std::exception& error) {
    return fail("", error.what());
  }
}
