#include "generate/interfaces_file.h"

#include <gtest/gtest.h>

namespace {

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

TEST(InterfacesFile, OnlyAnEnabledExactlyStaticInterfaceGetsAddressLines) {
  networkSettings settings;
  settings.wlan.enabled = true;
  settings.wlan.type = "Static";
  EXPECT_TRUE(holds(renderInterfaces(settings, false), "iface wlan0 inet dhcp\n\twireless-power"));
  settings.wlan.type = "static";
  settings.wlan.enabled = false;
  EXPECT_TRUE(
      holds(renderInterfaces(settings, false), "\niface wlan0 inet dhcp\n\twireless-power"));
}

TEST(InterfacesFile, WiredSupplicantLinesFollowTheExactSecurityEvenWhenDisabled) {
  networkSettings settings;
  settings.eth.security = "enterprise";
  EXPECT_TRUE(holds(renderInterfaces(settings, false),
                    "iface eth0 inet dhcp\n\twpa-driver wired\n"
                    "\twpa-conf /etc/wpa_supplicant/wpa_supplicant_wired.conf\n"));
  settings.eth.security = "Enterprise";
  EXPECT_TRUE(holds(renderInterfaces(settings, false), "inet dhcp\n#\twpa-driver wired\n"));
}
