#pragma once

#include <optional>
#include <string>
#include <vector>

#include "generate/writer_lock.h"
#include "try/try_record.h"
#include "try/try_store.h"

// Exit statuses of qv-netconf-try.
inline constexpr int kTryDone = 0;        // applied and pending, confirmed, answered
inline constexpr int kTryRefused = 1;     // refused or failed: nothing was changed
inline constexpr int kTryUsage = 2;       // a bad command line
inline constexpr int kTryRolledBack = 3;  // the try was rolled back

// How a try ended or is ended.
inline constexpr char kByConfirmCommand[] = "by qv-netconf-try --confirm";
inline constexpr char kByChecks[] = "by its checks";
inline constexpr char kAskedToRollBack[] = "asked by qv-netconf-try --rollback";
inline constexpr char kWatcherStopped[] = "its watcher was stopped";
inline constexpr char kRestarted[] = "the machine restarted before it was confirmed";

// Both locks every step of a try holds, taken in the one order every writer takes them: the
// tool's writers' lock, then the state directory's. `error` is the state lock's (0: held).
class TryLocks {
 public:
  explicit TryLocks(TryStore& store) : store_(store), error_(store.lock(true)) {}
  ~TryLocks() { store_.unlock(); }
  TryLocks(const TryLocks&) = delete;
  TryLocks& operator=(const TryLocks&) = delete;
  int error() const { return error_; }

 private:
  NetworkFilesLock files_;
  TryStore& store_;
  int error_;
};

// What a step did to a try that it ended.
struct stepResult {
  bool ended = false;  // the try is over (confirmed or rolled back)
  tryOutcome outcome;  // how, when it ended
  std::string error;   // why the step could not be done whole
};

// Rolls the try back: the phase recorded first, the links of the tried files taken down (with
// `links`), every file put back as it was, the links brought back as before (with `links`), the
// outcome kept and the record forgotten, and one line logged.
stepResult rollBack(TryStore& store, tryRecord record, const std::string& reason, bool links);

// Confirms the try: the phase recorded first, its config.json kept as the confirmed one, the
// outcome kept and the record forgotten, and one line logged.
stepResult confirm(TryStore& store, tryRecord record, const std::string& how);

// Under the locks: finishes what a stopped process left (a confirmation or a rollback cut off),
// rolls back a try whose time is up (with `links`; at boot the network is not up yet) and sets
// aside a record that cannot be read. The try still pending after that, if any; what ended in
// `ended`.
std::optional<tryRecord> settle(TryStore& store, bool links, stepResult& ended);

// Why a pending try whose time is up is rolled back.
std::string expiryReason(const tryRecord& record, const tryClock& now);

// The interfaces file and the DHCP client file as they are now, printed short: a confirmed
// try's copy of config.json says how the links are meant only while they are still these.
std::string currentFilesPrint();

// "try of CONFIG", naming the NetworkManager back end where the try works through it.
std::string trySubject(const std::string& config);

// Sends a line of the companion's to the system log.
void logTry(int priority, const std::string& line);

// "A, B, C".
std::string listed(const std::vector<std::string>& items);
