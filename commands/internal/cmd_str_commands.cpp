// `set_cmd_str` and `get_cmd_str`: the arguments as one free text for the driver.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/refusals.h"

namespace {

constexpr uint8_t QueryType = 3;
constexpr unsigned TextSize = 320;

// OidSetCmdStr and OidGetCmdStr.
struct CmdStringParam {
  uint8_t unused[2];
  uint8_t requestType;   // QueryType for the query, else 0
  uint8_t responseType;  // QueryType when the text is an answer to print
  uint16_t textLength;
  uint8_t unused6[2];
  char text[TextSize];  // sent with a zero in the last byte; a reply may lack it
};
static_assert(sizeof(CmdStringParam) == 328);
static_assert(offsetof(CmdStringParam, requestType) == 2);
static_assert(offsetof(CmdStringParam, textLength) == 4);
static_assert(offsetof(CmdStringParam, text) == 8);

// One more character of the text that the arguments make: every one is echoed, the first ones
// are sent.
void AddCharacter(char character, unsigned* length, CmdStringParam* param) {
  ConsolePrintf("aucCmd[%d] = %c \n", *length, character);
  if (*length < TextSize - 1) param->text[*length] = character;
  (*length)++;
}

// Echoes the arguments, then the text of all arguments with a space behind each. What is sent is
// that text without its last space, cut to the record.
void FillText(int argc, char** argv, CmdStringParam* param) {
  for (int i = 2; i < argc; i++) ConsolePrintf("argv[%d] = %s \n", i, argv[i]);
  unsigned length = 0;
  for (int i = 2; i < argc; i++) {
    for (const char* next = argv[i]; *next != 0; next++) AddCharacter(*next, &length, param);
    AddCharacter(' ', &length, param);
  }
  unsigned sent = length - 1 < TextSize - 1 ? length - 1 : TextSize - 1;
  param->text[sent] = 0;
  param->textLength = static_cast<uint16_t>(sent);
  ConsolePrintf("%d \n", sent);
}

bool SendCmdString(uint32_t oid, int argc, char** argv, CmdStringParam* param) {
  ConsolePrintf("argc = %d \n", argc);
  FillText(argc, argv, param);
  return OidRequest(oid, param);
}

}  // namespace

int HandleSetCmdStrCommand(int argc, char** argv) {
  if (argc <= 2) return InvalidParameters(0);
  CmdStringParam param = {};
  return SendCmdString(OidSetCmdStr, argc, argv, &param) ? 1 : RequestRefused(0);
}

int HandleGetCmdStrCommand(int argc, char** argv) {
  if (argc <= 2) return InvalidParameters(0);
  CmdStringParam param = {};
  param.requestType = QueryType;
  if (!SendCmdString(OidGetCmdStr, argc, argv, &param)) return RequestRefused(0);
  if (param.responseType == QueryType) {
    ConsolePrintf("%.*s", static_cast<int>(TextSize), param.text);
  }
  return 1;
}
