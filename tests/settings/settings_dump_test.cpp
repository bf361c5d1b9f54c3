#include "settings/settings_dump.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

// The lines of the dump between two of its lines, exclusive.
std::string between(const networkSettings& settings, const std::string& from,
                    const std::string& to) {
  std::ostringstream out;
  printSettings(settings, out);
  const std::string text = out.str();
  const std::size_t start = text.find(from) + from.size();
  return text.substr(start, text.find(to, start) - start);
}

}  // namespace

TEST(SettingsDump, CertificateLinesReplaceThePasswordForTls) {
  networkSettings settings;
  settings.eth.security = "enterprise";
  settings.eth.authenticationMethod = "tls";
  settings.eth.pkcs12Certificate = "dev.p12";
  settings.eth.pkcs12Password = "P";
  settings.eth.userPassword = "U";
  EXPECT_EQ(between(settings, "eth0 ca certificate: \n", "Wlan settings:\n"),
            "eth0 pkcs12 certificate: dev.p12\neth0 pkcs12 password: P\neth0 fallback: 0\n");
  settings.wlan = {};
  settings.wlan.security = "enterprise";
  settings.wlan.authenticationMethod = "tls";
  settings.wlan.pkcs12Certificate = "dev.p12";
  settings.wlan.pkcs12Password = "P";
  EXPECT_EQ(between(settings, "wlan0 ca certificate: \n", "wlan0 ip address: "),
            "wlan0 pkcs12 certificate: dev.p12\nwlan0 pkcs12 password: P\n");
}

TEST(SettingsDump, SecurityComparedExactly) {
  networkSettings settings;
  settings.eth.security = "Enterprise";
  settings.wlan.security = "Personal";
  EXPECT_EQ(between(settings, "eth0 security: Enterprise\n", "Wlan settings:\n"), "");
  EXPECT_EQ(between(settings, "wlan0 hidden: 0\n", "wlan0 ip address: "), "");
}
