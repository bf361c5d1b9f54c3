#pragma once

#include <map>
#include <string>
#include <vector>

#include "common/shell.h"

// A recording stand-in for the process seam: installed for its lifetime, it answers each
// command with canned output (or nothing) and remembers every command line in order.
class FakeShell : public Shell {
 public:
  FakeShell();
  ~FakeShell() override;
  FakeShell(const FakeShell&) = delete;
  FakeShell& operator=(const FakeShell&) = delete;

  // What `command` prints when it is read.
  void answer(const std::string& command, const std::string& output);
  // What `command` returns when it is run.
  void status(const std::string& command, int status);

  // Every command read or run, in order.
  const std::vector<std::string>& commands() const { return commands_; }

  void read(const std::string& command, const PieceVisitor& visit, std::size_t bufferSize) override;
  int run(const std::string& command) override;

 private:
  Shell* previous_;
  std::map<std::string, std::string> outputs_;
  std::map<std::string, int> statuses_;
  std::vector<std::string> commands_;
};
