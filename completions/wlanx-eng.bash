# Completion of wlanx-eng in bash. Made by generate.py.
_wlanx_eng() {
  local IFS=$' \t\n' words= word
  local typed="$COMP_CWORD ${COMP_WORDS[*]:1:COMP_CWORD-1}"
  case "${typed,,}" in
    "1 ") words="help stat fixedrate get_wfd get_umac country rf TRx sar txhang_counter sniffer get_lp ics get_mac_Add NonMS setreg getreg set_pcie_driving get_fw_ver export_rssi_report pcie bypass_cac radar_detect rdd_dbdc deep_sleep_cnt set_id_value dynamic_dtim get_coex_tp set_coex_tp hw_read hw_write get_dbg_level set_dbg_level get_cs set_cs get_sr_cap get_sr_ind set_sr 6g_listen set_ax_cfg ax_basize set_bcc fw_log pwrsave_mode pwrsave set_ser set_usb_speed get_usb_speed get_cac_time get_dfs_state oid_len_test tp_test_mode efuse txbf get_n9_ver sta_stat set_bssid set_bssid2 set_cmd_str get_cmd_str chan_pref_cfg twt_setup set_apsd coex_info wtbl uwtbl" ;;
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
    "2 radar_detect") words="1 0" ;;
    "2 rdd_dbdc") words="0 1" ;;
    "2 dynamic_dtim") words="1 0" ;;
    "2 set_coex_tp") words="0 1 2" ;;
    "2 set_sr") words="1 0" ;;
    "2 6g_listen") words="1 0" ;;
    "2 fw_log") words="0" ;;
    "3 fw_log 0") words="1 2" ;;
    "2 pwrsave") words="1 0" ;;
    "2 efuse") words="read write free" ;;
    "2 txbf") words="TxBfProfileTagRead TxBfProfileDataRead" ;;
    "2 set_bssid") words="bssid" ;;
    "2 set_bssid2") words="bssid" ;;
    "2 chan_pref_cfg") words="1 2 3 4" ;;
    "2 coex_info") words="0x81" ;;
  esac
  COMPREPLY=()
  typed=${COMP_WORDS[COMP_CWORD]}
  for word in $words; do
    if [[ ${word,,} == "${typed,,}"* ]]; then COMPREPLY+=("$word"); fi
  done
}
complete -F _wlanx_eng wlanx-eng wlanx-eng.exe
