// Starts the tool. What differs between the hosts.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

// More than the tool prints for any arguments that a user would type.
constexpr size_t LongestOutput = size_t{8} << 20;

struct ProgramResult {
  std::string
      output;      // standard output; at most LongestOutput, and one byte more where it was longer
  int64_t status;  // a signal that ended the program as 128 and its number
};

// The folder of this program.
std::filesystem::path OwnFolder();

// Runs the program with these arguments, which are UTF-8 on Windows. Its standard input and errors
// are this one's. Throws std::system_error where it cannot be started.
ProgramResult RunProgram(const std::filesystem::path& path, const std::vector<std::string>& words);

// A path from an argument.
std::filesystem::path PathOf(const std::string& argument);

// When a file was written last, in the host's finest units; -1 where it is not there.
int64_t WriteTime(const std::filesystem::path& path);

// Reads standard input to its end or `size` bytes, as they come; returns how many.
size_t ReadStandardInput(char* buffer, size_t size);

// The program, given its arguments as UTF-8; the hosts' entries call it. Returns the exit status.
int RunJson(const std::vector<std::string>& arguments);

// The folders of PATH.
std::vector<std::filesystem::path> SearchFolders();

// What a program's file is named after its name.
extern const char* const ProgramSuffix;
