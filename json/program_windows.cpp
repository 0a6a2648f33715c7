#ifdef _WIN32

#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <array>
#include <cstdio>
#include <system_error>

#include "json/decode.h"
#include "json/program.h"

const char* const ProgramSuffix = ".exe";
const wchar_t ProgramFolderDivider = L';';

namespace {

[[noreturn]] void Fail(const std::string& what) {
  throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), what);
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

std::string ReadAll(HANDLE pipe) {
  std::string text;
  std::array<char, 1 << 16> buffer = {};
  DWORD count = 0;
  while (text.size() <= LongestOutput &&
         ReadFile(pipe, buffer.data(), buffer.size(), &count, nullptr) != 0 && count > 0) {
    text.append(buffer.data(), count);
  }
  return text;
}

}  // namespace

std::filesystem::path OwnFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path(path).parent_path();
}

int64_t WriteTime(const std::filesystem::path& path) {
  WIN32_FILE_ATTRIBUTE_DATA data = {};
  if (GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data) == 0) return -1;
  return static_cast<int64_t>(data.ftLastWriteTime.dwHighDateTime) << 32 |
         data.ftLastWriteTime.dwLowDateTime;
}

std::wstring ProgramFolders() {
  const wchar_t* path = _wgetenv(L"PATH");
  return path != nullptr ? path : L"";
}

ProgramResult RunProgram(const std::filesystem::path& path, const std::vector<std::string>& words) {
  std::wstring line = path.stem().wstring();
  for (const std::string& word : words) line += L' ' + Quoted(Wide(word));

  SECURITY_ATTRIBUTES inherited = {sizeof(inherited), nullptr, TRUE};
  HANDLE readEnd = nullptr;
  HANDLE writeEnd = nullptr;
  if (CreatePipe(&readEnd, &writeEnd, &inherited, 0) == 0) Fail("CreatePipe");
  SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW start = {};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESTDHANDLES;
  start.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  start.hStdOutput = writeEnd;
  start.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION process = {};
  if (CreateProcessW(path.c_str(), line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start,
                     &process) == 0) {
    Fail(Utf8FromUtf16(path.u16string()));
  }
  CloseHandle(writeEnd);
  CloseHandle(process.hThread);
  ProgramResult result = {ReadAll(readEnd), 0};
  CloseHandle(readEnd);
  DWORD status = 0;
  WaitForSingleObject(process.hProcess, INFINITE);
  GetExitCodeProcess(process.hProcess, &status);
  CloseHandle(process.hProcess);
  result.status = status;
  return result;
}

int wmain(int argc, wchar_t** argv) {
  _setmode(_fileno(stdin), _O_BINARY);
  std::vector<std::string> arguments;
  for (int i = 1; i < argc; i++) {
    const std::wstring argument = argv[i];
    arguments.push_back(Utf8FromUtf16(std::u16string(argument.begin(), argument.end())));
  }
  return RunJson(arguments);
}

#endif
