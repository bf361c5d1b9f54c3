# The real daemons of the lab and their secrets: the wired 802.1X authenticator, the DHCP server
# and an IPsec gateway on the peer, the supplicant and strongSwan on the device, and a throwaway
# CA. Each is started with a PID file and stopped by that PID; their
# logs stay in the lab directory. Sourced by lab.sh.

# Starts hostapd on the peer from a configuration file NAME.conf; an 802.1X one also makes it the
# EAP server of the users in files/eap_user, with the certificates of lab_certificates. Its
# configuration, PID file and log are NAME.conf, .pid and .log in LAB_DIR.
start_hostapd() { # conf-file
  local name
  name=$(basename "$1" .conf)
  cat "$1" >"$LAB_DIR/$name.conf"
  grep -qx ieee8021x=1 "$1" && printf '%s\n' eap_server=1 "eap_user_file=$LAB_FILES/eap_user" \
    "ca_cert=$LAB_DIR/certs/ca.pem" "server_cert=$LAB_DIR/certs/server.pem" \
    "private_key=$LAB_DIR/certs/server.key" >>"$LAB_DIR/$name.conf"
  rm -f "$LAB_DIR/$name.pid"
  on_peer hostapd -B -P "$LAB_DIR/$name.pid" -f "$LAB_DIR/$name.log" "$LAB_DIR/$name.conf" ||
    lab_abort "hostapd did not start: $(cat "$LAB_DIR/$name.log")"
  wait_until 5 test -s "$LAB_DIR/$name.pid" || lab_abort "hostapd wrote no PID file"
}

# Starts the real wpa_supplicant on a device interface with the wired driver (or the one given),
# logging to LAB_DIR/supplicant-IFACE.log (which starts empty); its PID file is supplicant-IFACE.pid
# there.
start_supplicant() { # interface config-file [driver]
  local log=$LAB_DIR/supplicant-$1.log
  : >"$log"
  on_device wpa_supplicant -B -D "${3:-wired}" -i "$1" -c "$2" -f "$log" -P "$LAB_DIR/supplicant-$1.pid"
}

# Waits for the supplicant on INTERFACE to end its EAP exchange; prints EAP-SUCCESS, EAP-FAILURE
# or nothing (no verdict within the seconds).
eap_outcome() { # interface seconds
  wait_until "$2" grep -qE 'CTRL-EVENT-EAP-(SUCCESS|FAILURE)' "$LAB_DIR/supplicant-$1.log"
  grep -oE 'EAP-(SUCCESS|FAILURE)' "$LAB_DIR/supplicant-$1.log" | head -n 1
}

# Ends the process named by a PID file (TERM, KILL after a bounded wait) and removes the file.
stop_by_pid_file() { # pid-file
  [ -s "$1" ] || return 0
  kill -TERM "$(cat "$1")" 2>/dev/null
  wait_until 3 lab_process_gone "$(cat "$1")" || kill -KILL "$(cat "$1")" 2>/dev/null
  rm -f "$1"
}

# A daemon's zombie waits for whoever adopted it to reap it: it counts as gone.
lab_process_gone() { [[ $(ps -o stat= -p "$1") != [^Z]* ]]; }

# Starts dnsmasq on the peer as the DHCP server of PEER_INTERFACE, which gets ADDRESS (a /24). It
# leases .50 to .59 of that network and names itself router and name server.
start_dhcp_server() { # peer-interface address
  local name=dnsmasq-$1 network=${2%.*}
  on_peer ip addr add "$2/24" dev "$1"
  rm -f "$LAB_DIR/$name.pid"
  on_peer dnsmasq --conf-file=/dev/null --port=0 --user=root --interface="$1" --bind-interfaces \
    --dhcp-range="$network.50,$network.59,255.255.255.0,10m" --dhcp-option=option:dns-server,"$2" \
    --dhcp-leasefile="$LAB_DIR/$name.leases" --pid-file="$LAB_DIR/$name.pid" \
    --log-facility="$LAB_DIR/$name.log" --log-dhcp || lab_abort "dnsmasq did not start"
  wait_until 5 test -s "$LAB_DIR/$name.pid" || lab_abort "dnsmasq wrote no PID file"
}

# Starts strongSwan on one machine (on_device or on_peer) with the ipsec.conf and ipsec.secrets of
# ROLE from tests/lab/files. charon does ESP in user space (kernel-libipsec, which needs UDP
# encapsulation on both ends) and logs to that machine's /run/charon-lab.log. The lab's end stops
# it with the rest of the namespace.
start_ipsec() { # on_device|on_peer role
  put_file "$1" /etc/ipsec.conf <"$LAB_FILES/ipsec-$2.conf"
  put_file "$1" /etc/ipsec.secrets <"$LAB_FILES/ipsec-$2.secrets"
  put_file "$1" /etc/strongswan.d/charon/kernel-libipsec.conf <"$LAB_FILES/kernel-libipsec.conf"
  put_file "$1" /etc/strongswan.d/charon-logging.conf <"$LAB_FILES/charon-logging.conf"
  "$1" ipsec start >/dev/null 2>&1 || lab_abort "ipsec start failed: $("$1" ipsec start 2>&1)"
  wait_until 10 "$1" test -S /run/charon.ctl ||
    lab_abort "charon did not start: $("$1" cat /run/charon-lab.log)"
}

# Makes a throwaway CA in LAB_DIR/certs with a server certificate for the authenticators and a
# client one, the client's key and certificate as client.p12 (OpenSSL 3's default PKCS#12 format)
# and client-legacy.p12 (the older RC2/3DES format) under the password "p12 pass 7", and installs
# the CA and both files in the device's certificate store.
lab_certificates() {
  local dir=$LAB_DIR/certs store=/KQ/configuration/certificates name
  mkdir "$dir"
  (
    cd "$dir" || exit 1
    ec=(-newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes)
    openssl req -x509 "${ec[@]}" -keyout ca.key -out ca.pem -days 2 -subj "/CN=Lab CA" &&
      for name in server client; do
        openssl req "${ec[@]}" -keyout "$name.key" -out "$name.csr" -subj "/CN=lab-$name" &&
          openssl x509 -req -in "$name.csr" -CA ca.pem -CAkey ca.key -CAcreateserial \
            -out "$name.pem" -days 2 || exit 1
      done &&
      openssl pkcs12 -export -inkey client.key -in client.pem -certfile ca.pem \
        -passout "pass:p12 pass 7" -out client.p12 &&
      openssl pkcs12 -export -legacy -inkey client.key -in client.pem -certfile ca.pem \
        -passout "pass:p12 pass 7" -out client-legacy.p12
  ) >"$dir/openssl.log" 2>&1 || lab_abort "cannot make the certificates: $(cat "$dir/openssl.log")"
  on_device cp "$dir/ca.pem" "$store/cacerts/lab-ca.pem"
  on_device cp "$dir/client.p12" "$dir/client-legacy.p12" "$store/pkcs12/"
}
