// Command output of any shape through the fgets piece splitting and the probes' scans.
#include <cstddef>
#include <cstdint>
#include <string>

#include "common/pieces.h"
#include "link/probe_scan.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string output(reinterpret_cast<const char*>(data), size);
  const auto pieces = splitPieces(output);
  std::size_t total = 0;
  for (const auto& piece : pieces) {
    if (piece.size() > kLineBuffer - 1) __builtin_trap();
    total += piece.size();
  }
  if (total > output.size()) __builtin_trap();
  anyPieceContains(pieces, "inet ");
  anyPieceContainsBoth(pieces, "ipsec-vpn", "ESTABLISHED");
  lastSelectedWordVerdict(pieces, "Link detected:", "yes", "no");
  lastSelectedWordVerdict(pieces, "wlan0", "UP", "DOWN");
  splitPieces(output, 200);
  return 0;
}
