#!/bin/bash
# Runs one lab scenario against the built tool, within a deadline, and afterwards removes whatever
# namespaces of this run are left (a scenario killed at its deadline cannot clean up itself), as
# well as those of earlier runs whose runner is gone.
#   run-scenario.sh TOOL SCENARIO [DEADLINE_SECONDS]
set -uo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
LAB_TOOL=$(realpath "$1")
SCENARIO=$(realpath "$2")
DEADLINE=${3:-240}
LAB_NAME=qvlab-$$-$(basename "$SCENARIO" .sh)
LAB_ROOT=$(mktemp -d /tmp/qv-lab-run.XXXXXX)
export LAB_TOOL LAB_NAME LAB_ROOT

# shellcheck source=lab.sh
. "$HERE/lab.sh"

sweep() {
  local namespace owner
  for namespace in $(ip netns list | awk '{print $1}' | grep '^qvlab-[0-9]*-'); do
    owner=${namespace#qvlab-}
    owner=${owner%%-*}
    if [ "$owner" = $$ ] || ! kill -0 "$owner" 2>/dev/null; then
      lab_remove_namespace "$namespace"
    fi
  done
}

# What the lab could touch on this machine if a sandbox leaked: the files the tool and the daemons
# write, the network, and daemons left running outside the lab's namespaces. Seen from the
# machine's own root and network, so a run inside a chroot is checked against the machine too.
HOST_FILES=(/etc/network /etc/wpa_supplicant /etc/dhcpcd.conf /etc/resolv.conf /etc/dhcp /etc/hostapd
            /etc/ipsec.conf /etc/ipsec.secrets /etc/strongswan.d /etc/ssl/openssl.cnf /var/lib/dhcp
            /var/lib/dhcpcd /var/lib/qv-netconf /usr/bin/qv-netconf /usr/bin/qv-netconf-check
            /usr/bin/qv-netconf-try /usr/bin/qv-get-freq-list /KQ /run/charon.ctl /run/charon.vici
            /run/hostapd /run/wpa_supplicant /run/dnsmasq /etc/NetworkManager /run/NetworkManager
            /var/lib/NetworkManager)
host_snapshot() {
  find "${HOST_FILES[@]/#/$MACHINE_ROOT}" -printf '%p %m %s %T@\n' 2>/dev/null | sort
  # A link that spent the run in a lab's namespace may come back under another index.
  machine_ip -o link show | sed -e 's/ link\/.*//' -e 's/^[0-9]*: //' | sort
  machine_ip -o addr show
  machine_ip route show
  machine_daemons
}

sweep
host_snapshot >"$LAB_ROOT/host-before"
timeout --kill-after=5 "$DEADLINE" bash "$SCENARIO"
status=$?
case $status in 124 | 137) echo "lab: $(basename "$SCENARIO") did not finish within $DEADLINE s" ;; esac
sweep
host_snapshot >"$LAB_ROOT/host-after"
if ! diff -u "$LAB_ROOT/host-before" "$LAB_ROOT/host-after"; then
  echo "lab: $(basename "$SCENARIO") changed this machine (above)"
  status=1
fi
rm -rf "$LAB_ROOT"
exit $status
