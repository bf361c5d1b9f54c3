#pragma once

#include <ostream>

#include "try/try_options.h"
#include "try/try_store.h"

// The commands of qv-netconf-try; each returns the exit status (see try_steps.h). Answers go to
// `out`; refusals in text form to `err`.

// Checks, records, writes and applies a config.json, then leaves its deadline to a watcher (and
// with --wait stays until the try ends).
int startTry(const tryOptions& options, TryStore& store, std::ostream& out, std::ostream& err);
// Keeps the pending try (or says it came too late: rolled back).
int confirmTry(bool json, TryStore& store, std::ostream& out, std::ostream& err);
// Undoes the pending try now.
int rollbackTry(bool json, TryStore& store, std::ostream& out, std::ostream& err);
// Says whether a try is pending and how the last one ended; never waits for a try that is being
// applied. A try whose watcher was lost gets a new one, or is rolled back when its time is up.
int tryStatus(bool json, TryStore& store, std::ostream& out);
// At boot, before the network: undoes a try left unconfirmed, or finishes a step cut off.
int bootTry(TryStore& store, std::ostream& out);
// The watcher: confirms by the checks, or rolls back when the time is up or it is stopped.
int watchTry(TryStore& store);
