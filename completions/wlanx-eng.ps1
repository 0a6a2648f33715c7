# Completion of wlanx-eng in PowerShell. Made by generate.py.
Register-ArgumentCompleter -Native -CommandName 'wlanx-eng', 'wlanx-eng.exe' -ScriptBlock {
  param($word, $line, $cursor)
  $before = @($line.CommandElements | Where-Object { $_.Extent.EndOffset -lt $cursor })
  $typed = ($before | Select-Object -Skip 1 | ForEach-Object { $_.Extent.Text }) -join ' '
  $words = switch -Wildcard ("$($before.Count) $typed") {
    '1 ' { -split 'help stat fixedrate get_wfd get_umac country rf TRx sar txhang_counter sniffer get_lp ics get_mac_Add NonMS setreg getreg set_pcie_driving get_fw_ver export_rssi_report pcie bypass_cac radar_detect rdd_dbdc deep_sleep_cnt set_id_value dynamic_dtim get_coex_tp set_coex_tp hw_read hw_write get_dbg_level set_dbg_level get_cs set_cs get_sr_cap get_sr_ind set_sr 6g_listen set_ax_cfg ax_basize set_bcc fw_log pwrsave_mode pwrsave set_ser set_usb_speed get_usb_speed get_cac_time get_dfs_state oid_len_test tp_test_mode efuse txbf get_n9_ver sta_stat set_bssid set_bssid2 set_cmd_str get_cmd_str chan_pref_cfg twt_setup set_apsd coex_info wtbl uwtbl' }
    '2 stat' { -split 'resetcounter' }
    '2 fixedrate' { -split 'UseWCID ApplyAll auto' }
    '2 country' { -split 'set_st_pwr_tbl now set_pwr_tbl get_pwr_tbl set_pwr_test_mode set_6g_test_mode' }
    '3 country get_pwr_tbl' { -split 'cck ofdm ht20 ht40 vht20 vht40 vht80 vht160' }
    '3 country set_pwr_test_mode' { -split '1 0' }
    '3 country set_6g_test_mode' { -split '1 0' }
    '2 rf' { -split 'rssi' }
    '3 rf rssi' { -split 'all_freq 2.4g 5g 6g' }
    '2 TRx' { -split '1T1R Auto' }
    '3 TRx 1T1R' { -split 'WF0 WF1' }
    '2 sar' { -split 'get_country_code get_sar_table get_siso_sar_table get_geo_table get_country_list get_TxMaxPower_table get_sensor_info get_FlagTable' }
    '2 sniffer' { -split 'on off stast' }
    '3 sniffer on' { -split '2.4g 5g 6g' }
    '5 sniffer on * *' { -split 'bw20 bw40 bw80 bw160' }
    '2 NonMS' { -split '1 0' }
    '2 export_rssi_report' { -split 'rssi' }
    '3 export_rssi_report rssi' { -split 'all_freq 2.4g 5g' }
    '2 pcie' { -split 'gen_switch_chk' }
    '2 radar_detect' { -split '1 0' }
    '2 rdd_dbdc' { -split '0 1' }
    '2 dynamic_dtim' { -split '1 0' }
    '2 set_coex_tp' { -split '0 1 2' }
    '2 set_sr' { -split '1 0' }
    '2 6g_listen' { -split '1 0' }
    '2 fw_log' { -split '0' }
    '3 fw_log 0' { -split '1 2' }
    '2 pwrsave' { -split '1 0' }
    '2 efuse' { -split 'read write free' }
    '2 txbf' { -split 'TxBfProfileTagRead TxBfProfileDataRead' }
    '2 set_bssid' { -split 'bssid' }
    '2 set_bssid2' { -split 'bssid' }
    '2 chan_pref_cfg' { -split '1 2 3 4' }
    '2 coex_info' { -split '0x81' }
  }
  $words | Where-Object { $_.StartsWith($word, 'OrdinalIgnoreCase') } |
    ForEach-Object { [System.Management.Automation.CompletionResult]::new($_) }
}
