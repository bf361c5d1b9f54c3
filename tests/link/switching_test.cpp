#include "link/switching.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "support/fake_shell.h"

namespace {

using Switch = int (*)(UserMode, std::ostream&);

struct SwitchCase {
  Switch operation;
  const char* consoleLine;
  const char* command;
};

}  // namespace

TEST(Switches, AnnounceInConsoleModeAndRunOneCommandWithoutSudo) {
  const SwitchCase cases[] = {
      {turnOnWireless, "Get turn on wifi...\n", "ifconfig wlan0 up"},
      {turnOnWired, "Get turn on wifi...\n", "ifconfig eth0 up"},
      {turnOffWireless, "Get turn off wifi...\n", "ifconfig wlan0 down"},
      {turnOffWired, "Get turn off ethernet...\n", "ifconfig eth0 down"},
      {disconnectWifi, "Disconnect Wifi...\n", "sudo ifdown wlan0 --force"},
      {disconnectEthernet, "Disconnect ethernet...\n", "sudo ifdown eth0 --force"},
  };
  for (const SwitchCase& c : cases) {
    FakeShell fake;
    fake.status(c.command, 256);
    std::ostringstream console;
    EXPECT_EQ(c.operation(consoleMode, console), 256) << c.command;
    EXPECT_EQ(console.str(), c.consoleLine);
    EXPECT_EQ(fake.commands(), std::vector<std::string>{c.command});
    std::ostringstream application;
    c.operation(applicationMode, application);
    EXPECT_EQ(application.str(), "") << c.command;
  }
}

TEST(Switches, ConnectForcesTheInterfaceDownFirstAndFlagsOnlyAFailedBringUp) {
  FakeShell fake;
  fake.status("sudo ifdown eth0 --force", 1);
  std::ostringstream out;
  EXPECT_FALSE(connectEthernet(consoleMode, out));
  EXPECT_EQ(out.str(), "Connect to ethernet...\n");
  fake.status("sudo ifup wlan0", 1);
  EXPECT_TRUE(connectWifi(applicationMode, out));
  EXPECT_EQ(out.str(), "Connect to ethernet...\n");
  EXPECT_EQ(fake.commands(),
            (std::vector<std::string>{"sudo ifdown eth0 --force", "sudo ifup eth0",
                                      "sudo ifdown wlan0 --force", "sudo ifup wlan0"}));
}
