#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <sstream>

namespace {

void removeTree(const std::string& path) {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

// The directories not yet removed. A death test's child ends with exit(), which skips the
// destructors of the test's own objects but not those of statics: this one removes what the
// child made.
struct LiveDirectories {
  std::set<std::string> paths;
  ~LiveDirectories() {
    for (const std::string& path : paths) removeTree(path);
  }
};

LiveDirectories& liveDirectories() {
  static LiveDirectories directories;
  return directories;
}

}  // namespace

TempDir::TempDir() {
  char pattern[] = "/tmp/qv-unit.XXXXXX";
  const char* made = mkdtemp(pattern);
  EXPECT_NE(made, nullptr) << "cannot make a temporary directory";
  path_ = made != nullptr ? made : "/nonexistent";
  if (made != nullptr) liveDirectories().paths.insert(path_);
}

TempDir::~TempDir() {
  removeTree(path_);
  liveDirectories().paths.erase(path_);
}

std::string TempDir::write(const std::string& name, const std::string& content) const {
  const std::string file = path_ + "/" + name;
  std::ofstream(file, std::ios::binary) << content;
  return file;
}

std::string TempDir::read(const std::string& name) const {
  std::ifstream file(path_ + "/" + name, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}
