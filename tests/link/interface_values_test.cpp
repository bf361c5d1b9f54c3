#include "link/interface_values.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/fake_shell.h"
#include "support/fixtures.h"

namespace {

const char* const kSeveralGateways =
    "route/lab-net-tools-2.10-eth0-wlan0-defaults-tun0-and-wlan0-gateways.txt";
const char* const kIpsecPipeline =
    "sudo ipsec status | grep 'ipsec-vpn' | grep \"===\" | cut -d ':' -f2 | cut -d '/' -f1 | "
    "tr -d ' ' >&1";

std::string report(UserMode mode, UserInterfaces which) {
  std::ostringstream out;
  getInterfaceValues(mode, which, out);
  return out.str();
}

class InterfaceReport : public ::testing::Test {
 protected:
  void SetUp() override { interfaceValues = interfaceStatus(); }
  FakeShell fake;
};

}  // namespace

TEST_F(InterfaceReport, ConnectedWirelessInBothModes) {
  fake.answer("ifconfig wlan0 2>&1", fixture("ifconfig/lab-net-tools-2.10-wlan0-address.txt"));
  fake.answer("cat /etc/network/interfaces", "auto wlan0\niface wlan0 inet static\n");
  fake.answer("route -n", fixture(kSeveralGateways));
  EXPECT_EQ(report(consoleMode, wlan0Interface),
            "Get wlan0 parameters...\n"
            "Ip address:       192.168.4.23\n"
            "Netmask address:  255.255.255.0\n"
            "Gateway address:  192.168.4.254\n"
            "Type:             static      \n"
            "Get wlan0 parameters done.\n\n");
  EXPECT_EQ(report(applicationMode, wlan0Interface),
            "{\"values\":{ \"ip address\":\"192.168.4.23\",\"netmask address\":\"255.255.255.0\","
            "\"gateway address\":\"192.168.4.254\",\"type\":\"static\"}}\n");
  EXPECT_EQ(
      fake.commands(),
      (std::vector<std::string>{"ifconfig wlan0 2>&1", "cat /etc/network/interfaces", "route -n",
                                "ifconfig wlan0 2>&1", "cat /etc/network/interfaces", "route -n"}));
}

TEST_F(InterfaceReport, TunnelsAreDhcpWithoutReadingTheFileAndHaveNoClosingLine) {
  fake.answer("ifconfig tun0 2>&1", fixture("ifconfig/lab-net-tools-2.10-tun0-point-to-point.txt"));
  fake.answer("route -n", fixture("route/lab-net-tools-2.10-eth0-default-tun0-host.txt"));
  EXPECT_EQ(report(consoleMode, tun0Interface),
            "Get tun0 parameters...\n"
            "Ip address:       10.8.0.2    \n"
            "Netmask address:  255.255.255.255\n"
            "Gateway address:              \n"
            "Type:             dhcp        \n");
  EXPECT_EQ(fake.commands(), (std::vector<std::string>{"ifconfig tun0 2>&1", "route -n"}));
}

TEST_F(InterfaceReport, MissingInterfaceGivesTheNotConnectedFormsWithTheTypeFound) {
  fake.answer("ifconfig ppp0 2>&1", fixture("ifconfig/lab-net-tools-2.10-ppp0-missing.txt"));
  EXPECT_EQ(report(consoleMode, ppp0Interface),
            "Get ppp0 parameters...\nInterface is disable or not connected.\n");
  fake.answer("ifconfig eth0 2>&1", fixture("ifconfig/missing-interface-error.txt"));
  fake.answer("cat /etc/network/interfaces", "iface eth0 inet static\n");
  EXPECT_EQ(report(applicationMode, eth0Interface),
            "{\"values\":{ \"ip address\":\"\",\"netmask address\":\"\",\"gateway address\":\"\","
            "\"type\":\"static\"}}\n");
  EXPECT_EQ(report(silentMode, eth0Interface), "");
  EXPECT_EQ(interfaceValues.type, "static");
}

