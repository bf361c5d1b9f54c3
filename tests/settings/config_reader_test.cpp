#include "settings/config_reader.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/temp_dir.h"

namespace {

Json::Value parse(const std::string& text) {
  Json::Value json;
  Json::Reader jsonReader;
  EXPECT_TRUE(jsonReader.parse(text, json, false)) << text;
  return json;
}

// Every key holds a value naming its field, so a key read into the wrong field shows.
constexpr const char* kEveryKey = R"({
  "encoding": "UTF-8",
  "network settings": {
    "interfaces": {
      "eth": {
        "enabled": true, "type": "eth.type", "IP address": "eth.ipAddress",
        "network mask": "eth.networkMask", "default gateway": "eth.defaultGateway",
        "security": "eth.security", "authentication method": "eth.authenticationMethod",
        "ca certificate": "eth.caCertificate", "pkcs12 certificate": "eth.pkcs12Certificate",
        "pkcs12 password": "eth.pkcs12Password", "user name": "eth.userName",
        "user password": "eth.userPassword", "fallback": true, "ask for credentials": true
      },
      "wlan": {
        "enabled": true, "type": "wlan.type", "ssid": "wlan.ssid",
        "advanced security": "wlan.advancedSecurity", "security": "wlan.security",
        "authentication method": "wlan.authenticationMethod",
        "ca certificate": "wlan.caCertificate", "pkcs12 certificate": "wlan.pkcs12Certificate",
        "pkcs12 password": "wlan.pkcs12Password", "encryption": "wlan.encryption",
        "hidden ssid": true, "passphrase": "wlan.passphrase", "IP address": "wlan.ipAddress",
        "network mask": "wlan.networkMask", "default gateway": "wlan.defaultGateway",
        "user name": "wlan.userName", "user password": "wlan.userPassword",
        "frequency": "wlan.frequency"
      }
    },
    "DNS": {"type": "dns.type", "dns1": "dns.dns1", "dns2": "dns.dns2", "domain": "dns.domain"}
  }
})";

}  // namespace

TEST(ConfigReader, EveryKeyLandsInItsField) {
  const configSettings read = settingsFromJson(parse(kEveryKey));
  const ethSettings& eth = read.settings.eth;
  const wlanSettings& wlan = read.settings.wlan;
  const dnsSettings& dns = read.settings.dns;
  EXPECT_TRUE(eth.enabled);
  EXPECT_TRUE(eth.fallback);
  EXPECT_TRUE(read.passThrough);
  const std::pair<std::string, std::string> fields[] = {
      {eth.type, "eth.type"},
      {eth.ipAddress, "eth.ipAddress"},
      {eth.networkMask, "eth.networkMask"},
      {eth.defaultGateway, "eth.defaultGateway"},
      {eth.security, "eth.security"},
      {eth.authenticationMethod, "eth.authenticationMethod"},
      {eth.caCertificate, "eth.caCertificate"},
      {eth.pkcs12Certificate, "eth.pkcs12Certificate"},
      {eth.pkcs12Password, "eth.pkcs12Password"},
      {eth.userName, "eth.userName"},
      {eth.userPassword, "eth.userPassword"},
      {wlan.type, "wlan.type"},
      {wlan.ssid, "wlan.ssid"},
      {wlan.passphrase, "wlan.passphrase"},
      {wlan.advancedSecurity, "wlan.advancedSecurity"},
      {wlan.security, "wlan.security"},
      {wlan.authenticationMethod, "wlan.authenticationMethod"},
      {wlan.caCertificate, "wlan.caCertificate"},
      {wlan.pkcs12Certificate, "wlan.pkcs12Certificate"},
      {wlan.pkcs12Password, "wlan.pkcs12Password"},
      {wlan.encryption, "wlan.encryption"},
      {wlan.userName, "wlan.userName"},
      {wlan.userPassword, "wlan.userPassword"},
      {wlan.ipAddress, "wlan.ipAddress"},
      {wlan.networkMask, "wlan.networkMask"},
      {wlan.defaultGateway, "wlan.defaultGateway"},
      {wlan.frequency, "wlan.frequency"},
      {dns.type, "dns.type"},
      {dns.dns1, "dns.dns1"},
      {dns.dns2, "dns.dns2"},
      {dns.domain, "dns.domain"},
  };
  for (const auto& [actual, expected] : fields) EXPECT_EQ(actual, expected);
  EXPECT_TRUE(wlan.enabled);
  EXPECT_TRUE(wlan.hiddenSsid);
}

