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

const char* const kSeveralGateways =
    "route/lab-net-tools-2.10-eth0-wlan0-defaults-tun0-and-wlan0-gateways.txt";

}  // namespace

TEST(InterfaceScan, IfconfigOutputOfPresentAndMissingInterfaces) {
  const struct {
    const char* path;
    const char* name;
    bool addressSeen;
    bool named;
  } cases[] = {
      {"ifconfig/lab-net-tools-2.10-wlan0-address.txt", "wlan0", true, true},
      {"ifconfig/lab-net-tools-2.10-wlan0-missing.txt", "wlan0", false, true},
      {"ifconfig/lab-net-tools-2.10-wlan0-down-no-address.txt", "wlan0", false, true},
      {"ifconfig/lab-net-tools-2.10-ppp0-missing.txt", "tun0", false, false},
  };
  for (const auto& c : cases) {
    const InterfaceSighting sighting = sightInterface(fixturePieces(c.path), c.name);
    EXPECT_EQ(sighting.addressSeen, c.addressSeen) << c.path;
    EXPECT_EQ(sighting.named, c.named) << c.path;
  }
  // Only "inet " with its blank counts: the inet6 line after it does not.
  const InterfaceSighting wlan0 =
      sightInterface(fixturePieces("ifconfig/lab-net-tools-2.10-wlan0-address.txt"), "wlan0");
  EXPECT_EQ(addressAndNetmask(wlan0.inetLine), pair("192.168.4.23", "255.255.255.0"));
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
  EXPECT_THROW(addressAndNetmask("        inet 10.0.0.5\n"), std::out_of_range);
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

TEST(InterfaceScan, GatewaysFromRealRouteTables) {
  const auto table = fixturePieces(kSeveralGateways);
  EXPECT_EQ(interfaceGateway(table, "eth0"), "192.168.1.1");
  // A later network route through a gateway beats the interface's default route.
  EXPECT_EQ(interfaceGateway(table, "wlan0"), "192.168.4.254");
  EXPECT_EQ(interfaceGateway(table, "tun0"), "10.8.0.5");
  EXPECT_EQ(interfaceGateway(table, "ppp0"), "");
  EXPECT_EQ(interfaceGateway(fixturePieces("route/rpi3bplus-eth0-default-wlan0-ap.txt"), "wlan0"),
            "");
  EXPECT_THROW(interfaceGateway(splitPieces("UG:eth0\n"), "eth0"), std::out_of_range);

  std::string firstDefault;
  for (const std::string& piece : table) {
    if (firstDefault.empty() && isDefaultRoute(piece)) firstDefault = piece;
  }
  EXPECT_EQ(gatewayColumn(firstDefault), "192.168.1.1");
  EXPECT_FALSE(isDefaultRoute(table[1]));
  EXPECT_EQ(gatewayColumn(""), "");
  EXPECT_THROW(gatewayColumn("0.0.0.0UG\n"), std::out_of_range);
}

TEST(InterfaceScan, IpsecAddressIsTheLastPipelineLine) {
  EXPECT_EQ(ipsecAddress(splitPieces("10.10.10.1\n")), "10.10.10.1");
  EXPECT_EQ(ipsecAddress(splitPieces("0.0.0.0\n2.2.2.2 \n")), "2.2.2.2");
  EXPECT_EQ(ipsecAddress(splitPieces("10.1.0.7\n\n")), "");
  EXPECT_EQ(ipsecAddress({}), "");
}
