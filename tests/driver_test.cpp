// driver_test: calls the running driver in ways that no tool does, and checks what comes back.
// driver_test fill: sends more requests than a trace has room for.
// driver_test device|requests|service: sends one request, or requests without end, or opens the
//   driver's service. Prints the error code of the first step and waits to be killed.
#include <windows.h>
#include <winioctl.h>
// Needs the headers above.
#include <ntddndis.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <initializer_list>

#include "simulator/windows/control_protocol.h"

namespace {

struct Driver {
  HANDLE device;
  HANDLE control;
  int failures;
};

struct Answer {
  DWORD error;  // 0: the call succeeded
  DWORD returned;
};

void Check(Driver* driver, bool holds, const char* what) {
  if (holds) return;
  driver->failures++;
  printf("failed: %s\n", what);
}

HANDLE Open(const char* path) {
  return CreateFileA(path, GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

Answer Call(HANDLE device, DWORD code, void* input, size_t inputLength, void* output,
            size_t length) {
  Answer answer = {};
  SetLastError(0xFFFFFFFF);
  if (!DeviceIoControl(device, code, input, static_cast<DWORD>(inputLength), output,
                       static_cast<DWORD>(length), &answer.returned, nullptr)) {
    answer.error = GetLastError();
  }
  return answer;
}

Answer Ask(HANDLE device, uint32_t oid, void* payload, size_t length) {
  return Call(device, IOCTL_NDIS_QUERY_GLOBAL_STATS, &oid, sizeof(oid), payload, length);
}

char* Text() {
  static char text[5 << 20];
  return text;
}

// Loads `size` bytes of the text.
LoadReply Load(Driver* driver, size_t size) {
  LoadReply reply = {};
  const Answer answer =
      Call(driver->control, ControlLoadScenario, Text(), size, &reply, sizeof(reply));
  Check(driver, answer.error == 0 && answer.returned == sizeof(reply), "a load is answered");
  return reply;
}

LoadReply LoadText(Driver* driver, const char* text) {
  const size_t size = strlen(text);
  memcpy(Text(), text, size);
  return Load(driver, size);
}

void CheckLengths(Driver* driver) {
  LoadText(driver, "1 ok 0:01 8191:02\n2 error=31 0:\"written\"\n3 ok 0:ff returned=4294967295\n");
  static uint8_t payload[8192];
  Answer answer = Ask(driver->device, 1, payload, 0);
  Check(driver, answer.error == 0 && answer.returned == 0,
        "a request without a payload is answered");
  answer = Ask(driver->device, 1, payload, sizeof(payload));
  Check(driver, answer.error == 0 && answer.returned == sizeof(payload), "8192 bytes are answered");
  Check(driver, payload[0] == 1 && payload[8191] == 2, "8192 bytes are written");
  answer = Ask(driver->device, 2, payload, 7);
  Check(driver, answer.error == 31 && answer.returned == 7, "a failure reports its count");
  Check(driver, memcmp(payload, "written\0", 8) == 0, "a failure writes");

  uint8_t input[8] = {1};
  for (const size_t length : {0U, 1U, 3U, 5U, 8U}) {
    answer = Call(driver->device, IOCTL_NDIS_QUERY_GLOBAL_STATS, input, length, payload, 8);
    Check(driver, answer.error == 87, "an OID has four bytes");
  }
  for (const DWORD code : {0x00170000U, 0x00170001U, 0x00170003U, 0x00170006U, 0U}) {
    answer = Call(driver->device, code, input, 4, payload, 8);
    Check(driver, answer.error == 1, "an unknown code is refused");
  }
  static uint8_t large[(1 << 20) + 1];
  answer = Ask(driver->device, 1, large, sizeof(large));
  Check(driver, answer.error == 87 && large[0] == 0, "more than a megabyte is refused");
  HANDLE flagged =
      CreateFileA(R"(\\.\A8000)", GENERIC_READ | GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                  FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OVERLAPPED, nullptr);
  Check(driver, Ask(flagged, 1, payload, 1).error == 6, "a handle that was refused does nothing");
  if (flagged != INVALID_HANDLE_VALUE) CloseHandle(flagged);
  HANDLE second = Open(R"(\\.\A8000)");
  Check(driver, Ask(second, 1, payload, 1).error == 0, "two handles answer");
  CloseHandle(second);
  Check(driver, Ask(second, 1, payload, 1).error == 6, "a closed handle is refused");
}

void CheckErrors(Driver* driver) {
  static const DWORD errors[] = {
      0,  1,   2,   3,   5,   6,   8,   13,  21,  22,   23,   24,   31,    32,         50,
      87, 121, 122, 170, 234, 259, 487, 995, 998, 1117, 1167, 1450, 65535, 0xA0000001, 0xE0000001};
  for (const DWORD error : errors) {
    char text[64];
    snprintf(text, sizeof(text), "1 error=%lu\n2 error=%lu returned=0\n", error, error);
    LoadText(driver, text);
    uint8_t payload[4] = {};
    const DWORD counted = Ask(driver->device, 1, payload, 4).error;
    const DWORD uncounted = Ask(driver->device, 2, payload, 4).error;
    if (counted == error && uncounted == error) continue;
    snprintf(text, sizeof(text), "error %lu arrives as %lu and %lu", error, counted, uncounted);
    Check(driver, false, text);
  }
  uint8_t payload[4] = {};
  LoadText(driver, "1 error=65536\n2 error=4294967295\n");
  for (const uint32_t oid : {1U, 2U}) {
    const Answer answer = Ask(driver->device, oid, payload, 4);
    Check(driver, answer.error == 31 && answer.returned == 4, "a code that cannot pass is 31");
  }
}

void CheckScenarios(Driver* driver) {
  constexpr char Line[] = "0xFFFCF105 len=8 if 0:0102030405060708 ok 0:0102030405060708 times=1\n";
  constexpr size_t Lines = 60000;
  size_t size = 0;
  for (size_t i = 0; i < Lines; i++, size += sizeof(Line) - 1) {
    memcpy(Text() + size, Line, sizeof(Line) - 1);
  }
  memcpy(Text() + size, "7 ok", 4);
  Check(driver, Load(driver, size + 4).what[0] == 0, "a scenario of 4 MB loads");
  uint8_t payload[8] = {};
  Check(driver, Ask(driver->device, 7, payload, 8).error == 0, "its last rule answers");
  memcpy(Text() + size, "7 on", 4);
  const LoadReply reply = Load(driver, size + 4);
  Check(driver, reply.line == Lines + 1 && strcmp(reply.what, "unknown word") == 0,
        "an error in the last line is reported");
  Check(driver, Ask(driver->device, 7, payload, 8).error == 0,
        "the scenario before it stays in force");
}

void CheckControl(Driver* driver) {
  uint8_t bytes[128] = {};
  HANDLE control = driver->control;
  Check(driver, Call(control, IOCTL_NDIS_QUERY_GLOBAL_STATS, bytes, 4, bytes, 4).error == 1,
        "the control device refuses other codes");
  Check(driver, Call(control, ControlLoadScenario, bytes, 4, bytes, 75).error == 122,
        "a load without room for its reply is refused");
  Check(driver, Call(control, ControlLoadBuiltin, bytes, 5, bytes, 0).error == 87,
        "the built-in scenario takes no input");
  Check(driver, Call(control, ControlFetchTrace, bytes, 0, bytes, 128).error == 87,
        "a fetch without an offset is refused");
  memset(bytes, 0xFF, sizeof(bytes));
  const Answer fetched = Call(control, ControlFetchTrace, bytes, 4, bytes, 128);
  Check(driver, fetched.error == 0 && fetched.returned == 0, "past the trace there is nothing");
  Check(driver, Call(control, ControlQueryStatus, nullptr, 0, bytes, 27).error == 122,
        "a status without room is refused");
}

// Opens the device or the service, prints the error code and waits to be killed. After `requests`
// it is killed in one of them.
int Hold(const char* what) {
  static uint8_t payload[1 << 20];
  const bool requests = strcmp(what, "requests") == 0;
  DWORD error = 0;
  HANDLE device = nullptr;
  if (strcmp(what, "service") == 0) {
    SC_HANDLE manager = OpenSCManagerA(nullptr, nullptr, SC_MANAGER_CONNECT);
    if (OpenServiceA(manager, "a8000sim", SERVICE_QUERY_STATUS) == nullptr) error = GetLastError();
  } else {
    device = Open(R"(\\.\A8000)");
    error = Ask(device, 0xFFFCF105, payload, 8).error;
  }
  printf("%lu\n", error);
  fflush(stdout);
  while (requests) Ask(device, 0xFFFCF105, payload, sizeof(payload));
  Sleep(INFINITE);
  return 1;
}

int Fill() {
  HANDLE device = Open(R"(\\.\A8000)");
  static uint8_t payload[60000];
  for (int i = 0; i < 70; i++) {
    if (Ask(device, 1, payload, sizeof(payload)).error != 0) return 1;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 1) return strcmp(argv[1], "fill") == 0 ? Fill() : Hold(argv[1]);
  Driver driver = {Open(R"(\\.\A8000)"), nullptr, 0};
  driver.control = Open(ControlDevicePath);
  CheckLengths(&driver);
  CheckErrors(&driver);
  CheckScenarios(&driver);
  CheckControl(&driver);
  CloseHandle(driver.device);
  CloseHandle(driver.control);
  return driver.failures == 0 ? 0 : 1;
}
