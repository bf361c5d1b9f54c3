# The real daemons of the lab: the wired 802.1X authenticator and the DHCP server on the peer,
# the supplicant on the device. Each is started with a PID file and stopped by that PID; their
# logs stay in the lab directory. Sourced by lab.sh.

# The authenticator's EAP users: any outer identity may run PEAP, TTLS or TLS; inside the tunnel
# the one user is alice. TTLS is offered EAP-MSCHAPv2 inside, which the supplicant uses when its
# file names no inner method.
LAB_EAP_USER=alice
LAB_EAP_PASSWORD="Alice's wired 1"

# Starts hostapd on the peer as the wired authenticator of PEER_INTERFACE, with the lab CA
# (made by make_certificates in CERTS). hostapd ignores a MAC for a while after an EAP failure,
# so every case starts a fresh one.
start_authenticator() { # peer-interface certs-dir
  local name=hostapd-$1
  {
    printf '%s\n' "interface=$1" driver=wired ieee8021x=1 use_pae_group_addr=1 eap_reauth_period=0 \
      ctrl_interface=/run/hostapd
    eap_server_lines "$name" "$2"
  } >"$LAB_DIR/$name.conf"
  start_hostapd "$name"
}

# Writes the EAP users file of hostapd NAME and prints the lines that make that hostapd the EAP
# server, with the lab CA's certificates in CERTS.
eap_server_lines() { # name certs-dir
  cat >"$LAB_DIR/$1.eap_user" <<EOF
* PEAP,TTLS,TLS
"$LAB_EAP_USER" MSCHAPV2,TTLS-MSCHAPV2 "$LAB_EAP_PASSWORD" [2]
EOF
  printf '%s\n' eap_server=1 "eap_user_file=$LAB_DIR/$1.eap_user" "ca_cert=$2/ca.pem" \
    "server_cert=$2/server.pem" "private_key=$2/server.key"
}

# Starts hostapd NAME on the peer from LAB_DIR/NAME.conf; its PID file and log are NAME.pid and
# NAME.log there.
start_hostapd() { # name
  local name=$1
  rm -f "$LAB_DIR/$name.pid"
  on_peer hostapd -B -P "$LAB_DIR/$name.pid" -f "$LAB_DIR/$name.log" "$LAB_DIR/$name.conf" ||
    lab_abort "hostapd did not start: $(cat "$LAB_DIR/$name.log")"
  wait_until 5 test -s "$LAB_DIR/$name.pid" || lab_abort "hostapd wrote no PID file"
}

# Starts the real wpa_supplicant on a device interface with the wired driver (or the one given),
# logging to LAB_DIR/supplicant-IFACE.log (which starts empty).
start_supplicant() { # interface config-file [driver]
  local log=$LAB_DIR/supplicant-$1.log
  : >"$log"
  rm -f "$LAB_DIR/supplicant-$1.pid"
  on_device wpa_supplicant -B -D "${3:-wired}" -i "$1" -c "$2" -f "$log" -P "$LAB_DIR/supplicant-$1.pid"
}

stop_supplicant() { # interface
  stop_by_pid_file "$LAB_DIR/supplicant-$1.pid"
}

# Waits for the supplicant on INTERFACE to end its EAP exchange; prints success, failure or
# nothing (no verdict within the seconds).
eap_outcome() { # interface seconds
  local log=$LAB_DIR/supplicant-$1.log
  wait_until "$2" grep -qE 'CTRL-EVENT-EAP-(SUCCESS|FAILURE)' "$log"
  if grep -q CTRL-EVENT-EAP-SUCCESS "$log"; then
    echo success
  elif grep -q CTRL-EVENT-EAP-FAILURE "$log"; then
    echo failure
  fi
}

# Ends the process named by a PID file (TERM, KILL after a bounded wait) and removes the file.
stop_by_pid_file() { # pid-file
  local pid
  [ -s "$1" ] || return 0
  pid=$(cat "$1")
  kill -TERM "$pid" 2>/dev/null
  wait_until 3 lab_process_gone "$pid" || kill -KILL "$pid" 2>/dev/null
  rm -f "$1"
}

# A daemon's zombie waits for whoever adopted it to reap it: it counts as gone.
lab_process_gone() { # pid
  local stat
  stat=$(cat "/proc/$1/stat" 2>/dev/null) || return 0
  stat=${stat##*) }
  [ "${stat%% *}" = Z ]
}

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
# ROLE from tests/lab/files. No kernel ESP exists here: charon does ESP in user space
# (kernel-libipsec, which needs UDP encapsulation on both ends). Its log goes to
# LAB_DIR/charon-MACHINE.log. The lab's end stops it with the rest of the namespace.
start_ipsec() { # on_device|on_peer role
  local machine=$1 log=$LAB_DIR/charon-${1#on_}.log
  put_file "$machine" /etc/ipsec.conf <"$LAB_FILES/ipsec-$2.conf"
  put_file "$machine" /etc/ipsec.secrets <"$LAB_FILES/ipsec-$2.secrets"
  printf 'kernel-libipsec {\n  load = yes\n}\n' |
    put_file "$machine" /etc/strongswan.d/charon/kernel-libipsec.conf
  printf 'charon {\n  filelog {\n    lab {\n      path = %s\n      default = 1\n      flush_line = yes\n    }\n  }\n}\n' \
    "$log" | put_file "$machine" /etc/strongswan.d/charon-logging.conf
  "$machine" ipsec start >>"$log.starter" 2>&1 || lab_abort "ipsec start failed: $(cat "$log.starter")"
  wait_until 10 "$machine" test -S /run/charon.ctl || lab_abort "charon did not start: $(cat "$log")"
}
