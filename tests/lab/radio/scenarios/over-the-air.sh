#!/bin/bash
# The wireless half over the air, on real radios (the radio stage's VM).
# Survey: get-wifi-list, in both modes, lists the access points of every kind with each field as
# the real iwlist gives it, leaves out the hidden one, and leaves a radio as it found it.
# Association: the supplicant file that set-wpa-config writes from stored secrets joins the
# intended access point: personal (frequency auto and 2.4 GHz), open, hidden, mixed WPA/WPA2, and
# enterprise PEAP, TTLS and TLS with a PKCS#12 file (over WPA with TKIP); a wrong stored secret
# must not join.
# Link control: connect-wifi joins through ifupdown's supplicant hook, by DHCP and with a static
# address; traffic crosses the air; the reports, is-wlan0-connected and check-wireless-point
# follow the link; disconnect-wifi and autoconnect move it.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start
start_all_aps

NL=$'\n'
PASSPHRASE=$(stored_password "$RADIO_PASSPHRASE")

# --- survey ------------------------------------------------------------------------------------
# What the survey must list, in channel order (the scan visits the channels in turn): name,
# signal, encryption, authentication, encryption version, pairwise, frequency, channel. Where WPA
# is offered beside WPA2, iwlist prints the WPA2 element first, and that one counts.
SURVEY=(
  "Lab open|100|off|NONE|||2.412|1"
  "Lab enterprise WPA|100|on|802.1x|WPA2|CCMP|2.427|4"
  "Lab's personal|100|on|PSK|WPA2|CCMP|2.437|6"
  "Lab enterprise|100|on|802.1x|WPA2|CCMP|2.452|9"
  "Lab mixed|100|on|PSK|WPA2|CCMP|2.462|11"
)

