#include "support/fake_shell.h"

FakeShell::FakeShell() : previous_(installShell(this)) {}

FakeShell::~FakeShell() {
  installShell(previous_);
}

void FakeShell::answer(const std::string& command, const std::string& output) {
  outputs_[command] = output;
}

void FakeShell::status(const std::string& command, int status) {
  statuses_[command] = status;
}

void FakeShell::read(const std::string& command, const PieceVisitor& visit,
                     std::size_t bufferSize) {
  commands_.push_back(command);
  const auto found = outputs_.find(command);
  if (found == outputs_.end()) return;
  for (const std::string& piece : splitPieces(found->second, bufferSize)) {
    if (!visit(piece)) return;
  }
}

int FakeShell::run(const std::string& command) {
  commands_.push_back(command);
  const auto found = statuses_.find(command);
  return found == statuses_.end() ? 0 : found->second;
}
