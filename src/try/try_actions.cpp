#include "try/try_actions.h"

#include <signal.h>
#include <sys/stat.h>
#include <syslog.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

#include "check/check_command.h"
#include "common/run_log.h"
#include "generate/setting_words.h"
#include "settings/config_file.h"
#include "try/network_writing.h"
#include "try/saved_files.h"
#include "try/try_clock.h"
#include "try/try_links.h"
#include "try/try_replies.h"
#include "try/try_steps.h"
#include "try/watcher.h"

namespace {

constexpr std::int64_t kMsPerSecond = 1000;
// How often the watcher runs the checks, and looks whether the try was ended elsewhere.
constexpr std::int64_t kCheckRoundMs = 2000;
constexpr std::int64_t kLookMs = 1000;
// How often a --wait looks whether its try has ended.
constexpr std::int64_t kWaitPollMs = 100;

constexpr const char* kNothingPending = "no try is pending";
constexpr const char* kUndoneAtBootEntry = "undone by qv-netconf-try --boot";
constexpr const char* kWatcherRunning = "running";
constexpr const char* kWatcherStoppedWord = "stopped";
constexpr const char* kWatcherRestarted = "started again";
constexpr const char* kWatcherBusy = "busy";

std::int64_t secondsLeft(const tryRecord& record) {
  return (remainingMs(record.deadline, clockNow()) + kMsPerSecond - 1) / kMsPerSecond;
}

// A confirmation that lost the race with the deadline says which way the try went.
std::string nothingPending(const TryStore& store) {
  const std::optional<tryOutcome> last = store.last();
  if (!last) return kNothingPending;
  return std::string(kNothingPending) + "; the last try, of " + last->config + ", was " +
         last->result + " at " + utcTime(last->wallSeconds, false) + ": " + last->reason;
}

std::string pendingMessage(const tryRecord& record) {
  return "the try of " + record.config + " is pending (" + std::to_string(secondsLeft(record)) +
         " s left); confirm it with qv-netconf-try --confirm, undo it with qv-netconf-try "
         "--rollback, see it with qv-netconf-try --status";
}

std::string newId() {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  return std::to_string(now.tv_sec) + "." + std::to_string(now.tv_nsec) + "." +
         std::to_string(::getpid());
}

// A watcher for a pending try that lost its own; logged, since the deadline was unguarded.
bool restartWatcher(TryStore& store, const tryRecord& record) {
  if (watcherRuns(store)) return true;
  const bool started = startWatcher(store);
  logTry(started ? LOG_NOTICE : LOG_ERR, trySubject(record.config) + ": its watcher had stopped; " +
                                             (started ? "started again" : "cannot start it again"));
  return started;
}

// How the links are brought back: as the last confirmed config.json says, while the files are
// still the ones it was confirmed with (a confirmation, or a rollback to its files, carries their
// print); else as they are now.
LinkWishes previousLinks(const TryStore& store) {
  const std::optional<tryOutcome> last = store.last();
  const std::optional<std::string> confirmed = store.confirmedConfig();
  if (last && confirmed && !last->filesPrint.empty() && last->filesPrint == currentFilesPrint()) {
    Json::Value document;
    Json::Reader parser;
    if (parser.parse(*confirmed, document, false)) {
      const std::optional<LinkWishes> wishes = linkWishesOf(document);
      if (wishes) return *wishes;
    }
  }
  return linksUpNow();
}

// The answer for a try that a step just ended.
int printEndedStep(const stepResult& step, bool json, std::ostream& out) {
  printEnded(step.outcome.result, step.outcome.config, step.outcome.reason, json, out);
  return step.outcome.result == kResultConfirmed ? kTryDone : kTryRolledBack;
}

int refuse(const tryOptions& options, const std::string& reason,
           const std::vector<finding>& findings, std::ostream& out, std::ostream& err,
           const char* result = kResultRefused) {
  logTry(LOG_ERR, trySubject(options.config) + " " + result + ": " + reason);
  printRefusal(result, reason, options.config, findings, true, options.json, out, err);
  return kTryRefused;
}

int refuseAnswer(const std::string& reason, bool json, std::ostream& out, std::ostream& err) {
  printRefusal(kResultRefused, reason, "", {}, false, json, out, err);
  return kTryRefused;
}

void sleepMs(std::int64_t milliseconds) {
  if (milliseconds <= 0) return;
  const timespec pause{static_cast<time_t>(milliseconds / kMsPerSecond),
                       static_cast<long>(milliseconds % kMsPerSecond) * 1000000L};
  // A signal ends the pause early, which is what it is for.
  ::nanosleep(&pause, nullptr);
}

// The outcome of the try `id`, printed, when it has one.
std::optional<int> printOutcomeOf(const TryStore& store, const std::string& id, bool json,
                                  std::ostream& out) {
  const std::optional<tryOutcome> last = store.last();
  if (!last || last->id != id) return std::nullopt;
  printEnded(last->result, last->config, last->reason, json, out);
  return last->result == kResultConfirmed ? kTryDone : kTryRolledBack;
}

// Waits for the end of the try `id`, whoever ends it: the watcher (or one started again when it
// was lost), a --confirm or a --rollback. Its outcome is kept before its record is forgotten, so
// a record found gone means the outcome is there to read.
int waitForEnd(TryStore& store, const std::string& id, bool json, std::ostream& out) {
  for (;;) {
    if (const std::optional<int> status = printOutcomeOf(store, id, json, out)) return *status;
    const std::optional<tryRecord> record = store.pending();
    if (record && record->id == id && watcherRuns(store)) {
      sleepMs(kWaitPollMs);
      continue;
    }
    const TryLocks locks(store);
    stepResult ended;
    const std::optional<tryRecord> pending = settle(store, true, ended);
    if (ended.ended && ended.outcome.id == id) return printEndedStep(ended, json, out);
    if (!pending || pending->id != id) {
      const std::optional<int> status = printOutcomeOf(store, id, json, out);
      return status ? *status : kTryRolledBack;
    }
    if (!restartWatcher(store, *pending)) {
      const stepResult step = rollBack(store, *pending, kWatcherStopped, true);
      return step.ended ? printEndedStep(step, json, out) : kTryRolledBack;
    }
  }
}

// The links the config.json just applied asks for.
LinkWishes wishesOfTried() {
  const std::optional<LinkWishes> wishes = linkWishesOf(root);
  return wishes ? *wishes : LinkWishes{};
}

}  // namespace

