// start_program PROGRAM NAME [WORD...]: starts a program that sees NAME as its own path, and ends
// with its exit status.
#include <windows.h>

#include <cstring>

namespace {

// Goes past the first word of a command line, which may be in quotes.
char* SkipWord(char* line) {
  bool quoted = false;
  for (; *line != 0 && (quoted || *line != ' '); line++) {
    if (*line == '"') quoted = !quoted;
  }
  return line + strspn(line, " ");
}

}  // namespace

int main(int argc, char** argv) {
  STARTUPINFOA startup = {};
  PROCESS_INFORMATION process = {};
  startup.cb = sizeof(startup);
  if (argc < 3) return 1;
  char* line = SkipWord(SkipWord(GetCommandLineA()));
  if (!CreateProcessA(argv[1], line, nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup,
                      &process)) {
    return 1;
  }
  DWORD status = 1;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &status);
  return static_cast<int>(status);
}
