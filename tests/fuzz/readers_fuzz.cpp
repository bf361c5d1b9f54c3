// Any bytes through one of the readers of outside text, named by QV_FUZZ_READER: CMakeLists.txt
// builds one executable per reader, so each leaves the others unused. A trap marks a broken promise
// of the reader; an exception escaping it is a finding too, except the few named below that end the
// run by design.
#include <cryptopp/cryptlib.h>
#include <json/json.h>

#include <cstddef>
#include <cstdint>
#include <exception>
#include <list>
#include <sstream>
#include <stdexcept>
#include <string>

#include "common/pieces.h"
#include "credentials/base64.h"
#include "credentials/cipher_key.h"
#include "credentials/password_cipher.h"
#include "generate/dhcpcd_file.h"
#include "link/autoconnect.h"
#include "link/interface_scan.h"
#include "link/probe_scan.h"
#include "settings/config_reader.h"
#include "wireless/access_point.h"
#include "wireless/scan_parse.h"

namespace {

void expect(bool promise) {
  if (!promise) __builtin_trap();
}

// config.json: the parse, the copy into the settings record and the wishes autoconnect reads. A
// throw from the JSON library must stay inside the guarded calls, each the parse-failure path.
[[maybe_unused]] void readConfigJson(const std::string& text) {
  Json::Reader reader;
  Json::Value document;
  try {
    if (!reader.parse(text, document, false)) return;
  } catch (const std::exception&) {
    return;  // nesting beyond the reader's limit
  }
  try {
    expect(settingsFromJson(document).settings.dns.type.size() <= text.size());
  } catch (const Json::Exception&) {
    // a member of the wrong shape
  }
  linkWishesOf(document);
}

// A stored password: the tolerant base64 decoder round-trips what it accepts; the cipher may
// only raise the library's invalid-ciphertext error.
[[maybe_unused]] void readStoredPassword(const std::string& text) {
  static const bool keyLoaded = (loadCipherKey(), true);
  (void)keyLoaded;
  expect(base64_decode(text).size() <= text.size());
  const auto* bytes = reinterpret_cast<const unsigned char*>(text.data());
  expect(base64_decode(base64_encode(bytes, text.size())) == text);
  try {
    decodePassword(text);
  } catch (const CryptoPP::InvalidCiphertext&) {
  }
  expect(decodePassword(encodePassword(text)) == text);
}

// An existing dhcpcd.conf, its first line as a network mask: the head keeping, the prefix-length
// rule and the rendering of the new file.
[[maybe_unused]] void readDhcpcdConf(const std::string& text) {
  const std::string mask = text.substr(0, text.find('\n'));
  const int prefix = prefixLength(mask);
  expect(prefix >= 0 && prefix <= 31);
  std::istringstream oldFile(text);
  const auto head = keptHead(oldFile);
  for (const std::string& line : head) {
    expect(line.find("interface") == std::string::npos && line.find('\n') == std::string::npos);
  }
  networkSettings settings;
  settings.wlan.enabled = true;
  settings.wlan.type = "static";
  settings.wlan.networkMask = mask;
  settings.dns.type = "static";
  const std::string rendered = renderDhcpcdConf(head, settings);
  expect(head.empty() || rendered.compare(0, head[0].size(), head[0]) == 0);
}

// Command output through the fgets piece splitting and the probes' scans.
[[maybe_unused]] void readProbeOutput(const std::string& output) {
  const auto pieces = splitPieces(output);
  std::size_t total = 0;
  for (const auto& piece : pieces) {
    expect(piece.size() < kLineBuffer);
    total += piece.size();
  }
  expect(total <= output.size());
  anyPieceContains(pieces, "inet ");
  anyPieceContainsBoth(pieces, "ipsec-vpn", "ESTABLISHED");
  lastSelectedWordVerdict(pieces, "Link detected:", "yes", "no");
  lastSelectedWordVerdict(pieces, "wlan0", "UP", "DOWN");
  splitPieces(output, 200);
}

// Command output through the readings behind the interface, scan and access-point reports. Only
// the word picks of the interface report may throw (std::out_of_range).
[[maybe_unused]] void readReportOutput(const std::string& output) {
  const auto pieces = splitPieces(output);
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
  std::list<wifiItem> list;
  appendAccessPoints(cutScanBlocks(pieces), list);
  for (const wifiItem& item : list) {
    expect(!item.ssid.empty() && item.authentication != "WEP" &&
           item.ssid.find("\\x00") == std::string::npos);
    expect(item.encryption != "off" || item.authentication == "NONE");
  }
  for (const auto& piece : pieces) {
    accessPointName(piece);
    accessPointSignal(piece);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  QV_FUZZ_READER(std::string(reinterpret_cast<const char*>(data), size));
  return 0;
}