int startTry(const tryOptions& options, TryStore& store, std::ostream& out, std::ostream& err) {
  int error = store.prepare();
  if (error != 0) {
    return refuse(options,
                  "cannot keep the try's record in " + store.directory() + ": " +
                      std::strerror(error) + "; nothing was changed",
                  {}, out, err);
  }
  tryRecord record;
  std::vector<std::string> outcomes;
  std::vector<std::string> replaced;
  std::vector<finding> findings;
  {
    const TryLocks locks(store);
    stepResult ended;
    const std::optional<tryRecord> pending = settle(store, true, ended);
    if (pending) {
      if (pending->phase == tryPhase::pending) restartWatcher(store, *pending);
      return refuse(options, pendingMessage(*pending), {}, out, err);
    }
    const checkResult checked = checkConfigFile(options.config, kCertificateStore);
    findings = checked.findings;
    if (checked.status == kCheckUnusable) {
      return refuse(options, options.config + " cannot be read as settings; nothing was changed",
                    findings, out, err);
    }
    const auto errors = std::count_if(findings.begin(), findings.end(),
                                      [](const finding& f) { return f.level == severity::error; });
    if (errors > 0 && !options.force) {
      return refuse(options,
                    options.config + " has " + std::to_string(errors) +
                        (errors == 1 ? " error" : " errors") +
                        "; nothing was changed (--force applies it anyway)",
                    findings, out, err);
    }
    const LinkWishes tried = wishesOfTried();

    record.id = newId();
    record.config = options.config;
    record.timeoutSeconds = options.timeoutSeconds;
    record.confirmWhen = options.confirmWhen;
    record.previousLinks = previousLinks(store);
    error = readWholeFile(options.config, record.configText);
    if (error != 0) {
      return refuse(options, "cannot read " + options.config + ": " + std::strerror(error),
                    findings, out, err);
    }
    for (const std::string& path : networkFilePaths()) {
      record.files.emplace_back();
      error = captureFile(path, record.files.back());
      if (error != 0) {
        return refuse(options, "cannot read " + path + ": " + std::strerror(error), findings, out,
                      err);
      }
    }
    const std::int64_t windowMs = options.timeoutSeconds * kMsPerSecond;
    record.deadline = clockAfter(clockNow(), windowMs);
    error = store.savePending(record);
    if (error != 0) {
      return refuse(options,
                    "cannot keep the try's record in " + store.directory() + ": " +
                        std::strerror(error) + "; nothing was changed",
                    findings, out, err);
    }

    takeLinksDown();
    const std::optional<std::string> failure =
        writeNetworkFiles(options.config, options.credentials);
    if (failure) {
      rollBack(store, record, "writing the network files failed: " + *failure, true);
      return refuse(options,
                    "writing the network files failed: " + *failure +
                        "; the previous files and links are back",
                    findings, out, err, kResultFailed);
    }
    for (const savedFile& file : record.files) {
      if (!isAsSaved(file)) replaced.push_back(file.path);
    }
    outcomes = bringLinks(tried);
    // The time to confirm in starts once the change is in place.
    record.deadline = clockAfter(clockNow(), windowMs);
    store.savePending(record);
    if (!startWatcher(store)) {
      rollBack(store, record, "its watcher could not be started", true);
      return refuse(options, "cannot start the watcher; the previous files and links are back",
                    findings, out, err, kResultFailed);
    }
  }
  std::string line =
      trySubject(options.config) + " for " + std::to_string(options.timeoutSeconds) + " s";
  line += replaced.empty() ? ": no file changed" : ": replaced " + listed(replaced);
  if (!outcomes.empty()) line += "; " + listed(outcomes);
  logTry(LOG_NOTICE, line);
  printPending(options.config, options.timeoutSeconds, options.confirmWhen.size(), findings,
               options.json, out);
  if (!options.wait) return kTryDone;
  out.flush();
  return waitForEnd(store, record.id, options.json, out);
}

