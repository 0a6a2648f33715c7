#ifndef _WIN32

#include <spawn.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>

#include "json/program.h"

const char* const ProgramSuffix = "";
const char ProgramFolderDivider = ':';

namespace {

void Check(int error, const char* what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

std::string ReadAll(int descriptor) {
  std::string text;
  std::array<char, 1 << 16> buffer = {};
  ssize_t count = 0;
  while (text.size() <= LongestOutput &&
         (count = read(descriptor, buffer.data(), buffer.size())) > 0) {
    text.append(buffer.data(), static_cast<size_t>(count));
  }
  return text;
}

}  // namespace

std::filesystem::path OwnFolder() {
  std::error_code ignored;
  return std::filesystem::read_symlink("/proc/self/exe", ignored).parent_path();
}

std::string ProgramFolders() {
  const char* path = getenv("PATH");
  return path != nullptr ? path : "";
}

int64_t WriteTime(const std::filesystem::path& path) {
  struct stat state = {};
  if (stat(path.c_str(), &state) != 0) return -1;
  return state.st_mtim.tv_sec * int64_t{1000000000} + state.st_mtim.tv_nsec;
}

ProgramResult RunProgram(const std::filesystem::path& path, const std::vector<std::string>& words) {
  std::string name = path.filename().string();
  std::vector<std::string> copies = words;
  std::vector<char*> arguments = {name.data()};
  for (std::string& word : copies) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  std::array<int, 2> ends = {};
  if (pipe(ends.data()) != 0) Check(errno, "pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  for (const int end : ends) {
    if (end != STDOUT_FILENO) posix_spawn_file_actions_addclose(&actions, end);
  }
  pid_t process = 0;
  const int error =
      posix_spawn(&process, path.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);
  ProgramResult result = {error == 0 ? ReadAll(ends[0]) : "", 0};
  close(ends[0]);
  Check(error, path.c_str());

  int status = 0;
  if (waitpid(process, &status, 0) < 0) Check(errno, "waitpid");
  result.status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
  return result;
}

int main(int argc, char** argv) {
  return RunJson({argv + 1, argv + argc});
}

#endif
