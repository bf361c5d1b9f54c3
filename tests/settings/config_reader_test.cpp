#include "settings/config_reader.h"

#include <gtest/gtest.h>

namespace {

configSettings read(const std::string& text) {
  Json::Value json;
  EXPECT_TRUE(Json::Reader().parse(text, json, false)) << text;
  return settingsFromJson(json);
}

}  // namespace

TEST(ConfigReader, NullAndEmptyGroupsReadAsEmptyAndFalse) {
  const configSettings settings =
      read(R"({"network settings": {"interfaces": {"eth": {}}, "DNS": null}})");
  EXPECT_FALSE(settings.settings.eth.enabled);
  EXPECT_FALSE(settings.passThrough);
  EXPECT_EQ(settings.settings.wlan.ssid, "");
  EXPECT_EQ(settings.settings.dns.type, "");
}

TEST(ConfigReader, KeysAreExactAndValuesKeptAsWritten) {
  const configSettings settings = read(R"({"network settings": {"interfaces": {
      "eth": {"ip address": "10.0.0.5", "Enabled": true, "ask for credentials": true},
      "wlan": {"ssid": " Caf\u00e9 \"5G\" ", "type": "Static"}}}})");
  EXPECT_EQ(settings.settings.eth.ipAddress, "");
  EXPECT_FALSE(settings.settings.eth.enabled);
  EXPECT_TRUE(settings.passThrough);
  EXPECT_EQ(settings.settings.wlan.ssid, " Caf\xc3\xa9 \"5G\" ");
  EXPECT_EQ(settings.settings.wlan.type, "Static");
}

TEST(ConfigReader, NumbersAndBoolsWhereStringsBelongAreConverted) {
  const configSettings settings = read(R"({"network settings": {"interfaces": {
      "eth": {"type": 5, "security": true, "enabled": 1},
      "wlan": {"frequency": 2.4, "hidden ssid": 0}}}})");
  EXPECT_EQ(settings.settings.eth.type, "5");
  EXPECT_EQ(settings.settings.eth.security, "true");
  EXPECT_TRUE(settings.settings.eth.enabled);
  // Seventeen significant digits: a numeric 2.4 is not the frequency choice "2.4".
  EXPECT_EQ(settings.settings.wlan.frequency, "2.3999999999999999");
  EXPECT_FALSE(settings.settings.wlan.hiddenSsid);
}
