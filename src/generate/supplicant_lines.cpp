#include "generate/supplicant_lines.h"

const char* const kSupplicantHead =
    "ctrl_interface=DIR=/var/run/wpa_supplicant GROUP=netdev\nupdate_config=1\nnetwork={\n";
const char* const kSupplicantTail = "}\n";

namespace {

constexpr const char* kPeap = "peap";
constexpr const char* kTtls = "ttls";
constexpr const char* kTls = "tls";
constexpr const char* kCaCertificates = "/KQ/configuration/certificates/cacerts/";
constexpr const char* kPkcs12Certificates = "/KQ/configuration/certificates/pkcs12/";

}  // namespace

std::string eapLine(const std::string& method) {
  if (method == kPeap) return "\teap=PEAP\n";
  if (method == kTtls) return "\teap=TTLS\n";
  if (method == kTls) return "\teap=TLS\n";
  return std::string();
}

std::string caCertLine(const std::string& caCertificate) {
  if (caCertificate.empty()) return std::string();
  return std::string("\tca_cert=\"") + kCaCertificates + caCertificate + "\"\n";
}

std::string credentialLines(const std::string& method, const std::function<std::string()>& hash,
                            const std::string& pkcs12Certificate, const std::string& pkcs12Password,
                            const char* group, SupplicantServices& services) {
  if (method == kPeap) {
    return "\tpassword=hash:" + hash() + "\n\tphase1=\"peaplabel=0\"\n\tphase2=\"auth=MSCHAPV2\"\n";
  }
  if (method == kTtls) return "\tpassword=hash:" + hash() + "\n";
  if (method != kTls) return std::string();
  std::string text =
      std::string("\tprivate_key=\"") + kPkcs12Certificates + pkcs12Certificate + "\"\n";
  // The supplicant needs the certificate password in clear.
  const std::string password = pkcs12Password.empty()
                                   ? std::string()
                                   : services.clear(pkcs12Password, group, "pkcs12 password");
  return text + "\tprivate_key_passwd=\"" + password + "\"\n";
}