int confirmTry(bool json, TryStore& store, std::ostream& out, std::ostream& err) {
  if (!store.hasPending()) return refuseAnswer(nothingPending(store), json, out, err);
  const TryLocks locks(store);
  stepResult ended;
  const std::optional<tryRecord> record = settle(store, true, ended);
  if (!record) {
    if (ended.ended) return printEndedStep(ended, json, out);
    return refuseAnswer(nothingPending(store), json, out, err);
  }
  if (record->phase != tryPhase::pending) {
    return refuseAnswer("the try of " + record->config + " is being rolled back: " + record->reason,
                        json, out, err);
  }
  std::string how = kByConfirmCommand;
  if (!watcherRuns(store)) how += "; its watcher had stopped";
  const stepResult step = confirm(store, *record, how);
  if (!step.ended) return refuseAnswer(step.error, json, out, err);
  return printEndedStep(step, json, out);
}

int rollbackTry(bool json, TryStore& store, std::ostream& out, std::ostream& err) {
  if (!store.hasPending()) return refuseAnswer(nothingPending(store), json, out, err);
  const TryLocks locks(store);
  stepResult ended;
  std::optional<tryRecord> record = settle(store, true, ended);
  if (!record) {
    if (ended.ended) return printEndedStep(ended, json, out);
    return refuseAnswer(nothingPending(store), json, out, err);
  }
  const stepResult step = rollBack(store, *record, kAskedToRollBack, true);
  if (!step.ended) {
    printRefusal(kResultFailed, step.error, record->config, {}, false, json, out, err);
    return kTryRefused;
  }
  printEnded(step.outcome.result, step.outcome.config, step.outcome.reason, json, out);
  return kTryDone;
}

int tryStatus(bool json, TryStore& store, std::ostream& out) {
  std::optional<pendingView> view;
  if (store.hasPending()) {
    std::optional<tryRecord> record = store.pending();
    std::string watcher = watcherRuns(store) ? kWatcherRunning : kWatcherStoppedWord;
    const bool idle = store.lock(false) == 0;
    store.unlock();
    if (watcher != kWatcherRunning && !idle) watcher = kWatcherBusy;
    if (watcher == kWatcherStoppedWord || (record && record->phase != tryPhase::pending)) {
      const TryLocks locks(store);
      stepResult ended;
      record = settle(store, true, ended);
      if (record && record->phase == tryPhase::pending) {
        watcher = restartWatcher(store, *record) ? kWatcherRestarted : kWatcherStoppedWord;
      }
    }
    if (record) {
      const char* phase = record->phase == tryPhase::pending     ? kResultPending
                          : record->phase == tryPhase::confirmed ? kResultConfirmed
                                                                 : "rolling back";
      view = pendingView{record->config, secondsLeft(*record), phase, watcher};
    }
  }
  printStatus(view, store.last(), json, out);
  return kTryDone;
}