# The survey's reply in application (A) or console (M) mode.
survey() { # A|M
  local i ssid signal encryption authentication version pairwise frequency channel
  if [ "$1" = A ]; then echo "["; else printf '%s\n' "Get wifi list..." "Wifi list:"; fi
  for i in "${!SURVEY[@]}"; do
    IFS='|' read -r ssid signal encryption authentication version pairwise frequency channel <<<"${SURVEY[$i]}"
    if [ "$1" = M ]; then
      printf '%-6s%-32s %-15s%-5s %-15s%-7s %-7s%-4s %-7s%-9s %-10s%-10s %-10s%-6s%-10s%-6s\n' \
        "Ssid: " "$ssid" "Signal strength: " "$signal" "Authentication: " "$authentication" \
        "Encryption: " "$encryption" "Pairwise: " "$pairwise" "Encryption ver: " "$version" \
        "Frequency: " "$frequency" "Channel: " "$channel"
      continue
    fi
    printf '{ "ssid":"%s","signal strength":%s,"encryption":"%s","authentication":"%s","encryption ver":"%s","pairwise":"%s","frequency":"%s","channel":%s}' \
      "$ssid" "$signal" "$encryption" "$authentication" "$version" "$pairwise" "$frequency" "$channel"
    if [ "$i" = $((${#SURVEY[@]} - 1)) ]; then echo; else echo ,; fi
  done
  if [ "$1" = A ]; then echo "]"; else echo "Get wifi list done."; fi
}

radio_up() { on_device ip -o link show up dev wlan0; }

# A first scan, which also drops whatever earlier scans left (a hidden network's name among them),
# fixes the order of the list: the order of discovery, channel by channel.
on_device ip link set wlan0 up
on_device iw dev wlan0 scan flush >/dev/null
on_device ip link set wlan0 down
expect_reply "get-wifi-list: every entry, every field" "$(survey A)$NL" get-wifi-list A
expect_same "a radio found down is left down" "" "$(radio_up)"
on_device ip link set wlan0 up
expect_reply "get-wifi-list, console" "$CONSOLE_START$(survey M)$NL" get-wifi-list M
expect_match "a radio found up is left up" "wlan0:" "$(radio_up)"
# Up but not associated: the flags say UP, the state word says DOWN.
expect_reply "is-wlan0-connected: up, not associated" false is-wlan0-connected A
expect_reply "check-wireless-point: not associated" '{"values":{"status":"false"}}'"$NL" \
  check-wireless-point A

# --- association -------------------------------------------------------------------------------
CA='"ca certificate": "lab-ca.pem"'
ALICE="\"user name\": \"$LAB_EAP_USER\", \"user password\": \"$(stored_password "$LAB_EAP_PASSWORD")\""
EAP='"ssid": "Lab enterprise", "security": "enterprise", "frequency": "auto"'

# One case: config.json with these wireless members, set-wpa-config, then the supplicant's verdict.
association_case() { # description expected-verdict wlan-members
  write_config '"enabled": false' "\"enabled\": true, \"type\": \"dhcp\", $3" '"type": "dhcp"'
  qv set-wpa-config A "$LAB_CONFIG"
  if [ "$QV_STATUS" != 0 ]; then
    fail "$1" "set-wpa-config ended with $QV_STATUS: $QV_ERR"
    return
  fi
  local verdict
  verdict=$(associate)
  if [ "$verdict" = "$2" ]; then
    pass "$1"
    [[ $2 != COMPLETED* ]] || expect_checker_agrees "$1"
  else
    fail "$1" "expected: $2" "verdict:  $verdict" "$(on_device cat "$WPA_CONF")" \
      "$(tail -n 15 "$LAB_DIR/supplicant-wlan0.log")"
  fi
}

joined() { echo "COMPLETED $(bssid_of "$1")"; }

association_case "personal, frequency auto" "$(joined wlan2)" \
  "\"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$PASSPHRASE\""
association_case "personal, 2.4 GHz through qv-get-freq-list" "$(joined wlan2)" \
  "\"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"2.4\", \"passphrase\": \"$PASSPHRASE\""
association_case "open" "$(joined wlan1)" \
  '"ssid": "Lab open", "security": "open", "frequency": "auto"'
association_case "hidden" "$(joined wlan4)" \
  "\"ssid\": \"Lab hidden\", \"hidden ssid\": true, \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$PASSPHRASE\""
association_case "WPA and WPA2 offered together" "$(joined wlan3)" \
  "\"ssid\": \"Lab mixed\", \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$PASSPHRASE\""
association_case "enterprise PEAP, WPA2, CCMP" "$(joined wlan5)" \
  "$EAP, $CA, $ALICE, \"authentication method\": \"peap\", \"advanced security\": \"wpa2\", \"encryption\": \"ccmp\""
association_case "enterprise TTLS, WPA and WPA2, TKIP and CCMP" "$(joined wlan5)" \
  "$EAP, $CA, $ALICE, \"authentication method\": \"ttls\", \"advanced security\": \"auto\", \"encryption\": \"auto\""
association_case "enterprise TLS with a PKCS#12 file, WPA, TKIP" "$(joined wlan6)" \
  "\"ssid\": \"Lab enterprise WPA\", \"security\": \"enterprise\", \"frequency\": \"auto\", $CA, \"user name\": \"lab-client\", \"authentication method\": \"tls\", \"advanced security\": \"wpa\",
   \"encryption\": \"tkip\", \"pkcs12 certificate\": \"client.p12\", \"pkcs12 password\": \"$(stored_password "$P12_PASSWORD")\""
association_case "a wrong stored pass phrase does not join" refused \
  "\"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$(stored_password "not the pass phrase")\""
# wpa_passphrase refuses a pass phrase under 8 characters; the tool then writes an empty key, which
# the supplicant refuses at start, as on the board.
association_case "a pass phrase under 8 characters: the supplicant refuses the file" "" \
  "\"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$(stored_password short)\""
association_case "a wrong stored password does not join" refused \
  "$EAP, $CA, \"user name\": \"$LAB_EAP_USER\", \"user password\": \"$(stored_password "not alice's password")\",
   \"authentication method\": \"peap\", \"advanced security\": \"wpa2\", \"encryption\": \"ccmp\""

stop_supplicant wlan0

# --- link control through ifupdown -------------------------------------------------------------
start_dhcp_server wlan2 192.168.50.1
# dhclient's first request goes out before the supplicant has joined: retry soon, not after 5-15 s.
printf 'timeout 20;\ninitial-interval 1;\nbackoff-cutoff 2;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
PERSONAL="\"enabled\": true, \"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\",
  \"passphrase\": \"$PASSPHRASE\""
associated() { on_device wpa_cli -i wlan0 status | grep -qx wpa_state=COMPLETED; }

write_config '"enabled": false' "$PERSONAL, \"type\": \"dhcp\"" '"type": "dhcp"'
expect_reply "set-config, wlan0 by DHCP" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-wifi: ifupdown, the supplicant hook and dhclient" "" connect-wifi A
wait_until 3 test -s "$LAB_DIR/dnsmasq-wlan2.leases"
lease=$(awk '{print $3}' "$LAB_DIR/dnsmasq-wlan2.leases")
expect_match "dnsmasq leased an address over the air" '^192\.168\.50\.5[0-9]$' "$lease"
expect_reply "get-wlan0-parameters reports the lease" \
  "$(values_reply "$lease" 255.255.255.0 192.168.50.1 dhcp)$NL" get-wlan0-parameters A
expect_ok "a ping crosses the air" on_device ping -c 1 -W 5 192.168.50.1
expect_reply "is-wlan0-connected: associated" \
  "${CONSOLE_START}Is wireless connected...${NL}Wireless is connected.$NL" is-wlan0-connected M
expect_reply "check-wireless-point: associated" \
  '{"values":{"status":"true","ssid":"Lab'"'"'s personal","signal strength":"100"}}'"$NL" \
  check-wireless-point A
expect_reply "check-wireless-point: associated, console" \
  "${CONSOLE_START}Get actual wireless access point...${NL}Wifi is connected to: Lab's personal$NL" \
  check-wireless-point M
expect_stdout "disconnect-wifi" "${CONSOLE_START}Disconnect Wifi...$NL" disconnect-wifi M
expect_reply "is-wlan0-connected: false after disconnect-wifi" false is-wlan0-connected A
expect_ok "ifdown stops the supplicant" wait_until 5 device_runs_no wpa_supplicant

write_config '"enabled": false' "$PERSONAL, \"type\": \"static\", \"IP address\": \"192.168.50.20\",
  \"network mask\": \"255.255.255.0\", \"default gateway\": \"192.168.50.1\"" '"type": "dhcp"'
expect_reply "set-config, static wlan0" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-wifi, static" "${CONSOLE_START}Connect to wifi...$NL$ROUTE_GONE" connect-wifi M
expect_ok "the supplicant joins" wait_until 20 associated
expect_reply "get-wlan0-parameters reports the static address" \
  "$(values_reply 192.168.50.20 255.255.255.0 192.168.50.1 static)$NL" get-wlan0-parameters A
expect_ok "a ping from the static address crosses the air" on_device ping -c 1 -W 5 192.168.50.1
expect_stdout "disconnect-wifi, static" "" disconnect-wifi A

write_config '"enabled": false' "$PERSONAL, \"type\": \"dhcp\"" '"type": "dhcp"'
expect_reply "set-config, wlan0 by DHCP again" "" set-config A "$LAB_CONFIG"
expect_stdout "autoconnect: eth0 down, wlan0 up, both correct" "$CONSOLE_START$(printf '%s\n' \
  "Starting autoconnect..." "Disconnecting eth0..." "Disconnect ethernet..." "Connecting to wlan0... " \
  "Connect to wifi..." "Status autoconnect Ethernet: Correct" "Status autoconnect WiFi: Correct" \
  "Autoconnect complete.")$NL" autoconnect M "$LAB_CONFIG"
expect_reply "is-wlan0-connected after autoconnect" true is-wlan0-connected A

lab_finish
