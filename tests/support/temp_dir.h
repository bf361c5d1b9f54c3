#pragma once

#include <string>

// A fresh directory under /tmp, removed with everything in it when the object goes.
class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // Writes `content` to `name` inside the directory; returns the file's path.
  std::string write(const std::string& name, const std::string& content) const;
  // The content of `name` inside the directory ("" when it cannot be read).
  std::string read(const std::string& name) const;

 private:
  std::string path_;
};