int bootTry(TryStore& store, std::ostream& out) {
  if (!store.hasPending()) return kTryDone;
  const TryLocks locks(store);
  stepResult ended;
  std::optional<tryRecord> record = settle(store, false, ended);
  // Run by hand during a try of this boot, it undoes that try all the same, but says so.
  if (record && record->phase == tryPhase::pending) {
    ended = rollBack(store, *record, kUndoneAtBootEntry, false);
  }
  if (ended.ended) {
    printEnded(ended.outcome.result, ended.outcome.config, ended.outcome.reason, false, out);
  }
  return ended.error.empty() || ended.ended ? kTryDone : kTryRefused;
}

namespace {

volatile sig_atomic_t stopRequested = 0;

extern "C" void requestStop(int) {
  stopRequested = 1;
}

// Asked to stop, the watcher rolls the try back: a try nobody keeps the deadline of is not
// confirmed.
void catchStopSignals() {
  struct sigaction action = {};
  action.sa_handler = requestStop;
  sigemptyset(&action.sa_mask);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaction(signal, &action, nullptr);
  action.sa_handler = SIG_IGN;
  ::sigaction(SIGPIPE, &action, nullptr);
}

// Ends the try `id` under the locks, unless someone else already did: rolled back when the time
// is up, else confirmed when `checksPassed`. True while it is still pending after that.
bool endFromWatcher(TryStore& store, const std::string& id, bool checksPassed) {
  const TryLocks locks(store);
  stepResult ended;
  const std::optional<tryRecord> record = settle(store, true, ended);
  if (!record || record->id != id) return false;
  if (record->phase == tryPhase::pending && checksPassed) {
    return !confirm(store, *record, kByChecks).ended;
  }
  return true;
}

// Whether the watcher ends: decided under the state lock, so that a try started meanwhile either
// finds the watcher gone and starts its own, or is taken up by it. Asked to stop, it rolls back
// what is pending first: a try nobody keeps the deadline of is not confirmed. The watcher lock
// `lock` is let go then, before the state lock.
bool mayEnd(TryStore& store, int lock) {
  const TryLocks locks(store);
  stepResult ended;
  const std::optional<tryRecord> record = settle(store, true, ended);
  if (record && stopRequested) rollBack(store, *record, kWatcherStopped, true);
  if (record && !stopRequested) return false;
  ::close(lock);
  return true;
}

// The identity of the pending try's record as it is now: every change replaces the file.
ino_t recordIdentity(const TryStore& store) {
  struct stat status;
  return ::stat(store.pendingPath().c_str(), &status) == 0 ? status.st_ino : 0;
}

}  // namespace

int watchTry(TryStore& store) {
  const int lock = holdWatcherLock(store);
  if (lock < 0) return kTryRefused;
  catchStopSignals();
  std::int64_t nextRound = 0;
  std::string watched;
  for (;;) {
    const std::optional<tryRecord> record = store.pending();
    if (!record || stopRequested) {
      if (mayEnd(store, lock)) return kTryDone;
      continue;
    }
    // A try started just as the last one ended is taken up: its checks start afresh.
    if (record->id != watched) {
      watched = record->id;
      nextRound = 0;
    }
    const tryClock now = clockNow();
    const std::int64_t left = remainingMs(record->deadline, now);
    if (record->phase != tryPhase::pending || left == 0) {
      // A rollback that could not be done whole is tried again, but not in a busy loop.
      if (endFromWatcher(store, record->id, false)) sleepMs(kLookMs);
      continue;
    }
    if (!record->confirmWhen.empty() && now.sinceBootMs >= nextRound) {
      nextRound = now.sinceBootMs + kCheckRoundMs;
      const ino_t identity = recordIdentity(store);
      const auto abandon = [&store, identity] {
        return stopRequested || recordIdentity(store) != identity;
      };
      if (runChecks(record->confirmWhen, now.sinceBootMs + left, abandon)) {
        endFromWatcher(store, record->id, true);
      }
      continue;
    }
    std::int64_t pause = std::min(left, kLookMs);
    if (!record->confirmWhen.empty()) pause = std::min(pause, nextRound - now.sinceBootMs);
    sleepMs(pause);
  }
}
