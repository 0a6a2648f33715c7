// start_program OPEN CLOSE PROGRAM NAME [WORD...]: starts a program that sees NAME as its own path,
// and ends with its exit status. OPEN and CLOSE are "ok", "null" or the error code that opening or
// closing the device, its first CreateFileA, fails with; a driver cannot bring about all of these.
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

enum class Stage { Start, Opening, Opened, Closing };

struct Program {
  HANDLE process;
  HANDLE thread;
  uint8_t* threadBlock;
  const char* openOutcome;
  const char* closeOutcome;
  Stage stage;
  DWORD64 stop;  // where the program stops next
  uint8_t byteAtStop;
  DWORD64 device;
};

// Goes past the first word of a command line, which may be in quotes.
char* SkipWord(char* line) {
  bool quoted = false;
  for (; *line != 0 && (quoted || *line != ' '); line++) {
    if (*line == '"') quoted = !quoted;
  }
  return line + strspn(line, " ");
}

// A function of the kernel library, which every process has at the same address.
DWORD64 KernelFunction(const char* name) {
  return reinterpret_cast<DWORD64>(GetProcAddress(GetModuleHandleA("kernel32.dll"), name));
}

void WriteByte(const Program* program, uint8_t byte) {
  void* address = reinterpret_cast<void*>(program->stop);
  WriteProcessMemory(program->process, address, &byte, 1, nullptr);
  FlushInstructionCache(program->process, address, 1);
}

void StopAt(Program* program, DWORD64 address) {
  constexpr uint8_t Breakpoint = 0xCC;
  program->stop = address;
  ReadProcessMemory(program->process, reinterpret_cast<void*>(address), &program->byteAtStop, 1,
                    nullptr);
  WriteByte(program, Breakpoint);
}

// The program has stopped at the first instruction of a function, which is made to return at once.
void Return(CONTEXT* context, DWORD64 caller, DWORD64 value) {
  context->Rip = caller;
  context->Rsp += sizeof(caller);
  context->Rax = value;
}

void Fail(const Program* program, CONTEXT* context, DWORD64 caller, const char* outcome,
          DWORD64 failureValue) {
  constexpr size_t LastErrorOffset = 0x68;  // in a thread's block
  if (strcmp(outcome, "null") == 0) return Return(context, caller, 0);
  const DWORD error = strtoul(outcome, nullptr, 10);
  WriteProcessMemory(program->process, program->threadBlock + LastErrorOffset, &error,
                     sizeof(error), nullptr);
  Return(context, caller, failureValue);
}

// Restores the byte at the stop, and does what this stage needs.
void TakeStop(Program* program) {
  CONTEXT context = {};
  context.ContextFlags = CONTEXT_FULL;
  GetThreadContext(program->thread, &context);
  context.Rip = program->stop;
  WriteByte(program, program->byteAtStop);
  DWORD64 caller = 0;
  ReadProcessMemory(program->process, reinterpret_cast<void*>(context.Rsp), &caller, sizeof(caller),
                    nullptr);

  if (program->stage == Stage::Opening && strcmp(program->openOutcome, "ok") != 0) {
    Fail(program, &context, caller, program->openOutcome, ~DWORD64{0});
  } else if (program->stage == Stage::Opening) {
    program->stage = Stage::Opened;
    StopAt(program, caller);
  } else if (program->stage == Stage::Opened) {
    program->device = context.Rax;
    program->stage = Stage::Closing;
    if (strcmp(program->closeOutcome, "ok") != 0) StopAt(program, KernelFunction("CloseHandle"));
  } else if (context.Rcx == program->device) {
    Fail(program, &context, caller, program->closeOutcome, 0);
  } else {
    // This is another handle. It is closed for the program, and the stop stays.
    DuplicateHandle(program->process, reinterpret_cast<HANDLE>(context.Rcx), nullptr, nullptr, 0,
                    FALSE, DUPLICATE_CLOSE_SOURCE);
    Return(&context, caller, 1);
    StopAt(program, program->stop);
  }
  SetThreadContext(program->thread, &context);
}

// Returns how the program continues after an exception.
DWORD TakeException(Program* program, const EXCEPTION_RECORD* exception) {
  if (exception->ExceptionCode != EXCEPTION_BREAKPOINT) return DBG_EXCEPTION_NOT_HANDLED;
  if (program->stage == Stage::Start) {
    // The system stops a debugged process once, after its libraries have been loaded.
    program->stage = Stage::Opening;
    StopAt(program, KernelFunction("CreateFileA"));
  } else if (exception->ExceptionAddress == reinterpret_cast<void*>(program->stop)) {
    TakeStop(program);
  }
  return DBG_CONTINUE;
}

DWORD FollowUntilExit(Program* program) {
  DEBUG_EVENT event = {};
  while (WaitForDebugEvent(&event, INFINITE)) {
    DWORD goesOn = DBG_CONTINUE;
    switch (event.dwDebugEventCode) {
      case CREATE_PROCESS_DEBUG_EVENT:
        program->threadBlock = static_cast<uint8_t*>(event.u.CreateProcessInfo.lpThreadLocalBase);
        break;
      case EXCEPTION_DEBUG_EVENT:
        goesOn = TakeException(program, &event.u.Exception.ExceptionRecord);
        break;
      case EXIT_PROCESS_DEBUG_EVENT:
        return event.u.ExitProcess.dwExitCode;
      default:
        break;
    }
    ContinueDebugEvent(event.dwProcessId, event.dwThreadId, goesOn);
  }
  return 1;
}

}  // namespace

int main(int argc, char** argv) {
  STARTUPINFOA startup = {};
  PROCESS_INFORMATION process = {};
  startup.cb = sizeof(startup);
  if (argc < 5) return 1;
  char* line = SkipWord(SkipWord(SkipWord(SkipWord(GetCommandLineA()))));
  if (!CreateProcessA(argv[3], line, nullptr, nullptr, TRUE, DEBUG_ONLY_THIS_PROCESS, nullptr,
                      nullptr, &startup, &process)) {
    return 1;
  }
  Program program = {};
  program.process = process.hProcess;
  program.thread = process.hThread;
  program.openOutcome = argv[1];
  program.closeOutcome = argv[2];
  return static_cast<int>(FollowUntilExit(&program));
}
