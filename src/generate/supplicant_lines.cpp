#include "generate/supplicant_lines.h"

#include "generate/setting_words.h"

const char* const kSupplicantHead =
    "ctrl_interface=DIR=/var/run/wpa_supplicant GROUP=netdev\nupdate_config=1\nnetwork={\n";
const char* const kSupplicantTail = "}\n";

std::string eapLine(const std::string& method) {
  if (method == kMethodPeap) return "\teap=PEAP\n";
  if (method == kMethodTtls) return "\teap=TTLS\n";
  if (method == kMethodTls) return "\teap=TLS\n";
  return std::string();
}

std::string caCertLine(const std::string& caCertificate) {
  if (caCertificate.empty()) return std::string();
  return "\tca_cert=\"" + storedFile(kCaCertificatesDir, caCertificate) + "\"\n";
}

std::string credentialLines(const std::string& method, const std::function<std::string()>& hash,
                            const std::string& pkcs12Certificate, const std::string& pkcs12Password,
                            const char* group, SupplicantServices& services) {
  if (method == kMethodPeap) {
    return "\tpassword=hash:" + hash() + "\n\tphase1=\"peaplabel=0\"\n\tphase2=\"auth=MSCHAPV2\"\n";
  }
  if (method == kMethodTtls) return "\tpassword=hash:" + hash() + "\n";
  if (method != kMethodTls) return std::string();
  std::string text = "\tprivate_key=\"" + storedFile(kPkcs12Dir, pkcs12Certificate) + "\"\n";
  // The supplicant needs the certificate password in clear.
  const std::string password = pkcs12Password.empty()
                                   ? std::string()
                                   : services.clear(pkcs12Password, group, "pkcs12 password");
  return text + "\tprivate_key_passwd=\"" + password + "\"\n";
}
