#include "generate/frequency_list.h"

#include "common/shell.h"
#include "common/text.h"

namespace {

constexpr const char* kFrequencyListCommand = "/usr/bin/qv-get-freq-list ";
constexpr std::size_t kFrequencyBuffer = 200;

}  // namespace

std::string getWiFiFrequencies(std::string band, UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << "Get WiFi " << band << " GHz frequencies..." << std::endl;
  std::string frequencies;
  for (const std::string& piece : capturePieces(kFrequencyListCommand + band, kFrequencyBuffer)) {
    frequencies += piece;
  }
  removeCharacter(frequencies, '\n');
  if (mode == consoleMode) {
    out << "WiFi " << band << " frequencies list: " << frequencies << std::endl;
  }
  return frequencies;
}
