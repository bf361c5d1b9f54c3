#include "generate/output_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr mode_t kEveryoneMode = 0644;
constexpr mode_t kOwnerOnlyMode = 0600;
constexpr mode_t kPermissionBits = 07777;

}  // namespace

OutputFile::OutputFile(const std::string& path, FileAccess access)
    : fd_(::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC,
                 access == FileAccess::ownerOnly ? kOwnerOnlyMode : kEveryoneMode)) {
  if (fd_ < 0 || access != FileAccess::ownerOnly) return;
  // The file will hold keys, hashes or a password in clear: nobody else may read it, even if an
  // older copy was readable.
  struct stat status;
  if (::fstat(fd_, &status) == 0 && (status.st_mode & kPermissionBits & ~kOwnerOnlyMode) != 0) {
    ::fchmod(fd_, kOwnerOnlyMode);
  }
}

OutputFile::~OutputFile() {
  if (fd_ >= 0) ::close(fd_);
}

void OutputFile::write(const std::string& text) {
  std::size_t done = 0;
  while (fd_ >= 0 && done < text.size()) {
    const ssize_t written = ::write(fd_, text.data() + done, text.size() - done);
    if (written <= 0) return;
    done += static_cast<std::size_t>(written);
  }
}
