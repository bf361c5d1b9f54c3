#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "common/pieces.h"

// Receives one fgets piece of a command's output; returning false stops reading (the rest of
// the output is then never read, as when the legacy loop breaks out early).
using PieceVisitor = std::function<bool(const std::string& piece)>;

// The one seam between the tool and the processes it starts. Tests install a recording fake.
class Shell {
 public:
  virtual ~Shell() = default;
  // popen(command, "r"), fgets pieces of bufferSize bytes to `visit`, pclose. A pipe that cannot
  // be opened reads as empty output; the command's status is never looked at.
  virtual void read(const std::string& command, const PieceVisitor& visit,
                    std::size_t bufferSize = kLineBuffer) = 0;
  // system(command); the raw status goes back to the caller.
  virtual int run(const std::string& command) = 0;
};

// The shell of the run: the real one unless a test has installed another.
Shell& shell();
// Installs `replacement` (nullptr restores the real shell); returns the previous one.
Shell* installShell(Shell* replacement);

// Every piece of the command's output, in order.
std::vector<std::string> capturePieces(const std::string& command,
                                       std::size_t bufferSize = kLineBuffer);
