#include "try/try_store.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "generate/file_replacement.h"

namespace {

constexpr const char* kPendingName = "try.json";
constexpr const char* kLastName = "last.json";
constexpr const char* kConfirmedName = "config.json";
constexpr const char* kWatcherLockName = "watcher.lock";
constexpr mode_t kPrivateDirMode = 0700;
constexpr mode_t kPrivateFileMode = 0600;

// Written whole, readable by root alone.
int writePrivate(const std::string& path, const std::string& text) {
  FileReplacement file(path, fileAttributes{kPrivateFileMode, ::geteuid(), ::getegid()});
  if (!file.isOpen()) return file.openError();
  return file.commit(text);
}

int syncDirectory(const std::string& directory) {
  const int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return errno;
  const int error = ::fsync(fd) == 0 || errno == EINVAL ? 0 : errno;
  ::close(fd);
  return error;
}

}  // namespace

int readWholeFile(const std::string& path, std::string& content) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) return errno;
  content.clear();
  char buffer[8192];
  int error = 0;
  for (;;) {
    const ssize_t got = ::read(fd, buffer, sizeof buffer);
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) error = errno;
    if (got <= 0) break;
    content.append(buffer, static_cast<std::size_t>(got));
  }
  ::close(fd);
  return error;
}

TryStore::TryStore(std::string directory) : directory_(std::move(directory)) {}

TryStore::~TryStore() {
  unlock();
}

std::string TryStore::path(const char* name) const {
  return directory_ + "/" + name;
}

std::string TryStore::pendingPath() const {
  return path(kPendingName);
}

std::string TryStore::watcherLockPath() const {
  return path(kWatcherLockName);
}

int TryStore::prepare() {
  if (::mkdir(directory_.c_str(), kPrivateDirMode) != 0 && errno != EEXIST) return errno;
  struct stat status;
  if (::lstat(directory_.c_str(), &status) != 0) return errno;
  // It holds the previous secrets: a link or a directory of another user is not ours to use.
  if (!S_ISDIR(status.st_mode) || status.st_uid != ::geteuid()) return EPERM;
  if ((status.st_mode & 07777) != kPrivateDirMode &&
      ::chmod(directory_.c_str(), kPrivateDirMode) != 0) {
    return errno;
  }
  // Whether it takes files at all (a read-only medium) is known before anything is changed.
  return ::access(directory_.c_str(), W_OK) == 0 ? 0 : errno;
}

int TryStore::lock(bool wait) {
  if (lockFd_ >= 0) return 0;
  const int fd = ::open(directory_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return errno;
  int result;
  while ((result = ::flock(fd, LOCK_EX | (wait ? 0 : LOCK_NB))) != 0 && errno == EINTR) continue;
  if (result != 0) {
    const int error = errno;
    ::close(fd);
    return error;
  }
  lockFd_ = fd;
  return 0;
}

void TryStore::unlock() {
  if (lockFd_ >= 0) ::close(lockFd_);
  lockFd_ = -1;
}

bool TryStore::hasPending() const {
  return ::access(pendingPath().c_str(), F_OK) == 0;
}

std::optional<tryRecord> TryStore::pending() const {
  std::string text;
  if (readWholeFile(pendingPath(), text) != 0) return std::nullopt;
  return parseRecord(text);
}

int TryStore::savePending(const tryRecord& record) {
  return writePrivate(pendingPath(), recordText(record));
}

int TryStore::forgetPending() {
  if (::unlink(pendingPath().c_str()) != 0 && errno != ENOENT) return errno;
  return syncDirectory(directory_);
}

std::optional<tryOutcome> TryStore::last() const {
  std::string text;
  if (readWholeFile(path(kLastName), text) != 0) return std::nullopt;
  return parseOutcome(text);
}

int TryStore::saveLast(const tryOutcome& outcome) {
  return writePrivate(path(kLastName), outcomeText(outcome));
}

std::optional<std::string> TryStore::confirmedConfig() const {
  std::string text;
  if (readWholeFile(path(kConfirmedName), text) != 0) return std::nullopt;
  return text;
}

std::vector<std::string> TryStore::filePaths() const {
  return {path(kPendingName), path(kLastName), path(kConfirmedName)};
}

int TryStore::saveConfirmedConfig(const std::string& text) {
  return writePrivate(path(kConfirmedName), text);
}
