#ifndef _WIN32

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <system_error>

#include "json/program.h"

namespace {

void Check(int error, const std::string& what) {
  if (error != 0) throw std::system_error(error, std::generic_category(), what);
}

}  // namespace

int64_t WriteTime(const std::filesystem::path& path) {
  std::error_code ignored;
  return std::filesystem::last_write_time(path, ignored).time_since_epoch().count();
}

void RunProgram(std::string name, ToolRun* run) {
  std::error_code ignored;
  auto path = std::filesystem::read_symlink("/proc/self/exe", ignored).replace_filename(name);
  if (!std::filesystem::is_regular_file(path, ignored)) path = name;
  std::vector<char*> arguments = {name.data()};
  for (std::string& word : run->words) arguments.push_back(word.data());
  arguments.push_back(nullptr);

  std::array<int, 2> ends = {};
  if (pipe2(ends.data(), O_CLOEXEC) != 0) Check(errno, "pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  pid_t process = 0;
  const int error =
      posix_spawnp(&process, path.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  Check(error, "cannot start " + name + " beside this program or in PATH");

  close(ends[1]);
  FILE* pipe = fdopen(ends[0], "r");
  const auto output = std::make_unique_for_overwrite<char[]>(LongestOutput + 1);
  run->output.assign(output.get(), fread(output.get(), 1, LongestOutput + 1, pipe));
  (void)fclose(pipe);  // if it prints more, it ends
  int status = 0;
  if (waitpid(process, &status, 0) < 0) Check(errno, "waitpid");
  run->status = WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

int main(int argc, char** argv) {
  return RunJson({argv + 1, argv + argc});
}

#endif
