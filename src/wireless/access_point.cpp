#include "wireless/access_point.h"

#include <vector>

#include "common/pieces.h"
#include "common/shell.h"
#include "common/text.h"
#include "link/probes.h"
#include "wireless/signal_reading.h"

namespace {

constexpr const char* kWirelessInfo = "iwconfig wlan0";
constexpr std::size_t kInterfaceColumn = 10;
constexpr std::size_t kEssidLength = 6;         // "ESSID" and the colon after it
constexpr std::size_t kSignalLevelLength = 12;  // "Signallevel="
constexpr const char* kNickname = "Nickname:";

void cutNickname(std::string& name) {
  std::size_t nickname = name.find(kNickname);
  if (nickname == 0) nickname = name.find(kNickname, 1);
  if (nickname != std::string::npos && nickname > 0) name.erase(nickname - 1);
}

}  // namespace

std::string accessPointName(std::string essidLine) {
  eraseFront(essidLine, kInterfaceColumn);
  removeCharacter(essidLine, '\n');
  eraseThroughMarker(essidLine, "ESSID", kEssidLength);
  removeCharacter(essidLine, '\t');
  // Rejoined word by word, so blanks inside the name shrink to one: the management
  // application has always been given the name so.
  std::string name;
  bool first = true;
  for (std::string word : splitWords(essidLine)) {
    removeCharacter(word, '"');
    removeCharacter(word, ' ');
    name += (first ? "" : " ") + word;
    first = false;
  }
  cutNickname(name);
  return name;
}

std::string accessPointSignal(std::string qualityLine) {
  removeCharacter(qualityLine, ' ');
  removeCharacter(qualityLine, '\t');
  eraseThroughMarker(qualityLine, "Signallevel=", kSignalLevelLength);
  const int percent =
      contains(qualityLine, "dBm") ? percentFromDbm(qualityLine) : percentFromQuality(qualityLine);
  return std::to_string(percent);
}

void checkWirelessPoint(UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << "Get actual wireless access point..." << std::endl;
  if (!isConnectedWireless(silentMode, out)) {
    if (mode == applicationMode) {
      out << "{\"values\":{\"status\":\"false\"}}\n";
    } else if (mode == consoleMode) {
      out << "Wifi is disconnected.\n";
    }
    return;
  }
  std::string essidLine;
  std::string qualityLine;
  for (const std::string& piece : capturePieces(kWirelessInfo)) {
    if (contains(piece, "ESSID")) essidLine = piece;
    if (contains(piece, "Link Quality")) qualityLine = piece;
  }
  const std::string name = accessPointName(essidLine);
  if (mode == applicationMode) {
    out << "{\"values\":{\"status\":\"true\",\"ssid\":\"" << name << "\",\"signal strength\":\""
        << accessPointSignal(qualityLine) << "\"}}\n";
  } else if (mode == consoleMode) {
    out << "Wifi is connected to: " << name << "\n";
  }
}
