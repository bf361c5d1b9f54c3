#!/bin/sh
# Runs a program built for another architecture under qemu-user; the emulator of cross builds:
#   qemu-run.sh CPU SYSROOT PROGRAM [ARG...]     (CPU as in qemu-CPU: aarch64, arm, ...)
# The program sees this script as its argv[0], so a program that re-executes itself (a unit test
# binary running a death test) comes back here and runs under qemu again, instead of failing
# with "Exec format error" on a host without binfmt_misc. Death tests are switched to their
# re-executing style: qemu-user 7.2 hangs or crashes in a child that goes on running the program
# after fork().
set -e
if [ -z "${QV_QEMU_PROGRAM:-}" ]; then
  export QV_QEMU_CPU="$1" QV_QEMU_SYSROOT="$2" QV_QEMU_PROGRAM="$3"
  export GTEST_DEATH_TEST_STYLE=threadsafe
  shift 3
fi
exec "qemu-$QV_QEMU_CPU" -L "$QV_QEMU_SYSROOT" -0 "$(readlink -f "$0")" "$QV_QEMU_PROGRAM" "$@"
