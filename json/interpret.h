// Turns what the tool printed into data.
#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

// A file that export_rssi_report wrote.
struct Report {
  std::string path;
  std::string text;
};

// A run of the tool, as far as it is known.
struct ToolRun {
  std::vector<std::string> words;  // the words after the program's name
  bool engineering = false;        // it was wlanx-eng
  std::string output;              // all that it printed, or a report; with line ends of any host
  std::optional<int64_t> status;   // below 0 or above 127 if something ended it from outside
  std::optional<Report> report = {};
};

// What was read is no output of the tool.
struct NotToolOutput : std::runtime_error {
  explicit NotToolOutput(const std::string& why)
      : runtime_error("this is no output of the tool: " + why) {}
};

// The command whose result is a file.
bool WritesReport(const std::vector<std::string>& words);

// The object that docs/json.md describes. Throws NotToolOutput.
nlohmann::ordered_json Interpret(const ToolRun& run);

// The same as a line of ASCII without its end. `*isDone`: whether the outcome is "done".
std::string InterpretAsLine(const ToolRun& run, bool* isDone);
