#include "generate/nm_profile.h"

#include <arpa/inet.h>

#include <cstdint>
#include <sstream>

#include "generate/setting_words.h"

const char* const kWiredProfile = "qv-netconf-eth0";
const char* const kWirelessProfile = "qv-netconf-wlan0";
const char* const kWiredProfilePath =
    "/etc/NetworkManager/system-connections/qv-netconf-eth0.nmconnection";
const char* const kWirelessProfilePath =
    "/etc/NetworkManager/system-connections/qv-netconf-wlan0.nmconnection";

namespace {

// Fixed identities: a board has one profile of each, rewritten in place on every run.
constexpr const char* kWiredUuid = "5f0c6e2a-8d41-4b7e-9a53-0e6c1d2f7a01";
constexpr const char* kWirelessUuid = "5f0c6e2a-8d41-4b7e-9a53-0e6c1d2f7a02";
constexpr int kMaxPrefix = 32;

std::string line(const char* key, const std::string& value) {
  return std::string(key) + "=" + value + "\n";
}

std::string connectionSection(const char* name, const char* uuid, const char* type,
                              const char* interface, bool enabled) {
  return "[connection]\n" + line("id", name) + line("uuid", uuid) + line("type", type) +
         line("interface-name", interface) + line("autoconnect", enabled ? "true" : "false");
}

std::string ipSections(const std::string& type, const std::string& address, const std::string& mask,
                       const std::string& gateway, const dnsSettings& dns) {
  std::string text = "\n[ipv4]\n";
  if (type == kTypeStatic) {
    text += line("method", "manual");
    std::string value = address + "/" + profilePrefix(mask);
    if (!gateway.empty()) value += "," + gateway;
    text += line("address1", value);
  } else {
    text += line("method", "auto");
  }
  if (dns.type == kTypeStatic) {
    std::string servers;
    for (const std::string* server : {&dns.dns1, &dns.dns2}) {
      if (!server->empty()) servers += *server + ";";
    }
    if (!servers.empty()) text += line("dns", servers);
    if (!dns.domain.empty()) text += line("dns-search", keyfileText(dns.domain) + ";");
    // Static servers replace those DHCP offers, as the resolver file does on ifupdown.
    text += line("ignore-auto-dns", "true");
  }
  // IPv6 stays the kernel's, as it is where ifupdown configures IPv4 only.
  return text + "\n[ipv6]\nmethod=ignore\n";
}

std::string eapWord(const std::string& method) {
  if (method == kMethodPeap) return "peap;";
  if (method == kMethodTtls) return "ttls;";
  if (method == kMethodTls) return "tls;";
  return std::string();
}

// The 802.1X section: identity, method, CA certificate, then the password (PEAP and TTLS) or the
// PKCS#12 file and its password (TLS).
std::string eapSection(const std::string& method, const std::string& identity,
                       const std::string& caCertificate, const std::string& pkcs12Certificate,
                       const std::string& pkcs12Password, const std::string& password,
                       const char* group, SupplicantServices& services) {
  std::string text = "\n[802-1x]\n";
  const std::string eap = eapWord(method);
  if (!eap.empty()) text += line("eap", eap);
  text += line("identity", keyfileText(identity));
  if (!caCertificate.empty()) {
    text += line("ca-cert", keyfileText(storedFile(kCaCertificatesDir, caCertificate)));
  }
  if (method == kMethodPeap || method == kMethodTtls) {
    text += line("password", keyfileText(password));
    // PEAP's label 0 is the supplicant's default; NetworkManager refuses to be told it.
    text += line("phase2-auth", "mschapv2");
  }
  if (method == kMethodTls) {
    // A PKCS#12 file is the certificate and the key at once; NetworkManager wants it named twice.
    const std::string file = keyfileText(storedFile(kPkcs12Dir, pkcs12Certificate));
    text += line("client-cert", file);
    text += line("private-key", file);
    const std::string clear = pkcs12Password.empty()
                                  ? std::string()
                                  : services.clear(pkcs12Password, group, "pkcs12 password");
    text += line("private-key-password", keyfileText(clear));
  }
  return text;
}

std::string pairwiseWords(const std::string& encryption) {
  if (encryption == kEncryptionAuto) return "tkip;ccmp;";
  if (encryption == kEncryptionTkip) return "tkip;";
  if (encryption == kEncryptionCcmp) return "ccmp;";
  return std::string();
}

std::string protoWords(const std::string& advancedSecurity) {
  if (advancedSecurity == kProtoWpa) return "wpa;";
  if (advancedSecurity == kProtoWpa2) return "rsn;";
  if (advancedSecurity == kProtoAuto) return "wpa;rsn;";
  return std::string();
}

std::string wirelessSecurity(const wlanSettings& wlan, SupplicantServices& services) {
  if (wlan.security == kSecurityPersonal) {
    const std::string passphrase = wlan.passphrase.empty()
                                       ? std::string()
                                       : services.clear(wlan.passphrase, "wlan", "passphrase");
    return "\n[wifi-security]\n" + line("key-mgmt", "wpa-psk") +
           line("psk", services.psk(wlan.ssid, passphrase));
  }
  if (wlan.security != kSecurityEnterprise) return std::string();
  std::string text = "\n[wifi-security]\n" + line("key-mgmt", "wpa-eap");
  const std::string pairwise = pairwiseWords(wlan.encryption);
  if (!pairwise.empty()) text += line("pairwise", pairwise);
  const std::string proto = protoWords(wlan.advancedSecurity);
  if (!proto.empty()) text += line("proto", proto);
  const std::string& method = wlan.authenticationMethod;
  const std::string password = method == kMethodPeap || method == kMethodTtls
                                   ? services.clear(wlan.userPassword, "wlan", "user password")
                                   : std::string();
  return text + eapSection(method, wlan.userName, wlan.caCertificate, wlan.pkcs12Certificate,
                           wlan.pkcs12Password, password, "wlan", services);
}

}  // namespace

