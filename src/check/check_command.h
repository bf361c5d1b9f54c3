#pragma once

#include <iostream>
#include <string>
#include <vector>

#include "check/finding.h"

// Exit statuses of qv-netconf-check.
constexpr int kCheckClean = 0;     // no error (warnings allowed)
constexpr int kCheckErrors = 1;    // at least one error
constexpr int kCheckUnusable = 2;  // the file cannot be read or is not a JSON object; bad usage

// What checking one config.json gives: the exit status (kCheckClean, kCheckErrors or
// kCheckUnusable) and the findings, in the order found.
struct checkResult {
  int status = kCheckClean;
  std::vector<finding> findings;
};

// Reads the config.json at `path` once with the tool's reader and checks it, certificate files
// looked up under `certificates`. Changes nothing and runs nothing.
checkResult checkConfigFile(const std::string& path, const std::string& certificates);

// Runs qv-netconf-check with `args` (the words after the program name): reads the config.json
// they name once, looks certificates up in the store, prints the findings on `out` (usage
// problems on `err`) and returns the exit status. Changes nothing and runs nothing.
int runCheck(const std::vector<std::string>& args, std::ostream& out = std::cout,
             std::ostream& err = std::cerr);
