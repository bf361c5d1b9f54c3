#include "support/fixtures.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace {

std::string unescaped(const std::string& field) {
  if (field.rfind('@', 0) == 0) return fixture(field.substr(1));
  std::string bytes;
  for (std::size_t i = 0; i < field.size(); ++i) {
    if (field[i] != '\\' || i + 1 == field.size()) {
      bytes += field[i];
      continue;
    }
    const char code = field[++i];
    if (code == 'x') {
      bytes += static_cast<char>(std::stoi(field.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      bytes += code == 'n' ? '\n' : code == 't' ? '\t' : code;
    }
  }
  return bytes;
}

}  // namespace

std::string fixture(const std::string& relativePath) {
  const std::string path = std::string(QV_FIXTURES_DIR) + "/" + relativePath;
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file.is_open()) << "missing fixture " << path;
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

std::vector<std::vector<std::string>> fixtureTable(const std::string& relativePath) {
  std::vector<std::vector<std::string>> rows;
  std::istringstream lines(fixture(relativePath));
  for (std::string line; std::getline(lines, line);) {
    if (line.empty() || line[0] == '#') continue;
    std::vector<std::string> row;
    std::istringstream fields(line);
    for (std::string field; std::getline(fields, field, '\t');) row.push_back(unescaped(field));
    if (line.back() == '\t') row.emplace_back();
    rows.push_back(row);
  }
  return rows;
}
