#!/bin/bash
# The wireless half on a board that runs NetworkManager (the radio stage's VM): with no back-end
# file, the tool finds NetworkManager running and writes its profiles instead of the ifupdown
# stack's files, leaving those alone; a profile NetworkManager refuses fails the run and leaves the
# previous one in place. Each network of networkmanager.cases is set with set-config
# from stored secrets and joined by connect-wifi through NetworkManager, by DHCP or with a static
# address, and a ping crosses the air; a wrong pass phrase does not join.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start
NL=$'\n'
for radio in 1 2 3 4 5 6; do start_dhcp_server "wlan$radio" "192.168.$((48 + radio)).1"; done
# What a board that came with NetworkManager has: an interfaces file for the loopback alone, and
# the other stack's files, which the tool must not touch here.
printf '%s\n' 'source /etc/network/interfaces.d/*' 'auto lo' 'iface lo inet loopback' |
  put_file on_device /etc/network/interfaces
printf 'ctrl_interface=DIR=/run/wpa_supplicant GROUP=netdev\nupdate_config=1\n' |
  put_file on_device "$WPA_CONF"
on_device chmod 600 "$WPA_CONF"
printf 'nameserver 192.168.49.1\n' | put_file on_device /etc/resolv.conf
nm_start

# --- what set-config writes ----------------------------------------------------------------------
# Both links disabled, so that NetworkManager brings nothing up by itself and whatever changes is
# the tool's: the settings that write every file of the ifupdown stack.
snapshot_network_files "$LAB_DIR/before"
write_config '"enabled": false, "type": "static", "IP address": "10.0.0.5", "network mask": "255.255.255.0",
  "default gateway": "10.0.0.1", "security": "enterprise", "authentication method": "peap",
  "ca certificate": "lab-ca.pem", "user name": "alice", "user password": "Wt63QteqoU5gp7GQSCVYPQ=="' \
  '"enabled": false, "type": "dhcp", "ssid": "Lab'"'"'s personal", "security": "personal", "frequency": "auto",
  "passphrase": "n7V5Uw+k/RjSMJL5lUOARQ=="' \
  '"type": "static", "dns1": "192.168.50.1", "dns2": "", "domain": "lab.example"'
expect_reply "set-config on NetworkManager" "" set-config A "$LAB_CONFIG"
expect_network_files "the ifupdown stack's files are left alone" "$LAB_DIR/before"
expect_same "both profiles are root's alone" \
  "600 root:root $NM_PROFILES/qv-netconf-eth0.nmconnection${NL}600 root:root $NM_PROFILES/qv-netconf-wlan0.nmconnection" \
  "$(on_device stat -c '%a %U:%G %n' "$NM_PROFILES"/qv-netconf-{eth0,wlan0}.nmconnection)"
expect_same "NetworkManager loaded both" "qv-netconf-eth0:no${NL}qv-netconf-wlan0:no" \
  "$(on_device nmcli -t -f NAME,ACTIVE connection show | grep '^qv-netconf-' | sort)"

# A profile NetworkManager refuses (an address it cannot read) fails the run, and the previous
# profile stays, on disk and in NetworkManager.
on_device cat "$NM_PROFILES/qv-netconf-wlan0.nmconnection" >"$LAB_DIR/wlan0-profile"
write_config '"enabled": false' '"enabled": false, "type": "static", "IP address": "192.168.50.x",
  "network mask": "255.255.255.0", "ssid": "Lab open", "security": "open", "frequency": "auto"' '"type": "dhcp"'
qv set-config A "$LAB_CONFIG"
expect_same "set-config fails on a profile NetworkManager refuses" "status 1, stdout: " "status $QV_STATUS, stdout: $QV_OUT"
expect_ok "the previous wlan0 profile is back" on_device cmp -s - "$NM_PROFILES/qv-netconf-wlan0.nmconnection" \
  <"$LAB_DIR/wlan0-profile"
expect_same "NetworkManager keeps the previous wlan0 profile" "Lab's personal" \
  "$(on_device nmcli -g 802-11-wireless.ssid connection show qv-netconf-wlan0)"

# --- association over the air --------------------------------------------------------------------
while IFS='|' read -r description radio joins addressing members; do
  network=192.168.$((48 + radio))
  if [ "$addressing" = static ]; then
    host=20
    addressing="\"type\": \"static\", \"IP address\": \"$network.20\", \"network mask\": \"255.255.255.0\",
      \"default gateway\": \"$network.1\""
  else
    host='5[0-9]'
    addressing='"type": "dhcp"'
  fi
  write_config '"enabled": false' "\"enabled\": true, $addressing, $members" '"type": "dhcp"'
  qv set-config A "$LAB_CONFIG"
  [ "$QV_STATUS" = 0 ] || { fail "$description" "set-config ended with $QV_STATUS: $QV_ERR"; continue; }
  started=$SECONDS
  expect_stdout "$description: connect-wifi" "" connect-wifi A
  state=$(wlan0_state)
  if [ "$joins" = no ]; then
    if [[ $state != COMPLETED* ]]; then pass "$description ($((SECONDS - started)) s)"; else fail "$description" "state: $state"; fi
    continue
  fi
  if [ "$state" = "COMPLETED 02:00:00:00:0$radio:00" ]; then
    pass "$description: joined ($((SECONDS - started)) s)"
    [[ $LAB_FINDINGS != *": error: "* ]] || fail "$description: qv-netconf-check raised a false alarm" "$LAB_FINDINGS"
  else
    fail "$description: joined" "state: $state" "$(on_device cat "$NM_PROFILES/qv-netconf-wlan0.nmconnection" | grep -v -e psk= -e password=)" \
      "$(grep -E '<(warn|error)>' "$LAB_DIR/networkmanager.log" | tail -n 5)"
  fi
  expect_match "$description: address" "^${network//./\\.}\.$host/24$" \
    "$(on_device ip -4 -o addr show dev wlan0 | awk '{print $4}')"
  expect_ok "$description: a ping crosses the air" on_device ping -c 1 -W 5 "$network.1"
done < <(grep -v '^#' "${0%.sh}.cases")

lab_finish
