#include "generate/interfaces_file.h"

#include <gtest/gtest.h>

namespace {

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace

TEST(InterfacesFile, OnlyExactlyStaticGetsAddressLines) {
  networkSettings settings;
  settings.wlan.enabled = true;
  settings.wlan.type = "Static";
  settings.wlan.ipAddress = "192.168.1.10";
  EXPECT_TRUE(holds(renderInterfaces(settings, false), "iface wlan0 inet dhcp\n\twireless-power"));
  settings.wlan.type = "static";
  settings.wlan.ipAddress = "";
  EXPECT_TRUE(holds(renderInterfaces(settings, false),
                    "iface wlan0 inet static\n\taddress \n\tnetmask \n\tgateway \n"));
  // A disabled interface is DHCP whatever its type.
  settings.wlan.enabled = false;
  EXPECT_TRUE(
      holds(renderInterfaces(settings, false), "\niface wlan0 inet dhcp\n\twireless-power"));
}

TEST(InterfacesFile, WiredSupplicantLinesFollowSecurityAndCommand) {
  networkSettings settings;
  settings.eth.security = "enterprise";
  // Active even for a disabled wired interface.
  EXPECT_TRUE(holds(renderInterfaces(settings, false),
                    "iface eth0 inet dhcp\n\twpa-driver wired\n"
                    "\twpa-conf /etc/wpa_supplicant/wpa_supplicant_wired.conf\n"));
  EXPECT_TRUE(
      holds(renderInterfaces(settings, true), "inet dhcp\n#\twpa-driver wired\n#\twpa-conf"));
  settings.eth.security = "Enterprise";
  EXPECT_TRUE(holds(renderInterfaces(settings, false), "inet dhcp\n#\twpa-driver wired\n"));
}

TEST(InterfacesFile, DnsLinesOnlyForStaticDnsInEnabledStanzas) {
  networkSettings settings;
  settings.dns = {"dhcp", "8.8.8.8", "8.8.4.4", "lan"};
  settings.eth.enabled = true;
  settings.wlan.enabled = true;
  EXPECT_FALSE(holds(renderInterfaces(settings, false), "dns-"));
  settings.dns.type = "static";
  settings.eth.enabled = false;
  const std::string text = renderInterfaces(settings, false);
  EXPECT_EQ(text.find("dns-nameservers"), text.rfind("dns-nameservers"));
  EXPECT_TRUE(holds(text, "iface wlan0 inet dhcp\n\tdns-nameservers 8.8.8.8 8.8.4.4\n"));
}
