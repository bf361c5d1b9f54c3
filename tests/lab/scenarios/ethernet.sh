#!/bin/bash
# eth0 through the real ifupdown and DHCP clients, against dnsmasq on the peer.
# Static: set-config writes eth0's static stanza, connect-ethernet brings it up with that address,
# netmask and gateway, and disconnect-ethernet takes them away. autoconnect with eth0 enabled and
# wlan0 disabled brings eth0 up and wlan0 down, and a stanza ifup cannot apply counts as incorrect.
# DHCP, with both clients ifupdown may pick (dhclient, its first choice, and dhcpcd): the lease
# comes and goes with connect-ethernet and disconnect-ethernet. Then dhcpcd as the system's daemon
# honours the static block and the denyinterfaces line set-config writes into /etc/dhcpcd.conf
# (whose bytes the end-to-end cases pin); dnsmasq serves both of the peer's ends, so a wlan0 that
# dhcpcd did not leave alone would get a lease. (The replies' readings of ifconfig and route are
# pinned from recorded outputs by the unit and end-to-end tests.)
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
start_dhcp_server eth0-peer 10.0.0.1
start_dhcp_server wlan0-peer 10.0.1.1
device_address() { on_device ip -4 -o addr show dev eth0 | awk '{print $4, $5, $6}'; }
device_default_route() { on_device ip route show default; }

# --- static ------------------------------------------------------------------------------------
# DNS with one server and no domain: the stanza gets a dns-nameservers line with a trailing blank
# and an empty line, which ifupdown must take as they are.
static_eth0() { # address
  write_config '"enabled": true, "type": "static", "IP address": "'"$1"'",
    "network mask": "255.255.255.0", "default gateway": "10.0.0.1", "security": "open"' \
    '"enabled": false' '"type": "static", "dns1": "10.0.0.1", "dns2": "", "domain": ""'
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
expect_reply "set-config writes the files silently" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-ethernet brings eth0 up" "$ROUTE_GONE" connect-ethernet A
expect_same "eth0 carries the generated address and netmask" "10.0.0.5/24 brd 10.0.0.255" \
  "$(device_address)"
expect_match "the default route goes through the generated gateway" \
  '^default via 10\.0\.0\.1 dev eth0 onlink *$' "$(device_default_route)"
expect_stdout "connect-ethernet again: down, then up" \
  "${CONSOLE_START}Connect to ethernet...$NL" connect-ethernet M
expect_same "eth0 is configured again" "10.0.0.5/24 brd 10.0.0.255" "$(device_address)"
expect_stdout "disconnect-ethernet takes eth0 down" \
  "${CONSOLE_START}Disconnect ethernet...$NL" disconnect-ethernet M
expect_same "eth0 has no address left" "" "$(device_address)"
expect_same "no default route is left" "" "$(device_default_route)"

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

# --- DHCP --------------------------------------------------------------------------------------
# A lost server must not hold ifup for dhclient's default minute.
printf 'timeout 10;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
# Only an address of the server's range (.50 to .59, shown as .5x) proves the lease came from
# dnsmasq.
LEASED="$(values_reply 10.0.0.5x 255.255.255.0 10.0.0.1 dhcp)$NL"
write_config '"enabled": true, "type": "dhcp", "security": "open"' '"enabled": false' '"type": "dhcp"'
expect_reply "set-config, eth0 by DHCP" "" set-config A "$LAB_CONFIG"
for client in dhclient dhcpcd; do
  # ifupdown takes the first DHCP client it finds, and dhclient comes first.
  [ "$client" = dhclient ] || on_device mount --bind /dev/null /usr/sbin/dhclient
  expect_stdout "$client: connect-ethernet" "" connect-ethernet A
  qv get-eth0-parameters A
  expect_same "$client: get-eth0-parameters reports the lease" "$LEASED" "${QV_OUT/10.0.0.5[0-9]\"/10.0.0.5x\"}"
  expect_stdout "$client: disconnect-ethernet" "" disconnect-ethernet A
  expect_same "$client: eth0 has no address left" "" "$(device_address)"
  expect_ok "$client is gone" wait_until 5 device_runs_no "$client"
done

# eth0 static (a /16 this time), DNS static: dhcpcd as the system's daemon does the rest.
write_config '"enabled": true, "type": "static", "IP address": "10.0.0.5",
  "network mask": "255.255.0.0", "default gateway": "10.0.0.1", "security": "open"' \
  '"enabled": false' '"type": "static", "dns1": "10.0.0.1", "dns2": "10.0.0.2", "domain": "lab"'
expect_reply "set-config, eth0 static for dhcpcd" "" set-config A "$LAB_CONFIG"
dhcpcd_log=$(on_device dhcpcd -w 2>&1)
expect_same "dhcpcd set the static address" "10.0.0.5/16 brd 10.0.255.255" "$(device_address)"
expect_match "dhcpcd set the static router" '^default via 10\.0\.0\.1 dev eth0 ' "$(device_default_route)"
expect_same "dhcpcd wrote the static name servers" $'nameserver 10.0.0.1\nnameserver 10.0.0.2' \
  "$(on_device grep '^nameserver' /etc/resolv.conf)"
expect_same "dhcpcd left wlan0 alone" "" "$(grep wlan0 <<<"$dhcpcd_log")"
expect_same "wlan0 got no lease" "" "$(on_device ip -4 -o addr show dev wlan0)"
on_device dhcpcd -x >/dev/null 2>&1

lab_finish
