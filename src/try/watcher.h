#pragma once

#include <csignal>
#include <cstdint>
#include <string>
#include <vector>

#include "try/try_store.h"

// The descriptor a watcher is started with, holding the watcher lock from before it exists.
inline constexpr int kWatcherLockFd = 3;

// Starts the watcher of the pending try ("qv-netconf-try --watch"): in a session of its own, with
// no terminal, its standard streams on /dev/null and no other descriptor of the caller, so that
// it outlives the caller and its process group. The watcher lock is taken before it starts, so
// no one ever sees the try without its watcher. False when it could not be started (or a watcher
// already runs).
bool startWatcher(const TryStore& store);

// Whether a watcher holds the lock now.
bool watcherRuns(const TryStore& store);

// Waits until the watcher that holds the lock ends.
void waitForWatcher(const TryStore& store);

// For the watcher itself: the descriptor holding the watcher lock (the one it was started with,
// or taken now), or -1 when another watcher runs.
int holdWatcherLock(const TryStore& store);

// Runs each of `commands` through /bin/sh, in turn, silently, each in a process group of its own
// that is killed when `untilMs` (on the CLOCK_BOOTTIME milliseconds of tryClock) comes or
// `stop` is set. True when every one ended with status 0.
bool runChecks(const std::vector<std::string>& commands, std::int64_t untilMs,
               const volatile sig_atomic_t& stop);
