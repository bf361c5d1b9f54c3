#pragma once

#include <optional>
#include <string>
#include <vector>

#include "try/try_record.h"

inline constexpr char kTryStateDir[] = "/var/lib/qv-netconf";

// The state of the tries in one directory, which only root may enter (0700): the pending try,
// replaced whole at each step and synced before the step is acted on; the outcome of the last
// try; a copy of the last confirmed config.json; and the lock its watcher holds while it runs.
// Every file is written whole (a temporary file, synced, renamed, the directory synced), so a
// stop at any instant leaves each one old or new.
class TryStore {
 public:
  explicit TryStore(std::string directory = kTryStateDir);
  ~TryStore();
  TryStore(const TryStore&) = delete;
  TryStore& operator=(const TryStore&) = delete;

  const std::string& directory() const { return directory_; }
  std::string pendingPath() const;
  std::string watcherLockPath() const;

  // Makes the directory (0700) where it is missing and takes back any access others have to it.
  // 0 or the errno of what failed; a directory that is a link or someone else's is EPERM.
  int prepare();

  // The directory's own lock, which every step of a try takes: waiting for it, or not
  // (EWOULDBLOCK when another holds it). 0 or an errno; held until unlock() or the end.
  int lock(bool wait);
  void unlock();

  // Whether a try is recorded, and the record when it can be read.
  bool hasPending() const;
  std::optional<tryRecord> pending() const;
  // Records `record` as the pending try; 0 or an errno.
  int savePending(const tryRecord& record);
  // Forgets the pending try; 0 or an errno.
  int forgetPending();

  std::optional<tryOutcome> last() const;
  int saveLast(const tryOutcome& outcome);

  // The copy of the last confirmed config.json.
  std::optional<std::string> confirmedConfig() const;
  int saveConfirmedConfig(const std::string& text);

  // The files it keeps, each replaced whole when it is written.
  std::vector<std::string> filePaths() const;

 private:
  std::string path(const char* name) const;

  std::string directory_;
  int lockFd_ = -1;
};

// The whole content of the file at `path` into `content`; 0 or an errno.
int readWholeFile(const std::string& path, std::string& content);
