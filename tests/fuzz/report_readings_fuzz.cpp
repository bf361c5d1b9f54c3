// Command output of any shape through the readings behind the interface, scan and access-point
// reports. Only the word picks of the interface report may throw (std::out_of_range, which ends
// the run by design); everything else must take any text.
#include <cstddef>
#include <cstdint>
#include <list>
#include <stdexcept>
#include <string>

#include "common/pieces.h"
#include "link/interface_scan.h"
#include "wireless/access_point.h"
#include "wireless/scan_parse.h"

namespace {

void readInterfaceReport(const std::vector<std::string>& pieces) {
  try {
    const InterfaceSighting sighting = sightInterface(pieces, "eth0");
    if (sighting.addressSeen) addressAndNetmask(sighting.inetLine);
    interfaceGateway(pieces, "eth0");
    for (const auto& piece : pieces) {
      if (isDefaultRoute(piece)) gatewayColumn(piece);
    }
  } catch (const std::out_of_range&) {
  }
  configuredType(pieces, "iface eth0 inet");
  ipsecAddress(pieces);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string output(reinterpret_cast<const char*>(data), size);
  const auto pieces = splitPieces(output);
  readInterfaceReport(pieces);

  std::list<wifiItem> list;
  appendAccessPoints(cutScanBlocks(pieces), list);
  for (const wifiItem& item : list) {
    if (item.ssid.empty() || item.authentication == "WEP" ||
        item.ssid.find("\\x00") != std::string::npos) {
      __builtin_trap();
    }
    if (item.encryption == "off" && item.authentication != "NONE") __builtin_trap();
  }
  for (const auto& piece : pieces) {
    accessPointName(piece);
    accessPointSignal(piece);
  }
  return 0;
}
