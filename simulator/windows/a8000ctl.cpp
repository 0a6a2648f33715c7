// a8000ctl.exe: installs the simulated adapter's driver, gives it scenarios and fetches traces.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "simulator/host_program.h"
#include "simulator/redact/redact.h"
#include "simulator/redact/whole_file.h"
#include "simulator/trace.h"
#include "simulator/windows/control_protocol.h"
#include "simulator/windows/service_control.h"

namespace {

constexpr char Usage[] =
    "a8000ctl: controls the simulated A8000 adapter\n"
    "\n"
    "  a8000ctl install             install the driver beside this program and start it\n"
    "  a8000ctl remove              stop the driver and remove it\n"
    "  a8000ctl scenario FILE       answer from a scenario file\n"
    "  a8000ctl scenario --builtin  answer from the built-in scenario\n"
    "  a8000ctl trace FILE          write what was recorded since the scenario was loaded\n"
    "  a8000ctl status              tell what the driver does\n"
    "  a8000ctl -                   read such commands from standard input, one a line;\n"
    "                               print \"= \" and the exit status after each one's output\n"
    "  a8000ctl redact [--keep-texts] [--word WORD]... IN... OUT\n"
    "                               make a report of traces, in which only what is known to be\n"
    "                               harmless stays. --keep-texts keeps texts, too; --word WORD\n"
    "                               replaces WORD in them\n";

constexpr int Done = 0;
constexpr int Failed = 1;

// Sends one request to the driver. `returned` is the length of its answer. Returns a last-error
// code, 0 if the driver answered.
DWORD Send(uint32_t code, void* input, uint32_t inputLength, void* output, uint32_t outputLength,
           DWORD* returned) {
  HANDLE device = CreateFileA(ControlDevicePath, GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (device == INVALID_HANDLE_VALUE) return GetLastError();
  const bool answered = DeviceIoControl(device, code, input, inputLength, output, outputLength,
                                        returned, nullptr) != 0;
  const DWORD error = answered ? 0 : GetLastError();
  CloseHandle(device);
  return error;
}

// The same for a request that must be answered. On failure it prints a message.
bool Ask(uint32_t code, void* input, uint32_t inputLength, void* output, uint32_t outputLength,
         DWORD* returned) {
  const DWORD error = Send(code, input, inputLength, output, outputLength, returned);
  if (error != 0) ReportUnreachable(error);
  return error == 0;
}

// Whether the driver runs and a program has the device open.
bool IsDeviceOpen() {
  SimulatorStatus status = {};
  DWORD returned = 0;
  return Send(ControlQueryStatus, nullptr, 0, &status, sizeof(status), &returned) == 0 &&
         status.opened > 0;
}

int Install() {
  constexpr DWORD PathBytes = 3 * MAX_PATH;  // in UTF-8
  static char path[PathBytes + sizeof(DriverFile)];
  const DWORD length = GetModuleFileNameA(nullptr, path, PathBytes);
  if (length == 0 || length >= PathBytes) {
    Report("the path of this program is too long");
    return Failed;
  }
  char* name = strrchr(path, '\\');
  memcpy(name != nullptr ? name + 1 : path, DriverFile, sizeof(DriverFile));
  FILE* file = fopen(path, "rb");
  if (file == nullptr) {
    ReportFileFailure(path);
    return Failed;
  }
  fclose(file);
  // A driver in use would get the request to stop, and would then serve nobody.
  if (IsDeviceOpen()) {
    ReportUnreachable(ERROR_BUSY);
    return Failed;
  }
  if (!InstallDriver(path)) return Failed;
  printf("The simulated adapter is installed and running.\n");
  return Done;
}

int Remove() {
  if (!RemoveDriver()) return Failed;
  printf("The simulated adapter is removed.\n");
  return Done;
}

// Tells the driver the end of the scenario's name, as much as it keeps.
void NameScenario(const char* name) {
  constexpr size_t Most = sizeof(SimulatorStatus::name) - 1;
  const size_t length = strlen(name);
  char end[Most] = {};
  const size_t kept = length > Most ? Most : length;
  memcpy(end, name + length - kept, kept);
  DWORD returned = 0;
  Ask(ControlNameScenario, end, static_cast<uint32_t>(kept), nullptr, 0, &returned);
}

// `text` takes one byte more than a scenario may have, so that the driver can refuse it.
int ReadAndLoad(const char* name, char* text) {
  uint32_t size = 0;
  if (!ReadTextFile(name, text, MaxScenarioBytes + 1, &size)) return Failed;
  LoadReply reply = {};
  DWORD returned = 0;
  if (!Ask(ControlLoadScenario, text, size, &reply, sizeof(reply), &returned)) return Failed;
  if (reply.what[0] == 0) {
    NameScenario(name);
    printf("The simulated adapter answers from %s.\n", name);
    return Done;
  }
  reply.what[sizeof(reply.what) - 1] = 0;
  const bool hasWord = reply.wordLength <= size && reply.wordStart <= size - reply.wordLength;
  const ScenarioError error = {reply.line, reply.what, reply.wordStart,
                               hasWord ? reply.wordLength : 0};
  ReportInFile(name, error, text);
  return Failed;
}

int LoadFile(const char* name) {
  char* text = static_cast<char*>(malloc(MaxScenarioBytes + size_t{1}));
  if (text == nullptr) Report("not enough memory");
  const int result = text != nullptr ? ReadAndLoad(name, text) : Failed;
  free(text);
  return result;
}

int LoadBuiltin() {
  DWORD returned = 0;
  if (!Ask(ControlLoadBuiltin, nullptr, 0, nullptr, 0, &returned)) return Failed;
  printf("The simulated adapter answers from the built-in scenario.\n");
  return Done;
}

int LoadScenario(const char* name) {
  return strcmp(name, "--builtin") == 0 ? LoadBuiltin() : LoadFile(name);
}

bool QueryStatus(SimulatorStatus* status) {
  DWORD returned = 0;
  return Ask(ControlQueryStatus, nullptr, 0, status, sizeof(*status), &returned);
}

// Fetches the whole trace into `bytes`, which takes MaxTraceBytes. Returns false on failure.
bool FetchAll(char* bytes, uint32_t* size) {
  constexpr uint32_t Piece = 1 << 20;
  for (*size = 0; *size < MaxTraceBytes;) {
    FetchTrace fetch = {*size};
    DWORD returned = 0;
    const uint32_t room = MaxTraceBytes - *size;
    if (!Ask(ControlFetchTrace, &fetch, sizeof(fetch), bytes + *size, room < Piece ? room : Piece,
             &returned)) {
      return false;
    }
    if (returned == 0) break;
    *size += returned;
  }
  return true;
}

// Writes the trace and the comment on calls left out, as the recorder on Linux does.
int WriteTrace(const char* name, char* bytes) {
  SimulatorStatus before = {};
  SimulatorStatus after = {};
  uint32_t size = 0;
  if (!QueryStatus(&before) || !FetchAll(bytes, &size) || !QueryStatus(&after)) return Failed;
  if (after.loads != before.loads) {
    Report("a scenario was loaded while the trace was fetched; fetch it again");
    return Failed;
  }
  if (after.leftOut > 0) size += FormatLeftOut(after.leftOut, bytes + size);
  if (!WriteWholeFile(name, bytes, size)) return Failed;
  if (after.leftOut == 0) {
    printf("The trace is in %s.\n", name);
    return Done;
  }
  fprintf(stderr, "a8000: the trace lacks calls for which there was no room: %u\n", after.leftOut);
  return Failed;
}

int SaveTrace(const char* name) {
  char* bytes = static_cast<char*>(malloc(MaxScenarioBytes));
  if (bytes == nullptr) {
    Report("not enough memory");
    return Failed;
  }
  const int result = WriteTrace(name, bytes);
  free(bytes);
  return result;
}

int PrintStatus() {
  SimulatorStatus status = {};
  if (!QueryStatus(&status)) return Failed;
  printf("The simulated adapter is running.\n");
  status.name[sizeof(status.name) - 1] = 0;
  const char* name = status.name[0] != 0 ? status.name : "loaded";
  printf("Scenario:  %s, %u rules, %u registers\n", status.builtin != 0 ? "built-in" : name,
         status.rules, status.registers);
  printf("Requests:  %u\n", status.requests);
  printf("Opened by: %u\n", status.opened);
  printf("Trace:     %u bytes", status.traceBytes);
  if (status.leftOut > 0) printf(", calls left out: %u", status.leftOut);
  printf("\n");
  return Done;
}

// Runs one command. `name` is its file or option, or null.
int RunCommand(const char* command, const char* name) {
  if (name == nullptr) {
    if (strcmp(command, "install") == 0) return Install();
    if (strcmp(command, "remove") == 0) return Remove();
    if (strcmp(command, "status") == 0) return PrintStatus();
  } else {
    if (strcmp(command, "scenario") == 0) return LoadScenario(name);
    if (strcmp(command, "trace") == 0) return SaveTrace(name);
  }
  fputs(Usage, stderr);
  return Failed;
}

constexpr size_t LineBytes = 4096;

// Reads a line. `whole` is false if it is too long or holds a zero byte. Returns false at the end.
bool ReadLine(char (&line)[LineBytes], bool* whole) {
  size_t size = 0;
  *whole = true;
  int character = getchar();
  if (character == EOF) return false;
  for (; character != EOF && character != '\n'; character = getchar()) {
    if (character == 0 || size + 1 == LineBytes) *whole = false;
    if (*whole) line[size++] = static_cast<char>(character);
  }
  line[size] = 0;
  line[strcspn(line, "\r")] = 0;
  return true;
}

int RunLine(char* line) {
  char* blank = strchr(line, ' ');
  if (blank != nullptr) *blank = 0;
  return RunCommand(line, blank != nullptr ? blank + 1 : nullptr);
}

int RefuseLine() {
  Report("a line is too long or holds a zero byte");
  return Failed;
}

// Returns Failed if any command failed.
int RunStandardInput() {
  static char line[LineBytes];
  bool whole = false;
  int result = Done;
  while (ReadLine(line, &whole)) {
    const int ended = whole ? RunLine(line) : RefuseLine();
    if (ended != Done) result = Failed;
    fflush(stderr);  // some runtimes buffer it if it is not a console
    printf("= %d\n", ended);
    fflush(stdout);
  }
  return result;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 2 && strcmp(argv[1], "-") == 0) return RunStandardInput();
  if (argc == 2 || argc == 3) return RunCommand(argv[1], argc == 3 ? argv[2] : nullptr);
  if (argc > 3 && strcmp(argv[1], "redact") == 0) {
    const int result = RunRedact(argc - 2, argv + 2);
    if (result >= 0) return result;
  }
  fputs(Usage, stderr);
  return Failed;
}
