#!/bin/bash
# The wired half on a board that runs NetworkManager (in the radio stage's VM, where it is
# installed): eth0 is the usual veth to the peer, which serves DHCP and runs hostapd as the port's
# 802.1X authenticator. set-config's eth0 profile comes up through connect-ethernet with a static
# address and by DHCP, and with PEAP on the credentials typed on set-config's command line (the
# stored ones are another user's, with a password the authenticator refuses); a ping crosses the
# link, and the reports read the profile's type.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
lab_start
lab_certificates
start_hostapd "$LAB_FILES/hostapd-eth0-peer.conf"
start_dhcp_server eth0-peer 10.0.0.1
printf '%s\n' 'source /etc/network/interfaces.d/*' 'auto lo' 'iface lo inet loopback' |
  put_file on_device /etc/network/interfaces
nm_start
NL=$'\n'
STATIC='"type": "static", "IP address": "10.0.0.5", "network mask": "255.255.255.0", "default gateway": "10.0.0.1"'

wired_config() { # eth-members
  write_config "\"enabled\": true, $1" '"enabled": false' '"type": "dhcp"'
}

wired_config "$STATIC, \"security\": \"open\""
expect_reply "set-config, static eth0" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-ethernet, static" "" connect-ethernet A
expect_ok "a ping from the static address crosses the link" on_device ping -c 1 -W 5 10.0.0.1
expect_reply "get-eth0-parameters, static" "$(values_reply 10.0.0.5 255.255.255.0 10.0.0.1 static)$NL" \
  get-eth0-parameters A

wired_config '"type": "dhcp", "security": "open"'
expect_reply "set-config, eth0 by DHCP" "" set-config A "$LAB_CONFIG"
expect_stdout "connect-ethernet, DHCP" "" connect-ethernet A
qv get-eth0-parameters A
expect_same "get-eth0-parameters reports the lease" \
  "$(values_reply 10.0.0.5x 255.255.255.0 10.0.0.1 dhcp)$NL" "${QV_OUT/10.0.0.5[0-9]\"/10.0.0.5x\"}"
expect_ok "a ping from the lease crosses the link" on_device ping -c 1 -W 5 10.0.0.1

port_authorized() { on_device wpa_cli -i eth0 status | grep -qx suppPortStatus=Authorized; }
wired_config "$STATIC, \"security\": \"enterprise\", \"authentication method\": \"peap\",
  \"ca certificate\": \"lab-ca.pem\", \"user name\": \"mallory\",
  \"user password\": \"caSdnCEkvLfqXGUosMHpBDxIad81qyFoe89DrfiQ5Ho=\", \"ask for credentials\": true"
expect_reply "set-config, PEAP with typed credentials" "" set-config A "$LAB_CONFIG" alice "Alice's wired 1"
started=$SECONDS
expect_stdout "connect-ethernet, PEAP" "" connect-ethernet A
expect_ok "the supplicant authorizes the port ($((SECONDS - started)) s)" port_authorized
expect_ok "the authenticator let alice in" grep -q 'CTRL-EVENT-EAP-SUCCESS' "$LAB_DIR/hostapd-eth0-peer.log"
expect_ok "a ping crosses the authorized link" on_device ping -c 1 -W 5 10.0.0.1
expect_reply "is-eth0-connected" true is-eth0-connected A
expect_stdout "disconnect-ethernet" "" disconnect-ethernet A
expect_reply "is-eth0-connected after disconnect-ethernet" false is-eth0-connected A

lab_finish
