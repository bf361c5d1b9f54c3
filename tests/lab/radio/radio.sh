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

# --- NetworkManager -----------------------------------------------------------------------------
# The device as a board that runs NetworkManager: the system bus, the supplicant on it (as its
# D-Bus service would start it), and the daemon with the configuration of such a board's image
# (Debian's: the ifupdown and keyfile plugins, ifupdown's interfaces unmanaged) and no default
# wired profile of its own. It sees the device's /etc, so the profiles the tool writes are the ones
# it loads. There is no udev in the lab: with /sys read-only, as in a container, NetworkManager
# takes links as udev would have announced them (with /sys writable it waits for udev forever and
# leaves them unmanaged), so it gets a /sys of its own, read-only, in a mount namespace of its own
# inside the device's. Its log is LAB_DIR/networkmanager.log, the supplicant's supplicant-nm.log.
NM_PROFILES=/etc/NetworkManager/system-connections

nm_start() {
  printf '[main]\nno-auto-default=*\n' | put_file on_device /etc/NetworkManager/conf.d/lab.conf
  on_device mkdir -p /run/dbus
  on_device dbus-daemon --system --fork || lab_abort "the system bus did not start"
  wait_until 5 on_device test -S /run/dbus/system_bus_socket || lab_abort "the system bus has no socket"
  on_device wpa_supplicant -B -u -O /run/wpa_supplicant -f "$LAB_DIR/supplicant-nm.log" \
    -P "$LAB_DIR/supplicant-nm.pid" || lab_abort "the supplicant did not start on the bus"
  nm_run
}

# NetworkManager alone, in the foreground as its service unit runs it (so it leaves no PID file),
# logging to standard error; NM_PID is its PID.
nm_run() {
  # Each program execs the next, so the PID of the job is the daemon's.
  (exec nsenter -t "$DEVICE_HOLDER" -m -n --root --wd -- env -i "${LAB_ENV[@]}" unshare --mount \
    sh -c 'mount -t sysfs -o ro qvlab-sys /sys && exec NetworkManager --no-daemon --debug') \
    >>"$LAB_DIR/networkmanager.log" 2>&1 &
  NM_PID=$!
  wait_until 30 nm_running || lab_abort "NetworkManager did not start: $(cat "$LAB_DIR/networkmanager.log")"
}

# A restart, as at the board's next boot: NetworkManager reads /etc/network/interfaces only then.
nm_restart() {
  kill -TERM "$NM_PID"
  wait_until 10 lab_process_gone "$NM_PID" || lab_abort "NetworkManager did not stop"
  nm_run
}

nm_running() { [ "$(on_device nmcli -t -f RUNNING general 2>/dev/null)" = running ]; }
