#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

#include "common/shell.h"

// A stand-in for the process seam, installed for its lifetime: each command answers with output
// cut into fgets pieces once, up front, so a benchmark times the tool's own reading and not the
// cutting. Every command run succeeds.
class CannedShell : public Shell {
 public:
  CannedShell();
  ~CannedShell() override;
  CannedShell(const CannedShell&) = delete;
  CannedShell& operator=(const CannedShell&) = delete;

  // What `command` prints when it is read.
  void answer(const std::string& command, const std::string& output);

  void read(const std::string& command, const PieceVisitor& visit, std::size_t bufferSize) override;
  int run(const std::string& command) override;

 private:
  struct Output {
    std::string text;
    std::vector<std::string> pieces;  // cut for the usual line buffer
  };
  Shell* previous_;
  std::map<std::string, Output> outputs_;
};
