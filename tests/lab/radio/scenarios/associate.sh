#!/bin/bash
# The wireless supplicant file that set-wpa-config writes from stored secrets joins real access
# points over the air: personal (frequency auto and 2.4 GHz), open, hidden, mixed WPA/WPA2, and
# enterprise PEAP, TTLS and TLS with a PKCS#12 file; a wrong stored secret must not join.
. "$(dirname "$0")/../../lab.sh"
. "$(dirname "$0")/../radio.sh"
radio_start
start_all_aps

PASSPHRASE=$(stored_password "$RADIO_PASSPHRASE")
CA='"ca certificate": "lab-ca.pem"'
ALICE="\"user name\": \"$LAB_EAP_USER\", \"user password\": \"$(stored_password "$LAB_EAP_PASSWORD")\""
EAP='"ssid": "Lab enterprise", "security": "enterprise", "frequency": "auto"'

# One case: config.json with these wireless members, set-wpa-config, then the supplicant's verdict.
association_case() { # description expected-verdict wlan-members
  write_config '"enabled": false' "\"enabled\": true, \"type\": \"dhcp\", $3" '"type": "dhcp"'
  qv set-wpa-config A "$LAB_CONFIG"
  if [ "$QV_STATUS" != 0 ]; then
    fail "$1" "set-wpa-config ended with $QV_STATUS: $QV_ERR"
    return
  fi
  local verdict
  verdict=$(associate)
  if [ "$verdict" = "$2" ]; then
    pass "$1"
  else
    fail "$1" "expected: $2" "verdict:  $verdict" "$(on_device cat "$WPA_CONF")" \
      "$(tail -n 15 "$LAB_DIR/supplicant-wlan0.log")"
  fi
}

joined() { echo "COMPLETED $(bssid_of "$1")"; }

association_case "personal, frequency auto" "$(joined wlan2)" \
  "\"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$PASSPHRASE\""
association_case "personal, 2.4 GHz through qv-get-freq-list" "$(joined wlan2)" \
  "\"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"2.4\", \"passphrase\": \"$PASSPHRASE\""
association_case "open" "$(joined wlan1)" \
  '"ssid": "Lab open", "security": "open", "frequency": "auto"'
association_case "hidden" "$(joined wlan4)" \
  "\"ssid\": \"Lab hidden\", \"hidden ssid\": true, \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$PASSPHRASE\""
association_case "WPA and WPA2 offered together" "$(joined wlan3)" \
  "\"ssid\": \"Lab mixed\", \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$PASSPHRASE\""
association_case "enterprise PEAP, WPA2, CCMP" "$(joined wlan5)" \
  "$EAP, $CA, $ALICE, \"authentication method\": \"peap\", \"advanced security\": \"wpa2\", \"encryption\": \"ccmp\""
association_case "enterprise TTLS, WPA and WPA2, TKIP and CCMP" "$(joined wlan5)" \
  "$EAP, $CA, $ALICE, \"authentication method\": \"ttls\", \"advanced security\": \"auto\", \"encryption\": \"auto\""
association_case "enterprise TLS with a PKCS#12 file" "$(joined wlan5)" \
  "$EAP, $CA, \"user name\": \"lab-client\", \"authentication method\": \"tls\", \"advanced security\": \"wpa2\",
   \"encryption\": \"ccmp\", \"pkcs12 certificate\": \"client.p12\", \"pkcs12 password\": \"$(stored_password "$P12_PASSWORD")\""
association_case "a wrong stored pass phrase does not join" refused \
  "\"ssid\": \"Lab's personal\", \"security\": \"personal\", \"frequency\": \"auto\", \"passphrase\": \"$(stored_password "not the pass phrase")\""
association_case "a wrong stored password does not join" refused \
  "$EAP, $CA, \"user name\": \"$LAB_EAP_USER\", \"user password\": \"$(stored_password "not alice's password")\",
   \"authentication method\": \"peap\", \"advanced security\": \"wpa2\", \"encryption\": \"ccmp\""

stop_supplicant wlan0
lab_finish