std::string profileAddressingType(const std::string& keyfile) {
  std::istringstream lines(keyfile);
  std::string line;
  std::string section;
  bool manual = false;
  while (std::getline(lines, line)) {
    if (!line.empty() && line.front() == '[') {
      section = line;
    } else if (section == "[ipv4]" && line.rfind("method=", 0) == 0) {
      manual = line == "method=manual";
    }
  }
  return manual ? "static" : "dhcp";
}

std::string profilePrefix(const std::string& mask) {
  if (!mask.empty() && mask.size() <= 2 &&
      mask.find_first_not_of("0123456789") == std::string::npos && std::stoi(mask) <= kMaxPrefix) {
    return std::to_string(std::stoi(mask));
  }
  in_addr parsed{};
  if (inet_pton(AF_INET, mask.c_str(), &parsed) != 1) return mask;
  std::uint32_t bits = ntohl(parsed.s_addr);
  int length = 0;
  while (length < kMaxPrefix && (bits & 0x80000000U) != 0) {
    ++length;
    bits <<= 1;
  }
  return std::to_string(length);
}

std::string keyfileText(const std::string& value) {
  std::string text;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    const bool atEdge = i == 0 || value.find_first_not_of(' ', i) == std::string::npos;
    switch (c) {
      case '\\':
        text += "\\\\";
        break;
      case '\n':
        text += "\\n";
        break;
      case '\r':
        text += "\\r";
        break;
      case '\t':
        text += "\\t";
        break;
      case ' ':
        text += atEdge ? "\\s" : " ";
        break;
      default:
        text += c;
    }
  }
  return text;
}

std::string keyfileSsid(const std::string& ssid) {
  bool plain = !ssid.empty() && ssid.front() != ' ' && ssid.back() != ' ' &&
               ssid.find_first_not_of("0123456789;") != std::string::npos;
  for (const char c : ssid) {
    if (c < ' ' || c > '~' || c == ';' || c == '\\') plain = false;
  }
  if (plain) return ssid;
  std::string bytes;
  for (const char c : ssid) bytes += std::to_string(static_cast<unsigned char>(c)) + ";";
  return bytes;
}

bool wantsWirelessProfile(const wlanSettings& wlan) {
  return wlan.enabled || !wlan.ssid.empty();
}

std::string renderWiredProfile(const ethSettings& eth, const dnsSettings& dns, bool openWired,
                               bool passThrough, const passThroughCredentials& credentials,
                               SupplicantServices& services) {
  std::string text = connectionSection(kWiredProfile, kWiredUuid, "ethernet", "eth0", eth.enabled);
  text += "\n[ethernet]\n";
  if (!openWired && eth.security == kSecurityEnterprise) {
    const std::string& method = eth.authenticationMethod;
    const bool usesPassword = method == kMethodPeap || method == kMethodTtls;
    const bool typed = passThrough && usesPassword;
    std::string password;
    if (usesPassword) {
      password = passThrough ? credentials.userPassword
                             : services.clear(eth.userPassword, "eth", "user password");
    }
    text += eapSection(method, typed ? credentials.userName : eth.userName, eth.caCertificate,
                       eth.pkcs12Certificate, eth.pkcs12Password, password, "eth", services);
  }
  return text + ipSections(eth.type, eth.ipAddress, eth.networkMask, eth.defaultGateway, dns);
}

std::string renderWirelessProfile(const wlanSettings& wlan, const dnsSettings& dns,
                                  SupplicantServices& services) {
  std::string text =
      connectionSection(kWirelessProfile, kWirelessUuid, "wifi", "wlan0", wlan.enabled);
  text += "\n[wifi]\n" + line("mode", "infrastructure") + line("ssid", keyfileSsid(wlan.ssid));
  if (wlan.hiddenSsid) text += line("hidden", "true");
  if (wlan.frequency == kFrequency24) text += line("band", "bg");
  if (wlan.frequency == kFrequency5) text += line("band", "a");
  text += wirelessSecurity(wlan, services);
  return text + ipSections(wlan.type, wlan.ipAddress, wlan.networkMask, wlan.defaultGateway, dns);
}
