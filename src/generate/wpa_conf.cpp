#include "generate/wpa_conf.h"

#include "generate/generated_file.h"
#include "generate/setting_words.h"
#include "generate/supplicant_lines.h"

const char* const kWpaConfPath = "/etc/wpa_supplicant/wpa_supplicant.conf";

namespace {

constexpr const char* kGroup = "wlan";

std::string pairwiseLine(const std::string& encryption) {
  if (encryption == kEncryptionAuto) return "\tpairwise=TKIP CCMP\n";
  if (encryption == kEncryptionTkip) return "\tpairwise=TKIP\n";
  if (encryption == kEncryptionCcmp) return "\tpairwise=CCMP\n";
  return std::string();
}

std::string protoLine(const std::string& advancedSecurity) {
  if (advancedSecurity == kProtoWpa) return "\tproto=WPA\n";
  if (advancedSecurity == kProtoWpa2) return "\tproto=RSN\n";
  if (advancedSecurity == kProtoAuto) return "\tproto=WPA RSN\n";
  return std::string();
}

std::string enterpriseLines(const wlanSettings& wlan, SupplicantServices& services) {
  std::string text = "\tkey_mgmt=WPA-EAP\n";
  text += "\tidentity=\"" + wlan.userName + "\"\n";
  text += pairwiseLine(wlan.encryption);
  text += eapLine(wlan.authenticationMethod);
  text += caCertLine(wlan.caCertificate);
  text += protoLine(wlan.advancedSecurity);
  const auto hash = [&] {
    return services.ntHash(services.clear(wlan.userPassword, kGroup, "user password"));
  };
  return text + credentialLines(wlan.authenticationMethod, hash, wlan.pkcs12Certificate,
                                wlan.pkcs12Password, kGroup, services);
}

std::string networkLines(const wlanSettings& wlan, SupplicantServices& services) {
  std::string text = "\tssid=\"" + wlan.ssid + "\"\n";
  text += std::string("\tscan_ssid=") + (wlan.hiddenSsid ? "1" : "0") + "\n";
  if (wlan.frequency == kFrequency5 || wlan.frequency == kFrequency24) {
    text += "\tfreq_list=" + services.frequencies(wlan.frequency) + "\n";
  }
  // Deliberately tied to the frequency: an open network on a fixed band gets no key_mgmt line.
  if (wlan.frequency == kFrequencyAuto && wlan.security == kSecurityOpen)
    text += "\tkey_mgmt=NONE\n";
  if (wlan.security == kSecurityPersonal) {
    // Derived even from an empty pass phrase: the utility then refuses and the line stays empty.
    const std::string passphrase = wlan.passphrase.empty()
                                       ? std::string()
                                       : services.clear(wlan.passphrase, kGroup, "passphrase");
    text += "\tpsk=" + services.psk(wlan.ssid, passphrase) + "\n";
  }
  if (wlan.security == kSecurityEnterprise) text += enterpriseLines(wlan, services);
  return text;
}

}  // namespace

std::string renderWpaConf(const wlanSettings& wlan, SupplicantServices& services) {
  std::string text = kSupplicantHead;
  if (wlan.enabled) text += networkLines(wlan, services);
  return text + kSupplicantTail;
}

void generateWpaConf(UserMode mode, std::ostream& out, std::ostream& err) {
  if (mode == consoleMode) out << "Putting settings to " << kWpaConfPath << " file..." << std::endl;
  DeviceSupplicantServices services(mode, out, err);
  writeGeneratedFile(
      kWpaConfPath, FileAccess::ownerOnly,
      [&services] { return renderWpaConf(settingsTab.wlan, services); }, mode, err);
  // The message leaves out "/etc"; the management application matches it as it is.
  if (mode == consoleMode) {
    out << "Putting settings to /wpa_supplicant/wpa_supplicant.conf file completed." << std::endl;
  }
}
