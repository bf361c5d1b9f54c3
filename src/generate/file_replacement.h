#pragma once

#include <sys/types.h>

#include <optional>
#include <string>
#include <vector>

// Who may read a generated file.
enum class FileAccess {
  everyone,   // created 0644
  ownerOnly,  // created 0600; an existing file with looser bits is tightened to 0600
};

// The owner, group and permission bits a file is given back with, exactly.
struct fileAttributes {
  mode_t mode = 0;
  uid_t uid = 0;
  gid_t gid = 0;
};

// Where writing `path` lands: symbolic links followed (a resolver file is often a link into
// /run), the last one possibly dangling.
std::string replacementTarget(std::string path);

// Removes the temporary files that runs killed while replacing the files at `paths` left beside
// them, reading each directory once. Only for a caller that holds the writers' lock, so that no
// run is replacing them now.
void removeStrayTemporaries(const std::vector<std::string>& paths);

// The permission bits a generated file gets: an existing file keeps its own (a secret one loses
// any bit beyond 0600, and then has exactly 0600); a new one gets 0644 or 0600 less the umask.
mode_t replacementMode(bool exists, mode_t existing, FileAccess access, mode_t umask);

// The whole new content of one generated file, put in place at once: written to a temporary file
// beside the target, synced, renamed over it, and the directory synced. A symbolic link is
// followed and stays a link. Where a rename cannot work (the target is a mount point of its own,
// or its directory cannot take a new file) the target is rewritten in place instead. Until
// commit() succeeds the target is untouched; the temporary file never outlives the run, whether
// it ends normally, through exit() or by a signal it can catch.
class FileReplacement {
 public:
  FileReplacement(const std::string& path, FileAccess access);
  // A file put back as it was: with exactly these owner and bits, whatever it has now.
  FileReplacement(const std::string& path, const fileAttributes& exact);
  ~FileReplacement();
  FileReplacement(const FileReplacement&) = delete;
  FileReplacement& operator=(const FileReplacement&) = delete;

  // False when the file could not be opened for writing as it stands (a missing directory, a
  // directory in its place, a read-only file): nothing was created.
  bool isOpen() const { return open_; }
  // Why it could not be opened: the errno that opening it for writing would have given.
  int openError() const { return openError_; }
  // Puts `text` in place; 0, or the errno of the write, sync, close or rename that failed, in
  // which case the target keeps its previous content.
  int commit(const std::string& text);

 private:
  void prepare();
  int writeInPlace(const std::string& text);

  std::string target_;
  std::string directory_;
  std::string temporary_;
  int temporaryFd_ = -1;
  bool open_ = false;
  int openError_ = 0;
  FileAccess access_;
  std::optional<fileAttributes> exact_;
};
