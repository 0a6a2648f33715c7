#include "commands/internal/handler_helpers.h"

#include "app/console/print.h"
#include "channel/request_errors.h"

int InvalidParameters(int result) {
  ConsolePrintf("Invalid parameters\n");
  return result;
}

int RequestRefused() {
  PrintRequestError();
  return 0;
}

const char* ArgumentText(int argc, char** argv, int index) {
  return index < argc ? argv[index] : "";
}
