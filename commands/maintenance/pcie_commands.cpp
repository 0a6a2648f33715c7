// `pcie` and `set_pcie_driving`: generation and signal driving of the adapter's PCIe link.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/maintenance/maintenance_commands.h"
#include "commands/maintenance/register_access.h"

namespace {

// OidGenSwitch.
struct GenSwitchParam {
  uint32_t reserved;         // zero
  uint8_t portIdle;          // sent as 1; cleared by a driver that refuses because of a port in use
  uint8_t genSwitchSupport;  // sent as 1; non-zero in the reply means supported
  uint16_t reserved2;        // zero
};
static_assert(sizeof(GenSwitchParam) == 8);
static_assert(offsetof(GenSwitchParam, portIdle) == 4);
static_assert(offsetof(GenSwitchParam, genSwitchSupport) == 5);

constexpr uint32_t PcieGenRegister = 0x74031090;

// The driving registers in the order in which they are set, with their values for a lower driving
// strength.
constexpr RegAccessParam LowerDriving[] = {{0x74070A04, 0x56445E32}, {0x74070A08, 0x0C010104}};

bool IsGen2(uint32_t genRegister) {
  return (genRegister & 0xFFFF0000) == 0x10120000;
}

int ReportNotGen2() {
  ConsolePrintf("Error: PCIE gen not Gen2!!\n");
  return 1;
}

}  // namespace

int HandlePcieCommand(int argc, char** argv) {
  if (argc != 3) return PrintIncorrectParameters();
  if (!EqualsIgnoreCase(argv[2], "gen_switch_chk")) {
    ConsolePrintf("Error: Invalid parameters\n");
    return 1;
  }
  GenSwitchParam param = {};
  param.portIdle = 1;
  param.genSwitchSupport = 1;
  if (!OidRequest(OidGenSwitch, &param)) {
    if (param.portIdle != 0) {
      ConsolePrintf("Error in DeviceIoControl \n");
    } else {
      ConsolePrintf("Port is not Idle. \r\nPlease disconnect all ethernet. \n");
    }
    return 1;
  }
  if (param.genSwitchSupport != 0) {
    ConsolePrintf("PCIe gen switch support (device) : Y \n");
    ConsolePrintf("PCie gen switch support (host)   : Y \n");
  } else {
    ConsolePrintf("PCIe gen switch support (device) : N \n");
    ConsolePrintf("PCie gen switch support (host)   : NA \n");
  }
  return 0;
}

int HandleSetPcieDrivingCommand(int argc, char** argv) {
  ConsolePrintf("argv[1] = %s \n", argv[1]);
  if (argc != 2) return PrintInvalidParameters(1);
  RegAccessParam access = {};
  access.address = PcieGenRegister;
  if (!ReadRegister(&access)) return PrintRequestError(1);
  if (!IsGen2(access.value)) return ReportNotGen2();
  ConsolePrintf("PCIE gen = Gen2\n");
  ConsolePrintf("(Step1:Check PCIE gen) [0x%08x] = 0x%08x\n", access.address, access.value);
  ConsolePrintf("==================== Check PCIE driving setting  ====================\n");

  // From here on no result is tested. A read that fails leaves the previous value in the record,
  // and the checks below judge by that value.
  for (const RegAccessParam& lower : LowerDriving) {
    access.address = lower.address;
    ReadRegister(&access);
    ConsolePrintf("(Step2:Check PCIE driving) [0x%08x] = 0x%08x\n", access.address, access.value);

    ConsolePrintf("(Step3:Set lower PCIE driving) [0x%08x] --> 0x%08x\n", lower.address,
                  lower.value);
    access = lower;
    WriteRegister(&access);

    access.address = lower.address;
    ReadRegister(&access);
    if (access.value != lower.value) {
      ConsolePrintf("Error: Setting Fail! \n");
      return 1;
    }
    ConsolePrintf("(Step4:Read back PCIE driving setting) [0x%08x] = 0x%08x\n", lower.address,
                  lower.value);
  }

  access.address = PcieGenRegister;
  ReadRegister(&access);
  if (!IsGen2(access.value)) return ReportNotGen2();
  ConsolePrintf("(Step5:Recheck PCIE gen) [0x%08x] = 0x%08x\n", access.address, access.value);
  ConsolePrintf("PCIE gen = Gen2\n");
  ConsolePrintf("=====================================================================\n");
  return 0;
}
