#include "settings/settings_dump.h"

#include <string>

namespace {

constexpr const char* kEnterprise = "enterprise";
constexpr const char* kPersonal = "personal";
constexpr const char* kTls = "tls";

void line(std::ostream& out, const char* text) {
  out << text << std::endl;
}

template <typename Value>
void line(std::ostream& out, const char* label, const Value& value) {
  out << label << value << std::endl;
}

// The secret of an enterprise group: the certificate pair for "tls", the user password otherwise.
template <typename Group>
void secretLines(const std::string& device, const Group& group, std::ostream& out) {
  if (group.authenticationMethod == kTls) {
    line(out, (device + " pkcs12 certificate: ").c_str(), group.pkcs12Certificate);
    line(out, (device + " pkcs12 password: ").c_str(), group.pkcs12Password);
  } else {
    line(out, (device + " user password: ").c_str(), group.userPassword);
  }
}

void printEth(const ethSettings& eth, std::ostream& out) {
  line(out, "Ethernet settings:");
  line(out, "eth0 enabled: ", eth.enabled);
  line(out, "eth0 type: ", eth.type);
  line(out, "eth0 ip address: ", eth.ipAddress);
  line(out, "eth0 network mask: ", eth.networkMask);
  line(out, "eth0 default gateway: ", eth.defaultGateway);
  line(out, "eth0 security: ", eth.security);
  if (eth.security != kEnterprise) return;
  line(out, "eth0 user name: ", eth.userName);
  line(out, "eth0 authentication method: ", eth.authenticationMethod);
  line(out, "eth0 ca certificate: ", eth.caCertificate);
  secretLines("eth0", eth, out);
  line(out, "eth0 fallback: ", eth.fallback);
}

void printWlan(const wlanSettings& wlan, std::ostream& out) {
  line(out, "Wlan settings:");
  line(out, "wlan0 enabled: ", wlan.enabled);
  line(out, "wlan0 type: ", wlan.type);
  line(out, "wlan0 ssid: ", wlan.ssid);
  line(out, "wlan0 security: ", wlan.security);
  line(out, "wlan0 frequency: ", wlan.frequency);
  line(out, "wlan0 hidden: ", wlan.hiddenSsid);
  if (wlan.security == kPersonal) line(out, "wlan0 passphrase: ", wlan.passphrase);
  if (wlan.security == kEnterprise) {
    line(out, "wlan0 user name: ", wlan.userName);
    // The management application knows these two by these labels, not by their keys.
    line(out, "wlan0 encryption ver: ", wlan.advancedSecurity);
    line(out, "wlan0 pairwise: ", wlan.encryption);
    line(out, "wlan0 authentication method: ", wlan.authenticationMethod);
    line(out, "wlan0 ca certificate: ", wlan.caCertificate);
    secretLines("wlan0", wlan, out);
  }
  line(out, "wlan0 ip address: ", wlan.ipAddress);
  line(out, "wlan0 network mask: ", wlan.networkMask);
  line(out, "wlan0 default gateway: ", wlan.defaultGateway);
}

void printDns(const dnsSettings& dns, std::ostream& out) {
  line(out, "Dns settings:");
  line(out, "dns type: ", dns.type);
  line(out, "dns dns1: ", dns.dns1);
  line(out, "dns dns2: ", dns.dns2);
  line(out, "dns domain: ", dns.domain);
}

}  // namespace

void printSettings(const networkSettings& settings, std::ostream& out) {
  line(out, "Content of config.json:");
  printEth(settings.eth, out);
  printWlan(settings.wlan, out);
  printDns(settings.dns, out);
}

void printConfigJson(UserMode mode, std::ostream& out) {
  if (mode == consoleMode) printSettings(settingsTab, out);
}
