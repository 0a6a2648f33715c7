// `fixedrate`: sends with one rate, or with automatic rates again.
#include <cstddef>
#include <cstdint>

#include "app/console/print.h"
#include "app/console/scan.h"
#include "app/console/text.h"
#include "channel/driver_channel.h"
#include "channel/oid.h"
#include "channel/refusals.h"
#include "commands/radio/fixed_rate_validation.h"
#include "commands/radio/radio_commands.h"

uint8_t fgIsUseWCID = 0;

namespace {

constexpr uint32_t AutoRateCommand = 0xA0600000;
constexpr uint32_t AllStationsCommand = 0xA0610000;
constexpr uint32_t OneStationCommand = 0xA0610100;  // the station's identifier in the low bits

struct FixedRateRequest {
  uint32_t u4Command;  // one of the commands above
  uint32_t u4Rate;     // the rate word; 0 with automatic rates
  uint8_t aucReserved[256];
};
static_assert(sizeof(FixedRateRequest) == 264);
static_assert(offsetof(FixedRateRequest, u4Rate) == 4);
static_assert(offsetof(FixedRateRequest, aucReserved) == 8);

constexpr const char* OptionHelp[] = {
    "nicctl fixedrate <Option>\n",
    "Option support 10 or 13 parameters\n",
    "Option:[WCID]-[Mode]-[BW]-[MCS]-[VhtHeNss]-[GI]-[Preamble]-[STBC]-[LDPC]-[SPE_EN]\n",
    "13 param support another [HE-LTF]-[HE-ER-DCM]-[HE-ER-106]\n",
    "[WCID]Wireless Client ID\n",
    "[Mode]CCK=0, OFDM=1, HT=2, GF=3, VHT=4, PLR=5, HE_SU=8, HE_ER_SU=9, HE_TRIG=10, HE_MU=11\n",
    "[BW]BW20=0, BW40=1, BW80=2,BW160=3\n",
    "[MCS]CCK=0~3, OFDM=0~7, HT=0~32, VHT=0~9, HE=0~11\n",
    "[VhtHeNss]1~8, Other=ignore\n",
    "[GI]HT/VHT: 0:Long, 1:Short, HE: SGI=0(0.8us), MGI=1(1.6us), LGI=2(3.2us)\n",
    "[Preamble]Long=0, Other=Short\n",
    "[STBC]Enable=1, Disable=0\n",
    "[LDPC]BCC=0, LDPC=1\n",
    "[SPE_EN]Disable=0, Enable=1 (1T to duplicate 2T)\n",
    "[HE-LTF]1X=0, 2X=1, 4X=2\n",
    "[HE-ER-DCM]Enable=1, Disable=0\n",
    "[HE-ER-106]106-tone=1\n",
};

// Unlike most commands this one returns 1 when the driver takes the rate and 0 when it does not.
int SendRate(uint32_t command, uint32_t rate) {
  FixedRateRequest request = {};
  request.u4Command = command;
  request.u4Rate = rate;
  if (!OidRequest(OidFixedRate, &request)) return PrintRequestError(0);
  return 1;
}

int PrintUseWcid() {
  ConsolePrintf("Update fgIsUseWCID %d\n", fgIsUseWCID);
  return 1;
}

int PrintOptionHelp() {
  for (const char* line : OptionHelp) ConsolePrintf("%s", line);
  return 0;
}

int ScanRate(const char* text, uint32_t* u4WCID, FixedRateParam* param) {
  return ScanArgument(text, "%d-%d-%d-%d-%d-%d-%d-%d-%d-%d-%d-%d-%d", u4WCID, &param->u4Mode,
                      &param->u4Bw, &param->u4Mcs, &param->u4VhtNss, &param->u4GI,
                      &param->u4Preamble, &param->u4STBC, &param->u4LDPC, &param->u4SpeEn,
                      &param->u4HeLTF, &param->u4HeErDCM, &param->u4HeEr106t);
}

void PrintRate(uint32_t u4WCID, const FixedRateParam& param) {
  ConsolePrintf("u4WCID=%d\nu4Mode=%d\nu4Bw=%d\n", u4WCID, param.u4Mode, param.u4Bw);
  ConsolePrintf("u4Mcs=%d\nu4VhtNss=%d\nu4GI=%d\n", param.u4Mcs, param.u4VhtNss, param.u4GI);
  ConsolePrintf("u4Preamble=%d\nu4STBC=%d\n", param.u4Preamble, param.u4STBC);
  ConsolePrintf("u4LDPC=%d\nu4SpeEn=%d\nu4HeLTF=%d\n", param.u4LDPC, param.u4SpeEn, param.u4HeLTF);
  ConsolePrintf("u4HeErDCM=%d\nu4HeEr106t=%d\n", param.u4HeErDCM, param.u4HeEr106t);
  ConsolePrintf("fgIsUseWCID=%d\n", fgIsUseWCID);
}

// Checks and sends a rate of ten or thirteen numbers. With ten the tool chooses the HE options.
int ApplyRate(int count, uint32_t u4WCID, FixedRateParam param) {
  uint32_t command = AllStationsCommand;
  if (fgIsUseWCID != 0) {
    command = OneStationCommand | u4WCID;
    ConsolePrintf("Apply WCID %d\n", u4WCID);
  } else {
    ConsolePrintf("Apply All\n");
  }
  if (param.u4Mode >= TxModeHeSu) {
    if (count == 10) {
      param.u4HeLTF = 1;
      param.u4HeErDCM = 0;
      param.u4HeEr106t = 0;
    }
    if (nicRateHeLtfCheckGi(param) == 0) {
      ConsolePrintf("Error: nicRateHeLtfCheckGi check failed\n");
      return 0;
    }
  }
  uint32_t rate = 0;
  if (nicSetFixedRateData(param, &rate) != 1) {
    ConsolePrintf("Error: nicSetFixedRateData check failed\n");
    return 0;
  }
  return SendRate(command, rate);
}

}  // namespace

int HandleFixedRateCommand(int argc, char** argv) {
  if (argc != 3) return PrintIncorrectParameters();
  if (EqualsIgnoreCase(argv[2], "auto")) {
    ConsolePrintf("nicctl fixedrate auto\n");
    return SendRate(AutoRateCommand, 0);
  }
  if (EqualsIgnoreCase(argv[2], "UseWCID")) {
    fgIsUseWCID = 1;
    ConsolePrintf("nicctl fixedrate UseWCID (not support now!)\n");
    return PrintUseWcid();
  }
  if (EqualsIgnoreCase(argv[2], "ApplyAll")) {
    fgIsUseWCID = 0;
    ConsolePrintf("nicctl fixedrate ApplyAll\n");
    return PrintUseWcid();
  }

  uint32_t u4WCID = 0;
  FixedRateParam param = {};
  const int count = ScanRate(argv[2], &u4WCID, &param);
  PrintRate(u4WCID, param);
  switch (count) {
    case 1:  // a single number also asks for automatic rates
      return SendRate(AutoRateCommand, 0);
    case 2:
    case 3:
      return PrintUseWcid();
    case 10:
    case 13:
      return ApplyRate(count, u4WCID, param);
    default:
      return PrintOptionHelp();
  }
}
