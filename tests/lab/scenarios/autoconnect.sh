#!/bin/bash
# autoconnect against the real ifupdown: eth0 enabled and wlan0 disabled bring eth0 up and wlan0
# down and both count as correct; an eth0 stanza that ifup cannot apply counts as incorrect.
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
on_peer ip addr add 10.0.0.1/24 dev eth0-peer

static_eth0() { # address
  write_config '"enabled": true, "type": "static", "IP address": "'"$1"'",
    "network mask": "255.255.255.0", "default gateway": "10.0.0.1", "security": "open"' \
    '"enabled": false' '"type": "dhcp"'
}

# What autoconnect itself prints in console mode for eth0 wanted up and wlan0 wanted down.
# The shell tools' own output comes between, on the same stdout.
autoconnect_lines() { # ethernet-status wifi-status closing [ifdown-output]
  printf '%s\n' "Starting autoconnect..." "Connecting to eth0... " "Connect to ethernet..."
  printf '%s' "${4:-}"
  printf '%s\n' "Disconnecting wlan0..." "Disconnect Wifi..." "Status autoconnect Ethernet: $1" \
    "Status autoconnect WiFi: $2" "$3"
}

static_eth0 10.0.0.5
expect_reply "set-config" "" set-config A "$LAB_CONFIG"
expect_stdout "autoconnect: eth0 up, wlan0 down, both correct" \
  "$CONSOLE_START$(autoconnect_lines Correct Correct "Autoconnect complete." "$ROUTE_GONE")$NL" \
  autoconnect M "$LAB_CONFIG"
expect_same "eth0 carries its address" "10.0.0.5/24" \
  "$(on_device ip -4 -o addr show dev eth0 | awk '{print $4}')"
expect_same "wlan0 stays down" "" "$(on_device ip -o link show up dev wlan0)"

# ifup cannot set an address with an octet over 255 and says so by its status.
static_eth0 10.0.0.300
expect_reply "set-config with an unusable address" "" set-config A "$LAB_CONFIG"
expect_stdout "autoconnect: the failed ifup makes eth0 incorrect" \
  "$CONSOLE_START$(autoconnect_lines Incorrect Correct "Autoconnect false.")$NL" \
  autoconnect M "$LAB_CONFIG"
expect_stdout "autoconnect in application mode prints nothing of its own" "$ROUTE_GONE" \
  autoconnect A "$LAB_CONFIG"

lab_finish
