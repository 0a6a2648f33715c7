#ifdef _WIN32

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cstdio>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "json/decode.h"
#include "json/program.h"

namespace {

[[noreturn]] void Fail(const std::string& name) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                          "cannot start " + name + " beside this program or in PATH");
}

// UTF-8 as UTF-16.
std::wstring Wide(const std::string& text) {
  return std::filesystem::path(std::u8string(text.begin(), text.end())).wstring();
}

// An argument as the C runtime reads it back: backslashes count only before a quotation mark.
std::wstring Quoted(const std::wstring& argument) {
  std::wstring quoted = L"\"";
  size_t backslashes = 0;
  for (const wchar_t character : argument) {
    if (character == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = character == L'\\' ? backslashes + 1 : 0;
    quoted += character;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

}  // namespace

int64_t WriteTime(const std::filesystem::path& path) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == 0) return -1;
  return static_cast<int64_t>(data.ftLastWriteTime.dwHighDateTime) << 32 |
         data.ftLastWriteTime.dwLowDateTime;
}

void RunProgram(std::string name, ToolRun* run) {
  std::wstring path(32768, L'\0');
  const auto size = static_cast<DWORD>(path.size());
  GetModuleFileNameW(nullptr, path.data(), size);
  const auto beside = std::filesystem::path(path.c_str()).replace_filename(name + ".exe");
  std::error_code ignored;
  if (std::filesystem::is_regular_file(beside, ignored)) {
    path = beside.wstring();
  } else if (SearchPathW(_wgetenv(L"PATH"), Wide(name).c_str(), L".exe", size, path.data(),
                         nullptr) == 0) {
    Fail(name);
  }
  std::wstring line = Wide(name);
  for (const std::string& word : run->words) line += L' ' + Quoted(Wide(word));

  int ends[2] = {};
  if (_pipe(ends, 1 << 16, _O_BINARY | _O_NOINHERIT) != 0) throw std::runtime_error("no pipe");
  const auto writeEnd = reinterpret_cast<HANDLE>(_get_osfhandle(ends[1]));
  SetHandleInformation(writeEnd, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  start.hStdOutput = writeEnd;
  start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION process = {};
  if (CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &process) == 0) {
    Fail(name);
  }
  CloseHandle(process.hThread);
  _close(ends[1]);
  FILE* pipe = _fdopen(ends[0], "rb");
  const auto output = std::make_unique_for_overwrite<char[]>(LongestOutput + 1);
  run->output.assign(output.get(), fread(output.get(), 1, LongestOutput + 1, pipe));
  fclose(pipe);  // if it prints more, it ends
  DWORD status = 0;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hProcess);
  run->status = status;
}

int wmain(int argc, wchar_t** argv) {
  _setmode(_fileno(stdin), _O_BINARY);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; i++) {
    arguments.push_back(Utf8FromUtf16(std::filesystem::path(argv[i]).u16string()));
  }
  return RunJson(arguments);
}

#endif
