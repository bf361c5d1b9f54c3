#include "settings/config_file.h"

#include <exception>
#include <fstream>

Json::Value root;
Json::Reader reader;

bool parseConfigJson(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  try {
    return reader.parse(file, root, false);
  } catch (const std::exception&) {
    return false;
  }
}
