#include "wireless/wifi_list.h"

#include "common/shell.h"
#include "wireless/scan_parse.h"

std::list<wifiItem> wifiList;

namespace {

constexpr const char* kIsWirelessUp = "ifconfig | grep wlan0 > /dev/null";
constexpr const char* kRaiseWireless = "sudo ifconfig wlan0 up";
constexpr const char* kUnblockRadios = "rfkill unblock all";
constexpr const char* kScan = "sudo iwlist wlan0 scan";
constexpr const char* kLowerWireless = "sudo ifconfig wlan0 down";

}  // namespace

void getWifiList(std::list<wifiItem>& list, UserMode mode, std::ostream& out) {
  const bool wasDown = shell().run(kIsWirelessUp) != 0;
  shell().run(kRaiseWireless);
  shell().run(kUnblockRadios);
  if (mode == consoleMode) out << "Get wifi list..." << std::endl;
  const std::vector<std::string> scan = capturePieces(kScan);
  if (wasDown) shell().run(kLowerWireless);
  appendAccessPoints(cutScanBlocks(scan), list);
  printWifiList(list, mode, out);
}

void printWifiList(const std::list<wifiItem>& list, UserMode mode, std::ostream& out) {
  if (mode == consoleMode) {
    out << "Wifi list:" << std::endl;
  } else if (mode == applicationMode) {
    out << "[\n";
  }
  std::size_t remaining = list.size();
  for (const wifiItem& item : list) {
    item.printItem(mode, out);
    --remaining;
    if (mode == consoleMode) {
      out << "\n";
    } else if (mode == applicationMode) {
      out << (remaining > 0 ? ",\n" : "\n");
    }
  }
  if (mode == applicationMode) {
    out << "]\n";
  } else if (mode == consoleMode) {
    out << "Get wifi list done." << std::endl;
  }
}
