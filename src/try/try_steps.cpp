#include "try/try_steps.h"

#include <syslog.h>
#include <unistd.h>

#include <cstdio>
#include <cstring>

#include "common/back_end.h"
#include "common/nmcli.h"
#include "common/run_log.h"
#include "common/shell.h"
#include "generate/dhcpcd_file.h"
#include "generate/file_replacement.h"
#include "generate/interfaces_file.h"
#include "generate/nm_profile.h"
#include "try/saved_files.h"
#include "try/try_clock.h"
#include "try/try_links.h"
#include "try/try_replies.h"

namespace {

constexpr const char* kUnreadableSuffix = ".unreadable";

std::string subject(const tryRecord& record) {
  return trySubject(record.config);
}

std::string withList(const std::string& line, const char* label,
                     const std::vector<std::string>& items) {
  return items.empty() ? line : line + "; " + label + listed(items);
}

tryOutcome outcomeOf(const tryRecord& record, const char* result, const std::string& reason) {
  tryOutcome outcome;
  outcome.id = record.id;
  outcome.result = result;
  outcome.config = record.config;
  outcome.reason = reason;
  outcome.wallSeconds = clockNow().wallSeconds;
  return outcome;
}

// The records of a try are kept for the next step; one that cannot be kept is said.
std::string keepError(const char* what, int error) {
  return std::string("cannot keep ") + what + ": " + std::strerror(error);
}

}  // namespace

std::string listed(const std::vector<std::string>& items) {
  std::string text;
  for (const std::string& item : items) text += (text.empty() ? "" : ", ") + item;
  return text;
}

std::string trySubject(const std::string& config) {
  return "try of " + config + (onNetworkManager() ? " on networkmanager" : "");
}

void logTry(int priority, const std::string& line) {
  sendLogLine(priority, line);
}

std::string expiryReason(const tryRecord& record, const tryClock& now) {
  if (record.deadline.bootId != now.bootId) return kRestarted;
  return "not confirmed within " + std::to_string(record.timeoutSeconds) + " s";
}

std::string currentFilesPrint() {
  std::vector<std::string> texts;
  for (const char* path : {kInterfacesPath, kDhcpcdPath}) {
    savedFile now;
    captureFile(path, now);
    texts.push_back(now.existed ? now.content : std::string());
  }
  // The profiles count only where there are any, so that prints taken before they existed hold.
  for (const char* path : {kWiredProfilePath, kWirelessProfilePath}) {
    savedFile now;
    captureFile(path, now);
    if (now.existed) texts.push_back(path + std::string("\n") + now.content);
  }
  return fingerprint(texts);
}

namespace {

// NetworkManager reads a profile put back only when told to.
bool profileRestored(const std::vector<std::string>& restored) {
  for (const std::string& path : restored) {
    if (path == kWiredProfilePath || path == kWirelessProfilePath) return true;
  }
  return false;
}

}  // namespace

stepResult rollBack(TryStore& store, tryRecord record, const std::string& reason, bool links) {
  stepResult result;
  if (record.phase != tryPhase::rollingBack) {
    record.phase = tryPhase::rollingBack;
    record.reason = reason;
    // Without the record of the decision, putting the old files back is still the safe way.
    const int error = store.savePending(record);
    if (error != 0) result.error = keepError("the rollback's record", error);
  }
  if (links) takeLinksDown();
  std::vector<std::string> restored;
  std::vector<std::string> failed;
  for (const savedFile& file : record.files) {
    const bool changed = !isAsSaved(file);
    const int error = restoreFile(file);
    if (error != 0) {
      failed.push_back("cannot restore " + file.path + ": " + std::strerror(error));
    } else if (changed) {
      restored.push_back(file.path);
    }
  }
  if (profileRestored(restored)) shell().run(kNmcliReload);
  if (!failed.empty()) {
    // The record stays: the next call or the next boot tries again.
    result.error = listed(failed);
    logTry(LOG_ERR, withList(subject(record) + " not rolled back whole: " + result.error,
                             "restored ", restored));
    return result;
  }
  std::vector<std::string> outcomes;
  if (links) outcomes = bringLinks(record.previousLinks);
  result.outcome = outcomeOf(record, kResultRolledBack, record.reason);
  // Files put back as they were confirmed are still the confirmed ones: the next try brings the
  // links back as that config.json says, not as the failed try left them.
  const std::optional<tryOutcome> before = store.last();
  if (before && !before->filesPrint.empty() && before->filesPrint == currentFilesPrint()) {
    result.outcome.filesPrint = before->filesPrint;
  }
  int error = store.saveLast(result.outcome);
  if (error == 0) error = store.forgetPending();
  if (error != 0) result.error = keepError("the outcome", error);
  result.ended = true;
  logTry(LOG_NOTICE, withList(withList(subject(record) + " rolled back: " + record.reason,
                                       "restored ", restored),
                              "", outcomes));
  return result;
}

stepResult confirm(TryStore& store, tryRecord record, const std::string& how) {
  stepResult result;
  if (record.phase != tryPhase::confirmed) {
    record.phase = tryPhase::confirmed;
    record.reason = how;
    const int error = store.savePending(record);
    if (error != 0) {
      result.error = keepError("the confirmation", error);
      return result;
    }
  }
  result.outcome = outcomeOf(record, kResultConfirmed, record.reason);
  result.outcome.filesPrint = currentFilesPrint();
  int error = store.saveConfirmedConfig(record.configText);
  if (error == 0) error = store.saveLast(result.outcome);
  if (error == 0) error = store.forgetPending();
  if (error != 0) result.error = keepError("the confirmation", error);
  result.ended = true;
  logTry(LOG_NOTICE, subject(record) + " confirmed " + record.reason);
  return result;
}

std::optional<tryRecord> settle(TryStore& store, bool links, stepResult& ended) {
  if (!store.hasPending()) return std::nullopt;
  // A step cut off by a kill or a power cut may have left temporary files behind.
  std::vector<std::string> replaced = networkFilePaths();
  const std::vector<std::string> own = store.filePaths();
  replaced.insert(replaced.end(), own.begin(), own.end());
  removeStrayTemporaries(replaced);
  std::optional<tryRecord> record = store.pending();
  if (!record) {
    // Written whole every time, so only a damaged medium gets here; it must not block every try
    // to come.
    const std::string kept = store.pendingPath() + kUnreadableSuffix;
    const bool keptAside = std::rename(store.pendingPath().c_str(), kept.c_str()) == 0;
    if (!keptAside) ::unlink(store.pendingPath().c_str());
    logTry(LOG_ERR, "the record of the pending try cannot be read; " +
                        (keptAside ? "kept as " + kept : std::string("removed")));
    return std::nullopt;
  }
  switch (record->phase) {
    case tryPhase::confirmed:
      ended = confirm(store, *record, record->reason);
      return std::nullopt;
    case tryPhase::rollingBack:
      ended = rollBack(store, *record, record->reason, links);
      return ended.ended ? std::nullopt : record;
    default:
      break;
  }
  const tryClock now = clockNow();
  if (remainingMs(record->deadline, now) > 0) return record;
  ended = rollBack(store, *record, expiryReason(*record, now), links);
  return ended.ended ? std::nullopt : record;
}
