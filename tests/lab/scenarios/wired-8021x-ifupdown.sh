#!/bin/bash
# Wired 802.1X through ifupdown: with the supplicant lines that set-config makes active in eth0's
# stanza, connect-ethernet has ifupdown's wpa hook start the supplicant, which authenticates
# against hostapd on the peer; disconnect-ethernet stops it. set-open-wired-config comments the
# lines out, and the same connect then starts no supplicant.
. "$(dirname "$0")/../lab.sh"
lab_start

CERTS=$LAB_DIR/certs
mkdir "$CERTS"
make_certificates "$CERTS" unused
install_certificates "$CERTS"
on_peer ip addr add 10.0.0.1/24 dev eth0-peer
start_authenticator eth0-peer "$CERTS"

write_config '"enabled": true, "type": "static", "IP address": "10.0.0.5",
  "network mask": "255.255.255.0", "default gateway": "10.0.0.1", "security": "enterprise",
  "authentication method": "peap", "ca certificate": "lab-ca.pem",
  "user name": "'"$LAB_EAP_USER"'", "user password": "'"$(stored_password "$LAB_EAP_PASSWORD")"'"' \
  '"enabled": false' '"type": "dhcp"'

port_status() { on_device wpa_cli -i eth0 status 2>/dev/null | grep suppPortStatus; }
port_authorized() { [ "$(port_status)" = suppPortStatus=Authorized ]; }

expect_reply "set-config" "" set-config A "$LAB_CONFIG"
expect_ok "the wired supplicant lines are active" \
  on_device grep -qx $'\twpa-driver wired' /etc/network/interfaces
qv connect-ethernet A
expect_same "connect-ethernet ends with status 0" 0 "$QV_STATUS"
expect_ok "ifupdown's supplicant authorizes the port" wait_until 15 port_authorized
expect_reply "eth0 is connected" true is-eth0-connected A
qv disconnect-ethernet A
expect_same "disconnect-ethernet ends with status 0" 0 "$QV_STATUS"
expect_ok "ifdown stops the supplicant" wait_until 5 device_runs_no wpa_supplicant

expect_reply "set-open-wired-config" "" set-open-wired-config A "$LAB_CONFIG"
expect_ok "the wired supplicant lines are commented out" \
  on_device grep -qx $'#\twpa-driver wired' /etc/network/interfaces
qv connect-ethernet A
expect_same "connect-ethernet ends with status 0" 0 "$QV_STATUS"
expect_reply "eth0 is connected without 802.1X" true is-eth0-connected A
expect_ok "no supplicant runs" device_runs_no wpa_supplicant

stop_authenticator eth0-peer
lab_finish
