#!/bin/bash
# Wired 802.1X: the real wpa_supplicant (wired driver) reads the wpa_supplicant_wired.conf that
# set-config writes and authenticates against hostapd on the peer, for PEAP and TTLS with stored
# and with pass-through credentials and for TLS with a PKCS#12 file; wrong secrets must fail.
. "$(dirname "$0")/../lab.sh"
lab_start

CERTS=$LAB_DIR/certs
P12_PASSWORD='p12 pass 7'
mkdir "$CERTS"
make_certificates "$CERTS" "$P12_PASSWORD"
install_certificates "$CERTS"
on_device ip link set eth0 up

# One case: config.json with the wired members given, set-config (with any pass-through words),
# then a fresh authenticator and supplicant; the supplicant's verdict must be the expected one.
wired_case() { # description success|failure eth-members [user [password]]
  local description=$1 expected=$2 outcome
  write_config '"enabled": true, "type": "dhcp", "security": "enterprise", '"$3" \
    '"enabled": false' '"type": "dhcp"'
  shift 3
  qv set-config A "$LAB_CONFIG" "$@"
  if [ "$QV_STATUS" != 0 ]; then
    fail "$description" "set-config ended with $QV_STATUS: $QV_ERR"
    return
  fi
  stop_supplicant eth0
  stop_authenticator eth0-peer
  start_authenticator eth0-peer "$CERTS"
  start_supplicant eth0 /etc/wpa_supplicant/wpa_supplicant_wired.conf
  outcome=$(eap_outcome eth0 15)
  if [ "$outcome" = "$expected" ]; then
    pass "$description"
  else
    fail "$description" "EAP outcome: ${outcome:-none}" \
      "$(on_device cat /etc/wpa_supplicant/wpa_supplicant_wired.conf)" \
      "$(tail -n 15 "$LAB_DIR/supplicant-eth0.log")"
  fi
}

STORED_ALICE=$(stored_password "$LAB_EAP_PASSWORD")
STORED_WRONG=$(stored_password "not alice's password")
STORED_P12=$(stored_password "$P12_PASSWORD")
CA='"ca certificate": "lab-ca.pem"'
# Stored credentials that must not be used when the command line brings its own.
DECOY='"user name": "mallory", "user password": "'"$STORED_WRONG"'"'

wired_case "PEAP with the stored password" success \
  "\"authentication method\": \"peap\", $CA, \"user name\": \"$LAB_EAP_USER\", \"user password\": \"$STORED_ALICE\""
expect_same "the authenticated port is authorized" suppPortStatus=Authorized \
  "$(on_device wpa_cli -i eth0 status | grep suppPortStatus)"
wired_case "PEAP with pass-through credentials" success \
  "\"authentication method\": \"peap\", $CA, $DECOY, \"ask for credentials\": true" \
  "$LAB_EAP_USER" "$LAB_EAP_PASSWORD"
wired_case "PEAP with a wrong stored password fails" failure \
  "\"authentication method\": \"peap\", $CA, \"user name\": \"$LAB_EAP_USER\", \"user password\": \"$STORED_WRONG\""
wired_case "TTLS with the stored password" success \
  "\"authentication method\": \"ttls\", $CA, \"user name\": \"$LAB_EAP_USER\", \"user password\": \"$STORED_ALICE\""
wired_case "TTLS with pass-through credentials" success \
  "\"authentication method\": \"ttls\", $CA, $DECOY, \"ask for credentials\": true" \
  "$LAB_EAP_USER" "$LAB_EAP_PASSWORD"
wired_case "TTLS with a wrong pass-through password fails" failure \
  "\"authentication method\": \"ttls\", $CA, $DECOY, \"ask for credentials\": true" \
  "$LAB_EAP_USER" "Alice's wired 2"
wired_case "TLS with a PKCS#12 file and its stored password" success \
  "\"authentication method\": \"tls\", $CA, \"user name\": \"lab-client\", \"pkcs12 certificate\": \"client.p12\", \"pkcs12 password\": \"$STORED_P12\""
wired_case "TLS with a PKCS#12 file in the legacy format" success \
  "\"authentication method\": \"tls\", $CA, \"user name\": \"lab-client\", \"pkcs12 certificate\": \"client-legacy.p12\", \"pkcs12 password\": \"$STORED_P12\""
wired_case "TLS with a wrong PKCS#12 password fails" failure \
  "\"authentication method\": \"tls\", $CA, \"user name\": \"lab-client\", \"pkcs12 certificate\": \"client.p12\", \"pkcs12 password\": \"$STORED_WRONG\""

stop_supplicant eth0
stop_authenticator eth0-peer
lab_finish
