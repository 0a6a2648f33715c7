// Starts the tool. What differs between the hosts.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "json/interpret.h"

// The longest output that is read. The tool prints less for all arguments that a user would type.
// Buffers of this size are not set to zero, which would take most of the time of a run.
constexpr size_t LongestOutput = size_t{8} << 20;

// Runs the program of this name in the folder of this one, or else in PATH, with the run's words.
// It gets this program's standard input and errors. Sets the run's output, longer than
// LongestOutput if it was too long, and its status: 128 and the number of a signal that ended the
// program. Throws std::system_error if it cannot be started.
void RunProgram(std::string name, ToolRun* run);

// When a file was last written, in the finest units of the host. The same for all that are not
// there.
int64_t WriteTime(const std::filesystem::path& path);

// The program: the entry of each host calls it with the arguments as UTF-8. Returns the exit
// status.
int RunJson(const std::vector<std::string>& arguments);
