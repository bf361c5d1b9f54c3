#include "settings/settings_dump.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

std::string dump(const networkSettings& settings) {
  std::ostringstream out;
  printSettings(settings, out);
  return out.str();
}

// The text between two lines of the dump, exclusive.
std::string between(const std::string& text, const std::string& from, const std::string& to) {
  const std::size_t start = text.find(from);
  const std::size_t end = text.find(to, start);
  EXPECT_NE(start, std::string::npos) << from;
  EXPECT_NE(end, std::string::npos) << to;
  return text.substr(start + from.size(), end - start - from.size());
}

}  // namespace

TEST(SettingsDump, EmptySettingsGiveTheTwentyThreeBaseLines) {
  EXPECT_EQ(dump(networkSettings()),
            "Content of config.json:\n"
            "Ethernet settings:\n"
            "eth0 enabled: 0\n"
            "eth0 type: \n"
            "eth0 ip address: \n"
            "eth0 network mask: \n"
            "eth0 default gateway: \n"
            "eth0 security: \n"
            "Wlan settings:\n"
            "wlan0 enabled: 0\n"
            "wlan0 type: \n"
            "wlan0 ssid: \n"
            "wlan0 security: \n"
            "wlan0 frequency: \n"
            "wlan0 hidden: 0\n"
            "wlan0 ip address: \n"
            "wlan0 network mask: \n"
            "wlan0 default gateway: \n"
            "Dns settings:\n"
            "dns type: \n"
            "dns dns1: \n"
            "dns dns2: \n"
            "dns domain: \n");
}

TEST(SettingsDump, WiredEnterpriseBlockFollowsTheMethod) {
  networkSettings settings;
  settings.eth.security = "enterprise";
  settings.eth.authenticationMethod = "tls";
  settings.eth.userName = "alice";
  settings.eth.caCertificate = "ca.pem";
  settings.eth.pkcs12Certificate = "alice.p12";
  settings.eth.pkcs12Password = "NR6RWwHUZRWwPkG0/Skv+A==";
  settings.eth.userPassword = "unused";
  settings.eth.fallback = true;
  EXPECT_EQ(between(dump(settings), "eth0 security: enterprise\n", "Wlan settings:\n"),
            "eth0 user name: alice\n"
            "eth0 authentication method: tls\n"
            "eth0 ca certificate: ca.pem\n"
            "eth0 pkcs12 certificate: alice.p12\n"
            "eth0 pkcs12 password: NR6RWwHUZRWwPkG0/Skv+A==\n"
            "eth0 fallback: 1\n");

  settings.eth.authenticationMethod = "peap";
  EXPECT_EQ(between(dump(settings), "eth0 ca certificate: ca.pem\n", "Wlan settings:\n"),
            "eth0 user password: unused\n"
            "eth0 fallback: 1\n");

  settings.eth.security = "Enterprise";
  EXPECT_EQ(between(dump(settings), "eth0 security: Enterprise\n", "Wlan settings:\n"), "");
}

TEST(SettingsDump, WirelessSecurityChoosesItsLines) {
  networkSettings settings;
  settings.wlan.security = "personal";
  settings.wlan.passphrase = "NR6RWwHUZRWwPkG0/Skv+A==";
  settings.wlan.userName = "unused";
  EXPECT_EQ(between(dump(settings), "wlan0 hidden: 0\n", "wlan0 ip address: "),
            "wlan0 passphrase: NR6RWwHUZRWwPkG0/Skv+A==\n");

  settings.wlan.security = "enterprise";
  settings.wlan.userName = "bob";
  settings.wlan.advancedSecurity = "wpa2";
  settings.wlan.encryption = "ccmp";
  settings.wlan.authenticationMethod = "peap";
  settings.wlan.caCertificate = "ca.pem";
  settings.wlan.userPassword = "s9Y8WFVB2eLQNsKDpcj7zA==";
  EXPECT_EQ(between(dump(settings), "wlan0 hidden: 0\n", "wlan0 ip address: "),
            "wlan0 user name: bob\n"
            "wlan0 encryption ver: wpa2\n"
            "wlan0 pairwise: ccmp\n"
            "wlan0 authentication method: peap\n"
            "wlan0 ca certificate: ca.pem\n"
            "wlan0 user password: s9Y8WFVB2eLQNsKDpcj7zA==\n");

  settings.wlan.authenticationMethod = "tls";
  settings.wlan.pkcs12Certificate = "bob.p12";
  settings.wlan.pkcs12Password = "P542rRlmZ6DZk5IcUabuqA==";
  EXPECT_EQ(between(dump(settings), "wlan0 ca certificate: ca.pem\n", "wlan0 ip address: "),
            "wlan0 pkcs12 certificate: bob.p12\n"
            "wlan0 pkcs12 password: P542rRlmZ6DZk5IcUabuqA==\n");

  settings.wlan.security = "open";
  EXPECT_EQ(between(dump(settings), "wlan0 hidden: 0\n", "wlan0 ip address: "), "");
}

TEST(SettingsDump, OnlyConsoleModePrints) {
  settingsTab = networkSettings();
  settingsTab.dns.domain = "lan";
  std::ostringstream console;
  printConfigJson(consoleMode, console);
  EXPECT_NE(console.str().find("dns domain: lan\n"), std::string::npos);
  for (const UserMode mode : {applicationMode, silentMode}) {
    std::ostringstream out;
    printConfigJson(mode, out);
    EXPECT_EQ(out.str(), "");
  }
}
