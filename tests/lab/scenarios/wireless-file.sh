#!/bin/bash
# The wireless supplicant file that set-wpa-config writes, for open, personal and each enterprise
# method, is accepted by the real wpa_supplicant. There is no radio here, so the supplicant runs
# with the wired driver on wlan0: that still parses the whole file, and an enterprise block even
# authenticates against hostapd on the peer. The PSK is the one the real wpa_passphrase derives.
. "$(dirname "$0")/../lab.sh"
lab_start

CERTS=$LAB_DIR/certs
P12_PASSWORD='p12 pass 9'
SSID="Lab's net"
PASSPHRASE="lab pass'phrase"
WPA_CONF=/etc/wpa_supplicant/wpa_supplicant.conf
mkdir "$CERTS"
make_certificates "$CERTS" "$P12_PASSWORD"
install_certificates "$CERTS"
on_device cp "$LAB_FILES/qv-get-freq-list" /usr/bin/qv-get-freq-list
on_device ip link set wlan0 up

# set-wpa-config with the wireless members given; then the supplicant must take the file.
# Prints nothing; leaves the supplicant running for further checks when it started.
wireless_file() { # description wlan-members
  write_config '"enabled": false' "$2" '"type": "dhcp"'
  stop_supplicant wlan0
  qv set-wpa-config A "$LAB_CONFIG"
  if [ "$QV_STATUS" != 0 ]; then
    fail "$1" "set-wpa-config ended with $QV_STATUS: $QV_ERR"
  elif start_supplicant wlan0 "$WPA_CONF" && wait_until 5 supplicant_answers; then
    pass "$1"
  else
    fail "$1" "$(on_device cat "$WPA_CONF")" "$(cat "$LAB_DIR/supplicant-wlan0.log")"
  fi
}

supplicant_answers() { [ "$(on_device wpa_cli -i wlan0 ping)" = PONG ]; }
network_setting() { on_device wpa_cli -i wlan0 get_network 0 "$1"; }

wireless_file "disabled: the empty network block is accepted" '"enabled": false'

wireless_file "open, frequency auto: accepted" \
  "\"enabled\": true, \"ssid\": \"$SSID\", \"security\": \"open\", \"frequency\": \"auto\""
expect_same "the supplicant has the SSID" "\"$SSID\"" "$(network_setting ssid)"
expect_same "key management none" NONE "$(network_setting key_mgmt)"

wireless_file "open, 2.4 GHz: the frequency list is accepted" \
  "\"enabled\": true, \"ssid\": \"$SSID\", \"security\": \"open\", \"frequency\": \"2.4\""
expect_same "the supplicant has the 2.4 GHz channels" "$("$LAB_FILES/qv-get-freq-list" 2.4)" \
  "$(network_setting freq_list)"

wireless_file "personal, 5 GHz, hidden: accepted" \
  "\"enabled\": true, \"ssid\": \"$SSID\", \"security\": \"personal\", \"frequency\": \"5\",
   \"hidden ssid\": true, \"passphrase\": \"$(stored_password "$PASSPHRASE")\""
expect_same "the PSK is the one wpa_passphrase derives" \
  "$(wpa_passphrase "$SSID" "$PASSPHRASE" | grep -P '^\tpsk=')" \
  "$(on_device grep -P '^\tpsk=' "$WPA_CONF")"
expect_same "the hidden network is probed for" 1 "$(network_setting scan_ssid)"

# wpa_passphrase refuses a pass phrase under 8 characters (its complaint reaches the tool's
# stderr); the tool then writes an empty key, and the supplicant refuses the file, as it does on
# the board.
write_config '"enabled": false' "\"enabled\": true, \"ssid\": \"$SSID\", \"security\": \"personal\",
  \"frequency\": \"auto\", \"passphrase\": \"$(stored_password short)\"" '"type": "dhcp"'
stop_supplicant wlan0
expect_stdout "personal with a short pass phrase: written" "" set-wpa-config A "$LAB_CONFIG"
expect_ok "the empty key line is written" on_device grep -qxP '\tpsk=' "$WPA_CONF"
expect_fails "the supplicant refuses the empty key" start_supplicant wlan0 "$WPA_CONF"

ENTERPRISE="\"enabled\": true, \"ssid\": \"$SSID\", \"security\": \"enterprise\",
  \"frequency\": \"auto\", \"ca certificate\": \"lab-ca.pem\""
ALICE="\"user name\": \"$LAB_EAP_USER\", \"user password\": \"$(stored_password "$LAB_EAP_PASSWORD")\""

# Each enterprise file must also carry working credentials: authenticate it on the wired port.
enterprise_file() { # description wlan-members
  stop_authenticator wlan0-peer
  start_authenticator wlan0-peer "$CERTS"
  wireless_file "$1: accepted" "$2"
  expect_same "$1: authenticates" success "$(eap_outcome wlan0 15)"
}

enterprise_file "enterprise PEAP, WPA2, CCMP" "$ENTERPRISE, $ALICE,
  \"authentication method\": \"peap\", \"advanced security\": \"wpa2\", \"encryption\": \"ccmp\""
enterprise_file "enterprise TTLS, WPA and WPA2, TKIP and CCMP" "$ENTERPRISE, $ALICE,
  \"authentication method\": \"ttls\", \"advanced security\": \"auto\", \"encryption\": \"auto\""
enterprise_file "enterprise TLS, WPA, TKIP" "$ENTERPRISE, \"user name\": \"lab-client\",
  \"authentication method\": \"tls\", \"advanced security\": \"wpa\", \"encryption\": \"tkip\",
  \"pkcs12 certificate\": \"client.p12\", \"pkcs12 password\": \"$(stored_password "$P12_PASSWORD")\""

stop_supplicant wlan0
stop_authenticator wlan0-peer
lab_finish
