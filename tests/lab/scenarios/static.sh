#!/bin/bash
# Static addressing end to end: set-config writes eth0's static stanza, connect-ethernet has the
# real ifupdown bring it up with that address, netmask and gateway, the report reads them back,
# and disconnect-ethernet takes them away.
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
on_peer ip addr add 10.0.0.1/24 dev eth0-peer
# DNS with one server and no domain: the stanza gets a dns-nameservers line with a trailing blank
# and an empty line, which ifupdown must take as they are.
write_config '"enabled": true, "type": "static", "IP address": "10.0.0.5",
  "network mask": "255.255.255.0", "default gateway": "10.0.0.1", "security": "open"' \
  '"enabled": false' \
  '"type": "static", "dns1": "10.0.0.1", "dns2": "", "domain": ""'
expect_reply "set-config writes the files silently" "" set-config A "$LAB_CONFIG"

device_address() { on_device ip -4 -o addr show dev eth0 | awk '{print $4, $5, $6}'; }
device_default_route() { on_device ip route show default; }

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

lab_finish
