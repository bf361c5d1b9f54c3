#include "link/interface_scan.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "common/pieces.h"
#include "support/fixtures.h"

namespace {

std::vector<std::string> fixturePieces(const std::string& path) {
  return splitPieces(fixture(path));
}

std::pair<std::string, std::string> pair(const char* first, const char* second) {
  return {first, second};
}

}  // namespace

TEST(InterfaceScan, SightingKeepsTheLastInetLineWhicheverInterfaceItBelongsTo) {
  const InterfaceSighting down = sightInterface(
      fixturePieces("ifconfig/lab-net-tools-2.10-wlan0-down-no-address.txt"), "wlan0");
  EXPECT_TRUE(down.named);
  EXPECT_FALSE(down.addressSeen);
  EXPECT_FALSE(
      sightInterface(fixturePieces("ifconfig/lab-net-tools-2.10-ppp0-missing.txt"), "tun0").named);
  const InterfaceSighting lastWins =
      sightInterface(fixturePieces("ifconfig/lab-net-tools-2.10-eth0-lo-tun0.txt"), "eth0");
  EXPECT_EQ(addressAndNetmask(lastWins.inetLine), pair("10.8.0.2", "255.255.255.255"));
}

TEST(InterfaceScan, AddressAndNetmaskAfterTheFixedCut) {
  // Old-format ifconfig indents by 10: the labels stay glued to the values.
  EXPECT_EQ(addressAndNetmask("          inet addr:10.10.0.1  P-t-P:10.10.0.2  "
                              "Mask:255.255.255.255\n"),
            pair("addr:10.10.0.1", "Mask:255.255.255.255"));
  // The cut is unconditional: a shallower indentation eats into the address.
  EXPECT_EQ(addressAndNetmask("  inet 10.0.0.5  netmask 255.0.0.0  broadcast 10.255.255.255\n"),
            pair("netmask", "broadcast"));
  EXPECT_THROW(addressAndNetmask("        inet \n"), std::out_of_range);
}

TEST(InterfaceScan, ConfiguredTypeFromTheLastMatchingLine) {
  const struct {
    const char* file;
    const char* type;
  } cases[] = {
      {"auto eth0\niface eth0 inet static\n", "static"},
      {"iface eth0 inet static\niface eth0 inet dhcp\n", "dhcp"},
      {"iface eth0 inet dhcp\niface eth0 inet static\n", "static"},
      {"iface eth0 inet manual\n", "dhcp"},
      {"iface wlan0 inet static\n", "dhcp"},
      {"#iface eth0 inet static dhcp\n", "dhcp"},
      {"", "dhcp"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(configuredType(splitPieces(c.file), "iface eth0 inet"), c.type) << c.file;
  }
}

// The gateways of the wireless and tunnel reports and the first default route are pinned end to
// end on the same table.
TEST(InterfaceScan, GatewaysFromRealRouteTables) {
  const auto table =
      fixturePieces("route/lab-net-tools-2.10-eth0-wlan0-defaults-tun0-and-wlan0-gateways.txt");
  EXPECT_EQ(interfaceGateway(table, "eth0"), "192.168.1.1");
  EXPECT_EQ(interfaceGateway(table, "ppp0"), "");
  EXPECT_EQ(interfaceGateway(fixturePieces("route/rpi3bplus-eth0-default-wlan0-ap.txt"), "wlan0"),
            "");
  EXPECT_THROW(interfaceGateway(splitPieces("UG:eth0\n"), "eth0"), std::out_of_range);
}

TEST(InterfaceScan, IpsecAddressIsTheLastPipelineLine) {
  EXPECT_EQ(ipsecAddress(splitPieces("10.10.10.1\n")), "10.10.10.1");
  EXPECT_EQ(ipsecAddress(splitPieces("0.0.0.0\n2.2.2.2 \n")), "2.2.2.2");
  EXPECT_EQ(ipsecAddress(splitPieces("10.1.0.7\n\n")), "");
  EXPECT_EQ(ipsecAddress({}), "");
}
