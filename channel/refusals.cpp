#include "channel/refusals.h"

#include "app/console/print.h"
#include "channel/driver_channel.h"

namespace {

struct Advice {
  uint32_t code;
  const char* text;
};

constexpr Advice AdviceByCode[] = {
    {5, "Please disconnect first. Thanks!!\n"},
    {50, "Sorry, this chip is not supported this CMD.\n"},
    {87, "Driver gets an invalid parameter. Please check the parameter. Thanks!!\n"},
};

constexpr char OtherAdvice[] =
    "Can not use this command correctly.\n"
    "Please collect the driver log to VLR. Thanks!!\n";

const char* AdviceFor(uint32_t code) {
  for (const Advice& advice : AdviceByCode) {
    if (advice.code == code) return advice.text;
  }
  return OtherAdvice;
}

}  // namespace

int PrintInvalidParameters(int result) {
  ConsolePrintf("Invalid parameters\n");
  return result;
}

int PrintIncorrectParameters() {
  ConsolePrintf("Error: Parameters are not correct!!\n");
  return 1;
}

int PrintOutOfMemory(int result) {
  ConsolePrintf("Allocated memory failed\n");
  return result;
}

int PrintRequestError(int result) {
  ConsolePrintf("Error in DeviceIoControl : %d", static_cast<int>(DeviceError()));
  return result;
}

int PrintRequestErrorLine(int result) {
  PrintRequestError();
  ConsolePrintf("\n");
  return result;
}

void PrintDriverErrorAdvice(uint32_t code) {
  ConsolePrintf("Error Code in DeviceIoControl: %d\n", static_cast<int>(code));
  ConsolePrintf("%s", AdviceFor(code));
  PrintErrorPageLines();
}

void PrintErrorPageLines() {
  ConsolePrintf("Or you can go to MSFT website to check the meaning of the error code.\n");
  ConsolePrintf(
      "MSFT website: https://learn.microsoft.com/windows/win32/debug/system-error-codes\n");
}
