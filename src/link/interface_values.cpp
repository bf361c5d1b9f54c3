#include "link/interface_values.h"

#include <fstream>
#include <iomanip>
#include <sstream>
#include <string>
#include <tuple>

#include "common/back_end.h"
#include "common/shell.h"
#include "generate/nm_profile.h"
#include "link/interface_scan.h"
#include "link/ipsec_command.h"
#include "link/probe_scan.h"

interfaceStatus interfaceValues;

namespace {

constexpr const char* kRouteTable = "route -n";
constexpr const char* kReadInterfacesFile = "cat /etc/network/interfaces";
constexpr const char* kIpsecAddressPipeline =
    "sudo ipsec status | grep 'ipsec-vpn' | grep \"===\" | cut -d ':' -f2 | cut -d '/' -f1 | "
    "tr -d ' ' >&1";
constexpr const char* kInterfaceNotConnected = "Interface is disable or not connected.\n";
constexpr const char* kIpsecNotConnected = "Ipsec is disable or not connected.\n";
constexpr const char* kWlan0Done = "Get wlan0 parameters done.\n";

struct InterfaceSource {
  const char* command;
  const char* name;
  const char* searchLine;   // nullptr: the type is always dhcp, the interfaces file is not read
  const char* profilePath;  // where the type is read on NetworkManager
  const char* progress;
  const char* closing;  // nullptr: no closing line
};

const InterfaceSource kSources[] = {
    {"ifconfig wlan0 2>&1", "wlan0", "iface wlan0 inet", kWirelessProfilePath,
     "Get wlan0 parameters...", kWlan0Done},
    {"ifconfig eth0 2>&1", "eth0", "iface eth0 inet", kWiredProfilePath, "Get eth0 parameters...",
     "Get eth0 parameters done.\n"},
    {"ifconfig tun0 2>&1", "tun0", nullptr, nullptr, "Get tun0 parameters...", nullptr},
    {"ifconfig ppp0 2>&1", "ppp0", nullptr, nullptr, "Get ppp0 parameters...", nullptr},
};
// Any other value runs the report on empty strings.
const InterfaceSource kNoSource{"", "", "", nullptr, "", nullptr};

// The configured addressing: the interfaces file's stanza on ifupdown, the profile on
// NetworkManager (a profile that cannot be read reads as DHCP, as a missing stanza does).
std::string configuredTypeOf(const InterfaceSource& source) {
  if (source.searchLine == nullptr) return "dhcp";
  if (source.profilePath == nullptr || runBackEnd() != BackEnd::networkManager) {
    return configuredType(capturePieces(kReadInterfacesFile), source.searchLine);
  }
  std::ifstream profile(source.profilePath);
  std::ostringstream content;
  content << profile.rdbuf();
  return profileAddressingType(content.str());
}

const InterfaceSource& sourceOf(UserInterfaces which) {
  const int index = static_cast<int>(which);
  return index >= 0 && index <= ppp0Interface ? kSources[index] : kNoSource;
}

void printLabelled(const char* label, const std::string& value, std::ostream& out) {
  out << std::left << std::setw(18) << label << std::setw(12) << value << std::endl;
}

// The application reply keeps a blank after its opening brace; the management application's
// parser has always seen it there.
void printReply(const std::string& address, const std::string& netmask, const std::string& gateway,
                const std::string& type, std::ostream& out) {
  out << "{\"values\":{ \"ip address\":\"" << address << "\",\"netmask address\":\"" << netmask
      << "\",\"gateway address\":\"" << gateway << "\",\"type\":\"" << type << "\"}}" << std::endl;
}

void printValues(const interfaceStatus& values, const char* closing, UserMode mode,
                 std::ostream& out) {
  if (mode == consoleMode) {
    printLabelled("Ip address: ", values.ipAddress, out);
    printLabelled("Netmask address: ", values.netmaskAddress, out);
    printLabelled("Gateway address: ", values.gatewayAddress, out);
    printLabelled("Type: ", values.type, out);
    if (closing != nullptr) out << closing << std::endl;
  } else if (mode == applicationMode) {
    printReply(values.ipAddress, values.netmaskAddress, values.gatewayAddress, values.type, out);
  }
}

void printNotConnected(const char* consoleLine, const std::string& type, UserMode mode,
                       std::ostream& out) {
  if (mode == consoleMode) {
    out << consoleLine;
  } else if (mode == applicationMode) {
    printReply("", "", "", type, out);
  }
}

}  // namespace

void getInterfaceValues(UserMode mode, UserInterfaces which, std::ostream& out) {
  const InterfaceSource& source = sourceOf(which);
  if (mode == consoleMode) out << source.progress << std::endl;
  const InterfaceSighting sighting = sightInterface(capturePieces(source.command), source.name);
  interfaceValues.type = configuredTypeOf(source);
  if (!sighting.addressSeen || !sighting.named) {
    printNotConnected(kInterfaceNotConnected, interfaceValues.type, mode, out);
    return;
  }
  std::tie(interfaceValues.ipAddress, interfaceValues.netmaskAddress) =
      addressAndNetmask(sighting.inetLine);
  interfaceValues.gatewayAddress = interfaceGateway(capturePieces(kRouteTable), source.name);
  printValues(interfaceValues, source.closing, mode, out);
}

void getDefaultGateway(UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << "Get current default gateway..." << std::endl;
  std::string defaultRoute;
  // The first default route decides; the rest of the table is not read.
  shell().read(kRouteTable, [&defaultRoute](const std::string& piece) {
    if (!isDefaultRoute(piece)) return true;
    defaultRoute = piece;
    return false;
  });
  const std::string gateway = gatewayColumn(defaultRoute);
  if (mode == consoleMode) {
    // Spelt "Uknown" on purpose: consoles have always shown it so.
    if (gateway.empty()) {
      out << "Uknown default gateway" << std::endl;
    } else {
      out << "Current gateway is: " << gateway << std::endl;
    }
  } else if (mode == applicationMode) {
    out << "{\"gateway\":{ \"value\":\"" << gateway << "\"}}" << std::endl;
  }
}

void getIpsecValues(UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << "Get ipsec parameters..." << std::endl;
  const bool established =
      anyPieceContainsBoth(capturePieces(kIpsecStatus), "ipsec-vpn", "ESTABLISHED");
  interfaceValues.ipAddress = "";
  if (established) interfaceValues.ipAddress = ipsecAddress(capturePieces(kIpsecAddressPipeline));
  if (!established || interfaceValues.ipAddress.empty()) {
    printNotConnected(kIpsecNotConnected, interfaceValues.type, mode, out);
    return;
  }
  // The IPsec report closes with the wlan0 line; consoles have always shown it so.
  printValues(interfaceValues, kWlan0Done, mode, out);
}
