#include "generate/wpa_wired_conf.h"

#include "credentials/password_cipher.h"
#include "generate/generated_file.h"
#include "generate/setting_words.h"
#include "generate/supplicant_lines.h"

const char* const kWpaWiredConfPath = "/etc/wpa_supplicant/wpa_supplicant_wired.conf";

namespace {

constexpr const char* kGroup = "eth";

std::string enterpriseLines(const ethSettings& eth, bool passThrough,
                            const passThroughCredentials& credentials,
                            SupplicantServices& services) {
  const std::string& method = eth.authenticationMethod;
  const bool typedCredentials = passThrough && (method == kMethodPeap || method == kMethodTtls);
  std::string text = "\tkey_mgmt=IEEE8021X\n\teapol_flags=0\n";
  text += "\tidentity=\"" + (typedCredentials ? credentials.userName : eth.userName) + "\"\n";
  text += eapLine(method);
  text += caCertLine(eth.caCertificate);
  const auto hash = [&] {
    // The typed password is plain; the stored one is decrypted even when empty.
    return services.ntHash(passThrough ? credentials.userPassword
                                       : services.clear(eth.userPassword, kGroup, "user password"));
  };
  return text +
         credentialLines(method, hash, eth.pkcs12Certificate, eth.pkcs12Password, kGroup, services);
}

}  // namespace

std::string renderWpaWiredConf(const ethSettings& eth, bool passThrough,
                               const passThroughCredentials& credentials,
                               SupplicantServices& services) {
  std::string text = kSupplicantHead;
  if (eth.enabled && eth.security == kSecurityOpen) text += "\tkey_mgmt=NONE\n";
  if (eth.enabled && eth.security == kSecurityEnterprise) {
    text += enterpriseLines(eth, passThrough, credentials, services);
  }
  return text + kSupplicantTail;
}

void generateWpaWiredConf(UserMode mode, std::ostream& out, std::ostream& err) {
  if (mode == consoleMode) {
    out << "Putting settings to " << kWpaWiredConfPath << " file..." << std::endl;
    // The typed password is shown only in its stored form.
    out << "Pass through credentials: user: " << ethernetPassThroughCredentials.userName
        << " password: " << encodePassword(ethernetPassThroughCredentials.userPassword)
        << std::endl;
  }
  DeviceSupplicantServices services(mode, out, err);
  writeGeneratedFile(
      kWpaWiredConfPath, FileAccess::ownerOnly,
      [&services] {
        return renderWpaWiredConf(settingsTab.eth, ethernetPassThrough,
                                  ethernetPassThroughCredentials, services);
      },
      mode, err);
  // The message leaves out "/etc"; the management application matches it as it is.
  if (mode == consoleMode) {
    out << "Putting settings to /wpa_supplicant/wpa_supplicant_wired.conf file completed."
        << std::endl;
  }
}
