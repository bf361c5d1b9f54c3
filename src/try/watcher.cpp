#include "try/watcher.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <cerrno>

#include "try/try_clock.h"

namespace {

constexpr const char* kSelf = "/proc/self/exe";
constexpr const char* kShell = "/bin/sh";
constexpr const char* kDevNull = "/dev/null";
constexpr mode_t kLockMode = 0600;
constexpr long kCheckPollNs = 20L * 1000 * 1000;
constexpr int kHighestFd = 1 << 16;

int openWatcherLock(const TryStore& store) {
  return ::open(store.watcherLockPath().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, kLockMode);
}

int flockRetrying(int fd, int operation) {
  int result;
  while ((result = ::flock(fd, operation)) != 0 && errno == EINTR) continue;
  return result;
}

// Standard streams on /dev/null, every other descriptor but `keep` closed.
void detachStreams(int keep) {
  const int null = ::open(kDevNull, O_RDWR);
  if (null >= 0) {
    for (int fd = 0; fd <= 2; ++fd) ::dup2(null, fd);
    if (null > 2 && null != keep) ::close(null);
  }
  const unsigned first = keep == kWatcherLockFd ? kWatcherLockFd + 1 : 3;
  if (::close_range(first, ~0U, 0) == 0) return;
  for (int fd = 3; fd < kHighestFd; ++fd) {
    if (fd != keep) ::close(fd);
  }
}

[[noreturn]] void execWatcher(int lockFd) {
  if (lockFd != kWatcherLockFd) {
    ::dup2(lockFd, kWatcherLockFd);
  } else {
    ::fcntl(lockFd, F_SETFD, 0);
  }
  detachStreams(kWatcherLockFd);
  // Default dispositions and an empty mask, whatever the caller had.
  sigset_t none;
  sigemptyset(&none);
  ::sigprocmask(SIG_SETMASK, &none, nullptr);
  struct sigaction byDefault = {};
  byDefault.sa_handler = SIG_DFL;
  sigemptyset(&byDefault.sa_mask);
  // Signals that cannot be caught refuse, which is as it should be.
  for (int signal = 1; signal < NSIG; ++signal) ::sigaction(signal, &byDefault, nullptr);
  char name[] = "qv-netconf-try";
  char watch[] = "--watch";
  char* const argv[] = {name, watch, nullptr};
  ::execv(kSelf, argv);
  ::_exit(127);
}

std::int64_t nowMs() {
  return clockNow().sinceBootMs;
}

void pause20ms() {
  const timespec step{0, kCheckPollNs};
  ::nanosleep(&step, nullptr);
}

// 0 for a command that ended with status 0 in time.
int runOneCheck(const std::string& command, std::int64_t untilMs,
                const std::function<bool()>& abandon) {
  const pid_t child = ::fork();
  if (child < 0) return -1;
  if (child == 0) {
    ::setpgid(0, 0);
    detachStreams(-1);
    ::execl(kShell, "sh", "-c", command.c_str(), static_cast<char*>(nullptr));
    ::_exit(127);
  }
  ::setpgid(child, child);
  int status = 0;
  for (;;) {
    const pid_t done = ::waitpid(child, &status, WNOHANG);
    if (done == child) break;
    if (done < 0 && errno != EINTR) return -1;
    if (nowMs() >= untilMs || abandon()) {
      ::kill(-child, SIGKILL);
      ::kill(child, SIGKILL);
      while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
      return -1;
    }
    pause20ms();
  }
  // What it left running in its group does not outlive the round.
  ::kill(-child, SIGKILL);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

}  // namespace

bool startWatcher(const TryStore& store) {
  const int lockFd = openWatcherLock(store);
  if (lockFd < 0) return false;
  if (flockRetrying(lockFd, LOCK_EX | LOCK_NB) != 0) {
    const bool held = errno == EWOULDBLOCK;
    ::close(lockFd);
    return held;
  }
  const pid_t child = ::fork();
  if (child == 0) {
    ::setsid();
    // A second fork: the watcher is no session leader, so it can never get a terminal, and it is
    // nobody's child to wait for.
    if (::fork() == 0) execWatcher(lockFd);
    ::_exit(0);
  }
  ::close(lockFd);
  if (child < 0) return false;
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

bool watcherRuns(const TryStore& store) {
  const int fd = openWatcherLock(store);
  if (fd < 0) return false;
  const bool held = flockRetrying(fd, LOCK_SH | LOCK_NB) != 0;
  ::close(fd);
  return held;
}

int holdWatcherLock(const TryStore& store) {
  struct stat inherited;
  struct stat lockFile;
  if (::fstat(kWatcherLockFd, &inherited) == 0 &&
      ::stat(store.watcherLockPath().c_str(), &lockFile) == 0 &&
      inherited.st_dev == lockFile.st_dev && inherited.st_ino == lockFile.st_ino) {
    ::fcntl(kWatcherLockFd, F_SETFD, FD_CLOEXEC);
    return kWatcherLockFd;
  }
  const int fd = openWatcherLock(store);
  if (fd < 0) return -1;
  if (flockRetrying(fd, LOCK_EX | LOCK_NB) != 0) {
    ::close(fd);
    return -1;
  }
  return fd;
}

bool runChecks(const std::vector<std::string>& commands, std::int64_t untilMs,
               const std::function<bool()>& abandon) {
  for (const std::string& command : commands) {
    if (runOneCheck(command, untilMs, abandon) != 0) return false;
  }
  return true;
}
