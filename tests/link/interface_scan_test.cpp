#include "link/interface_scan.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "common/pieces.h"
#include "support/fixtures.h"

namespace {

std::vector<std::string> pieces(const std::string& text) {
  return splitPieces(text);
}

std::vector<std::string> fixturePieces(const std::string& path) {
  return splitPieces(fixture(path));
}

const char* const kSeveralGateways =
    "route/lab-net-tools-2.10-eth0-wlan0-defaults-tun0-and-wlan0-gateways.txt";

}  // namespace

TEST(InterfaceSighting, CurrentIfconfigOutputGivesAddressAndNetmask) {
  const struct {
    const char* path;
    const char* name;
    const char* address;
    const char* netmask;
  } cases[] = {
      {"ifconfig/lab-net-tools-2.10-eth0-static.txt", "eth0", "10.0.0.5", "255.255.255.0"},
      {"ifconfig/lab-net-tools-2.10-wlan0-address.txt", "wlan0", "192.168.4.23", "255.255.255.0"},
      {"ifconfig/lab-net-tools-2.10-tun0-point-to-point.txt", "tun0", "10.8.0.2",
       "255.255.255.255"},
  };
  for (const auto& c : cases) {
    const InterfaceSighting sighting = sightInterface(fixturePieces(c.path), c.name);
    ASSERT_TRUE(sighting.addressSeen && sighting.named) << c.path;
    EXPECT_EQ(addressAndNetmask(sighting.inetLine),
              std::make_pair(std::string(c.address), std::string(c.netmask)))
        << c.path;
  }
}

TEST(InterfaceSighting, MissingOrDownInterfacesHaveNoAddressLine) {
  const InterfaceSighting missing =
      sightInterface(fixturePieces("ifconfig/lab-net-tools-2.10-wlan0-missing.txt"), "wlan0");
  EXPECT_TRUE(missing.named);
  EXPECT_FALSE(missing.addressSeen);
  const InterfaceSighting down = sightInterface(
      fixturePieces("ifconfig/lab-net-tools-2.10-wlan0-down-no-address.txt"), "wlan0");
  EXPECT_FALSE(down.addressSeen);
  const InterfaceSighting otherName =
      sightInterface(fixturePieces("ifconfig/lab-net-tools-2.10-ppp0-missing.txt"), "tun0");
  EXPECT_FALSE(otherName.named);
}

TEST(InterfaceSighting, LastInetLineWinsAndInet6NeverMatches) {
  const InterfaceSighting sighting =
      sightInterface(fixturePieces("ifconfig/lab-net-tools-2.10-eth0-lo-tun0.txt"), "eth0");
  EXPECT_EQ(addressAndNetmask(sighting.inetLine).first, "10.8.0.2");
  const InterfaceSighting inet6Only = sightInterface(
      pieces("eth0: flags=4163<UP>\n        inet6 fe80::1  prefixlen 64  scopeid 0x20<link>\n"),
      "eth0");
  EXPECT_FALSE(inet6Only.addressSeen);
}

TEST(AddressAndNetmask, TheFixedEightCharacterCutAndWordPicks) {
  // Old-format ifconfig indents by 10: the labels stay glued to the values.
  EXPECT_EQ(addressAndNetmask("          inet addr:10.10.0.1  P-t-P:10.10.0.2  "
                              "Mask:255.255.255.255\n"),
            std::make_pair(std::string("addr:10.10.0.1"), std::string("Mask:255.255.255.255")));
  // The cut is unconditional: a shallower indentation eats into the address.
  EXPECT_EQ(addressAndNetmask("  inet 10.0.0.5  netmask 255.0.0.0  broadcast 10.255.255.255\n"),
            std::make_pair(std::string("netmask"), std::string("broadcast")));
  EXPECT_THROW(addressAndNetmask("        inet 10.0.0.5\n"), std::out_of_range);
  EXPECT_THROW(addressAndNetmask("        inet \n"), std::out_of_range);
}

TEST(ConfiguredType, LastMatchingLineDecides) {
  EXPECT_EQ(configuredType(pieces("auto eth0\niface eth0 inet static\n"), "iface eth0 inet"),
            "static");
  EXPECT_EQ(
      configuredType(pieces("iface eth0 inet static\niface eth0 inet dhcp\n"), "iface eth0 inet"),
      "dhcp");
  EXPECT_EQ(
      configuredType(pieces("iface eth0 inet dhcp\niface eth0 inet static\n"), "iface eth0 inet"),
      "static");
  EXPECT_EQ(configuredType(pieces("iface eth0 inet manual\n"), "iface eth0 inet"), "dhcp");
  EXPECT_EQ(configuredType(pieces("iface wlan0 inet static\n"), "iface eth0 inet"), "dhcp");
  EXPECT_EQ(configuredType(pieces("#iface eth0 inet static dhcp\n"), "iface eth0 inet"), "dhcp");
  EXPECT_EQ(configuredType({}, "iface eth0 inet"), "dhcp");
}

TEST(InterfaceGateway, LastUgLineOfTheInterfaceInRealRouteTables) {
  const auto table = fixturePieces(kSeveralGateways);
  EXPECT_EQ(interfaceGateway(table, "eth0"), "192.168.1.1");
  // A network route through a gateway counts as much as the default route, and comes later.
  EXPECT_EQ(interfaceGateway(table, "wlan0"), "192.168.4.254");
  EXPECT_EQ(interfaceGateway(table, "tun0"), "10.8.0.5");
  EXPECT_EQ(interfaceGateway(table, "ppp0"), "");
  EXPECT_EQ(interfaceGateway(fixturePieces("route/rpi3bplus-eth0-default-wlan0-ap.txt"), "wlan0"),
            "");
  EXPECT_EQ(interfaceGateway(fixturePieces("route/rpi3bplus-eth0-default-wlan0-ap.txt"), "eth0"),
            "10.1.0.254");
  EXPECT_THROW(interfaceGateway(pieces("UG:eth0\n"), "eth0"), std::out_of_range);
}

TEST(DefaultRoute, FirstDefaultLineOfARealTableGivesTheGatewayColumn) {
  std::string first;
  for (const std::string& piece : fixturePieces(kSeveralGateways)) {
    if (isDefaultRoute(piece)) {
      first = piece;
      break;
    }
  }
  EXPECT_EQ(gatewayColumn(first), "192.168.1.1");
  EXPECT_FALSE(
      isDefaultRoute("192.168.1.0     0.0.0.0         255.255.255.0   U     0 0 0 eth0\n"));
  EXPECT_EQ(gatewayColumn(""), "");
  EXPECT_THROW(gatewayColumn("0.0.0.0UG\n"), std::out_of_range);
}

TEST(IpsecAddress, LastPipelineLineWithoutBlanksOrNewlines) {
  EXPECT_EQ(ipsecAddress(pieces("10.10.10.1\n")), "10.10.10.1");
  EXPECT_EQ(ipsecAddress(pieces("0.0.0.0\n2.2.2.2\n")), "2.2.2.2");
  EXPECT_EQ(ipsecAddress(pieces("10.1.0.7\n\n")), "");
  EXPECT_EQ(ipsecAddress({}), "");
}
