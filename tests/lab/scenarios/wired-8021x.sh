#!/bin/bash
# Wired 802.1X: the real wpa_supplicant (wired driver) reads the wpa_supplicant_wired.conf that
# set-config writes and authenticates against hostapd on the peer, for PEAP and TTLS with stored
# and with pass-through credentials and for TLS with a PKCS#12 file; wrong secrets must fail (the
# cases are in wired-8021x.cases). Then through ifupdown: with the supplicant lines set-config
# makes active in eth0's stanza, connect-ethernet has ifupdown's wpa hook start the supplicant,
# which authorizes the port; disconnect-ethernet stops it. set-open-wired-config comments the
# lines out, and the same connect then starts no supplicant.
. "$(dirname "$0")/../lab.sh"
lab_start

lab_certificates
on_device ip link set eth0 up

# A fresh authenticator: hostapd ignores a MAC for a while after an EAP failure.
restart_authenticator() {
  stop_by_pid_file "$LAB_DIR/hostapd-eth0-peer.pid"
  start_hostapd "$LAB_FILES/hostapd-eth0-peer.conf"
}

# One case: config.json with the wired members given, set-config (with any pass-through words),
# then a fresh authenticator and supplicant; the supplicant's verdict must be the expected one.
wired_case() { # description EAP-SUCCESS|EAP-FAILURE eap-members [user password]
  local description=$1 expected=$2 outcome
  write_config '"enabled": true, "type": "dhcp", "security": "enterprise", '"$3" '"enabled": false' \
    '"type": "dhcp"'
  shift 3
  qv set-config A "$LAB_CONFIG" "$@"
  [ "$QV_STATUS" = 0 ] || { fail "$description" "set-config ended with $QV_STATUS: $QV_ERR"; return; }
  stop_by_pid_file "$LAB_DIR/supplicant-eth0.pid"
  restart_authenticator
  start_supplicant eth0 /etc/wpa_supplicant/wpa_supplicant_wired.conf
  outcome=$(eap_outcome eth0 15)
  if [ "$outcome" = "$expected" ]; then
    pass "$description"
  else
    fail "$description" "EAP outcome: ${outcome:-none}" \
      "$(on_device cat /etc/wpa_supplicant/wpa_supplicant_wired.conf)" \
      "$(tail -n 15 "$LAB_DIR/supplicant-eth0.log")"
  fi
}

while IFS='|' read -r description expected members user password; do
  wired_case "$description" "$expected" "$members" ${user:+"$user" "$password"}
done < <(grep -v '^#' "${0%.sh}.cases")
stop_by_pid_file "$LAB_DIR/supplicant-eth0.pid"
restart_authenticator

port_authorized() { on_device wpa_cli -i eth0 status | grep -qx suppPortStatus=Authorized; }
write_config '"enabled": true, "type": "static", "IP address": "10.0.0.5", "network mask": "255.255.255.0",
  "default gateway": "10.0.0.1", "security": "enterprise", "authentication method": "peap",
  "ca certificate": "lab-ca.pem", "user name": "alice", "user password": "Wt63QteqoU5gp7GQSCVYPQ=="' \
  '"enabled": false' '"type": "dhcp"'
expect_reply "set-config, PEAP with the stored password" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-ethernet" "$ROUTE_GONE" connect-ethernet A
expect_ok "ifupdown's supplicant authorizes the port" wait_until 15 port_authorized
expect_stdout "disconnect-ethernet" "" disconnect-ethernet A
expect_ok "ifdown stops the supplicant" wait_until 5 device_runs_no wpa_supplicant

expect_reply "set-open-wired-config" "" set-open-wired-config A "$LAB_CONFIG"
expect_stdout "connect-ethernet, open" "$ROUTE_GONE" connect-ethernet A
expect_ok "no supplicant runs" device_runs_no wpa_supplicant

lab_finish
