#!/bin/bash
# qv-netconf-try on a board that runs NetworkManager: joining Lab's personal by DHCP through its
# profile is confirmed by a ping across the air. A wrong stored pass phrase and an access point
# out of range lose that association: the same ping never confirms them, and once their time is up
# the previous files and profiles are back byte for byte, NetworkManager has them, wlan0 is
# joined to Lab's personal again with a lease, and eth0, disabled throughout, was left alone.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start
start_dhcp_server wlan2 192.168.50.1
printf '%s\n' 'source /etc/network/interfaces.d/*' 'auto lo' 'iface lo inet loopback' |
  put_file on_device /etc/network/interfaces
nm_start
# The try records and restores the profiles with the other stack's files.
NETWORK_FILES+=("$NM_PROFILES/qv-netconf-eth0.nmconnection" "$NM_PROFILES/qv-netconf-wlan0.nmconnection")
TIMEOUT=10
# Seconds a rollback may take after its deadline: the files, NetworkManager's reload, and the
# profile brought up again, joining and leasing.
LATE=60
PASSPHRASE='"passphrase": "n7V5Uw+k/RjSMJL5lUOARQ=="'
# The tries that cannot join have a static address on Lab's personal's network: only the
# association keeps the ping from answering.
STATIC='"type": "static", "IP address": "192.168.50.20", "network mask": "255.255.255.0", "default gateway": "192.168.50.1"'
PING_PERSONAL='ping -c 1 -W 1 192.168.50.1'

wifi_config() { # wlan-members
  write_config '"enabled": false' \
    "\"enabled\": true, \"security\": \"personal\", \"frequency\": \"auto\", $1" '"type": "dhcp"'
}

expect_joined() { # description
  expect_same "$1: joined to Lab's personal" "COMPLETED 02:00:00:00:02:00" "$(wlan0_state)"
  expect_match "$1: wlan0 has a lease" '^192\.168\.50\.5[0-9]/24$' \
    "$(on_device ip -4 -o addr show dev wlan0 | awk '{print $4}')"
}

wifi_config "\"ssid\": \"Lab's personal\", $PASSPHRASE, \"type\": \"dhcp\""
try_wait --timeout "$TIMEOUT" --confirm-when "$PING_PERSONAL" "$LAB_CONFIG"
expect_confirmed "Lab's personal is confirmed by a ping across the air"
expect_joined "Lab's personal"
snapshot_network_files "$LAB_DIR/personal"

while IFS='|' read -r description members; do
  wifi_config "$members"
  log_start=$(($(wc -l <"$LAB_DIR/networkmanager.log") + 1))
  try_wait --timeout "$TIMEOUT" --confirm-when "$PING_PERSONAL" "$LAB_CONFIG"
  expect_rolled_back "$description is rolled back" "$TIMEOUT" "$LATE"
  expect_same "$description: eth0, disabled, was not brought up" "" \
    "$(tail -n +"$log_start" "$LAB_DIR/networkmanager.log" | grep -o 'op="connection-activate".*name="qv-netconf-eth0"')"
  expect_network_files "$description: the files and profiles are back" "$LAB_DIR/personal"
  expect_same "$description: NetworkManager has the profile back" "Lab's personal" \
    "$(on_device nmcli -g 802-11-wireless.ssid connection show qv-netconf-wlan0)"
  expect_joined "$description"
done <<EOF2
a wrong stored pass phrase|"ssid": "Lab's personal", "passphrase": "GM2u0E2TVs2VxjJjqyrOUDUbedQFYmkKuNgApQLXkuk=", $STATIC
an access point out of range|"ssid": "Lab far away", $PASSPHRASE, $STATIC
EOF2

lab_finish
