# Completion of wlanx in bash. Made by generate.py.
_wlanx() {
  local IFS=$' \t\n' words= word
  local typed="$COMP_CWORD ${COMP_WORDS[*]:1:COMP_CWORD-1}"
  case "${typed,,}" in
    "1 ") words="help stat fixedrate get_wfd get_umac country rf TRx sar txhang_counter sniffer get_lp ics get_mac_Add NonMS setreg getreg set_pcie_driving get_fw_ver export_rssi_report pcie" ;;
    "2 stat") words="resetcounter" ;;
    "2 fixedrate") words="UseWCID ApplyAll auto" ;;
    "2 country") words="set_st_pwr_tbl now set_pwr_tbl get_pwr_tbl set_pwr_test_mode set_6g_test_mode" ;;
    "3 country get_pwr_tbl") words="cck ofdm ht20 ht40 vht20 vht40 vht80 vht160" ;;
    "3 country set_pwr_test_mode") words="1 0" ;;
    "3 country set_6g_test_mode") words="1 0" ;;
    "2 rf") words="rssi" ;;
    "3 rf rssi") words="all_freq 2.4g 5g 6g" ;;
    "2 trx") words="1T1R Auto" ;;
    "3 trx 1t1r") words="WF0 WF1" ;;
    "2 sar") words="get_country_code get_sar_table get_siso_sar_table get_geo_table get_country_list get_TxMaxPower_table get_sensor_info get_FlagTable" ;;
    "2 sniffer") words="on off stast" ;;
    "3 sniffer on") words="2.4g 5g 6g" ;;
    "5 sniffer on "*" "*) words="bw20 bw40 bw80 bw160" ;;
    "2 nonms") words="1 0" ;;
    "2 export_rssi_report") words="rssi" ;;
    "3 export_rssi_report rssi") words="all_freq 2.4g 5g" ;;
    "5 export_rssi_report rssi "*" "*) compopt -o default ;;
    "6 export_rssi_report rssi "*" "*" "*) compopt -o default ;;
    "2 pcie") words="gen_switch_chk" ;;
  esac
  COMPREPLY=()
  typed=${COMP_WORDS[COMP_CWORD]}
  for word in $words; do
    if [[ ${word,,} == "${typed,,}"* ]]; then COMPREPLY+=("$word"); fi
  done
}
complete -F _wlanx wlanx wlanx.exe
