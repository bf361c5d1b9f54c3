#include "try/saved_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

#include "generate/dhcpcd_file.h"
#include "generate/file_replacement.h"
#include "generate/interfaces_file.h"
#include "generate/nm_profile.h"
#include "generate/resolv_file.h"
#include "generate/wpa_conf.h"
#include "generate/wpa_wired_conf.h"
#include "try/try_store.h"

namespace {

constexpr mode_t kPermissionBits = 07777;

std::string directoryOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? "." : slash == 0 ? "/" : path.substr(0, slash);
}

// A removal is durable once the directory entry is gone on the medium too.
int removeDurably(const std::string& target) {
  if (::unlink(target.c_str()) != 0) return errno == ENOENT ? 0 : errno;
  const int fd = ::open(directoryOf(target).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd < 0) return errno;
  const int error = ::fsync(fd) == 0 || errno == EINVAL ? 0 : errno;
  ::close(fd);
  return error;
}

}  // namespace

const std::vector<std::string>& networkFilePaths() {
  static const std::vector<std::string> paths = {
      kInterfacesPath, kResolvPath,       kWpaConfPath,        kWpaWiredConfPath,
      kDhcpcdPath,     kWiredProfilePath, kWirelessProfilePath};
  return paths;
}

int captureFile(const std::string& path, savedFile& saved) {
  saved = savedFile{};
  saved.path = path;
  const std::string target = replacementTarget(path);
  struct stat status;
  if (::stat(target.c_str(), &status) != 0) return errno == ENOENT ? 0 : errno;
  if (!S_ISREG(status.st_mode)) return S_ISDIR(status.st_mode) ? EISDIR : EINVAL;
  const int error = readWholeFile(target, saved.content);
  if (error != 0) return error;
  saved.existed = true;
  saved.mode = status.st_mode & kPermissionBits;
  saved.uid = status.st_uid;
  saved.gid = status.st_gid;
  return 0;
}

bool isAsSaved(const savedFile& saved) {
  savedFile now;
  if (captureFile(saved.path, now) != 0) return false;
  return now.existed == saved.existed && now.content == saved.content && now.mode == saved.mode &&
         now.uid == saved.uid && now.gid == saved.gid;
}

int restoreFile(const savedFile& saved) {
  if (isAsSaved(saved)) return 0;
  if (!saved.existed) return removeDurably(replacementTarget(saved.path));
  FileReplacement file(saved.path, fileAttributes{saved.mode, saved.uid, saved.gid});
  if (!file.isOpen()) return file.openError();
  return file.commit(saved.content);
}
