# shellcheck shell=bash
# The device lab on real radios (inside the radio stage's VM, where mac80211_hwsim gives phy0 and
# more): the device's wlan0 is the station radio phy0 instead of a veth, and the access points of
# radio/access-points run on the other radios in the peer. Sourced by the radio scenarios after
# lab.sh.

RADIO_HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
WPA_CONF=/etc/wpa_supplicant/wpa_supplicant.conf

# Brings the lab up with the radios in place, the certificates made and installed, qv-get-freq-list
# on the device, and every access point beaconing.
radio_start() {
  lab_start
  ip -n "$DEVICE_NS" link del wlan0
  local phy conf log
  for phy in $(iw phy | awk '$1 == "Wiphy" {print $2}'); do
    if [ "$phy" = phy0 ]; then
      iw phy phy0 set netns name "$DEVICE_NS"
    else
      iw phy "$phy" set netns name "$PEER_NS"
    fi || lab_abort "cannot move $phy into the lab"
  done
  on_device ip link show wlan0 >/dev/null || lab_abort "no station radio: is this the radio stage's VM?"
  lab_certificates
  on_device cp "$LAB_FILES/qv-get-freq-list" /usr/bin/qv-get-freq-list
  # Every AP's BSSID is its radio's address: hwsim gives radio N 02:00:00:00:0N:00.
  for conf in "$RADIO_HERE"/access-points/*.conf; do
    start_hostapd "$conf"
    log=$LAB_DIR/$(basename "$conf" .conf).log
    wait_until 10 grep -q AP-ENABLED "$log" || lab_abort "$conf did not start: $(cat "$log")"
  done
}

# Starts the supplicant on wlan0 with the file the tool wrote and prints its verdict: "COMPLETED"
# and the BSSID it joined, "refused" when it gave up on the credentials, else its state.
associate() {
  local log=$LAB_DIR/supplicant-wlan0.log
  stop_by_pid_file "$LAB_DIR/supplicant-wlan0.pid"
  start_supplicant wlan0 "$WPA_CONF" nl80211 || return
  wait_until 20 grep -qE 'CTRL-EVENT-(CONNECTED|SSID-TEMP-DISABLED|EAP-FAILURE)' "$log"
  if grep -qE 'CTRL-EVENT-(SSID-TEMP-DISABLED|EAP-FAILURE)' "$log"; then
    echo refused
  else
    wlan0_state
  fi
}

# The supplicant's state on wlan0, with the BSSID it is joined to, if any.
wlan0_state() {
  on_device wpa_cli -i wlan0 status | awk -F= '$1 == "wpa_state" {s = $2} $1 == "bssid" {b = " " $2} END {print s b}'
}
