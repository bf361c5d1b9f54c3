#!/bin/bash
# Runs as the VM's first process once the overlaid root is up: every radio scenario in turn, each
# through run-scenario.sh (deadline, clean-up, and the proof that the VM's own files and links are
# as before), their output into the results share; then it powers the VM off.
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
RESULTS=/qv-results
ln -s /proc/self/fd /dev/fd
# What a booted machine has in /dev, and the lab's sandboxes bind.
mkdir -p /dev/pts /dev/shm
mount -t devpts devpts /dev/pts
mount -t tmpfs shm /dev/shm
mount -t tmpfs run /run
mount -t tmpfs tmp /tmp
ip link set lo up
# sudo looks its host's name up.
hostname qv-radio-lab
echo "127.0.1.1 qv-radio-lab" >>/etc/hosts
awk '{print $1}' /proc/uptime >"$RESULTS/booted"
# shellcheck source=/dev/null
. "$RESULTS/run.conf"
status=0
# NetworkManager is installed, not running, as on a board that has it but chose ifupdown: only the
# scenarios that start it see it run. The libraries it needs come with it or from this machine.
tar -C "$NM_TREE" -c . | tar -C / -x --keep-directory-symlink
missing=$(ldd /usr/sbin/NetworkManager /usr/bin/nmcli | grep 'not found')
[ -z "$missing" ] || { echo "--- radio: NetworkManager lacks libraries: $missing"; status=1; } >"$RESULTS/networkmanager-install.out"
for scenario in "$HERE"/scenarios/*.sh; do
  name=$(basename "$scenario" .sh)
  # QV_RADIO_SCENARIOS (names, blank-separated) runs only those, while a scenario is written.
  [ -z "${SCENARIOS:-}" ] || [[ " $SCENARIOS " == *" $name "* ]] || continue
  started=$SECONDS
  { echo "--- radio/$name"; "$HERE/../run-scenario.sh" "$TOOL" "$scenario" 420 2>&1; } >"$RESULTS/$name.out" ||
    status=1
  echo "--- radio/$name took $((SECONDS - started)) s" >>"$RESULTS/$name.out"
done
echo "$status" >"$RESULTS/done"
sync
echo o >/proc/sysrq-trigger
sleep 10
