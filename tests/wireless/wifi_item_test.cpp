#include "wireless/wifi_item.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

namespace {

std::string printed(const wifiItem& item, UserMode mode) {
  std::ostringstream out;
  item.printItem(mode, out);
  return out.str();
}

}  // namespace

// The ordinary console row and JSON object are pinned end to end.
TEST(WifiItem, LongTextsPrintedWholeAndQuotesLeftAsTheyAre) {
  wifiItem item;
  item.ssid = std::string(40, 'w');
  item.signalStrength = -20;
  EXPECT_EQ(printed(item, consoleMode).substr(0, 70),
            "Ssid: " + std::string(40, 'w') + " Signal strength: -20   ");
  item.ssid = "say \"hi\"\\";
  EXPECT_EQ(printed(item, applicationMode).substr(0, 21), "{ \"ssid\":\"say \"hi\"\\\",");
  EXPECT_EQ(printed(item, silentMode), "");
}
