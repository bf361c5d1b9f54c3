#!/bin/bash
# DHCP end to end with dhclient, the first client ifupdown picks: set-config writes eth0's dhcp
# stanza, connect-ethernet obtains a lease from dnsmasq on the peer, and the report shows it.
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
start_dhcp_server eth0-peer 10.0.0.1
# A lost server must not hold ifup for dhclient's default minute.
printf 'timeout 10;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
write_config '"enabled": true, "type": "dhcp", "security": "open"' '"enabled": false' '"type": "dhcp"'
expect_reply "set-config writes the files silently" "" set-config A "$LAB_CONFIG"

qv connect-ethernet A
expect_same "connect-ethernet ends with status 0" 0 "$QV_STATUS"
wait_until 3 test -s "$LAB_DIR/dnsmasq-eth0-peer.leases"
lease=$(awk '{print $3}' "$LAB_DIR/dnsmasq-eth0-peer.leases")
expect_match "dnsmasq leased one address" '^10\.0\.0\.5[0-9]$' "$lease"
expect_reply "get-eth0-parameters reports the lease" \
  "$(values_reply "$lease" 255.255.255.0 10.0.0.1 dhcp)$NL" get-eth0-parameters A
expect_reply "get-default-gateway reports the server's router" \
  '{"gateway":{ "value":"10.0.0.1"}}'"$NL" get-default-gateway A

qv disconnect-ethernet A
expect_same "disconnect-ethernet ends with status 0" 0 "$QV_STATUS"
expect_same "eth0 has no address left" "" "$(on_device ip -4 -o addr show dev eth0)"
expect_ok "dhclient is gone" wait_until 5 device_runs_no dhclient
expect_reply "get-eth0-parameters: disconnected" "$(values_reply "" "" "" dhcp)$NL" \
  get-eth0-parameters A

lab_finish
