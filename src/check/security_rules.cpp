#include "check/security_rules.h"

#include <cryptopp/cryptlib.h>

#include "check/places.h"
#include "credentials/password_cipher.h"
#include "generate/setting_words.h"
#include "settings/config_members.h"

namespace {

constexpr std::size_t kMaxSsidBytes = 32;
constexpr std::size_t kMinPassphrase = 8;
constexpr std::size_t kMaxPassphrase = 63;
constexpr unsigned char kDelete = 0x7f;
constexpr unsigned char kFirstBeyondAscii = 0x80;

// The start of a message about a value that is not one of the words the writers know.
std::string unknownWord(const std::string& value, const std::string& what) {
  return value.empty() ? std::string("is empty") : quoted(value) + " is not " + what;
}

std::string words(const char* first, const char* second, const char* third) {
  return quoted(first) + ", " + quoted(second) + " or " + quoted(third);
}

bool oneOf(const std::string& value, const char* first, const char* second, const char* third) {
  return value == first || value == second || value == third;
}

// The supplicant reads a quoted value up to the last quote of its line, so only a line feed
// breaks it.
bool holdsLineBreak(const std::string& text) {
  return text.find('\n') != std::string::npos;
}

// Decrypts a stored secret into `plain`; false (and a finding) when it does not decrypt.
bool decrypts(const std::string& place, const std::string& stored, std::string& plain,
              findingList& found) {
  try {
    plain = decodePassword(stored);
    return true;
  } catch (const CryptoPP::Exception&) {
    found.error(place,
                "does not decrypt: the tool stops while writing the supplicant file and the run "
                "fails; write the stored (enciphered) form, not the plain text");
    return false;
  }
}

void checkSecret(const std::string& place, const std::string& stored, findingList& found) {
  std::string plain;
  decrypts(place, stored, plain, found);
}

void checkCertificate(const std::string& place, const certificateStore& store, const char* dir,
                      const std::string& name, findingList& found) {
  if (store.holds(dir, name)) return;
  found.error(place, quoted(name) + " is not in " + store.root + "/" + dir +
                         ": the supplicant cannot load it and the link never authenticates; "
                         "put the file there or name one that is");
}

// What an enterprise block of either supplicant file uses.
struct enterprise {
  const char* group;
  const std::string& method;
  const std::string& caCertificate;
  const std::string& pkcs12Certificate;
  const std::string& pkcs12Password;
  const std::string& userName;
  const std::string& userPassword;
  bool storedIdentity;  // the file's user name is written as the identity
  bool storedPassword;  // PEAP and TTLS hash the file's user password
};

void checkEnterprise(const enterprise& e, const certificateStore& store, findingList& found) {
  if (!oneOf(e.method, kMethodPeap, kMethodTtls, kMethodTls)) {
    found.error(interfaceMember(e.group, kMemberAuthenticationMethod),
                unknownWord(e.method, "a method the tool knows") +
                    ": no eap line is written and the link never "
                    "authenticates; write " +
                    words(kMethodPeap, kMethodTtls, kMethodTls));
  }
  const std::string caPlace = interfaceMember(e.group, kMemberCaCertificate);
  if (e.caCertificate.empty()) {
    found.warning(caPlace,
                  "is empty: the link comes up without authenticating the server, which may be "
                  "anyone's; name the CA certificate file of the network");
  } else {
    checkCertificate(caPlace, store, kCaCertificatesDir, e.caCertificate, found);
  }
  if (e.method == kMethodTls) {
    const std::string place = interfaceMember(e.group, kMemberPkcs12Certificate);
    if (e.pkcs12Certificate.empty()) {
      found.error(place,
                  "is empty: TLS has no client certificate and the link never authenticates; "
                  "name the PKCS#12 file of this device");
    } else {
      checkCertificate(place, store, kPkcs12Dir, e.pkcs12Certificate, found);
    }
    checkSecret(interfaceMember(e.group, kMemberPkcs12Password), e.pkcs12Password, found);
  } else if (e.storedPassword && (e.method == kMethodPeap || e.method == kMethodTtls)) {
    checkSecret(interfaceMember(e.group, kMemberUserPassword), e.userPassword, found);
  }
  if (e.storedIdentity && holdsLineBreak(e.userName)) {
    found.error(interfaceMember(e.group, kMemberUserName),
                "holds a line break, which the supplicant file cannot hold: the supplicant "
                "refuses the file; use a user name without one");
  }
}

void checkSsid(const std::string& ssid, findingList& found) {
  const std::string place = interfaceMember(kMemberWlan, kMemberSsid);
  if (ssid.empty()) {
    found.error(place, "is empty: the supplicant has no network to join; write the network's name");
  } else if (ssid.size() > kMaxSsidBytes) {
    found.error(place,
                "is longer than 32 bytes, which no network name is: the link never associates; "
                "write the network's name");
  } else if (holdsLineBreak(ssid)) {
    found.error(place,
                "holds a line break, which the supplicant file cannot hold: the supplicant refuses "
                "the file; only names without one can be joined");
  }
}

void checkPassphrase(const std::string& stored, findingList& found) {
  const std::string place = interfaceMember(kMemberWlan, kMemberPassphrase);
  std::string plain;
  if (!decrypts(place, stored, plain, found)) return;
  // The key utility counts bytes and refuses control characters, but takes any other byte.
  const char* problem = nullptr;
  bool beyondAscii = false;
  if (plain.size() < kMinPassphrase) problem = "shorter than 8 bytes";
  if (plain.size() > kMaxPassphrase) problem = "longer than 63 bytes";
  for (const unsigned char c : plain) {
    if (problem == nullptr && (c < ' ' || c == kDelete)) problem = "with a control character";
    beyondAscii = beyondAscii || c >= kFirstBeyondAscii;
  }
  if (problem != nullptr) {
    found.error(place, std::string("decrypts to a pass phrase ") + problem +
                           ": no key is derived and the supplicant refuses to start; a pass "
                           "phrase has 8 to 63 printable ASCII characters");
  } else if (beyondAscii) {
    found.warning(place,
                  "decrypts to a pass phrase with characters beyond ASCII: the key is derived "
                  "from their bytes, which only an access point that does the same accepts; "
                  "printable ASCII characters suit every one");
  }
}

void checkFrequency(const wlanSettings& wlan, findingList& found) {
  const std::string place = interfaceMember(kMemberWlan, kMemberFrequency);
  const bool open = wlan.security == kSecurityOpen;
  if (!oneOf(wlan.frequency, kFrequencyAuto, kFrequency24, kFrequency5)) {
    // Only "auto" gives an open network its key_mgmt line; a keyed one just gets no freq_list.
    const std::string outcome =
        open ? "an open network gets no key_mgmt line, so the supplicant never associates"
             : "the supplicant tries every band, as with " + quoted(kFrequencyAuto);
    found.add(open ? severity::error : severity::warning, place,
              unknownWord(wlan.frequency, "a frequency the tool knows") +
                  ": no band is chosen and " + outcome + "; write " +
                  words(kFrequencyAuto, kFrequency24, kFrequency5));
  } else if (open && wlan.frequency != kFrequencyAuto) {
    found.error(place, quoted(wlan.frequency) +
                           " on an open network writes no key_mgmt line and the supplicant never "
                           "associates; write " +
                           quoted(kFrequencyAuto));
  }
}

// A wireless enterprise choice that writes no line when it is not one of its words.
void checkChoice(const char* member, const std::string& value, const char* line,
                 const std::string& accepted, findingList& found) {
  if (value.empty()) return;
  found.warning(interfaceMember(kMemberWlan, member),
                quoted(value) + " writes no " + line +
                    " line and the supplicant's defaults decide; write " + accepted);
}

}  // namespace

