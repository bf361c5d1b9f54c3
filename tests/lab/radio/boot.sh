#!/bin/bash
# The radio stage of the device lab: boots one virtual machine with Debian's stock kernel, whose
# mac80211_hwsim module gives simulated 802.11 radios driven by the real wireless stack, and runs
# every radio scenario inside it. The machine's root is the VM's root, exported read-only under a
# tmpfs overlay; only a results directory is writable, so nothing the VM does reaches this machine.
# The kernel package and NetworkManager are fetched once into a cache and unpacked there, never
# installed.
#   boot.sh TOOL [DEADLINE_SECONDS]
set -uo pipefail
HERE=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
TOOL=$(realpath "$1")
DEADLINE=${2:-1800}
CACHE=${QV_LAB_CACHE:-/var/cache/qv-netconf-lab}
# The station radio and one radio per access point. regtest=5 gives every radio a fixed
# regulatory domain whose channels all allow active scanning: a scan takes seconds, where the
# world domain's passive channels take tens of them.
RADIOS=7
MODULES=(virtio_pci 9pnet_virtio 9p overlay veth tun "mac80211_hwsim radios=$RADIOS regtest=5" ccm gcm ctr cmac)

radio_abort() {
  echo "radio: $*" >&2
  exit 2
}

# --- the kernel, cached -----------------------------------------------------------------------

# While another apt-get update replaces the lists, apt knows no package: the cached kernel serves.
PACKAGE=$(apt-cache depends linux-image-amd64 2>/dev/null | awk '$1 == "Depends:" && $2 ~ /^linux-image-/ {print $2; exit}')
if [ -z "$PACKAGE" ]; then
  for unpacked in "$CACHE"/linux-image-*/.unpacked; do
    [ -e "$unpacked" ] && PACKAGE=$(basename "$(dirname "$unpacked")")
  done
  [ -n "$PACKAGE" ] || radio_abort "apt knows no linux-image-amd64 package: run apt-get update"
