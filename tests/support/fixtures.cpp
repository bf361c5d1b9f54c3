#include "support/fixtures.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

std::string fixture(const std::string& relativePath) {
  const std::string path = std::string(QV_FIXTURES_DIR) + "/" + relativePath;
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << "missing fixture " << path;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}
