#!/bin/bash
# DHCP end to end with dhcpcd as the client: through ifupdown for a DHCP eth0, and as the system's
# daemon honouring the static block and the denyinterfaces line set-config writes into
# /etc/dhcpcd.conf. dnsmasq serves both of the peer's ends, so a wlan0 that dhcpcd did not leave
# alone would get a lease.
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
start_dhcp_server eth0-peer 10.0.0.1
start_dhcp_server wlan0-peer 10.0.1.1
# ifupdown takes the first DHCP client it finds, and dhclient comes first.
on_device mount --bind /dev/null /usr/sbin/dhclient
put_file on_device /etc/dhcpcd.conf <"$LAB_FILES/dhcpcd-head.conf"
HEAD=$(cat "$LAB_FILES/dhcpcd-head.conf")

# eth0 on DHCP, through ifupdown.
write_config '"enabled": true, "type": "dhcp", "security": "open"' '"enabled": false' '"type": "dhcp"'
expect_reply "set-config, eth0 on DHCP" "" set-config A "$LAB_CONFIG"
expect_same "dhcpcd.conf: the head, then wlan0 denied" "$HEAD${NL}denyinterfaces wlan0" \
  "$(on_device cat /etc/dhcpcd.conf)"
qv connect-ethernet A
expect_same "connect-ethernet ends with status 0" 0 "$QV_STATUS"
wait_until 3 test -s "$LAB_DIR/dnsmasq-eth0-peer.leases"
lease=$(awk '{print $3}' "$LAB_DIR/dnsmasq-eth0-peer.leases")
expect_match "dnsmasq leased one address to eth0" '^10\.0\.0\.5[0-9]$' "$lease"
expect_reply "get-eth0-parameters reports dhcpcd's lease" \
  "$(values_reply "$lease" 255.255.255.0 10.0.0.1 dhcp)$NL" get-eth0-parameters A
qv disconnect-ethernet A
expect_same "disconnect-ethernet ends with status 0" 0 "$QV_STATUS"
expect_same "dhcpcd released eth0" "" "$(on_device ip -4 -o addr show dev eth0)"
expect_ok "dhcpcd is gone" wait_until 5 device_runs_no dhcpcd

# eth0 static (a /16 this time), DNS static: dhcpcd as the system's daemon does the rest.
write_config '"enabled": true, "type": "static", "IP address": "10.0.0.5",
  "network mask": "255.255.0.0", "default gateway": "10.0.0.1", "security": "open"' \
  '"enabled": false' '"type": "static", "dns1": "10.0.0.1", "dns2": "10.0.0.2", "domain": "lab"'
expect_reply "set-config, eth0 static" "" set-config A "$LAB_CONFIG"
expect_same "dhcpcd.conf: the head, wlan0 denied, eth0's static block" \
  "$HEAD${NL}denyinterfaces wlan0${NL}interface eth0${NL}static ip_address=10.0.0.5/16${NL}static routers=10.0.0.1${NL}static domain_name_servers=10.0.0.1 10.0.0.2" \
  "$(on_device cat /etc/dhcpcd.conf)"
dhcpcd_log=$(on_device dhcpcd -w 2>&1)
expect_same "dhcpcd set the static address" "10.0.0.5/16 brd 10.0.255.255" \
  "$(on_device ip -4 -o addr show dev eth0 | awk '{print $4, $5, $6}')"
expect_match "dhcpcd set the static router" '^default via 10\.0\.0\.1 dev eth0 ' \
  "$(on_device ip route show default)"
expect_same "dhcpcd wrote the static name servers" $'nameserver 10.0.0.1\nnameserver 10.0.0.2' \
  "$(on_device grep '^nameserver' /etc/resolv.conf)"
expect_same "dhcpcd left wlan0 alone" "" "$(grep wlan0 <<<"$dhcpcd_log")"
expect_same "wlan0 got no lease" "" "$(on_device ip -4 -o addr show dev wlan0)"
expect_reply "get-eth0-parameters reports the static block" \
  "$(values_reply 10.0.0.5 255.255.0.0 10.0.0.1 static)$NL" get-eth0-parameters A
on_device dhcpcd -x >/dev/null 2>&1

lab_finish
