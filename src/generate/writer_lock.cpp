#include "generate/writer_lock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>

namespace {

constexpr const char* kWriterLockPath = "/run/qv-netconf.lock";

// The descriptor holding the lock, or -1 where it cannot be had.
int takeWriterLock() {
  // Close-on-exec: a utility started by this run must not hold the lock after it.
  const int fd = ::open(kWriterLockPath, O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (fd < 0) return -1;
  while (::flock(fd, LOCK_EX) != 0 && errno == EINTR) continue;
  return fd;
}

}  // namespace

void lockNetworkFiles() {
  // The descriptor stays open until the process ends, and the lock with it.
  takeWriterLock();
}

NetworkFilesLock::NetworkFilesLock() : fd_(takeWriterLock()) {}

NetworkFilesLock::~NetworkFilesLock() {
  if (fd_ >= 0) ::close(fd_);
}
