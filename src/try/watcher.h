#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "try/try_store.h"

// The descriptor a watcher is started with, holding the watcher lock from before it exists.
inline constexpr int kWatcherLockFd = 3;

// Sees that the pending try has a watcher ("qv-netconf-try --watch"), starting one where none runs:
// in a session of its own, with no terminal, its standard streams on /dev/null and no other
// descriptor of the caller, so that it outlives the caller and its process group. The watcher
// lock is taken before it starts, so no one ever sees the try without its watcher. Called under
// the state lock, where a watcher that still runs cannot be on its way out and takes up the try.
// False when none could be started.
bool startWatcher(const TryStore& store);

// Whether a watcher holds the lock now.
bool watcherRuns(const TryStore& store);

// For the watcher itself: the descriptor holding the watcher lock (the one it was started with,
// or taken now), or -1 when another watcher runs.
int holdWatcherLock(const TryStore& store);

// Runs each of `commands` through /bin/sh, in turn, silently, each in a process group of its own
// that is killed when `untilMs` (on the CLOCK_BOOTTIME milliseconds of tryClock) comes or
// `abandon` says so. True when every one ended with status 0.
bool runChecks(const std::vector<std::string>& commands, std::int64_t untilMs,
               const std::function<bool()>& abandon);
