#!/bin/bash
# qv-netconf-try on eth0, through the real ifupdown and wpa_supplicant: a static address that
# reaches the peer is confirmed by that ping and stays. An address on another subnet, and wired
# 802.1X with a password the authenticator refuses, are never confirmed: once their time is up the
# previous five files are back byte for byte, and ifupdown has brought the previous link back.
. "$(dirname "$0")/../lab.sh"
lab_start

lab_certificates
on_peer ip addr add 10.0.0.1/24 dev eth0-peer
PING_PEER='ping -c 1 -W 1 10.0.0.1'
TIMEOUT=8
# Seconds a rollback may take after its deadline: ifdown of both links, the files, ifup (about 1 s
# on an idle machine, 4 s at a load of 6 on 2 cores).
LATE=8
device_address() { on_device ip -4 -o addr show dev eth0 | awk '{print $4}'; }

static_eth0() { # address gateway security-members
  write_config '"enabled": true, "type": "static", "IP address": "'"$1"'",
    "network mask": "255.255.255.0", "default gateway": "'"$2"'", '"$3" \
    '"enabled": false' '"type": "static", "dns1": "10.0.0.1", "dns2": "", "domain": ""'
}

# Expects the link of the confirmed try: its address, and the peer reachable through it.
expect_confirmed_link() { # description
  expect_same "$1: eth0 has the confirmed address" 10.0.0.5/24 "$(device_address)"
  expect_ok "$1: the peer answers" on_device sh -c "$PING_PEER"
}

static_eth0 10.0.0.5 10.0.0.1 '"security": "open"'
try_wait --timeout "$TIMEOUT" --confirm-when "$PING_PEER" "$LAB_CONFIG"
expect_confirmed "a static address the peer answers on is confirmed by the ping"
expect_confirmed_link "confirmed"
snapshot_network_files "$LAB_DIR/confirmed"
expect_match "the tried files stay" 'address 10\.0\.0\.5' "$(cat "$LAB_DIR/confirmed/interfaces")"

static_eth0 10.9.0.5 10.9.0.1 '"security": "open"'
try_wait --timeout "$TIMEOUT" --confirm-when "$PING_PEER" "$LAB_CONFIG"
expect_rolled_back "an address on another subnet is rolled back" "$TIMEOUT" "$LATE"
expect_network_files "another subnet: the files are back" "$LAB_DIR/confirmed"
expect_confirmed_link "another subnet"

# hostapd's wired driver does not block the port: the supplicant's verdict is the check.
start_hostapd "$LAB_FILES/hostapd-eth0-peer.conf"
static_eth0 10.0.0.5 10.0.0.1 '"security": "enterprise", "authentication method": "peap",
  "ca certificate": "lab-ca.pem", "user name": "alice",
  "user password": "caSdnCEkvLfqXGUosMHpBDxIad81qyFoe89DrfiQ5Ho="'
try_wait --timeout "$TIMEOUT" --confirm-when \
  'wpa_cli -i eth0 status | grep -qx suppPortStatus=Authorized' "$LAB_CONFIG"
expect_rolled_back "802.1X with a refused password is rolled back" "$TIMEOUT" "$LATE"
expect_match "the authenticator refused it" 'CTRL-EVENT-EAP-FAILURE' \
  "$(cat "$LAB_DIR/hostapd-eth0-peer.log")"
expect_network_files "802.1X: the files are back" "$LAB_DIR/confirmed"
expect_ok "802.1X: ifdown stopped the supplicant" wait_until 5 device_runs_no wpa_supplicant
expect_confirmed_link "802.1X"

lab_finish
