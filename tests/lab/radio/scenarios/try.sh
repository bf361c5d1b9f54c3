#!/bin/bash
# qv-netconf-try on the radio, through ifupdown, the supplicant hook and dhclient: joining Lab's
# personal by DHCP is confirmed by a ping across the air. A wrong stored pass phrase and an access
# point out of range lose that association: the same ping never confirms them, and once their time
# is up the previous files are back byte for byte and the supplicant has joined Lab's personal
# again, with a lease. A switch to Lab mixed, confirmed by a ping of its own network, stays.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start

start_dhcp_server wlan2 192.168.50.1
start_dhcp_server wlan3 192.168.51.1
# dhclient's first request goes out before the supplicant has joined: retry soon.
printf 'timeout 20;\ninitial-interval 1;\nbackoff-cutoff 2;\n' | on_device sh -c 'cat >>/etc/dhcp/dhclient.conf'
TIMEOUT=10
# Seconds a rollback may take after its deadline: ifdown of both links, the files, and ifup joining
# and leasing again (19 to 30 s in this VM at a load of 2.5 to 4.5 on 2 cores).
LATE=60
PASSPHRASE='"passphrase": "n7V5Uw+k/RjSMJL5lUOARQ=="'
DHCP='"type": "dhcp"'
# The tries that cannot join have a static address on Lab's personal's network: ifup does not wait
# for a lease that cannot come, and only the association keeps the ping from answering.
STATIC='"type": "static", "IP address": "192.168.50.20", "network mask": "255.255.255.0", "default gateway": "192.168.50.1"'
PING_PERSONAL='ping -c 1 -W 1 192.168.50.1'

wifi_config() { # wlan-members
  write_config '"enabled": false' \
    "\"enabled\": true, \"security\": \"personal\", \"frequency\": \"auto\", $1" '"type": "dhcp"'
}

expect_joined() { # description bssid network
  expect_same "$1: the supplicant is joined" "COMPLETED $2" "$(wlan0_state)"
  expect_match "$1: wlan0 has a lease" "^${3//./\\.}\.5[0-9]/24$" \
    "$(on_device ip -4 -o addr show dev wlan0 | awk '{print $4}')"
}

wifi_config "\"ssid\": \"Lab's personal\", $PASSPHRASE, $DHCP"
try_wait --timeout "$TIMEOUT" --confirm-when "$PING_PERSONAL" "$LAB_CONFIG"
expect_confirmed "Lab's personal is confirmed by a ping across the air"
expect_joined "Lab's personal" 02:00:00:00:02:00 192.168.50
snapshot_network_files "$LAB_DIR/personal"

# The ping that confirmed Lab's personal would confirm these too, had they left it joined.
while IFS='|' read -r description members; do
  wifi_config "$members"
  try_wait --timeout "$TIMEOUT" --confirm-when "$PING_PERSONAL" "$LAB_CONFIG"
  expect_rolled_back "$description is rolled back" "$TIMEOUT" "$LATE"
  expect_network_files "$description: the files are back" "$LAB_DIR/personal"
  expect_joined "$description: Lab's personal again" 02:00:00:00:02:00 192.168.50
done <<EOF
a wrong stored pass phrase|"ssid": "Lab's personal", "passphrase": "GM2u0E2TVs2VxjJjqyrOUDUbedQFYmkKuNgApQLXkuk=", $STATIC
an access point out of range|"ssid": "Lab far away", $PASSPHRASE, $STATIC
EOF

wifi_config "\"ssid\": \"Lab mixed\", $PASSPHRASE, $DHCP"
try_wait --timeout "$TIMEOUT" --confirm-when 'ping -c 1 -W 1 192.168.51.1' "$LAB_CONFIG"
expect_confirmed "a switch to Lab mixed is confirmed by a ping across the air"
expect_joined "Lab mixed" 02:00:00:00:03:00 192.168.51

lab_finish
