#!/bin/sh
# Started by tests/e2e/sandbox.sh in place of the tool: puts the benchmark's instant fakes first
# in PATH and in place of the frequency-list utility, then runs the given command.
#   in-sandbox.sh FAKES_DIR CANNED_DIR COMMAND [ARG...]
set -e
fakes=$1 canned=$2
shift 2
ln -sf "$fakes/qv-get-freq-list" /usr/bin/qv-get-freq-list
export PATH="$fakes:$PATH" QV_BENCH_CANNED="$canned"
exec "$@"