TEST_F(InterfaceReport, AnAddressLineOfAnotherInterfaceNeedsTheNameToo) {
  fake.answer("ifconfig eth0 2>&1", "        inet 10.0.0.5  netmask 255.0.0.0\n");
  EXPECT_EQ(report(consoleMode, eth0Interface),
            "Get eth0 parameters...\nInterface is disable or not connected.\n");
}

TEST_F(InterfaceReport, TooFewWordsEndTheRunWithoutAReport) {
  fake.answer("ifconfig eth0 2>&1", "eth0: flags=4163<UP>\n        inet 10.0.0.5\n");
  std::ostringstream out;
  EXPECT_THROW(getInterfaceValues(applicationMode, eth0Interface, out), std::out_of_range);
  EXPECT_EQ(out.str(), "");
}

TEST(DefaultGateway, FirstDefaultRouteInBothModes) {
  FakeShell fake;
  fake.answer("route -n", fixture(kSeveralGateways));
  std::ostringstream console;
  getDefaultGateway(consoleMode, console);
  EXPECT_EQ(console.str(), "Get current default gateway...\nCurrent gateway is: 192.168.1.1\n");
  std::ostringstream application;
  getDefaultGateway(applicationMode, application);
  EXPECT_EQ(application.str(), "{\"gateway\":{ \"value\":\"192.168.1.1\"}}\n");
}

TEST(DefaultGateway, NoDefaultRoute) {
  FakeShell fake;
  fake.answer("route -n", "Kernel IP routing table\n");
  std::ostringstream console;
  getDefaultGateway(consoleMode, console);
  EXPECT_EQ(console.str(), "Get current default gateway...\nUknown default gateway\n");
  std::ostringstream application;
  getDefaultGateway(applicationMode, application);
  EXPECT_EQ(application.str(), "{\"gateway\":{ \"value\":\"\"}}\n");
}

TEST(IpsecReport, EstablishedTunnelReportsItsAddressAndClosesWithTheWlan0Line) {
  interfaceValues = interfaceStatus();
  FakeShell fake;
  fake.answer("sudo ipsec status 2>&1",
              "Security Associations (1 up, 0 connecting):\n"
              "   ipsec-vpn[1]: ESTABLISHED 2 seconds ago, 10.0.0.5[device]...10.0.0.1[gw]\n");
  fake.answer(kIpsecPipeline, "10.10.10.1\n");
  std::ostringstream console;
  getIpsecValues(consoleMode, console);
  EXPECT_EQ(console.str(),
            "Get ipsec parameters...\n"
            "Ip address:       10.10.10.1  \n"
            "Netmask address:              \n"
            "Gateway address:              \n"
            "Type:                         \n"
            "Get wlan0 parameters done.\n\n");
  std::ostringstream application;
  getIpsecValues(applicationMode, application);
  EXPECT_EQ(application.str(),
            "{\"values\":{ \"ip address\":\"10.10.10.1\",\"netmask address\":\"\","
            "\"gateway address\":\"\",\"type\":\"\"}}\n");
  EXPECT_EQ(fake.commands(), (std::vector<std::string>{"sudo ipsec status 2>&1", kIpsecPipeline,
                                                       "sudo ipsec status 2>&1", kIpsecPipeline}));
}

TEST(IpsecReport, OtherConnectionsOrAnEmptyAddressAreNotConnected) {
  interfaceValues = interfaceStatus();
  FakeShell fake;
  fake.answer("sudo ipsec status 2>&1", fixture("ipsec/status-vti-two-child-sas.txt"));
  std::ostringstream console;
  getIpsecValues(consoleMode, console);
  EXPECT_EQ(console.str(), "Get ipsec parameters...\nIpsec is disable or not connected.\n");
  EXPECT_EQ(fake.commands(), std::vector<std::string>{"sudo ipsec status 2>&1"});

  fake.answer("sudo ipsec status 2>&1", "ipsec-vpn[1]: ESTABLISHED 1 second ago\n");
  interfaceValues.type = "dhcp";
  std::ostringstream application;
  getIpsecValues(applicationMode, application);
  EXPECT_EQ(application.str(),
            "{\"values\":{ \"ip address\":\"\",\"netmask address\":\"\",\"gateway address\":\"\","
            "\"type\":\"dhcp\"}}\n");
}