fi
VERSION=${PACKAGE#linux-image-}
KERNEL_TREE=$CACHE/$PACKAGE
if [ ! -e "$KERNEL_TREE/.unpacked" ]; then
  mkdir -p "$CACHE" || radio_abort "cannot make $CACHE"
  # Only the current kernel is kept.
  rm -rf "$CACHE"/linux-image-*
  (cd "$CACHE" && apt-get -q -o APT::Sandbox::User=root download "$PACKAGE") >&2 ||
    radio_abort "cannot download $PACKAGE"
  if ! dpkg-deb -x "$CACHE/${PACKAGE}"_*.deb "$KERNEL_TREE" ||
    ! busybox depmod -b "$KERNEL_TREE" "$VERSION"; then
    radio_abort "cannot unpack $PACKAGE into $KERNEL_TREE"
  fi
  touch "$KERNEL_TREE/.unpacked"
fi

# --- NetworkManager, cached ---------------------------------------------------------------------
# The NetworkManager scenarios run the daemon inside the VM. Its package and the libraries this
# machine lacks (udev aside: without it, and with /sys read-only, the daemon takes links as they
# are) are fetched once and unpacked into one tree of the cache, never installed; the VM copies
# the tree into its own root, which is a tmpfs overlay.
NM_PACKAGES=$(apt-get install -s --no-install-recommends network-manager dbus-daemon 2>/dev/null |
  awk '$1 == "Inst" && $3 !~ /^\[/ && $2 != "udev" {print $2}')
NM_VERSION=$(apt-cache policy network-manager 2>/dev/null | awk '$1 == "Candidate:" {print $2}')
if [ -z "$NM_VERSION" ] || [ "$NM_VERSION" = "(none)" ]; then
  NM_VERSION=
  for unpacked in "$CACHE"/network-manager-*/.unpacked; do
    [ -e "$unpacked" ] && NM_VERSION=$(basename "$(dirname "$unpacked")")
  done
  [ -n "$NM_VERSION" ] || radio_abort "apt knows no network-manager package: run apt-get update"
  NM_VERSION=${NM_VERSION#network-manager-}
fi
NM_TREE=$CACHE/network-manager-$NM_VERSION
# The tree serves while it holds every package this machine lacks (apt's answer is empty while
# another apt-get update replaces the lists).
for package in $NM_PACKAGES; do
  grep -qx "$package" "$NM_TREE/.unpacked" 2>/dev/null || rm -rf "$NM_TREE"
done
if [ ! -e "$NM_TREE/.unpacked" ]; then
  rm -rf "$CACHE"/network-manager-*
  mkdir -p "$NM_TREE/debs" "$NM_TREE/root" || radio_abort "cannot make $NM_TREE"
  # shellcheck disable=SC2086 # one package a word
  (cd "$NM_TREE/debs" && apt-get -q -o APT::Sandbox::User=root download $NM_PACKAGES) >&2 ||
    radio_abort "cannot download $NM_PACKAGES"
  for deb in "$NM_TREE"/debs/*.deb; do
    dpkg-deb -x "$deb" "$NM_TREE/root" || radio_abort "cannot unpack $deb into $NM_TREE"
  done
  rm -rf "$NM_TREE/debs"
  # shellcheck disable=SC2086 # one package a line
  printf '%s\n' $NM_PACKAGES >"$NM_TREE/.unpacked"
fi

# --- a small initramfs: busybox, the modules, and the init that mounts the root -----------------

RUN=$(mktemp -d /tmp/qv-radio.XXXXXX)
RESULTS=$RUN/results
INITRAMFS=$RUN/initramfs
CONSOLE=$RUN/console.log
mkdir -p "$RESULTS" "$INITRAMFS"/{bin,dev,proc,sys,lower,upper,newroot}
cp /bin/busybox "$INITRAMFS/bin/" || radio_abort "busybox-static is missing: run tests/lab/setup.sh"
cp "$HERE/initramfs-init.sh" "$INITRAMFS/init"
echo "$HERE/vm-stage.sh" >"$INITRAMFS/stage"
modules_dir=lib/modules/$VERSION
mkdir -p "$INITRAMFS/$modules_dir"
for module in "${MODULES[@]}"; do
  name=${module%% *}
  line=$(grep -E "/${name}\.ko:" "$KERNEL_TREE/$modules_dir/modules.dep") ||
    radio_abort "the kernel has no module $name"
  for file in ${line/:/}; do
    grep -q "^$file:" "$INITRAMFS/$modules_dir/modules.dep" 2>/dev/null && continue
    mkdir -p "$INITRAMFS/$modules_dir/$(dirname "$file")"
    cp "$KERNEL_TREE/$modules_dir/$file" "$INITRAMFS/$modules_dir/$file"
    grep "^$file:" "$KERNEL_TREE/$modules_dir/modules.dep" >>"$INITRAMFS/$modules_dir/modules.dep"
  done
  echo "$module" >>"$INITRAMFS/modules"
done
(cd "$INITRAMFS" && find . | busybox cpio -o -H newc 2>/dev/null) >"$RUN/initramfs.cpio" ||
  radio_abort "cannot pack the initramfs"

# What the VM runs once its root is up.
printf 'TOOL=%q\nNM_TREE=%q\nSCENARIOS=%q\n' "$TOOL" "$NM_TREE/root" "${QV_RADIO_SCENARIOS:-}" \
  >"$RESULTS/run.conf"

# --- the VM -------------------------------------------------------------------------------------
# Software emulation only: KVM aborts or hangs on this machine kind. One CPU leaves the other to
# the tests that run beside this one.

timeout --kill-after=5 "$DEADLINE" qemu-system-x86_64 -nodefaults -accel tcg -cpu max -smp 1 -m 1536 \
  -display none -monitor none -serial "file:$CONSOLE" -no-reboot -nic none \
  -kernel "$KERNEL_TREE/boot/vmlinuz-$VERSION" -initrd "$RUN/initramfs.cpio" \
  -append "console=ttyS0 panic=-1 quiet" \
  -virtfs "local,path=/,mount_tag=hostroot,security_model=none,readonly=on,multidevs=remap" \
  -virtfs "local,path=$RESULTS,mount_tag=results,security_model=none"
qemu_status=$?
# A failed run keeps only the console log and the results.
rm -rf "$INITRAMFS" "$RUN/initramfs.cpio"

cat "$RESULTS"/*.out 2>/dev/null
echo "radio: VM up after $(cat "$RESULTS/booted" 2>/dev/null || echo "(never)") s"
if [ "$qemu_status" != 0 ] || ! status=$(cat "$RESULTS/done" 2>/dev/null); then
  radio_abort "the VM ended with status $qemu_status (124: deadline of $DEADLINE s) before its" \
    "scenarios did: see $CONSOLE"
fi
if [ "$status" = 0 ]; then
  rm -rf "$RUN"
else
  echo "radio: scenarios failed; console log $CONSOLE"
fi
exit "$status"
