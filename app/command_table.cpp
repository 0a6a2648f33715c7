#include "app/command_table.h"

#include "app/listing.h"
#include "channel/oid.h"
#include "commands/maintenance/maintenance_commands.h"
#include "commands/radio/radio_commands.h"
#include "commands/rssi_country/rssi_country_commands.h"
#include "commands/sar/sar_command.h"
#include "commands/status/status_commands.h"

#ifdef WLANX_ENGINEERING
#include "commands/internal/internal_commands.h"
#include "commands/internal/internal_oid.h"
#endif

const CommandEntry CommandTable[] = {
    {0, "help", HandleHelpCommand, "Print Help"},
    {OidResetStatistics, "stat", HandleStatCommand, "Dump statistic information."},
    {OidFixedRate, "fixedrate", HandleFixedRateCommand, "Set Fix Rate"},
    {OidWfdText, "get_wfd", HandleGetWfdCommand, "Getting WFD/Projection Related information"},
    {OidUmacDump, "get_umac", HandleGetUmacCommand, "Get Ple Pse Wfdma Info"},
    {OidCountryPower, "country", HandleCountryCommand, "Get country, power table. Set power table"},
    {OidRssiCheck, "rf", HandleRfCommand, "Get RF info"},
    {OidTRxMode, "TRx", HandleTRxCommand, "Set TRx"},
    {OidAcpiTable, "sar", HandleSarCommand, "Get SAR table"},
    {OidTxHangCounters, "txhang_counter", HandleTxHangCounterCommand, "Get Tx Hang Counter"},
    {OidSniffer, "sniffer", HandleSnifferCommand, "Sniffer mode"},
    {OidLowPowerInfo, "get_lp", HandleGetLpCommand, "Get Low Power Info"},
    {OidIcs, "ics", HandleIcsCommand, "Set ICS Mode"},
    {OidMacAddress, "get_mac_Add", HandleGetMacAddCommand, "Get MAC Address"},
    {OidNonMsLowPower, "NonMS", HandleNonMsCommand, "Open LowPower Feature on NonMS"},
    {OidSetRegistry, "setreg", HandleSetRegCommand, "Setting Registry Value"},
    {OidGetRegistry, "getreg", HandleGetRegCommand, "Getting Registry value"},
    {KeyOfSetPcieDriving, "set_pcie_driving", HandleSetPcieDrivingCommand,
     "Get and Set PCIE driving"},
    {OidBluetoothVersion, "get_fw_ver", HandleGetFwVerCommand, "Get FW Version"},
    {KeyOfExportRssiReport, "export_rssi_report", HandleExportRssiReportCommand,
     "Export RSSI report"},
    {OidGenSwitch, "pcie", HandlePcieCommand, "Check PCIE gen switch"},
#ifdef WLANX_ENGINEERING
#include "app/internal_rows.inc"
#endif
};

const int CommandCount = sizeof(CommandTable) / sizeof(CommandTable[0]);
