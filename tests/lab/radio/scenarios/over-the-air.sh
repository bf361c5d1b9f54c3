#!/bin/bash
# The wireless half over the air, on real radios (the radio stage's VM).
# Survey: get-wifi-list lists the access points of every kind with each field as the real iwlist
# gives it (get-wifi-list.expected), leaves out the hidden one, and leaves a radio as it found it.
# Association: the supplicant file that set-wpa-config writes from stored secrets joins the
# intended access point, and a wrong secret does not (the cases are in over-the-air.cases).
# Link control: connect-wifi joins through ifupdown's supplicant hook, by DHCP and with a static
# address; traffic crosses the air; the reports, is-wlan0-connected and check-wireless-point
# follow the link; disconnect-wifi and autoconnect move it.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start

NL=$'\n'
radio_up() { on_device ip -o link show up dev wlan0; }

# --- survey ------------------------------------------------------------------------------------
# A first scan, which also drops whatever earlier scans left (a hidden network's name among them),
# fixes the order of the list: the order of discovery, channel by channel.
on_device ip link set wlan0 up
on_device iw dev wlan0 scan flush >/dev/null
on_device ip link set wlan0 down
SURVEY=$(cat "${0%/*}/get-wifi-list.expected")
expect_reply "get-wifi-list: every entry, every field" "$SURVEY$NL" get-wifi-list A
expect_same "a radio found down is left down" "" "$(radio_up)"
on_device ip link set wlan0 up
expect_reply "get-wifi-list, radio up" "$SURVEY$NL" get-wifi-list A
expect_match "a radio found up is left up" "wlan0:" "$(radio_up)"
# Up but not associated: the flags say UP, the state word says DOWN.
expect_reply "is-wlan0-connected: up, not associated" false is-wlan0-connected A
expect_reply "check-wireless-point: not associated" '{"values":{"status":"false"}}'"$NL" \
  check-wireless-point A

# --- association -------------------------------------------------------------------------------
while IFS='|' read -r description expected members; do
  [[ -z $description || $description == "#"* ]] && continue
  write_config '"enabled": false' "\"enabled\": true, \"type\": \"dhcp\", $members" '"type": "dhcp"'
  qv set-wpa-config A "$LAB_CONFIG"
  [ "$QV_STATUS" = 0 ] || { fail "$description" "set-wpa-config ended with $QV_STATUS: $QV_ERR"; continue; }
  verdict=$(associate)
  if [ "$verdict" = "$expected" ]; then
    pass "$description"
    [[ $expected != COMPLETED* ]] || expect_checker_agrees "$description"
  else
    fail "$description" "expected: $expected" "verdict:  $verdict" "$(on_device cat "$WPA_CONF")" \
      "$(tail -n 15 "$LAB_DIR/supplicant-wlan0.log")"
  fi
done <"${0%.sh}.cases"
stop_supplicant wlan0

# --- link control through ifupdown -------------------------------------------------------------
start_dhcp_server wlan2 192.168.50.1
# dhclient's first request goes out before the supplicant has joined: retry soon, not after 5-15 s.
printf 'timeout 20;\ninitial-interval 1;\nbackoff-cutoff 2;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
PERSONAL="\"enabled\": true, \"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\",
  \"passphrase\": \"n7V5Uw+k/RjSMJL5lUOARQ==\""
associated() { on_device wpa_cli -i wlan0 status | grep -qx wpa_state=COMPLETED; }

# Static first: the DHCP setup stays in place for autoconnect.
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
expect_stdout "disconnect-wifi" "${CONSOLE_START}Disconnect Wifi...$NL" disconnect-wifi M
expect_reply "is-wlan0-connected: false after disconnect-wifi" false is-wlan0-connected A
expect_ok "ifdown stops the supplicant" wait_until 5 device_runs_no wpa_supplicant

expect_stdout "autoconnect: eth0 down, wlan0 up, both correct" "$CONSOLE_START$(printf '%s\n' \
  "Starting autoconnect..." "Disconnecting eth0..." "Disconnect ethernet..." "Connecting to wlan0... " \
  "Connect to wifi..." "Status autoconnect Ethernet: Correct" "Status autoconnect WiFi: Correct" \
  "Autoconnect complete.")$NL" autoconnect M "$LAB_CONFIG"
expect_reply "is-wlan0-connected after autoconnect" true is-wlan0-connected A

lab_finish
