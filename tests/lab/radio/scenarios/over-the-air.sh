#!/bin/bash
# The wireless half over the air, on real radios (the radio stage's VM).
# Survey: get-wifi-list lists the access points of every kind with each field as the real iwlist
# gives it (get-wifi-list.expected), leaves out the hidden one, and leaves a radio as it found it.
# Association: the supplicant file that set-wpa-config writes from stored secrets joins the
# intended access point, and a wrong secret does not (the cases are in over-the-air.cases).
# Link control: connect-wifi joins through ifupdown's supplicant hook, with a static address and by
# DHCP; traffic crosses the air; is-wlan0-connected follows the link; disconnect-wifi and
# autoconnect move it. (The replies' readings of iwconfig, ip link, ifconfig and route are pinned
# from recorded outputs by the unit and end-to-end tests.)
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start

NL=$'\n'

# --- survey ------------------------------------------------------------------------------------
# A first scan, which also drops whatever earlier scans left (a hidden network's name among them),
# fixes the order of the list: the order of discovery, channel by channel.
on_device ip link set wlan0 up
on_device iw dev wlan0 scan flush >/dev/null
on_device ip link set wlan0 down
SURVEY=$(cat "${0%/*}/get-wifi-list.expected")
expect_reply "get-wifi-list: every entry, every field" "$SURVEY$NL" get-wifi-list A
expect_same "a radio found down is left down" "" "$(on_device ip -o link show up dev wlan0)"
on_device ip link set wlan0 up
expect_reply "get-wifi-list, radio up" "$SURVEY$NL" get-wifi-list A
expect_match "a radio found up is left up" "wlan0:" "$(on_device ip -o link show up dev wlan0)"

# --- association -------------------------------------------------------------------------------
while IFS='|' read -r description expected members; do
  write_config '"enabled": false' "\"enabled\": true, \"type\": \"dhcp\", $members" '"type": "dhcp"'
  qv set-wpa-config A "$LAB_CONFIG"
  [ "$QV_STATUS" = 0 ] || { fail "$description" "set-wpa-config ended with $QV_STATUS: $QV_ERR"; continue; }
  verdict=$(associate)
  if [ "$verdict" = "$expected" ]; then
    pass "$description"
    # A file the supplicant joined with must not be one the checker says can never work.
    [[ $expected != COMPLETED* || $LAB_FINDINGS != *": error: "* ]] ||
      fail "$description: qv-netconf-check raised a false alarm" "$LAB_FINDINGS"
  else
    fail "$description" "expected: $expected" "verdict:  $verdict" "$(on_device cat "$WPA_CONF")" \
      "$(tail -n 15 "$LAB_DIR/supplicant-wlan0.log")"
  fi
done < <(grep -v '^#' "${0%.sh}.cases")
stop_by_pid_file "$LAB_DIR/supplicant-wlan0.pid"

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
expect_ok "a ping from the static address crosses the air" on_device ping -c 1 -W 5 192.168.50.1
expect_stdout "disconnect-wifi, static" "" disconnect-wifi A

write_config '"enabled": false' "$PERSONAL, \"type\": \"dhcp\"" '"type": "dhcp"'
expect_reply "set-config, wlan0 by DHCP" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-wifi: ifupdown, the supplicant hook and dhclient" "" connect-wifi A
# Only an address of the server's range (.50 to .59, shown as .5x) proves the lease came from
# dnsmasq.
qv get-wlan0-parameters A
expect_same "get-wlan0-parameters reports the lease" \
  "$(values_reply 192.168.50.5x 255.255.255.0 192.168.50.1 dhcp)$NL" "${QV_OUT/192.168.50.5[0-9]\"/192.168.50.5x\"}"
expect_ok "a ping crosses the air" on_device ping -c 1 -W 5 192.168.50.1
expect_reply "is-wlan0-connected: associated" true is-wlan0-connected A
expect_stdout "disconnect-wifi" "${CONSOLE_START}Disconnect Wifi...$NL" disconnect-wifi M
expect_reply "is-wlan0-connected: false after disconnect-wifi" false is-wlan0-connected A
expect_ok "ifdown stops the supplicant" wait_until 5 device_runs_no wpa_supplicant

expect_stdout "autoconnect: eth0 down, wlan0 up, both correct" "$CONSOLE_START$(printf '%s\n' \
  "Starting autoconnect..." "Disconnecting eth0..." "Disconnect ethernet..." "Connecting to wlan0... " \
  "Connect to wifi..." "Status autoconnect Ethernet: Correct" "Status autoconnect WiFi: Correct" \
  "Autoconnect complete.")$NL" autoconnect M "$LAB_CONFIG"
expect_reply "is-wlan0-connected after autoconnect" true is-wlan0-connected A

lab_finish
