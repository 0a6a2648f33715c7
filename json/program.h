// Starts the tool. What differs between the hosts.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

// The longest output that is read. The tool prints less for all arguments that a user would type.
constexpr size_t LongestOutput = size_t{8} << 20;

struct ProgramResult {
  std::string output;  // standard output; more than LongestOutput if it was too long
  int64_t status;      // 128 and the number of a signal that ended the program
};

// The file name of a program ends with this.
extern const char* const ProgramSuffix;

// The folder of this program.
std::filesystem::path OwnFolder();

// The folders of PATH, with this character between two.
std::filesystem::path::string_type ProgramFolders();
extern const std::filesystem::path::value_type ProgramFolderDivider;

// Runs the program with these arguments, which are UTF-8 on Windows. It gets this program's
// standard input and errors. Throws std::system_error if it cannot be started.
ProgramResult RunProgram(const std::filesystem::path& path, const std::vector<std::string>& words);

// When a file was last written, in the finest units of the host. -1 if there is no such file.
int64_t WriteTime(const std::filesystem::path& path);

// The program: the entry of each host calls it with the arguments as UTF-8. Returns the exit
// status.
int RunJson(const std::vector<std::string>& arguments);
