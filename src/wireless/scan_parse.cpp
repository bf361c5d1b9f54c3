#include "wireless/scan_parse.h"

#include <sstream>

#include "common/pieces.h"
#include "common/text.h"
#include "wireless/signal_reading.h"

namespace {

// Fixed columns of the scanner's cell lines: 20 blanks of indentation before "ESSID:" and
// "Frequency:", 24 before "Pairwise Ciphers (1) : ".
constexpr std::size_t kEssidColumn = 26;
constexpr std::size_t kFrequencyColumn = 30;
constexpr std::size_t kPairwiseColumn = 47;
constexpr std::size_t kAuthenticationColumn = 24;  // "AuthenticationSuites(1):" once unblanked
constexpr std::size_t kEncryptionColumn = 14;      // "Encryptionkey:" once unblanked
constexpr std::size_t kSignalLevelLength = 12;     // "Signallevel" and the sign after it
constexpr int kUnknownSignal = 50;
constexpr const char* kUnknownFrequency = "2.400";

// Marks of the fields that only their first line in a cell sets.
struct FirstSeen {
  bool ie = false;
  bool pairwise = false;
  bool authentication = false;
  bool frequency = false;
  bool channel = false;
};

std::vector<std::string> completeLines(const std::string& block) {
  std::vector<std::string> lines;
  std::size_t start = 0;
  for (std::size_t end = block.find('\n'); end != std::string::npos;
       end = block.find('\n', start)) {
    lines.push_back(block.substr(start, end - start + 1));
    start = end + 1;
  }
  return lines;
}

std::string withoutBlanks(std::string line) {
  removeCharacter(line, ' ');
  removeCharacter(line, '\n');
  return line;
}

int signalOf(const std::string& line) {
  std::string reading = withoutBlanks(line);
  eraseThroughMarker(reading, "Signallevel", kSignalLevelLength);
  if (contains(reading, "dBm")) return percentFromDbm(reading);
  if (contains(reading, "/")) return percentFromQuality(reading);
  return kUnknownSignal;
}

std::string encryptionOf(const std::string& line) {
  std::string value = withoutBlanks(line);
  eraseFront(value, kEncryptionColumn);
  removeCharacter(value, '\t');
  return value;
}

std::string ssidOf(std::string line) {
  eraseFront(line, kEssidColumn);
  removeCharacter(line, '\n');
  removeCharacter(line, '"');
  return line;
}

std::string pairwiseOf(std::string line) {
  eraseFront(line, kPairwiseColumn);
  removeCharacter(line, '\n');
  removeCharacter(line, '\t');
  return line;
}

std::string authenticationOf(std::string line) {
  removeCharacter(line, ' ');
  eraseFront(line, kAuthenticationColumn);
  removeCharacter(line, '\n');
  return line;
}

std::string frequencyOf(std::string line) {
  eraseFront(line, kFrequencyColumn);
  removeCharacter(line, '\n');
  const std::size_t unit = line.find("GHz");
  if (unit == std::string::npos) return kUnknownFrequency;
  line.erase(unit == 0 ? 0 : unit - 1);
  return line;
}

int channelOf(const std::string& line) {
  std::string value = withoutBlanks(line);
  value.erase(0, value.find(':') + 1);
  int channel = 0;
  std::istringstream(value) >> channel;
  return channel;
}

void readLine(const std::string& line, wifiItem& item, FirstSeen& seen) {
  if (contains(line, "Signal")) item.signalStrength = signalOf(line);
  if (contains(line, "Encryption")) item.encryption = encryptionOf(line);
  if (contains(line, "ESSID")) item.ssid = ssidOf(line);
  if (!seen.ie && (contains(line, "IEEE") || contains(line, "WPA")) && contains(line, "IE")) {
    item.encryptionVer = contains(line, "IEEE") ? "WPA2" : "WPA";
    seen.ie = true;
  }
  if (!seen.pairwise && contains(line, "Pairwise Ciphers")) {
    item.pairwise = pairwiseOf(line);
    seen.pairwise = true;
  }
  if (!seen.authentication && contains(line, "Authentication")) {
    item.authentication = authenticationOf(line);
    seen.authentication = true;
  }
  if (!seen.frequency && contains(line, "Frequency:")) {
    item.frequency = frequencyOf(line);
    seen.frequency = true;
  }
  if (!seen.channel && contains(line, "Channel:")) {
    item.channel = channelOf(line);
    seen.channel = true;
  }
}

// Clears the text fields only: the numbers stay from the previous cell.
void readCell(const std::string& block, wifiItem& item) {
  item.ssid.clear();
  item.authentication.clear();
  item.encryption.clear();
  item.pairwise.clear();
  item.encryptionVer.clear();
  item.frequency.clear();
  FirstSeen seen;
  for (const std::string& line : completeLines(block)) readLine(line, item, seen);
}

bool offered(const wifiItem& item) {
  return !item.ssid.empty() && item.authentication != "WEP" && !contains(item.ssid, "\\x00");
}

}  // namespace

std::vector<std::string> cutScanBlocks(const std::vector<std::string>& pieces) {
  std::vector<std::string> blocks;
  std::string block;
  for (const std::string& piece : pieces) {
    if (contains(piece, "Cell")) {
      blocks.push_back(block);
      block.clear();
    }
    block += piece;
  }
  blocks.push_back(block);
  return blocks;
}

void appendAccessPoints(const std::vector<std::string>& blocks, std::list<wifiItem>& list) {
  wifiItem item;
  for (const std::string& block : blocks) {
    readCell(block, item);
    if (!offered(item)) continue;
    if (item.encryption == "off") item.authentication = "NONE";
    list.push_back(item);
  }
}
