#!/bin/bash
# Static addressing through the real ifupdown: set-config writes eth0's static stanza,
# connect-ethernet brings it up with that address, netmask and gateway, the reports read them
# back, and disconnect-ethernet takes them away. Then autoconnect with eth0 enabled and wlan0
# disabled brings eth0 up and wlan0 down, and a stanza ifup cannot apply counts as incorrect.
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
on_peer ip addr add 10.0.0.1/24 dev eth0-peer
# DNS with one server and no domain: the stanza gets a dns-nameservers line with a trailing blank
# and an empty line, which ifupdown must take as they are.
static_eth0() { # address
  write_config '"enabled": true, "type": "static", "IP address": "'"$1"'",
    "network mask": "255.255.255.0", "default gateway": "10.0.0.1", "security": "open"' \
    '"enabled": false' '"type": "static", "dns1": "10.0.0.1", "dns2": "", "domain": ""'
}
device_address() { on_device ip -4 -o addr show dev eth0 | awk '{print $4, $5, $6}'; }
device_default_route() { on_device ip route show default; }

# What autoconnect itself prints in console mode for eth0 wanted up and wlan0 wanted down.
# The shell tools' own output comes between, on the same stdout.
autoconnect_lines() { # ethernet-status wifi-status closing [ifdown-output]
  printf '%s\n' "Starting autoconnect..." "Connecting to eth0... " "Connect to ethernet..."
  printf '%s' "${4:-}"
  printf '%s\n' "Disconnecting wlan0..." "Disconnect Wifi..." "Status autoconnect Ethernet: $1" \
    "Status autoconnect WiFi: $2" "$3"
}

static_eth0 10.0.0.5
expect_reply "set-config writes the files silently" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-ethernet brings eth0 up" "$ROUTE_GONE" connect-ethernet A
expect_same "eth0 carries the generated address and netmask" "10.0.0.5/24 brd 10.0.0.255" \
  "$(device_address)"
expect_match "the default route goes through the generated gateway" \
  '^default via 10\.0\.0\.1 dev eth0 onlink *$' "$(device_default_route)"
expect_reply "get-eth0-parameters reports the static setup" \
  "$(values_reply 10.0.0.5 255.255.255.0 10.0.0.1 static)$NL" get-eth0-parameters A
expect_reply "get-default-gateway reports the generated gateway" \
  '{"gateway":{ "value":"10.0.0.1"}}'"$NL" get-default-gateway A

expect_stdout "connect-ethernet again: down, then up" \
  "${CONSOLE_START}Connect to ethernet...$NL" connect-ethernet M
expect_same "eth0 is configured again" "10.0.0.5/24 brd 10.0.0.255" "$(device_address)"

expect_stdout "disconnect-ethernet takes eth0 down" \
  "${CONSOLE_START}Disconnect ethernet...$NL" disconnect-ethernet M
expect_same "eth0 has no address left" "" "$(device_address)"
expect_same "no default route is left" "" "$(device_default_route)"
expect_reply "get-eth0-parameters: disconnected" "$(values_reply "" "" "" static)$NL" \
  get-eth0-parameters A
expect_reply "is-eth0-connected: disconnected" false is-eth0-connected A

expect_stdout "autoconnect: eth0 up, wlan0 down, both correct" \
  "$CONSOLE_START$(autoconnect_lines Correct Correct "Autoconnect complete." "$ROUTE_GONE")$NL" \
  autoconnect M "$LAB_CONFIG"
expect_same "eth0 carries its address" "10.0.0.5/24 brd 10.0.0.255" "$(device_address)"
expect_same "wlan0 stays down" "" "$(on_device ip -o link show up dev wlan0)"

# ifup cannot set an address with an octet over 255 and says so by its status.
static_eth0 10.0.0.300
expect_reply "set-config with an unusable address" "" set-config A "$LAB_CONFIG"
expect_stdout "autoconnect: the failed ifup makes eth0 incorrect" \
  "$CONSOLE_START$(autoconnect_lines Incorrect Correct "Autoconnect false.")$NL" \
  autoconnect M "$LAB_CONFIG"

lab_finish
