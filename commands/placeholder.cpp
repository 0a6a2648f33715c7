#include "commands/placeholder.h"

int HandleMissingCommand(int /*argc*/, char** /*argv*/) {
  return 1;
}
