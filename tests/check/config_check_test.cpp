#include "check/config_check.h"

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <utility>
#include <vector>

#include "credentials/cipher_key.h"
#include "credentials/password_cipher.h"

namespace {

const std::string kEth = "network settings/interfaces/eth/";
const std::string kWlan = "network settings/interfaces/wlan/";
const std::string kDns = "network settings/DNS/";

const certificateStore kStore{
    "/store", [](const char* dir, const std::string& name) {
      const std::set<std::string> files = {"cacerts/ca.pem", "pkcs12/dev.p12"};
      return files.count(std::string(dir) + "/" + name) > 0;
    }};

Json::Value parsed(const std::string& text) {
  Json::Value json;
  EXPECT_TRUE(Json::Reader().parse(text, json, false)) << text;
  return json;
}

std::string stored(const std::string& plain) {
  loadCipherKey();
  return encodePassword(plain);
}

// Wired PEAP with stored credentials on static addresses, wireless personal with the shortest pass
// phrase the supplicant takes, static DNS.
Json::Value personal() {
  return parsed(R"({"network settings": {"interfaces": {
      "eth": {"enabled": true, "type": "static", "IP address": "10.0.0.5",
              "network mask": "255.255.255.0", "default gateway": "10.0.0.1",
              "security": "enterprise", "authentication method": "peap",
              "ca certificate": "ca.pem", "user name": "alice", "user password": ")" +
                stored("alice's secret") + R"("},
      "wlan": {"enabled": true, "type": "dhcp", "ssid": "Lobby", "security": "personal",
               "frequency": "5", "passphrase": ")" +
                stored("horse-42") + R"("}},
    "DNS": {"type": "static", "dns1": "10.0.0.1", "dns2": "9.9.9.9", "domain": "lan"}}})");
}

// Wired TLS, wireless enterprise TTLS, DNS from DHCP.
Json::Value enterprise() {
  return parsed(R"({"network settings": {"interfaces": {
      "eth": {"enabled": true, "type": "dhcp", "security": "enterprise",
              "authentication method": "tls", "ca certificate": "ca.pem", "user name": "dev",
              "pkcs12 certificate": "dev.p12", "pkcs12 password": ")" +
                stored("p12 secret") + R"("},
      "wlan": {"enabled": true, "type": "static", "IP address": "192.168.1.10",
               "network mask": "255.255.0.0", "default gateway": "192.168.7.1", "ssid": "Corp",
               "security": "enterprise", "authentication method": "ttls", "encryption": "ccmp",
               "advanced security": "wpa2", "frequency": "auto", "ca certificate": "ca.pem",
               "user name": "bob", "user password": ")" +
                stored("bob's secret") + R"("}},
    "DNS": {"type": "dhcp"}}})");
}

Json::Value& at(Json::Value& json, const std::string& path) {
  Json::Value* value = &json;
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find('/', start), path.size());
    value = &(*value)[path.substr(start, end - start)];
    start = end + 1;
  }
  return *value;
}

struct rule {
  Json::Value (*base)();
  std::vector<std::pair<std::string, Json::Value>> changes;
  severity level;
  std::string path;
};

}  // namespace

TEST(ConfigCheck, CleanFilesHaveNoFindings) {
  Json::Value open = parsed(R"({"network settings": {"interfaces": {
      "eth": {"enabled": true, "security": "open", "type": "dhcp"},
      "wlan": {"enabled": true, "ssid": "Guest", "security": "open", "frequency": "auto"}}}})");
  // What a disabled interface holds is not used, so it is not checked beyond its JSON types.
  Json::Value disabled = parsed(R"({"network settings": {"interfaces": {
      "eth": {"enabled": false, "type": "Static", "IP address": "x", "security": "Enterprise"},
      "wlan": {"enabled": false, "ssid": "", "passphrase": "plain", "Frequency": "2.4"}}}})");
  for (const Json::Value& json : {personal(), enterprise(), open, disabled, parsed("{}")}) {
    EXPECT_TRUE(checkConfig(json, kStore).empty()) << json;
  }
}

