#pragma once

#include <string>

// The config.json values the writers act on, compared exactly (case and blanks count); any other
// value writes no line for its choice.

// "security"
inline constexpr char kSecurityOpen[] = "open";
inline constexpr char kSecurityPersonal[] = "personal";
inline constexpr char kSecurityEnterprise[] = "enterprise";

// "authentication method"
inline constexpr char kMethodPeap[] = "peap";
inline constexpr char kMethodTtls[] = "ttls";
inline constexpr char kMethodTls[] = "tls";

// "encryption": the pairwise ciphers of a wireless enterprise network.
inline constexpr char kEncryptionAuto[] = "auto";
inline constexpr char kEncryptionTkip[] = "tkip";
inline constexpr char kEncryptionCcmp[] = "ccmp";

// "advanced security": the protocol versions of a wireless enterprise network.
inline constexpr char kProtoWpa[] = "wpa";
inline constexpr char kProtoWpa2[] = "wpa2";
inline constexpr char kProtoAuto[] = "auto";

// "frequency" of the wireless link.
inline constexpr char kFrequencyAuto[] = "auto";
inline constexpr char kFrequency24[] = "2.4";
inline constexpr char kFrequency5[] = "5";

// "type" of an interface or of DNS; anything else means DHCP.
inline constexpr char kTypeStatic[] = "static";

// The certificate store the supplicant files point into, and its two directories.
inline constexpr char kCertificateStore[] = "/KQ/configuration/certificates";
inline constexpr char kCaCertificatesDir[] = "cacerts";
inline constexpr char kPkcs12Dir[] = "pkcs12";

// The path of the certificate file `name` in the store's directory `dir`, as the supplicant files
// name it.
inline std::string storedFile(const char* dir, const std::string& name) {
  return std::string(kCertificateStore) + "/" + dir + "/" + name;
}
