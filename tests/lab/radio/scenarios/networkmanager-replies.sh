#!/bin/bash
# A board moved from ifupdown to NetworkManager answers as before: the same config.json and the
# same commands (set-config, connect-wifi, autoconnect, disconnect-wifi) are run first on the
# ifupdown stack, then with NetworkManager running, and the management application's readings
# (get-wlan0-parameters with its type, is-wlan0-connected, check-wireless-point, and the console
# texts of autoconnect and disconnect-wifi) must be the same on both. On the way, set-config
# takes the ifupdown stanzas out of /etc/network/interfaces, which NetworkManager, told to leave
# the interfaces named there alone, honours from its next start.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start
NL=$'\n'
start_dhcp_server wlan2 192.168.50.1
# dhclient's first request goes out before the supplicant has joined: retry soon, not after 5-15 s.
printf 'timeout 20;\ninitial-interval 1;\nbackoff-cutoff 2;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
PERSONAL="\"enabled\": true, \"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\",
  \"passphrase\": \"n7V5Uw+k/RjSMJL5lUOARQ==\""
STATIC="$PERSONAL, \"type\": \"static\", \"IP address\": \"192.168.50.20\", \"network mask\": \"255.255.255.0\",
  \"default gateway\": \"192.168.50.1\""
associated() { on_device wpa_cli -i wlan0 status | grep -qx wpa_state=COMPLETED; }

# Runs the tool and keeps its status and stdout under a name in the array given; a lease from
# dnsmasq (.50 to .59) reads as .5x.
declare -A IFUPDOWN NETWORKMANAGER
record() { # array name args...
  local -n replies=$1
  local name=$2
  shift 2
  qv "$@"
  # shellcheck disable=SC2034,SC2004 # a reference to one of the associative arrays above
  replies[$name]="status $QV_STATUS: ${QV_OUT//192.168.50.5[0-9]/192.168.50.5x}"
}

# The same steps on either stack.
readings() { # array stack
  write_config '"enabled": false' "$STATIC" '"type": "dhcp"'
  expect_stdout "$2: set-config, static" "" set-config A "$LAB_CONFIG"
  qv connect-wifi A
  expect_ok "$2: connect-wifi joins Lab's personal" wait_until 20 associated
  expect_ok "$2: a ping from the static address crosses the air" on_device ping -c 1 -W 5 192.168.50.1
  record "$1" "get-wlan0-parameters, static" get-wlan0-parameters A
  record "$1" "is-wlan0-connected" is-wlan0-connected A
  record "$1" "check-wireless-point" check-wireless-point A
  record "$1" "disconnect-wifi" disconnect-wifi A
  record "$1" "is-wlan0-connected after disconnect-wifi" is-wlan0-connected A
  record "$1" "get-wlan0-parameters after disconnect-wifi" get-wlan0-parameters A
  record "$1" "check-wireless-point after disconnect-wifi" check-wireless-point A

  write_config '"enabled": false' "$PERSONAL, \"type\": \"dhcp\"" '"type": "dhcp"'
  expect_stdout "$2: set-config, DHCP" "" set-config A "$LAB_CONFIG"
  record "$1" "autoconnect" autoconnect M "$LAB_CONFIG"
  expect_ok "$2: autoconnect joins Lab's personal" wait_until 20 associated
  record "$1" "get-wlan0-parameters, DHCP" get-wlan0-parameters A
  record "$1" "get-wlan0-parameters, DHCP, console" get-wlan0-parameters M
  record "$1" "check-wireless-point, console" check-wireless-point M
  record "$1" "disconnect-wifi, console" disconnect-wifi M
  record "$1" "is-wlan0-connected after disconnect-wifi, console" is-wlan0-connected M
}

readings IFUPDOWN ifupdown
expect_same "ifupdown: get-wlan0-parameters, static" \
  "status 0: $(values_reply 192.168.50.20 255.255.255.0 192.168.50.1 static)$NL" \
  "${IFUPDOWN[get-wlan0-parameters, static]}"
expect_same "ifupdown: get-wlan0-parameters, DHCP" \
  "status 0: $(values_reply 192.168.50.5x 255.255.255.0 192.168.50.1 dhcp)$NL" \
  "${IFUPDOWN[get-wlan0-parameters, DHCP]}"

# NetworkManager starts while the interfaces file still names wlan0 and eth0, so it leaves them
# alone; set-config takes the stanzas out, and from its next start it manages both.
nm_start
expect_same "NetworkManager leaves the links of the interfaces file alone" "unmanaged unmanaged" \
  "$(on_device nmcli -t -f DEVICE,STATE device status | awk -F: '$1 == "eth0" || $1 == "wlan0" {print $2}' | xargs)"
write_config '"enabled": false' "$STATIC" '"type": "dhcp"'
expect_stdout "set-config takes the stanzas out" "" set-config A "$LAB_CONFIG"
expect_same "the interfaces file keeps the loopback alone" \
  "$(printf '%s\n' 'source /etc/network/interfaces.d/*' 'auto lo' 'iface lo inet loopback')" \
  "$(on_device grep -v -e '^#' -e '^$' /etc/network/interfaces)"
nm_restart

readings NETWORKMANAGER networkmanager
for name in "${!IFUPDOWN[@]}"; do
  expect_same "networkmanager answers as ifupdown: $name" "${IFUPDOWN[$name]}" "${NETWORKMANAGER[$name]}"
done

lab_finish
