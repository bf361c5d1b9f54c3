#include "link/probes.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fake_shell.h"
#include "support/fixtures.h"

namespace {

using Probe = bool (*)(UserMode, std::ostream&);

struct ProbeCase {
  const char* name;
  Probe probe;
  const char* command;
  const char* output;
  bool expected;
};

std::string runProbe(Probe probe, UserMode mode, bool* result = nullptr) {
  std::ostringstream out;
  const bool answer = probe(mode, out);
  if (result != nullptr) *result = answer;
  return out.str();
}

}  // namespace

TEST(Probes, AnswerFromRealUtilityOutput) {
  const ProbeCase cases[] = {
      {"ifconfig lists eth0", isEnabledWired, "ifconfig",
       "ifconfig/lab-net-tools-2.10-eth0-lo-tun0.txt", true},
      {"ifconfig without wlan0", isEnabledWireless, "ifconfig",
       "ifconfig/lab-net-tools-2.10-eth0-lo-tun0.txt", false},
      {"old-format ifconfig lists wlan0", isEnabledWireless, "ifconfig",
       "ifconfig/rpi-wheezy-old-format-eth0-lo-tun0-wlan0.txt", true},
      {"ethtool link yes", isLinkedWired, "sudo ethtool eth0",
       "ethtool/lab-ethtool-6.1-veth-link-yes.txt", true},
      {"ethtool link no", isLinkedWired, "sudo ethtool eth0",
       "ethtool/lab-ethtool-6.1-veth-link-no.txt", false},
      {"ethtool on a board PHY", isLinkedWired, "sudo ethtool eth0",
       "ethtool/eth0-tp-mii-external-phy-link-yes-jc-fixture.txt", true},
      {"associated wlan0", isConnectedWireless, "ip link show wlan0",
       "ip-link/rpi-associated-pfifo-fast-up.txt", true},
      {"no carrier: flag list holds UP, state is DOWN", isConnectedWireless, "ip link show wlan0",
       "ip-link/rpi-zero-w-not-associated-no-carrier-down.txt", false},
      {"admin down", isConnectedWireless, "ip link show wlan0",
       "ip-link/laptop-interface-admin-down.txt", false},
      {"veth wlan0 up", isConnectedWireless, "ip link show wlan0",
       "ip-link/lab-iproute2-6.1-veth-wlan0-up.txt", true},
      {"eth0 with address", isConnectedWired, "ifconfig eth0",
       "ifconfig/lab-net-tools-2.10-eth0-static.txt", true},
      {"any inet line counts, whichever interface", isConnectedWired, "ifconfig eth0",
       "ifconfig/ubuntu-old-format-ifconfig-a-eth0-inet6-only-wlan0.txt", true},
      {"tun0 point to point", isConnectedTun0, "ifconfig tun0 2>&1",
       "ifconfig/lab-net-tools-2.10-tun0-point-to-point.txt", true},
      {"ppp0 missing", isConnectedPpp0, "ifconfig ppp0 2>&1",
       "ifconfig/lab-net-tools-2.10-ppp0-missing.txt", false},
      {"ipsec established but long lines", isConnectedIpsec, "sudo ipsec status 2>&1",
       "ipsec/status-certificate-ids-three-sas.txt", false},
      {"ipsec none up", isConnectedIpsec, "sudo ipsec status 2>&1",
       "ipsec/statusall-docker-none-up.txt", false},
  };
  for (const ProbeCase& c : cases) {
    FakeShell fake;
    fake.answer(c.command, fixture(c.output));
    bool result = !c.expected;
    runProbe(c.probe, silentMode, &result);
    EXPECT_EQ(result, c.expected) << c.name;
    EXPECT_EQ(fake.commands(), std::vector<std::string>{c.command}) << c.name;
  }
}

TEST(Probes, SubstringTestsMatchInsideOtherNames) {
  FakeShell fake;
  fake.answer("ifconfig", "veth0: flags=4163<UP,BROADCAST,RUNNING,MULTICAST>  mtu 1500\n");
  EXPECT_EQ(runProbe(isEnabledWired, applicationMode), "true");
}

TEST(Probes, IpsecNeedsBothWordsInOnePiece) {
  FakeShell fake;
  fake.answer("sudo ipsec status 2>&1",
              "ipsec-vpn{1}:  INSTALLED, TUNNEL\nother[1]: ESTABLISHED 3 minutes ago\n");
  EXPECT_EQ(runProbe(isConnectedIpsec, applicationMode), "false");
  fake.answer("sudo ipsec status 2>&1", "ipsec-vpn[1]: ESTABLISHED 3 minutes ago, 10.0.0.5\n");
  EXPECT_EQ(runProbe(isConnectedIpsec, applicationMode), "true");
}

TEST(Probes, LastDecisiveWordOfTheLastSelectedPieceWins) {
  FakeShell fake;
  fake.answer("sudo ethtool eth0", "\tLink detected: yes\n\tLink detected: no\n");
  EXPECT_EQ(runProbe(isLinkedWired, applicationMode), "false");
  fake.answer("ip link show wlan0", "3: wlan0: <UP> state UP mode DORMANT DOWN\n");
  EXPECT_EQ(runProbe(isConnectedWireless, applicationMode), "false");
  fake.answer("ip link show wlan0", "3: wlan0: <BROADCAST,UP> mtu 1500 state UNKNOWN\n");
  EXPECT_EQ(runProbe(isConnectedWireless, applicationMode), "false");
}

TEST(Probes, StateWordBeyondTheFirstPieceIsNotSeen) {
  FakeShell fake;
  fake.answer("ip link show wlan0", "3: wlan0: <BROADCAST,MULTICAST,UP,LOWER_UP>" +
                                        std::string(60, ' ') + "state UP mode DORMANT\n");
  EXPECT_EQ(runProbe(isConnectedWireless, applicationMode), "false");
}

TEST(Probes, ConsoleModeAsksThenAnswersWithTheLabel) {
  FakeShell fake;
  fake.answer("ifconfig ppp0 2>&1", "        inet 10.64.64.64  netmask 255.255.255.255\n");
  EXPECT_EQ(runProbe(isConnectedPpp0, consoleMode), "Is ppp0 connected...\ntun0 is connected.\n");
  EXPECT_EQ(runProbe(isLinkedWired, consoleMode),
            "Is ethernet linked...\nEthernet is not linked.\n");
  EXPECT_EQ(runProbe(isEnabledWireless, consoleMode), "Is wifi enabled...\nWifi is disabled.\n");
}

TEST(Probes, SilentModePrintsNothingButStillAnswers) {
  FakeShell fake;
  fake.answer("ip link show wlan0", fixture("ip-link/rpi-associated-pfifo-fast-up.txt"));
  bool result = false;
  EXPECT_EQ(runProbe(isConnectedWireless, silentMode, &result), "");
  EXPECT_TRUE(result);
}
