#include "common/shell.h"

#include <cstdio>
#include <cstdlib>

namespace {

class SystemShell : public Shell {
 public:
  void read(const std::string& command, const PieceVisitor& visit,
            std::size_t bufferSize) override {
    FILE* pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return;
    std::vector<char> buffer(bufferSize);
    while (std::fgets(buffer.data(), static_cast<int>(bufferSize), pipe) != nullptr) {
      if (!visit(std::string(buffer.data()))) break;
    }
    pclose(pipe);
  }

  int run(const std::string& command) override { return std::system(command.c_str()); }
};

SystemShell systemShell;
Shell* current = &systemShell;

}  // namespace

Shell& shell() {
  return *current;
}

Shell* installShell(Shell* replacement) {
  Shell* previous = current;
  current = replacement != nullptr ? replacement : &systemShell;
  return previous;
}

std::vector<std::string> capturePieces(const std::string& command, std::size_t bufferSize) {
  std::vector<std::string> pieces;
  shell().read(
      command,
      [&pieces](const std::string& piece) {
        pieces.push_back(piece);
        return true;
      },
      bufferSize);
  return pieces;
}
