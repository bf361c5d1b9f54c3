#!/bin/bash
# DHCP end to end with both clients ifupdown may pick, dhclient (its first choice) and dhcpcd:
# set-config writes eth0's dhcp stanza, connect-ethernet obtains a lease from dnsmasq on the peer,
# the report shows it, and disconnect-ethernet gives it back. Then dhcpcd as the system's daemon
# honours the static block and the denyinterfaces line set-config writes into /etc/dhcpcd.conf
# (whose bytes the end-to-end cases pin); dnsmasq serves both of the peer's ends, so a wlan0 that
# dhcpcd did not leave alone would get a lease.
. "$(dirname "$0")/../lab.sh"
lab_start

NL=$'\n'
start_dhcp_server eth0-peer 10.0.0.1
start_dhcp_server wlan0-peer 10.0.1.1
# A lost server must not hold ifup for dhclient's default minute.
printf 'timeout 10;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
put_file on_device /etc/dhcpcd.conf <"$LAB_FILES/dhcpcd-head.conf"
# Only an address of the server's range (.50 to .59, shown as .5x) proves the lease came from
# dnsmasq.
LEASED="$(values_reply 10.0.0.5x 255.255.255.0 10.0.0.1 dhcp)$NL"

write_config '"enabled": true, "type": "dhcp", "security": "open"' '"enabled": false' '"type": "dhcp"'
expect_reply "set-config writes the files silently" "" set-config A "$LAB_CONFIG"
for client in dhclient dhcpcd; do
  # ifupdown takes the first DHCP client it finds, and dhclient comes first.
  [ "$client" = dhclient ] || on_device mount --bind /dev/null /usr/sbin/dhclient
  expect_stdout "$client: connect-ethernet" "" connect-ethernet A
  qv get-eth0-parameters A
  expect_same "$client: get-eth0-parameters reports the lease" "$LEASED" "${QV_OUT/10.0.0.5[0-9]\"/10.0.0.5x\"}"
  expect_stdout "$client: disconnect-ethernet" "" disconnect-ethernet A
  expect_same "$client: eth0 has no address left" "" "$(on_device ip -4 -o addr show dev eth0)"
  expect_ok "$client is gone" wait_until 5 device_runs_no "$client"
done

# eth0 static (a /16 this time), DNS static: dhcpcd as the system's daemon does the rest.
write_config '"enabled": true, "type": "static", "IP address": "10.0.0.5",
  "network mask": "255.255.0.0", "default gateway": "10.0.0.1", "security": "open"' \
  '"enabled": false' '"type": "static", "dns1": "10.0.0.1", "dns2": "10.0.0.2", "domain": "lab"'
expect_reply "set-config, eth0 static" "" set-config A "$LAB_CONFIG"
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