TEST(ConfigCheck, EachRuleNamesItsPlaceAndSeverity) {
  const Json::Value none;
  const Json::Value array(Json::arrayValue);
  const severity E = severity::error;
  const severity W = severity::warning;
  std::vector<std::string> secrets = {"alice's secret", "horse-42", "p12 secret",
                                      "bob's secret",   "hunter2",  "plain words"};
  for (std::size_t i = 0, n = secrets.size(); i < n; ++i) secrets.push_back(stored(secrets[i]));
  const std::vector<rule> rules = {
      // Members the reader cannot convert: the tool stops.
      {personal, {{kWlan + "ssid", array}}, E, kWlan + "ssid"},
      {personal, {{kEth + "enabled", "yes"}}, E, kEth + "enabled"},
      {personal, {{"network settings/interfaces/eth", "x"}}, E, "network settings/interfaces/eth"},
      // Secrets.
      {personal, {{kWlan + "passphrase", "plain words"}}, E, kWlan + "passphrase"},
      {personal, {{kWlan + "passphrase", stored("hunter2")}}, E, kWlan + "passphrase"},
      {personal, {{kWlan + "passphrase", stored(std::string(64, 'a'))}}, E, kWlan + "passphrase"},
      {personal, {{kWlan + "passphrase", stored("caf\xc3\xa9 au lait")}}, E, kWlan + "passphrase"},
      {personal, {{kEth + "user password", "plain words"}}, E, kEth + "user password"},
      {enterprise, {{kEth + "pkcs12 password", "plain words"}}, E, kEth + "pkcs12 password"},
      // Words the writers do not know.
      {personal, {{kWlan + "security", "Personal"}}, E, kWlan + "security"},
      {personal, {{kEth + "security", "Enterprise"}}, E, kEth + "security"},
      {personal, {{kWlan + "frequency", "2.4 GHz"}}, E, kWlan + "frequency"},
      {personal, {{kWlan + "security", "open"}}, E, kWlan + "frequency"},
      {personal, {{kEth + "authentication method", "md5"}}, E, kEth + "authentication method"},
      // Certificates.
      {enterprise, {{kEth + "pkcs12 certificate", ""}}, E, kEth + "pkcs12 certificate"},
      {enterprise, {{kEth + "pkcs12 certificate", "ca.pem"}}, E, kEth + "pkcs12 certificate"},
      {enterprise, {{kWlan + "ca certificate", "dev.p12"}}, E, kWlan + "ca certificate"},
      // Texts the supplicant files cannot hold.
      {personal, {{kWlan + "ssid", ""}}, E, kWlan + "ssid"},
      {personal, {{kWlan + "ssid", std::string(33, 's')}}, E, kWlan + "ssid"},
      {personal, {{kWlan + "ssid", "Bob's \"Net\""}}, E, kWlan + "ssid"},
      {enterprise, {{kWlan + "user name", "bob\nnetwork={"}}, E, kWlan + "user name"},
      // Static addressing and DNS.
      {personal, {{kEth + "IP address", "10.0.0.300"}}, E, kEth + "IP address"},
      {personal, {{kEth + "network mask", "255.0.255.0"}}, E, kEth + "network mask"},
      {enterprise, {{kWlan + "network mask", "255.255.240.0"}}, E, kWlan + "network mask"},
      {personal, {{kEth + "network mask", "255.255.255.255"}}, E, kEth + "network mask"},
      {personal, {{kEth + "default gateway", ""}}, E, kEth + "default gateway"},
      {personal, {{kDns + "dns2", "dns.example"}}, E, kDns + "dns2"},
      // Settings that work, but probably not as meant.
      {personal, {{kEth + "ca certificate", ""}}, W, kEth + "ca certificate"},
      {enterprise, {{kWlan + "encryption", "CCMP"}}, W, kWlan + "encryption"},
      {enterprise, {{kWlan + "advanced security", "WPA2"}}, W, kWlan + "advanced security"},
      {personal, {{kEth + "type", " Static"}}, W, kEth + "type"},
      {personal, {{kDns + "type", "STATIC"}}, W, kDns + "type"},
      {personal, {{kEth + "default gateway", "10.0.1.1"}}, W, kEth + "default gateway"},
      {personal, {{kDns + "dns1", ""}, {kDns + "dns2", none}}, W, kDns + "dns1"},
      {personal, {{kEth + "ip address", "10.0.0.6"}}, W, kEth + "ip address"},
      {personal, {{kEth + "enabled", false}, {kEth + "Enabled", true}}, W, kEth + "Enabled"},
      {personal, {{kEth + "ask for credentials", true}}, W, kEth + "ask for credentials"},
  };
  for (const rule& r : rules) {
    Json::Value json = r.base();
    for (const auto& [path, value] : r.changes) at(json, path) = value;
    const std::vector<finding> findings = checkConfig(json, kStore);
    ASSERT_EQ(findings.size(), 1U) << r.path << "\n" << json;
    EXPECT_EQ(findings[0].level, r.level) << r.path;
    EXPECT_EQ(findings[0].path, r.path);
    for (const std::string& secret : secrets) {
      EXPECT_EQ(findings[0].message.find(secret), std::string::npos) << r.path;
    }
  }
}
