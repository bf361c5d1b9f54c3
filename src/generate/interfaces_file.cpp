#include "generate/interfaces_file.h"

#include <sstream>

#include "common/text.h"
#include "generate/generated_file.h"
#include "generate/setting_words.h"

const char* const kInterfacesPath = "/etc/network/interfaces";

namespace {

constexpr const char* kHead =
    "source /etc/network/interfaces.d/*\nauto lo\niface lo inet loopback\n";
constexpr const char* kWiredSupplicant =
    "\twpa-driver wired\n\twpa-conf /etc/wpa_supplicant/wpa_supplicant_wired.conf\n";
constexpr const char* kWiredSupplicantOff =
    "#\twpa-driver wired\n#\twpa-conf /etc/wpa_supplicant/wpa_supplicant_wired.conf\n";
constexpr const char* kWirelessTail =
    "\twireless-power off\n\twpa-conf /etc/wpa_supplicant/wpa_supplicant.conf\n";

std::string dnsLines(const dnsSettings& dns) {
  std::string text = "\tdns-nameservers ";
  if (!dns.dns1.empty()) text += dns.dns1 + " ";
  text += dns.dns2 + "\n";
  // An empty domain leaves an empty line in place of dns-search, deliberately.
  text += dns.domain.empty() ? "\n" : "\tdns-search " + dns.domain + "\n";
  return text;
}

// The "iface" line and, for a static interface, its address lines and the DNS lines.
std::string stanza(const char* name, bool enabled, const std::string& type,
                   const std::string& address, const std::string& mask, const std::string& gateway,
                   const dnsSettings& dns) {
  if (!enabled) return std::string("iface ") + name + " inet dhcp\n";
  const bool isStatic = type == kTypeStatic;
  std::string text = std::string("iface ") + name + " inet " + (isStatic ? "static\n" : "dhcp\n");
  if (isStatic) {
    text += "\taddress " + address + "\n";
    text += "\tnetmask " + mask + "\n";
    text += "\tgateway " + gateway + "\n";
  }
  if (dns.type == kTypeStatic) text += dnsLines(dns);
  return text;
}

}  // namespace

std::string renderInterfaces(const networkSettings& settings, bool openWired) {
  const ethSettings& eth = settings.eth;
  const wlanSettings& wlan = settings.wlan;
  std::string text = kHead;
  // eth0 gets no allow-hotplug line, unlike wlan0; the difference is part of the layout.
  text += "\n";
  text += stanza("eth0", eth.enabled, eth.type, eth.ipAddress, eth.networkMask, eth.defaultGateway,
                 settings.dns);
  text +=
      !openWired && eth.security == kSecurityEnterprise ? kWiredSupplicant : kWiredSupplicantOff;
  text += "\n";
  if (wlan.enabled) text += "allow-hotplug wlan0\n";
  text += stanza("wlan0", wlan.enabled, wlan.type, wlan.ipAddress, wlan.networkMask,
                 wlan.defaultGateway, settings.dns);
  text += kWirelessTail;
  return text;
}

std::string renderLoopbackInterfaces() {
  return kHead;
}

bool claimsNetworkInterfaces(const std::string& text) {
  std::istringstream lines(text);
  std::string line;
  while (std::getline(lines, line)) {
    const std::vector<std::string> words = splitWords(line);
    if (words.size() < 2) continue;
    const std::string& first = words.front();
    const bool namesOne = first == "iface" || first == "mapping";
    const bool namesMany = first == "auto" || first.rfind("allow-", 0) == 0;
    if (!namesOne && !namesMany) continue;
    for (std::size_t i = 1; i < (namesOne ? 2 : words.size()); ++i) {
      if (words[i] == "eth0" || words[i] == "wlan0") return true;
    }
  }
  return false;
}

void generateInterfacesFile(UserMode mode, std::ostream& out, std::ostream& err) {
  if (mode == consoleMode) {
    out << "Putting settings to " << kInterfacesPath << " file..." << std::endl;
  }
  writeGeneratedFile(
      kInterfacesPath, FileAccess::everyone,
      [] { return renderInterfaces(settingsTab, openWiredConfig); }, mode, err);
  if (mode == consoleMode) {
    out << "Putting settings to " << kInterfacesPath << " file completed." << std::endl;
  }
}
