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

TEST(InterfacesFile, StanzasThatWouldKeepALinkFromNetworkManagerAreFound) {
  EXPECT_TRUE(claimsNetworkInterfaces(renderInterfaces(networkSettings{}, false)));
  EXPECT_FALSE(claimsNetworkInterfaces(renderLoopbackInterfaces()));
  for (const char* text :
       {"auto lo eth0\n", "allow-hotplug wlan0\n", "  iface wlan0 inet dhcp\n", "mapping eth0\n"}) {
    EXPECT_TRUE(claimsNetworkInterfaces(text)) << text;
  }
  for (const char* text : {"# iface wlan0 inet dhcp\n", "iface eth0.5 inet dhcp\n",
                           "iface lo inet loopback\n\twpa-conf wlan0\n", "source eth0\n", ""}) {
    EXPECT_FALSE(claimsNetworkInterfaces(text)) << text;
  }
}
