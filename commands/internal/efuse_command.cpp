// `efuse`: reads and writes single e-fuse bytes and counts the free blocks.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "channel/driver_channel.h"
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#include "commands/refusals.h"

namespace {

enum EfuseOpMode : uint8_t { EfuseRead = 0, EfuseWrite = 1, EfuseFree = 2 };

// OidEfuse.
struct EfuseAccessParam {
  uint8_t ucOpMode;  // EfuseOpMode
  uint8_t unused1[3];
  uint32_t Efuse_addr;
  uint8_t unused8[4];
  uint8_t aucData[16];       // the block that holds the address; the byte at address & 15 counts
  uint8_t ucFreeBlockCount;  // replies to EfuseFree
  uint8_t ucTotalBlockCount;
  uint8_t unused30[2];
};
static_assert(sizeof(EfuseAccessParam) == 32);
static_assert(offsetof(EfuseAccessParam, Efuse_addr) == 4);
static_assert(offsetof(EfuseAccessParam, aucData) == 12);
static_assert(offsetof(EfuseAccessParam, ucFreeBlockCount) == 28);
static_assert(offsetof(EfuseAccessParam, ucTotalBlockCount) == 29);

int PrintEfuseMenu() {
  ConsolePrintf("\nHelp menu\n");
  ConsolePrintf("\tRead:\t\"nicctl efuse read addr_hex\"\n");
  ConsolePrintf("\tWrite:\t\"nicctl efuse write addr_hex val_hex\"\n");
  ConsolePrintf("\tFree Blocks:\t\"nicctl efuse free\"\n");
  return 0;
}

}  // namespace

int HandleEfuseCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s\n", argv[1]);
  if (argc < 3 || argc > 5) return InvalidParameters(0);

  EfuseAccessParam param = {};
  uint32_t address = 0;
  uint32_t value = 0;
  // The operation's first letter stands for its word.
  char operation = argv[2][0];
  if (argc == 4 && (operation == 'r' || operation == 'R')) {
    param.ucOpMode = EfuseRead;
    ScanArgument(argv[3], "0x%x", &address);
  } else if (argc == 5 && (operation == 'w' || operation == 'W')) {
    param.ucOpMode = EfuseWrite;
    ScanArgument(argv[3], "0x%x", &address);
    ScanArgument(argv[4], "0x%x", &value);
  } else if (operation == 'f' || operation == 'F') {
    param.ucOpMode = EfuseFree;
  } else {
    return PrintEfuseMenu();
  }
  uint8_t mode = param.ucOpMode;
  uint32_t index = address & 15;
  param.Efuse_addr = address;
  param.aucData[index] = static_cast<uint8_t>(value);
  ConsolePrintf("ucOpMode = %d, Efuse_addr = 0x%x, Efuse_value = 0x%x, aucData[%d] = 0x%x\n", mode,
                address, value, index, param.aucData[index]);
  if (!OidRequest(OidEfuse, &param)) return RequestRefused(0);
  if (mode == EfuseRead) {
    ConsolePrintf("Read success 0x%x = 0x%x\n", address, param.aucData[index]);
  } else if (mode == EfuseWrite) {
    ConsolePrintf("Write success 0x%x = 0x%x\n", address, value);
  } else {
    ConsolePrintf("Free block size %d, Total block %d\n", param.ucFreeBlockCount,
                  param.ucTotalBlockCount);
  }
  return 1;
}
