# Completion of wlanx in PowerShell. Made by generate.py.
Register-ArgumentCompleter -Native -CommandName 'wlanx', 'wlanx.exe' -ScriptBlock {
  param($word, $line, $cursor)
  $before = @($line.CommandElements | Where-Object { $_.Extent.EndOffset -lt $cursor })
  $typed = ($before | Select-Object -Skip 1 | ForEach-Object { $_.Extent.Text }) -join ' '
  $words = switch -Wildcard ("$($before.Count) $typed") {
    '1 ' { -split 'help stat fixedrate get_wfd get_umac country rf TRx sar txhang_counter sniffer get_lp ics get_mac_Add NonMS setreg getreg set_pcie_driving get_fw_ver export_rssi_report pcie' }
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
  }
  $words | Where-Object { $_.StartsWith($word, 'OrdinalIgnoreCase') } |
    ForEach-Object { [System.Management.Automation.CompletionResult]::new($_) }
}