void checkWirelessSecurity(const wlanSettings& wlan, const certificateStore& store,
                           findingList& found) {
  checkSsid(wlan.ssid, found);
  if (!oneOf(wlan.security, kSecurityOpen, kSecurityPersonal, kSecurityEnterprise)) {
    found.error(interfaceMember(kMemberWlan, kMemberSecurity),
                unknownWord(wlan.security, "a security the tool knows") +
                    ": no key line is written and the link never "
                    "associates; write " +
                    words(kSecurityOpen, kSecurityPersonal, kSecurityEnterprise));
  }
  checkFrequency(wlan, found);
  if (wlan.security == kSecurityPersonal) checkPassphrase(wlan.passphrase, found);
  if (wlan.security != kSecurityEnterprise) return;
  if (!oneOf(wlan.encryption, kEncryptionAuto, kEncryptionTkip, kEncryptionCcmp)) {
    checkChoice(kMemberEncryption, wlan.encryption, "pairwise",
                words(kEncryptionAuto, kEncryptionTkip, kEncryptionCcmp), found);
  }
  if (!oneOf(wlan.advancedSecurity, kProtoWpa, kProtoWpa2, kProtoAuto)) {
    checkChoice(kMemberAdvancedSecurity, wlan.advancedSecurity, "proto",
                words(kProtoWpa, kProtoWpa2, kProtoAuto), found);
  }
  checkEnterprise(
      {kMemberWlan, wlan.authenticationMethod, wlan.caCertificate, wlan.pkcs12Certificate,
       wlan.pkcs12Password, wlan.userName, wlan.userPassword, true, true},
      store, found);
}

void checkWiredSecurity(const ethSettings& eth, bool passThrough, const certificateStore& store,
                        findingList& found) {
  if (eth.security != kSecurityOpen && eth.security != kSecurityEnterprise) {
    // The interfaces file starts the wired supplicant only for "enterprise", so the port simply
    // comes up as an open one.
    found.warning(interfaceMember(kMemberEth, kMemberSecurity),
                  unknownWord(eth.security, "a security the tool knows") +
                      ": the wired port runs without 802.1X, as with " + quoted(kSecurityOpen) +
                      "; write " + quoted(kSecurityOpen) + " or " + quoted(kSecurityEnterprise));
    return;
  }
  if (eth.security != kSecurityEnterprise) return;
  const bool typed = passThrough && (eth.authenticationMethod == kMethodPeap ||
                                     eth.authenticationMethod == kMethodTtls);
  if (typed) {
    found.warning(interfaceMember(kMemberEth, kMemberAskForCredentials),
                  "is true: PEAP and TTLS take the user name and password typed on the "
                  "set-config command line, and those of this file are ignored; write false to "
                  "use them");
  }
  checkEnterprise({kMemberEth, eth.authenticationMethod, eth.caCertificate, eth.pkcs12Certificate,
                   eth.pkcs12Password, eth.userName, eth.userPassword, !typed, !typed},
                  store, found);
}
