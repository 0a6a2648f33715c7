#include "app/command_table.h"

#include "app/listing.h"
#include "commands/maintenance/maintenance_commands.h"
#include "commands/radio/radio_commands.h"
#include "commands/rssi_country/rssi_country_commands.h"
#include "commands/sar/sar_command.h"
#include "commands/status/status_commands.h"

#ifdef WLANX_ENGINEERING
#include "commands/internal/internal_commands.h"
#endif

const CommandEntry CommandTable[] = {
    {0x00000000, "help", HandleHelpCommand, "Print Help"},
    {0xFFFCF005, "stat", HandleStatCommand, "Dump statistic information."},
    {0xFFFCF101, "fixedrate", HandleFixedRateCommand, "Set Fix Rate"},
    {0xFFFCF102, "get_wfd", HandleGetWfdCommand, "Getting WFD/Projection Related information"},
    {0x0FFFC203, "get_umac", HandleGetUmacCommand, "Get Ple Pse Wfdma Info"},
    {0xFFFCF014, "country", HandleCountryCommand, "Get country, power table. Set power table"},
    {0xFFFCF016, "rf", HandleRfCommand, "Get RF info"},
    {0xFFFCF01F, "TRx", HandleTRxCommand, "Set TRx"},
    {0xFFFCF017, "sar", HandleSarCommand, "Get SAR table"},
    {0xFFFCF018, "txhang_counter", HandleTxHangCounterCommand, "Get Tx Hang Counter"},
    {0xFFFCF01C, "sniffer", HandleSnifferCommand, "Sniffer mode"},
    {0xFFFCF01D, "get_lp", HandleGetLpCommand, "Get Low Power Info"},
    {0xFFFCF104, "ics", HandleIcsCommand, "Set ICS Mode"},
    {0xFFFCF105, "get_mac_Add", HandleGetMacAddCommand, "Get MAC Address"},
    {0xFFFCF107, "NonMS", HandleNonMsCommand, "Open LowPower Feature on NonMS"},
    {0xFFFCF108, "setreg", HandleSetRegCommand, "Setting Registry Value"},
    {0xFFFCF109, "getreg", HandleGetRegCommand, "Getting Registry value"},
    {0xFFFCF115, "set_pcie_driving", HandleSetPcieDrivingCommand, "Get and Set PCIE driving"},
    {0x0FFFC20D, "get_fw_ver", HandleGetFwVerCommand, "Get FW Version"},
    {0x0FFFC20E, "export_rssi_report", HandleExportRssiReportCommand, "Export RSSI report"},
    {0xFFFCF116, "pcie", HandlePcieCommand, "Check PCIE gen switch"},
#ifdef WLANX_ENGINEERING
#include "app/internal_rows.inc"
#endif
};

const int CommandCount = sizeof(CommandTable) / sizeof(CommandTable[0]);
