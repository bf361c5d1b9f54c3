#pragma once

#include <functional>
#include <string>

// Where the supplicant files look for certificates: the store's directory, named in findings,
// and whether a file is there.
struct certificateStore {
  std::string root;
  // Whether `name` is a file in the store's directory `dir` (kCaCertificatesDir or kPkcs12Dir).
  std::function<bool(const char* dir, const std::string& name)> holds;
};
