#include "generate/file_replacement.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>

namespace {

constexpr mode_t kEveryoneMode = 0644;
constexpr mode_t kOwnerOnlyMode = 0600;
constexpr mode_t kPermissionBits = 07777;
constexpr int kMaxLinkHops = 40;
constexpr const char* kTemporaryMark = ".qv-netconf.";
constexpr std::size_t kTemporarySuffixLength = 6;  // mkostemp's XXXXXX

// --- temporary files that must not outlive the run ---------------------------------------------

// Plain storage, so that a signal handler may read it.
char pendingTemporary[PATH_MAX];

void removePendingTemporary() {
  if (pendingTemporary[0] != '\0') ::unlink(pendingTemporary);
  pendingTemporary[0] = '\0';
}

extern "C" void removeTemporaryAndDie(int signal) {
  removePendingTemporary();
  // SA_RESETHAND has restored the default action: die of the same signal.
  if (::raise(signal) != 0) ::_exit(1);
}

// exit() (a fatal message elsewhere) and the terminating signals a run may receive remove the
// temporary file. Signals that were ignored when the run started stay ignored.
void armCleanup() {
  static bool armed = false;
  if (armed) return;
  armed = true;
  if (std::atexit(removePendingTemporary) != 0) return;
  const int signals[] = {SIGHUP,  SIGINT,  SIGQUIT, SIGTERM, SIGPIPE, SIGALRM,
                         SIGUSR1, SIGUSR2, SIGABRT, SIGXCPU, SIGXFSZ};
  for (const int signal : signals) {
    struct sigaction current;
    if (::sigaction(signal, nullptr, &current) != 0 || current.sa_handler == SIG_IGN) continue;
    struct sigaction action = {};
    action.sa_handler = removeTemporaryAndDie;
    action.sa_flags = SA_RESETHAND | SA_NODEFER;
    sigemptyset(&action.sa_mask);
    ::sigaction(signal, &action, nullptr);
  }
}

// --- paths ----------------------------------------------------------------------------------

std::string directoryOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? "/" : path.substr(0, slash);
}

// --- writing --------------------------------------------------------------------------------

int writeAll(int fd, const std::string& text) {
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t written = ::write(fd, text.data() + done, text.size() - done);
    if (written < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    done += static_cast<std::size_t>(written);
  }
  return 0;
}

int syncAndClose(int fd) {
  int error = ::fsync(fd) == 0 ? 0 : errno;
  if (::close(fd) != 0 && error == 0) error = errno;
  return error;
}

// The rename is durable only once the directory entry is on the medium.
int syncDirectory(const std::string& directory) {
  const int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return errno;
  int error = syncAndClose(fd);
  // A file system that cannot sync a directory has nothing more to make durable.
  return error == EINVAL ? 0 : error;
}

mode_t currentUmask() {
  const mode_t mask = ::umask(0);
  ::umask(mask);
  return mask;
}

}  // namespace

// A loop is left to the checks to fail on.
std::string replacementTarget(std::string path) {
  char link[PATH_MAX];
  for (int hop = 0; hop < kMaxLinkHops; ++hop) {
    const ssize_t size = ::readlink(path.c_str(), link, sizeof link - 1);
    if (size < 0) break;
    const std::string next(link, static_cast<std::size_t>(size));
    path = next.front() == '/' ? next : directoryOf(path).append("/").append(next);
  }
  return path;
}

void removeStrayTemporaries(const std::vector<std::string>& paths) {
  // The names a temporary file of each target starts with, by directory.
  std::map<std::string, std::vector<std::string>> prefixes;
  for (const std::string& path : paths) {
    const std::string target = replacementTarget(path);
    const std::string directory = directoryOf(target);
    prefixes[directory].push_back(
        "." + target.substr(directory.size() + (directory == "/" ? 0 : 1)) + kTemporaryMark);
  }
  for (const auto& [directory, starts] : prefixes) {
    DIR* listing = ::opendir(directory.c_str());
    if (listing == nullptr) continue;
    while (const dirent* entry = ::readdir(listing)) {
      const std::string name = entry->d_name;
      for (const std::string& prefix : starts) {
        if (name.size() == prefix.size() + kTemporarySuffixLength &&
            name.compare(0, prefix.size(), prefix) == 0) {
          ::unlinkat(::dirfd(listing), name.c_str(), 0);
        }
      }
    }
    ::closedir(listing);
  }
}

mode_t replacementMode(bool exists, mode_t existing, FileAccess access, mode_t umask) {
  const bool secret = access == FileAccess::ownerOnly;
  if (!exists) return (secret ? kOwnerOnlyMode : kEveryoneMode) & ~umask & kPermissionBits;
  existing &= kPermissionBits;
  // The file holds keys, hashes or a password in clear: nobody else may read it, even if an
  // older copy was readable.
  if (secret && (existing & ~kOwnerOnlyMode) != 0) return kOwnerOnlyMode;
  return existing;
}

