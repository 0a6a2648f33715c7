// start_program OPEN CLOSE PROGRAM NAME [WORD...]: starts a program that sees NAME as its own path,
// and ends with its exit status. OPEN and CLOSE are "ok", "null" or the error code that its first
// CreateFileA or CloseHandle fails with, which no driver under Wine can bring about.
#include <windows.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

// A function of the kernel library, which every process has at the same address.
struct Call {
  void* address;
  const char* outcome;
  uint64_t failureValue;  // what the function returns where it fails
  bool trapped;
  uint8_t firstByte;
};

struct Program {
  HANDLE process;
  HANDLE thread;
  uint8_t* threadBlock;
  bool loaded;
  Call calls[2];
};

// Goes behind the first word of a command line, which may stand in quotes.
char* SkipWord(char* line) {
  bool quoted = false;
  for (; *line != 0 && (quoted || *line != ' '); line++) {
    if (*line == '"') quoted = !quoted;
  }
  return line + strspn(line, " ");
}

Call CallOf(const char* name, const char* outcome, uint64_t failureValue) {
  const FARPROC function = GetProcAddress(GetModuleHandleA("kernel32.dll"), name);
  return {reinterpret_cast<void*>(function), outcome, failureValue, false, 0};
}

bool WriteByte(const Program* program, void* address, uint8_t byte) {
  return WriteProcessMemory(program->process, address, &byte, 1, nullptr) &&
         FlushInstructionCache(program->process, address, 1);
}

// Puts a breakpoint where a call is to be answered here.
void Trap(const Program* program, Call* call) {
  constexpr uint8_t Breakpoint = 0xCC;
  if (strcmp(call->outcome, "ok") == 0) return;
  call->trapped =
      ReadProcessMemory(program->process, call->address, &call->firstByte, 1, nullptr) &&
      WriteByte(program, call->address, Breakpoint);
}

// Lets the function return at its first instruction. Later calls run as ever.
void Answer(const Program* program, Call* call) {
  constexpr size_t LastErrorOffset = 0x68;  // in a thread's block
  CONTEXT context = {};
  context.ContextFlags = CONTEXT_FULL;
  GetThreadContext(program->thread, &context);
  ReadProcessMemory(program->process, reinterpret_cast<void*>(context.Rsp), &context.Rip,
                    sizeof(context.Rip), nullptr);
  context.Rsp += sizeof(context.Rip);
  context.Rax = 0;
  if (strcmp(call->outcome, "null") != 0) {
    const DWORD error = strtoul(call->outcome, nullptr, 10);
    context.Rax = call->failureValue;
    WriteProcessMemory(program->process, program->threadBlock + LastErrorOffset, &error,
                       sizeof(error), nullptr);
  }
  SetThreadContext(program->thread, &context);
  WriteByte(program, call->address, call->firstByte);
  call->trapped = false;
}

// Returns how the program goes on behind an exception.
DWORD TakeException(Program* program, const EXCEPTION_RECORD* exception) {
  if (exception->ExceptionCode != EXCEPTION_BREAKPOINT) return DBG_EXCEPTION_NOT_HANDLED;
  // A debugged process reaches a breakpoint of the system's when its libraries are there.
  if (!program->loaded) {
    program->loaded = true;
    for (Call& call : program->calls) Trap(program, &call);
    return DBG_CONTINUE;
  }
  for (Call& call : program->calls) {
    if (call.trapped && exception->ExceptionAddress == call.address) Answer(program, &call);
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
  program.calls[0] = CallOf("CreateFileA", argv[1], ~uint64_t{0});
  program.calls[1] = CallOf("CloseHandle", argv[2], 0);
  return static_cast<int>(FollowUntilExit(&program));
}
