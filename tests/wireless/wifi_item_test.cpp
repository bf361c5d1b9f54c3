#include "wireless/wifi_item.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

wifiItem sample() {
  wifiItem item;
  item.ssid = "ATT2D825w4";
  item.signalStrength = 100;
  item.authentication = "PSK";
  item.encryption = "on";
  item.pairwise = "CCMP";
  item.encryptionVer = "WPA2";
  item.frequency = "2.412";
  item.channel = 1;
  return item;
}

std::string printed(const wifiItem& item, UserMode mode) {
  std::ostringstream out;
  item.printItem(mode, out);
  return out.str();
}

}  // namespace

TEST(WifiItem, ConsoleFieldsAreLeftJustifiedAndLongTextsPrintedWhole) {
  const std::string expected =
      std::string("Ssid: ") + "ATT2D825w4" + std::string(22, ' ') + " " +
      "Signal strength: " + "100  " + " " + "Authentication: " + "PSK    " + " " +
      "Encryption: " + "on  " + " " + "Pairwise: " + "CCMP     " + " " +
      "Encryption ver: " + "WPA2      " + " " + "Frequency: " + "2.412 " + "Channel:  " + "1     ";
  EXPECT_EQ(printed(sample(), consoleMode), expected);
  wifiItem wide = sample();
  wide.ssid = std::string(40, 'w');
  wide.signalStrength = -20;
  EXPECT_EQ(printed(wide, consoleMode).substr(0, 70),
            "Ssid: " + std::string(40, 'w') + " Signal strength: -20   ");
}

TEST(WifiItem, ApplicationObjectHasUnquotedNumbersAndUnescapedTexts) {
  EXPECT_EQ(printed(sample(), applicationMode),
            "{ \"ssid\":\"ATT2D825w4\",\"signal strength\":100,\"encryption\":\"on\","
            "\"authentication\":\"PSK\",\"encryption ver\":\"WPA2\",\"pairwise\":\"CCMP\","
            "\"frequency\":\"2.412\",\"channel\":1}");
  wifiItem quoted = sample();
  quoted.ssid = "say \"hi\"\\";
  EXPECT_EQ(printed(quoted, applicationMode).substr(0, 21), "{ \"ssid\":\"say \"hi\"\\\",");
  EXPECT_EQ(printed(sample(), silentMode), "");
}