FileReplacement::FileReplacement(const std::string& path, FileAccess access)
    : target_(replacementTarget(path)), directory_(directoryOf(target_)), access_(access) {
  prepare();
}

FileReplacement::FileReplacement(const std::string& path, const fileAttributes& exact)
    : target_(replacementTarget(path)),
      directory_(directoryOf(target_)),
      access_(FileAccess::ownerOnly),
      exact_(exact) {
  prepare();
}

void FileReplacement::prepare() {
  struct stat status;
  const bool exists = ::stat(target_.c_str(), &status) == 0;
  // Exactly where opening the file for writing would fail, nothing is done at all.
  if (exists && S_ISDIR(status.st_mode)) {
    openError_ = EISDIR;
    return;
  }
  if ((exists && ::access(target_.c_str(), W_OK) != 0) || (!exists && errno != ENOENT)) {
    openError_ = errno;
    return;
  }

  const std::string name = target_.substr(directory_.size() + (directory_ == "/" ? 0 : 1));
  const std::string pattern = directory_ + "/." + name + kTemporaryMark + "XXXXXX";
  armCleanup();
  // Made in the handlers' own buffer, so that no instant leaves a file they do not know of.
  pendingTemporary[pattern.copy(pendingTemporary, sizeof pendingTemporary - 1)] = '\0';
  temporaryFd_ = ::mkostemp(pendingTemporary, O_CLOEXEC);
  if (temporaryFd_ < 0) {
    pendingTemporary[0] = '\0';
    // The directory takes no new file, but the file itself may still be written in place.
    openError_ = exists ? 0 : errno;
    open_ = exists;
    return;
  }
  temporary_ = pendingTemporary;
  // Born with its final owner and mode, so a secret is never readable by others. Where the owner
  // cannot be kept, the file is rewritten in place, which keeps it.
  const bool giveOwner = exact_ || exists;
  const uid_t uid = exact_ ? exact_->uid : status.st_uid;
  const gid_t gid = exact_ ? exact_->gid : status.st_gid;
  if (giveOwner && ::fchown(temporaryFd_, uid, gid) != 0 && exists) {
    ::close(temporaryFd_);
    temporaryFd_ = -1;
    removePendingTemporary();
    temporary_.clear();
    open_ = true;
    return;
  }
  ::fchmod(temporaryFd_,
           exact_ ? exact_->mode & kPermissionBits
                  : replacementMode(exists, exists ? status.st_mode : 0, access_, currentUmask()));
  open_ = true;
}

FileReplacement::~FileReplacement() {
  if (temporaryFd_ >= 0) ::close(temporaryFd_);
  if (!temporary_.empty()) removePendingTemporary();
}

int FileReplacement::commit(const std::string& text) {
  if (temporary_.empty()) return writeInPlace(text);
  int error = writeAll(temporaryFd_, text);
  const int closeError = syncAndClose(temporaryFd_);
  temporaryFd_ = -1;
  if (error == 0) error = closeError;
  if (error == 0 && ::rename(temporary_.c_str(), target_.c_str()) != 0) error = errno;
  if (error == EBUSY || error == EXDEV) {
    // A mount point of its own (a bind-mounted resolver file): only writing in place reaches it.
    removePendingTemporary();
    temporary_.clear();
    return writeInPlace(text);
  }
  if (error != 0) return error;
  pendingTemporary[0] = '\0';
  temporary_.clear();
  return syncDirectory(directory_);
}

int FileReplacement::writeInPlace(const std::string& text) {
  const int fd = ::open(target_.c_str(), O_WRONLY | O_CLOEXEC);
  if (fd < 0) return errno;
  struct stat status;
  if (exact_) {
    // Best effort: only the owner of the file itself can be given back where it cannot be renamed.
    if (::fchown(fd, exact_->uid, exact_->gid) != 0) errno = 0;
    ::fchmod(fd, exact_->mode & kPermissionBits);
  } else if (::fstat(fd, &status) == 0) {
    const mode_t mode = replacementMode(true, status.st_mode, access_, 0);
    if (mode != (status.st_mode & kPermissionBits)) ::fchmod(fd, mode);
  }
  // Claim the space first: a full medium then fails the run before the old content is touched.
  int error = ::posix_fallocate(fd, 0, static_cast<off_t>(text.size()));
  if (error == EOPNOTSUPP || error == EINVAL) error = 0;
  if (error == 0 && ::lseek(fd, 0, SEEK_SET) != 0) error = errno;
  if (error == 0) error = writeAll(fd, text);
  if (error == 0 && ::ftruncate(fd, static_cast<off_t>(text.size())) != 0) error = errno;
  const int closeError = syncAndClose(fd);
  return error != 0 ? error : closeError;
}
