#include "link/probes.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fake_shell.h"
#include "support/fixtures.h"

// The outputs the end-to-end cases already feed each probe are not repeated here.
TEST(Probes, AnswerFromUtilityOutput) {
  const struct {
    const char* name;
    bool (*probe)(UserMode, std::ostream&);
    const char* command;
    std::string output;
    bool expected;
  } cases[] = {
      {"old-format ifconfig lists wlan0", isEnabledWireless, "ifconfig",
       fixture("ifconfig/rpi-wheezy-old-format-eth0-lo-tun0-wlan0.txt"), true},
      {"a substring inside another name counts", isEnabledWired, "ifconfig",
       "veth0: flags=4163<UP,BROADCAST,RUNNING,MULTICAST>  mtu 1500\n", true},
      {"ethtool on a board PHY", isLinkedWired, "sudo ethtool eth0",
       fixture("ethtool/eth0-tp-mii-external-phy-link-yes-jc-fixture.txt"), true},
      {"the last decisive word of the last selected piece", isLinkedWired, "sudo ethtool eth0",
       "\tLink detected: yes\n\tLink detected: no\n", false},
      {"admin down", isConnectedWireless, "ip link show wlan0",
       fixture("ip-link/laptop-interface-admin-down.txt"), false},
      {"veth wlan0 up", isConnectedWireless, "ip link show wlan0",
       fixture("ip-link/lab-iproute2-6.1-veth-wlan0-up.txt"), true},
      {"DOWN after UP", isConnectedWireless, "ip link show wlan0",
       "3: wlan0: <UP> state UP mode DORMANT DOWN\n", false},
      {"UP only inside the flag list", isConnectedWireless, "ip link show wlan0",
       "3: wlan0: <BROADCAST,UP> mtu 1500 state UNKNOWN\n", false},
      {"state word beyond the first piece", isConnectedWireless, "ip link show wlan0",
       "3: wlan0: <BROADCAST,MULTICAST,UP,LOWER_UP>" + std::string(60, ' ') +
           "state UP mode DORMANT\n",
       false},
      {"any inet line counts, whichever interface", isConnectedWired, "ifconfig eth0",
       fixture("ifconfig/ubuntu-old-format-ifconfig-a-eth0-inet6-only-wlan0.txt"), true},
      {"ppp0 missing", isConnectedPpp0, "ifconfig ppp0 2>&1",
       fixture("ifconfig/lab-net-tools-2.10-ppp0-missing.txt"), false},
      {"ipsec established but long lines", isConnectedIpsec, "sudo ipsec status 2>&1",
       fixture("ipsec/status-certificate-ids-three-sas.txt"), false},
      {"ipsec words in different pieces", isConnectedIpsec, "sudo ipsec status 2>&1",
       "ipsec-vpn{1}:  INSTALLED, TUNNEL\nother[1]: ESTABLISHED 3 minutes ago\n", false},
      {"ipsec words in one piece", isConnectedIpsec, "sudo ipsec status 2>&1",
       "ipsec-vpn[1]: ESTABLISHED 3 minutes ago, 10.0.0.5\n", true},
  };
  for (const auto& c : cases) {
    FakeShell fake;
    fake.answer(c.command, c.output);
    std::ostringstream out;
    EXPECT_EQ(c.probe(applicationMode, out), c.expected) << c.name;
    EXPECT_EQ(out.str(), c.expected ? "true" : "false") << c.name;
    EXPECT_EQ(fake.commands(), std::vector<std::string>{c.command}) << c.name;
  }
}
