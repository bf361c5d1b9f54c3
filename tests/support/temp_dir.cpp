#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

TempDir::TempDir() {
  char pattern[] = "/tmp/qv-unit.XXXXXX";
  const char* made = mkdtemp(pattern);
  EXPECT_NE(made, nullptr) << "cannot make a temporary directory";
  path_ = made != nullptr ? made : "/nonexistent";
}

TempDir::~TempDir() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
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
