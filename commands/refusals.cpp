#include "commands/refusals.h"

#include "app/console/print.h"
#include "channel/request_errors.h"

int InvalidParameters(int result) {
  ConsolePrintf("Invalid parameters\n");
  return result;
}

int IncorrectParameters() {
  ConsolePrintf("Error: Parameters are not correct!!\n");
  return 1;
}

int OutOfMemory(int result) {
  ConsolePrintf("Allocated memory failed\n");
  return result;
}

int RequestRefused(int result) {
  PrintRequestError();
  return result;
}
