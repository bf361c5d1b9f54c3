#!/bin/busybox sh
# shellcheck shell=dash
# The VM's first process: loads the modules, mounts this machine's root (read-only, shared by the
# host) under a tmpfs overlay and the results share, and hands over to the stage script named in
# /stage. Any failure ends the VM; the host then points at the console log.
/bin/busybox --install -s /bin
mount -t proc proc /proc
mount -t sysfs sys /sys
mount -t devtmpfs dev /dev
die() {
  echo "radio init: $*"
  echo o >/proc/sysrq-trigger
  sleep 5
}
while read -r module parameters; do
  # shellcheck disable=SC2086
  modprobe "$module" $parameters || die "cannot load $module"
done </modules
mount -t 9p -o ro,trans=virtio,version=9p2000.L,msize=512000,cache=loose hostroot /lower ||
  die "cannot mount the machine's root"
# The export is read-only on the host's side: even mounted read-write here, it takes no write.
mount -o remount,rw /lower || die "cannot remount the machine's root to try a write"
if touch /lower/tmp/qv-radio-write-probe 2>/dev/null; then
  rm -f /lower/tmp/qv-radio-write-probe
  die "the VM could write the machine's root"
fi
mount -o remount,ro /lower
mount -t tmpfs -o size=1G,mode=755 upper /upper
mkdir -p /upper/root /upper/work
mount -t overlay -o lowerdir=/lower,upperdir=/upper/root,workdir=/upper/work root /newroot ||
  die "cannot mount the overlay"
mkdir -p /newroot/qv-results
mount -t 9p -o trans=virtio,version=9p2000.L,msize=512000 results /newroot/qv-results ||
  die "cannot mount the results share"
for fs in proc sys dev; do mount --move "/$fs" "/newroot/$fs"; done
exec switch_root /newroot /bin/bash "$(cat /stage)"
