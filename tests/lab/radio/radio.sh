# shellcheck shell=bash
# The device lab on real radios (inside the radio stage's VM, where mac80211_hwsim gives phy0 and
# more): the device's wlan0 is the station radio phy0 instead of a veth, and the access points run
# on the other radios in the peer. Sourced by the radio scenarios after lab.sh.

# The access points: interface, channel, kind and SSID. Every AP's BSSID is its radio's address.
# The mixed kinds offer WPA (TKIP) beside WPA2 (CCMP).
RADIO_APS=(
  "wlan1 1 open Lab open"
  "wlan2 6 wpa2 Lab's personal"
  "wlan3 11 mixed Lab mixed"
  "wlan4 3 hidden Lab hidden"
  "wlan5 9 eap Lab enterprise"
  "wlan6 4 mixed-eap Lab enterprise WPA"
)
RADIO_PASSPHRASE="lab pass'phrase"
P12_PASSWORD='p12 pass 9'
RADIO_CERTS=
WPA_CONF=/etc/wpa_supplicant/wpa_supplicant.conf

# Brings the lab up with the radios in place, the certificates made and installed, and
# qv-get-freq-list on the device.
radio_start() {
  lab_start
  ip -n "$DEVICE_NS" link del wlan0
  local phy
  for phy in $(iw phy | awk '$1 == "Wiphy" {print $2}'); do
    if [ "$phy" = phy0 ]; then
      iw phy phy0 set netns name "$DEVICE_NS"
    else
      iw phy "$phy" set netns name "$PEER_NS"
    fi || lab_abort "cannot move $phy into the lab"
  done
  on_device ip link show wlan0 >/dev/null || lab_abort "no station radio: is this the radio stage's VM?"
  RADIO_CERTS=$LAB_DIR/certs
  mkdir "$RADIO_CERTS"
  make_certificates "$RADIO_CERTS" "$P12_PASSWORD"
  install_certificates "$RADIO_CERTS"
  on_device cp "$LAB_FILES/qv-get-freq-list" /usr/bin/qv-get-freq-list
}

# The BSSID of an access point's interface: hwsim gives radio N the address 02:00:00:00:0N:00.
bssid_of() { printf '02:00:00:00:%02x:00' "${1#wlan}"; }

# Starts the access point of one RADIO_APS line and waits until it beacons.
start_ap() { # interface channel kind ssid
  local name=hostapd-$1
  {
    printf '%s\n' "interface=$1" driver=nl80211 hw_mode=g "channel=$2" "ssid=$4" ctrl_interface=/run/hostapd
    case $3 in
      wpa2 | hidden | eap) echo wpa=2 ;;
      mixed | mixed-eap) printf '%s\n' wpa=3 wpa_pairwise=TKIP ;;
    esac
    case $3 in
      wpa2 | hidden | mixed) printf '%s\n' wpa_key_mgmt=WPA-PSK rsn_pairwise=CCMP "wpa_passphrase=$RADIO_PASSPHRASE" ;;
      eap | mixed-eap)
        printf '%s\n' wpa_key_mgmt=WPA-EAP rsn_pairwise=CCMP ieee8021x=1 eap_reauth_period=0
        eap_server_lines "$name" "$RADIO_CERTS"
        ;;
    esac
    [ "$3" = hidden ] && echo ignore_broadcast_ssid=1
  } >"$LAB_DIR/$name.conf"
  start_hostapd "$name"
  wait_until 10 grep -q AP-ENABLED "$LAB_DIR/$name.log" || lab_abort "$4 did not start: $(cat "$LAB_DIR/$name.log")"
}

start_all_aps() {
  local line interface channel kind ssid
  for line in "${RADIO_APS[@]}"; do
    read -r interface channel kind ssid <<<"$line"
    start_ap "$interface" "$channel" "$kind" "$ssid"
  done
}

# Starts the supplicant on wlan0 with the file the tool wrote and prints its verdict: "COMPLETED"
# and the BSSID it joined, "refused" when it gave up on the credentials, else its state.
associate() {
  local log=$LAB_DIR/supplicant-wlan0.log
  stop_supplicant wlan0
  start_supplicant wlan0 "$WPA_CONF" nl80211 || return
  wait_until 20 grep -qE 'CTRL-EVENT-(CONNECTED|SSID-TEMP-DISABLED|EAP-FAILURE)' "$log"
  if grep -qE 'CTRL-EVENT-(SSID-TEMP-DISABLED|EAP-FAILURE)' "$log"; then
    echo refused
  else
    on_device wpa_cli -i wlan0 status | awk -F= '$1 == "wpa_state" {s = $2} $1 == "bssid" {b = " " $2} END {print s b}'
  fi
}
