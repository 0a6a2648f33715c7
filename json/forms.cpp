#include "json/forms.h"

#include <string>
#include <utility>

namespace {

using enum Meaning;

constexpr CommandRule Rules[] = {
    {"help get_umac country rf trx sar txhang_counter sniffer get_lp ics get_mac_add nonms setreg "
     "getreg set_pcie_driving export_rssi_report pcie",
     false, Status0, Status1},
    {"stat get_wfd get_fw_ver fixedrate", false, Status1, Status1},
    {"bypass_cac radar_detect rdd_dbdc dynamic_dtim get_coex_tp hw_read hw_write get_dbg_level "
     "get_sr_cap get_sr_ind set_sr 6g_listen set_ax_cfg ax_basize set_bcc pwrsave_mode pwrsave "
     "set_ser get_cac_time get_dfs_state tp_test_mode efuse txbf sta_stat set_bssid set_bssid2 "
     "set_cmd_str get_cmd_str chan_pref_cfg twt_setup set_apsd coex_info uwtbl",
     true, Status1, Status0},
    {"deep_sleep_cnt set_id_value set_dbg_level get_cs set_cs set_usb_speed get_usb_speed "
     "oid_len_test get_n9_ver wtbl",
     true, Status1, Status1},
    {"set_coex_tp fw_log", true, Status1, Status0Or1},
};

constexpr Form AllForms[] = {
    // Opening the device, and what many commands say.
    {"", "CreateFile I/O failed : {code:d}\nDriver is not ready.{:t}\nOpenDevice Failed\n", "",
     NoDevice},
    {"", "OpenDevice Failed\n", "", NoDevice},
    {"", "Invalid parameters\n", "", Wrong},
    {"", "Error: Parameters are not correct!!\n", "", Wrong},
    {"", "Allocated memory failed\n", "", Failed},
    {"sar trx", "Error {:t}in DeviceIoControl\t: {code:d}\n", "", Refused},
    {"sar trx", "{:T}MSFT website: {:t}\n", "", Refused},
    {"", "Error in DeviceIoControl\t: {code:d}", "", Refused},

    // help, and wlanx without a word
    {"help", "{program_name:t} [parameters...]\n\nAvailable parameters\n", ""},
    {"help", "                    {usage[]:t}\n", "commands[]."},
    {"help", "{name:w} \t{description:t} \n", "commands[]", Last},

    // status
    {"get_umac txhang_counter get_lp efuse get_sr_cap get_sr_ind set_pcie_driving set_cmd_str "
     "get_cmd_str",
     "argv[{:d}] = {:e}\t\n", ""},
    {"get_lp", "The infomation will dump with kernel logs in Debugview.\n", "", Last},
    {"get_mac_add", "MAC Address: {mac_address:w}\n", "", Last},
    {"get_fw_ver", "Wifi/BT FW Version\nFW Version (WIFI) = {wifi:t} \n", "fw_version"},
    {"get_fw_ver", "FW Version (BT) = {bt:t} \n", "fw_version", Last},

    // radio tests
    {.commands = "fixedrate",
     .pattern = "nicctl fixedrate <Option>\n{:T}",
     .meaning = Wrong,
     .status = Status0},
    {.commands = "fixedrate", .pattern = "Error: {:t}\n", .meaning = Wrong, .status = Status0},
    {"fixedrate", "nicctl fixedrate {option:t}\n", "", Last},
    {"fixedrate", "{%}={%:d}\n", "", Last},
    {"fixedrate", "Apply WCID {apply:d}\n", "", Last},
    {"fixedrate", "Apply {apply=All}All\n", "", Last},
    {"fixedrate", "Update fgIsUseWCID {update_fg_is_use_wcid:d}\n", "", Last},
    {"ics", "Not an ICS cmd\n", "", Wrong},
    {"ics", "PHY ICS partition must less than 0xff\n", "", Wrong},
    {"ics", "SNIFFER CMD: Number of PARAMETERS is WRONG\n", "", Wrong},
    {"ics", "ucCondition[5]={uc_condition[]:v}\n", "", Last},
    {"trx", "Apply successfully.\n", "", Last},
    {"sniffer", "Unavailable Channel {channel:d}\n", "", Wrong},
    {"sniffer", "Network is activated\nPlease disconnect network{:t}\n", "", Refused},
    {"sniffer", "Sniffer mode {sniffer_mode=OFF}OFF\n", "", Last},
    {"sniffer", "Sniffer mode {sniffer_mode:w}\n", ""},
    {"sniffer", "Bandwidth : {bandwidth_mhz:d} MHz\n", "", Last},
    {"sniffer", "TOTAL: {total:d}\n", "", Last},
    {"sniffer", "{%} : {%:v}\n", ""},

    // signal and country
    {"rf", "RSSI threshold range: 0 ~ 127\n", "", Wrong},
    {"rf", "Channel Scanning, {scanned_ssid:e}......\n", ""},
    {"rf", "Cannot find SSID, {ssid:e}", "", Refused},
    {"rf", "SSID: {ssid:T}\nBSSID: {bssid:w}\nChannel: {channel:d}\n\n", ""},
    {"rf", "== {antenna:t} ==\nThreshold: {threshold:d}\nAverage: {average:d}\n", "antennas[]"},
    {"rf", "{pass=true}PASS\n", "antennas[].", Last},
    {.commands = "rf",
     .pattern = "{pass=false}FAIL\n",
     .place = "antennas[].",
     .meaning = Last,
     .status = Status1},
    {"country", "SmartCountryDecisionEn is disabled", "", Refused},
    {"country", "Set {country:2} (0x{country_code:x}) {set:t} DONE\n", "", Last},
    {"country", "POWER_TEST_MODE {power_test_mode:f}\n", "", Last},
    {"country", "6G_TEST_MODE {6g_test_mode:f}\n", "", Last},
    {"country", "{country:2} (0x{country_code:x})\n", "", Last},
    {"country",
     "{country:2} (0x{country_code:x}) power table\nThe unit of each TxPower value is "
     "{tx_power_unit_dbm:n}dBm\n{*}\n",
     "", Last},

    // the reports of export_rssi_report
    {"export_rssi_report", "<?xml version=\"1.0\"?>\n<Results>\n", ""},
    {.commands = "export_rssi_report",
     .pattern =
         "  <Result name=\"{name:w}\" status=\"{status=false}0\" timestamp=\"{timestamp:t}\">\n",
     .place = "results[]",
     .status = Status1},
    {"export_rssi_report",
     "  <Result name=\"{name:w}\" status=\"{status=true}1\" timestamp=\"{timestamp:t}\">\n",
     "results[]"},
    {"export_rssi_report",
     "    <Data name=\"ErrorDescription\" value=\"{line:t}\"/>\n"
     "    <Data name=\"ErrorCode\" value=\"{error_code=1}1\"/>\n",
     "", Wrong},
    {"export_rssi_report",
     "    <Data name=\"ErrorDescription\" value=\"{line:t}\"/>\n"
     "    <Data name=\"ErrorCode\" value=\"{error_code:d}\"/>\n",
     "", Refused},
    {"export_rssi_report", "    <Data name=\"SSID\" value=\"{ssid:e}\"/>\n", "results[]."},
    {"export_rssi_report", "    <Data name=\"xmlout\" value=\"{xmlout:e}\"/>\n", "results[]."},
    {"export_rssi_report", "    <Data name=\"{%}\" value=\"{%:v}\"/>\n", "results[]."},
    {"export_rssi_report", "  </Result>\n", ""},
    {"export_rssi_report", "</Results>\n", "", Last},

    // tables of the platform firmware
    {"sar", "Current SAR Table Index {index:d} is out of range, {:t}\n", "", Failed},
    {"sar", "Invalid table index {index:d}\n", "", Failed},
    {"sar", "Return table size error {expected:d} {received:d}", "", Failed},
    {"sar", "This means your WLANX or Driver is not match.\n{:t}Thanks!!", "", Failed},
    {"sar", "{table:t} TX power table:\n", ""},
    {"sar", "{in_force:f}Index{index:d}:{bytes:L}\n", "rows[]"},
    {"sar", "{in_force:f}Index{index:d} {%}:{%:L}\n", "rows[]"},
    {"sar", "Index{:d} {%}:{%:L}\n", "rows[]."},
    {"sar", "Power Limit\n\nANT1/ANT2\n", ""},
    {"sar", "       {band:t}:\tMain: {main:p}, Aux: {aux:p}\n", "power_limits[]", Last},
    {"sar", "{band:w}\n       Max Power:\t{max_power:p}\n       ANT1/2(Delta):\t{ant1_2_delta:p}\n",
     "bands[]", Last},
    {"sar", "       {band:t}:\t{limit:p}\n", "power_limits[]", Last},
    {"sar", "Max TX power Limit table:\n", "", Last},
    {"sar", "Index{index:d}: Band: {band:w}, ChannelIndex: {channel_index:d}, ", "rows[]"},
    {"sar", "Rate: {rate:w}, ", "rows[]."},
    {"sar", "MaxTxPower: {max_tx_power:p}\n", "rows[].", Last},
    {"sar", "The version of table is [0x{version_of_table:x}]\n", ""},
    {"sar", "Support 6G Country Setting:\n", ""},
    {"sar", "[{allowed:f}]  {country:t}\t\n", "countries[]", Last},
    {"sar", "Last Sensor update time is {last_sensor_update_time:t}\n", ""},
    {"sar", "Sensor CB Status {sensor_cb_successful=true}Successful.", "", Last},
    {"sar",
     "Sensor CB Status {sensor_cb_successful=false}Failed.\t[0x{sensor_cb_status:x}]\n"
     "Sensor Callback function is failure. {sensor_cb_advice:t}\n",
     "", Last},
    {"sar", "Country Code is [0x{country_code:x}]\nForce value\t[0x{force_value:x}]\n", "", Last},
    {"sar", "[Flag\t{flag:d}][{on:f}]: {description:t}\n", "flags[]", Last},
    {"sar", "{%}\t[0x{%:x}]\n", ""},
    {"sar", "{%}: {%:d}\n", ""},

    // driver settings, PCIe, low power
    {"nonms", "Error: argc:{argc:d}!!\n", "", Wrong},
    {"nonms", "Error: argv[2] should be 1 or 0 ! Now Value: {value:d}\n", "", Wrong},
    {"nonms", "LP Support NonMS Fail : {code:d}", "", Refused},
    {"nonms", "LP Support NonMS Success", "", Last},
    {"setreg", "Set Reg name: {name:e} and value :0x{value:x}\n", ""},
    {"setreg", "Set Registry[{name:T}], Value=0x{value:x}\n", "confirmed", Last},
    {"getreg", "Get Reg name: {name:e}\n", ""},
    {"getreg", "Get Driver Registry :0x{value:x}\n", "", Last},
    {"set_pcie_driving", "PCIE gen = {pcie_gen[]:w}\n", ""},
    {"set_pcie_driving", "(Step{step:d}:{action:t}) [0x{address:x}] {:w} 0x{value:x}\n", "steps[]"},
    {"set_pcie_driving", "Error: PCIE gen not Gen2!!\n", "", Failed},
    {"set_pcie_driving", "Error: Setting Fail! \n", "", Failed},
    {"pcie", "Error: Invalid parameters\n", "", Wrong},
    {"pcie", "Error in DeviceIoControl \n", "", Refused},
    {"pcie", "Port is not Idle.{:t}\nPlease disconnect all ethernet. \n", "", Refused},
    {"pcie", "PCIe gen switch support (device) : {device:f} \n", "pcie_gen_switch_support"},
    {"pcie", "PCie gen switch support (host)   : {host=null}NA \n", "pcie_gen_switch_support",
     Last},
    {"pcie", "PCie gen switch support (host)   : {host:f} \n", "pcie_gen_switch_support", Last},

    // wlanx-eng: echoes, and what many of its commands print
    {"bypass_cac radar_detect rdd_dbdc set_sr uwtbl",
     "argv[0] = {:t} argv[1] = {:e} argv[2] = {:e}\n", ""},
    {"get_cac_time get_dfs_state", "argv[0] = {:t} argv[1] = {:e}", ""},
    {"get_cs set_cs wtbl", "nicctl {:w} <{:t}\n", "", Wrong},
    {"get_sr_cap get_sr_ind set_pcie_driving", "={:t} {:t}\n", ""},
    {"get_sr_cap get_sr_ind set_pcie_driving", "={:t}\n", "", Last},
    {"get_sr_cap", "{%} = {%:F} {%} = {%:F}\n", ""},
    {"get_sr_ind", "{%} = {%:x} {%} = {%:x}\n", ""},

    // registers, firmware, driver and link
    {"hw_read", "[0x{address:x}] = 0x{value:x}\n", "", Last},
    {"get_cs", "PCIe Configuration Space Read Offset 0x{offset:x} = 0x{value:x}\n", "", Last},
    {"set_cs", "PCIe Configuration Space Write Offset 0x{offset:x} = 0x{value:x}\n", "write"},
    {"set_cs", "PCIe Configuration Space Read Offset 0x{offset:x} = 0x{value:x}\n", "read", Last},
    {"get_dbg_level set_dbg_level",
     "{:w} Category=0x{category:x}[{category_name:w}], Level=0x{level:x}[{level_name:w}]\n", "",
     Last},
    {"get_n9_ver",
     "N9 FW Version\n"
     "Tailer Ver[{major:d}:{minor:d}] {platform:t} ({version:t}) info {info:d}:E{eco:d}\n",
     "tailer"},
    {"get_n9_ver", "Release manifest:\nPatch platform {platform:t}. Date {date:t}\n",
     "release_manifest"},
    {"get_n9_ver", "Tundra BT patch info:\nPatch platform {platform:t}. Date {date:t}\n",
     "tundra_bt_patch_info", Last},
    {"fw_log", "Configure FW log output\nFW log output to {fw_log_output:w}\n", "", Last},
    {"sta_stat", "{connected=false}STA is not yet connected\n", "", Last},
    {"sta_stat", "{connected=true}Tx PER\t= {tx_per:d}\n", ""},
    {"sta_stat", "Link Speed\t= {link_speed_mbps:d} Mbps\n", ""},
    {"sta_stat", "Tx Rate\t= {tx_rate:d} {tx_rate_unit:t}\n", ""},
    {"sta_stat", "Rx Rate\t= {rx_rate:d} {rx_rate_unit:t}\n", ""},
    {"sta_stat", "Phy mode\t= {phy_mode:t}({phy_mode_number:d})\n", ""},
    {"sta_stat", "Rts retry count\t= {rts_retry_count:d}\n", "", Last},
    {"sta_stat ics", "{%}\t=\t{%:v}\n", ""},
    {"oid_len_test", "bytesReturned = {bytes_returned:d}, Input size={input_size:d}\n", ""},
    {"set_cmd_str get_cmd_str", "argc = {:d} \n", ""},
    {"set_cmd_str get_cmd_str", "aucCmd[{:d}] = {auc_cmd[]:1} \n", ""},
    {"set_cmd_str get_cmd_str", "{length:d} \n", "", Last},
    {"get_cmd_str", "{*}", "", Last},
    {"set_id_value", "Id = 0x{id:x} [{id_typed:e}], value = {value:d}\n", "", Last},
    {"deep_sleep_cnt", "FuncDeepSleepCnt: Id = 0x{id:x} [{id_typed:e}], value = {value:d}\n", ""},
    {"deep_sleep_cnt", "WakeFromDeepSlpTimes : {wake_from_deep_slp_times:d}\n", "", Last},
    {"set_usb_speed", "Configure USB Speed {usb_speed:d}\n", "", Last},

    // radio settings and peers
    {"get_cac_time", "\nRemaining time of CAC: {remaining_time_of_cac:d}sec", "", Last},
    {"get_dfs_state", "\nDFS State: \"{dfs_state:w}\n\"", "", Last},
    {"get_dfs_state", "\nDFS State: \"{dfs_state=}\"", "", Last},
    {"bypass_cac", "Bypass CAC Time is: {bypass_cac_time:d}sec\n", "", Last},
    {"radar_detect rdd_dbdc uwtbl", "{%} is: {%:d}\n", "", Last},
    {"6g_listen", "Invalid parameter : Enable {enable:d}", "", Wrong},
    {"set_ax_cfg", "reset to ddefaul Ax_cfg = 0x{ax_cfg:x}\n", "", Last},
    {.commands = "ax_basize",
     .pattern = "ERROR size > 256 u2TxHeBaSize = {u2_tx_he_ba_size:d}, u2RxHeBaSize = "
                "{u2_rx_he_ba_size:d}\n",
     .meaning = Wrong,
     .status = Status1},
    {"txhang_counter ax_basize", "{%} = {%:d}, {%} = {%:d}\n", "", Last},
    {"chan_pref_cfg twt_setup set_apsd", "{%} : {%:d}\t\n", "", Last},
    {"set_coex_tp", "!!! NICCTL set COEX TP wifi {coex_tp_wifi:t} !!!\n", "", Last},
    {"dynamic_dtim get_coex_tp set_sr 6g_listen set_bcc pwrsave_mode pwrsave set_ser "
     "get_usb_speed tp_test_mode oid_len_test set_bssid set_bssid2 chan_pref_cfg",
     "{%}\t=\t{%:v}\n", "", Last},

    // coexistence, beamforming, e-fuse
    {"coex_info", "\n", "", Last},
    {"coex_info", "\t: {values[]:t}\n", "items[].", Last},
    {"coex_info", "{item:t}\t: {values[]:v}\n", "items[]", Last},
    {"coex_info", "{values[]:t}\n", "items[].", Last},
    {"txbf",
     "Set_{request:w}, profileIdx = {profile_idx:d}, fgBFer = {fg_b_fer:d}, subcarrierIdxMsb: "
     "0x{subcarrier_idx_msb:x}, subcarrierIdxLsb: 0x{subcarrier_idx_lsb:x}\n",
     ""},
    {"txbf", "Set_{request:w}, profileIdx = {profile_idx:d}, fgBFer = {fg_b_fer:d}\n", ""},
    {"stat get_wfd get_umac txbf", "{*}\n", "", Last},
    {"efuse", "\nHelp menu\n\tRead:{:t}\n\tWrite:{:t}\n\tFree Blocks:{:t}\n", "", Wrong},
    {"efuse",
     "ucOpMode = {uc_op_mode:d}, Efuse_addr = 0x{efuse_addr:x}, Efuse_value = 0x{efuse_value:x}, "
     "aucData[{auc_data_index:d}] = 0x{auc_data:x}\n",
     ""},
    {"efuse", "Read success 0x{address:x} = 0x{value:x}\n", "read", Last},
    {"efuse", "Write success 0x{address:x} = 0x{value:x}\n", "write", Last},
    {"efuse", "Free block size {free_block_size:d}, Total block {total_block:d}\n", "", Last},

    // the wireless table
    {"wtbl", "{table:w} WTBL {entry:d} EntryDW[{word:d}] 0x{address:x} = 0x{value:x}\n", "words[]"},
    {"wtbl", "===================== Parsing {table:w} WTBL ======================\n", "tables[]"},
    {"wtbl", "============= DW {words=[05][06]}[05][06] parsing =============\n",
     "tables[].groups[]", Last},
    {"wtbl", "============= DW {words:w} parsing =============\n", "tables[].groups[]"},
    {"wtbl", "\t{name:t}\t[{width:d}]{bits:B} = {value:v}\t>> {meaning:t}    -- {explanation:t}\n",
     "tables[].groups[].fields[]"},
    {"wtbl", "\t{name:t}\t[{width:d}]{bits:B} = {value:v}    -- {explanation:t}\n",
     "tables[].groups[].fields[]"},
    {"wtbl", "\t{name:t}\t[{width:d}]{bits:B} = {value:v}\n", "tables[].groups[].fields[]"},
    {"uwtbl", "UMAC WTBL Addr: group: 0x{group:x}=0x0 addr: 0x{addr:x}\n", ""},
    {"uwtbl", "UWTBL DW {words:t}\n", "groups[]"},
    {"uwtbl", "keyloc0:{keyloc0:d}\n", ""},
    {"uwtbl", "keyloc1:{keyloc1:d}\n", "", Last},
    {"uwtbl", "\t{%}:{%:d}\n", "groups[]."},

    // An empty line of a command that prints no text of the driver.
    {"", "\n", ""},
};

constexpr std::pair<int64_t, std::string_view> ErrorNames[] = {
    {1, "ERROR_INVALID_FUNCTION"},
    {2, "ERROR_FILE_NOT_FOUND"},
    {5, "ERROR_ACCESS_DENIED"},
    {6, "ERROR_INVALID_HANDLE"},
    {8, "ERROR_NOT_ENOUGH_MEMORY"},
    {13, "ERROR_INVALID_DATA"},
    {21, "ERROR_NOT_READY"},
    {22, "ERROR_BAD_COMMAND"},
    {24, "ERROR_BAD_LENGTH"},
    {31, "ERROR_GEN_FAILURE"},
    {32, "ERROR_SHARING_VIOLATION"},
    {50, "ERROR_NOT_SUPPORTED"},
    {87, "ERROR_INVALID_PARAMETER"},
    {121, "ERROR_SEM_TIMEOUT"},
    {122, "ERROR_INSUFFICIENT_BUFFER"},
    {170, "ERROR_BUSY"},
    {234, "ERROR_MORE_DATA"},
    {487, "ERROR_INVALID_ADDRESS"},
    {637, "ERROR_SYSTEM_IMAGE_BAD_SIGNATURE"},
    {995, "ERROR_OPERATION_ABORTED"},
    {1117, "ERROR_IO_DEVICE"},
    {1167, "ERROR_DEVICE_NOT_CONNECTED"},
    {1450, "ERROR_NO_SYSTEM_RESOURCES"},
    {4200, "ERROR_WMI_GUID_NOT_FOUND"},
};

}  // namespace

std::span<const CommandRule> CommandRules() {
  return Rules;
}

std::span<const Form> Forms() {
  return AllForms;
}

bool Lists(std::string_view names, std::string_view name) {
  const auto divided = [](std::string_view text) { return " " + std::string(text) + " "; };
  return name.find(' ') == std::string_view::npos &&
         divided(names).find(divided(name)) != std::string::npos;
}

std::string_view ErrorName(int64_t code) {
  for (const auto& [known, name] : ErrorNames) {
    if (known == code) return name;
  }
  return {};
}