TEST(ConfigReader, MissingMembersReadAsEmptyAndFalse) {
  for (const char* text : {"{}", R"({"network settings": {}})",
                           R"({"network settings": {"interfaces": {"eth": {}}, "DNS": null}})"}) {
    const configSettings read = settingsFromJson(parse(text));
    EXPECT_FALSE(read.settings.eth.enabled) << text;
    EXPECT_FALSE(read.passThrough) << text;
    EXPECT_EQ(read.settings.wlan.ssid, "") << text;
    EXPECT_EQ(read.settings.dns.type, "") << text;
  }
}

TEST(ConfigReader, KeysAreExact) {
  const configSettings read = settingsFromJson(parse(
      R"({"network settings": {"interfaces": {"eth": {"ip address": "10.0.0.5", "Enabled": true}}}})"));
  EXPECT_EQ(read.settings.eth.ipAddress, "");
  EXPECT_FALSE(read.settings.eth.enabled);
}

TEST(ConfigReader, StringsAreKeptAsWritten) {
  const configSettings read = settingsFromJson(parse(
      R"({"network settings": {"interfaces": {"wlan": {"ssid": " Caf\u00e9 \"5G\" ", "type": "Static"}}}})"));
  EXPECT_EQ(read.settings.wlan.ssid, " Caf\xc3\xa9 \"5G\" ");
  EXPECT_EQ(read.settings.wlan.type, "Static");
}

TEST(ConfigReader, NumbersAndBoolsWhereStringsBelongAreConverted) {
  const configSettings read = settingsFromJson(parse(
      R"({"network settings": {"interfaces": {"eth": {"type": 5, "security": true, "enabled": 1},
          "wlan": {"frequency": 2.4, "hidden ssid": 0}}}})"));
  EXPECT_EQ(read.settings.eth.type, "5");
  EXPECT_EQ(read.settings.eth.security, "true");
  EXPECT_TRUE(read.settings.eth.enabled);
  // Seventeen significant digits: a numeric 2.4 is not the frequency choice "2.4".
  EXPECT_EQ(read.settings.wlan.frequency, "2.3999999999999999");
  EXPECT_FALSE(read.settings.wlan.hiddenSsid);
}

TEST(ConfigReader, ConsoleModeAnnouncesStartAndEnd) {
  TempDir dir;
  const std::string path = dir.write("config.json", kEveryKey);
  std::ostringstream out;
  std::ostringstream err;
  initConfig(path, consoleMode, out, err);
  EXPECT_EQ(out.str(), "Start reading config.json file...\nReading config.json file complete.\n");
  EXPECT_EQ(err.str(), "");
  EXPECT_EQ(settingsTab.wlan.ssid, "wlan.ssid");
  EXPECT_TRUE(ethernetPassThrough);

  std::ostringstream quiet;
  initConfig(dir.write("empty-object.json", "{}"), applicationMode, quiet, quiet);
  EXPECT_EQ(quiet.str(), "");
  EXPECT_EQ(settingsTab.wlan.ssid, "");
  EXPECT_FALSE(ethernetPassThrough);
}

// Whatever is wrong with the file, the run ends with status 1 and the same line, never with an
// abort.
TEST(ConfigReaderDeathTest, UnreadableFilesTakeTheParseFailurePath) {
  TempDir dir;
  const std::string deep = std::string(1200, '[') + std::string(1200, ']');
  const std::pair<const char*, std::string> files[] = {
      {"empty", ""},
      {"not-json", "network settings = on"},
      {"truncated", R"({"network settings": {"interfaces": )"},
      {"too-deep", deep},
      {"too-deep-inside", R"({"network settings": )" + deep + "}"},
      {"object-for-string", R"({"network settings": {"DNS": {"dns1": {"a": 1}}}})"},
      {"array-for-string", R"({"network settings": {"interfaces": {"wlan": {"ssid": [1]}}}})"},
      {"string-for-bool", R"({"network settings": {"interfaces": {"eth": {"enabled": "yes"}}}})"},
      {"string-for-group", R"({"network settings": "x"})"},
      {"array-for-group", R"({"network settings": {"interfaces": [1, 2]}})"},
      {"top-level-array", R"([{"network settings": {}}])"},
      {"top-level-number", "5"},
      {"object-for-encoding", R"({"encoding": {}})"},
  };
  for (const auto& [name, content] : files) {
    const std::string path = dir.write(name, content);
    EXPECT_EXIT(initConfig(path, consoleMode), testing::ExitedWithCode(1),
                "^Error: Parsing " + path + " file failed.\n$")
        << name;
    EXPECT_EXIT(initConfig(path, applicationMode), testing::ExitedWithCode(1), "^$") << name;
  }
  for (const std::string& path : {dir.path(), dir.path() + "/missing.json"}) {
    EXPECT_EXIT(initConfig(path, consoleMode), testing::ExitedWithCode(1),
                "^Error: Parsing " + path + " file failed.\n$");
  }
}
