#pragma once

#include <string>

// Who may read a generated file.
enum class FileAccess {
  everyone,   // created 0644
  ownerOnly,  // created 0600; an existing file with looser bits is tightened to 0600
};

// A generated file, opened for writing and truncated. The descriptor is not inherited by the
// utilities run while the file is open; it is closed when the object goes (an exit while it is
// open leaves what was written so far).
class OutputFile {
 public:
  OutputFile(const std::string& path, FileAccess access);
  ~OutputFile();
  OutputFile(const OutputFile&) = delete;
  OutputFile& operator=(const OutputFile&) = delete;

  // False when the file could not be opened (a missing directory, a directory in its place).
  bool isOpen() const { return fd_ >= 0; }
  // Appends `text`; write errors are not reported.
  void write(const std::string& text);

 private:
  int fd_;
};
