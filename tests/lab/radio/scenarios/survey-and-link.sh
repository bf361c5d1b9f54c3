#!/bin/bash
# The survey and link control on a real radio. get-wifi-list, in both modes, lists the access
# points of every kind with each field as the real iwlist gives it, leaves out the hidden one, and
# leaves a radio it found down, down. connect-wifi joins through ifupdown's supplicant hook, by
# DHCP and with a static address; traffic crosses the air; the reports, is-wlan0-connected and
# check-wireless-point follow the link; disconnect-wifi and autoconnect move it.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start
start_all_aps

NL=$'\n'
# What the survey must list, in channel order (the scan visits the channels in turn): name,
# signal, encryption, authentication, encryption version, pairwise, frequency, channel.
SURVEY=(
  "Lab open|100|off|NONE|||2.412|1"
  "Lab's personal|100|on|PSK|WPA2|CCMP|2.437|6"
  "Lab enterprise|100|on|802.1x|WPA2|CCMP|2.452|9"
  "Lab mixed|100|on|PSK|WPA2|CCMP|2.462|11"
)

survey_reply() {
  local i ssid signal encryption authentication version pairwise frequency channel separator=,
  echo "["
  for i in "${!SURVEY[@]}"; do
    IFS='|' read -r ssid signal encryption authentication version pairwise frequency channel <<<"${SURVEY[$i]}"
    [ "$i" = $((${#SURVEY[@]} - 1)) ] && separator=
    printf '{ "ssid":"%s","signal strength":%s,"encryption":"%s","authentication":"%s","encryption ver":"%s","pairwise":"%s","frequency":"%s","channel":%s}%s\n' \
      "$ssid" "$signal" "$encryption" "$authentication" "$version" "$pairwise" "$frequency" "$channel" "$separator"
  done
  echo "]"
}

survey_lines() {
  local entry ssid signal encryption authentication version pairwise frequency channel
  printf '%s\n' "Get wifi list..." "Wifi list:"
  for entry in "${SURVEY[@]}"; do
    IFS='|' read -r ssid signal encryption authentication version pairwise frequency channel <<<"$entry"
    printf '%-6s%-32s %-15s%-5s %-15s%-7s %-7s%-4s %-7s%-9s %-10s%-10s %-10s%-6s%-10s%-6s\n' \
      "Ssid: " "$ssid" "Signal strength: " "$signal" "Authentication: " "$authentication" \
      "Encryption: " "$encryption" "Pairwise: " "$pairwise" "Encryption ver: " "$version" \
      "Frequency: " "$frequency" "Channel: " "$channel"
  done
  echo "Get wifi list done."
}

radio_up() { on_device ip -o link show up dev wlan0; }

# A scan that flushes what earlier scans left behind (a hidden network's name among them).
on_device ip link set wlan0 up
on_device iw dev wlan0 scan flush >/dev/null
on_device ip link set wlan0 down
expect_reply "get-wifi-list: every entry, every field" "$(survey_reply)$NL" get-wifi-list A
expect_same "a radio found down is left down" "" "$(radio_up)"
on_device ip link set wlan0 up
expect_reply "get-wifi-list, console" "$CONSOLE_START$(survey_lines)$NL" get-wifi-list M
expect_match "a radio found up is left up" "state" "$(radio_up)"
expect_reply "check-wireless-point: not associated" '{"values":{"status":"false"}}'"$NL" \
  check-wireless-point A
expect_reply "check-wireless-point: not associated, console" \
  "${CONSOLE_START}Get actual wireless access point...${NL}Wifi is disconnected.$NL" \
  check-wireless-point M

# --- link control through ifupdown -------------------------------------------------------------
start_dhcp_server wlan2 192.168.50.1
# dhclient's first request goes out before the supplicant has joined: retry soon, not after 5-15 s.
printf 'timeout 20;\ninitial-interval 1;\nbackoff-cutoff 2;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
PERSONAL="\"enabled\": true, \"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\",
  \"passphrase\": \"$(stored_password "$RADIO_PASSPHRASE")\""
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
expect_reply "is-wlan0-connected: associated" true is-wlan0-connected A
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
