#include "link/autoconnect.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "common/back_end.h"
#include "common/run_log.h"
#include "support/fake_shell.h"
#include "support/fixtures.h"

namespace {

// The wishes read from `text`: "unread", or the interfaces wished up, parted by blanks.
std::string wishesOf(const std::string& text) {
  Json::Value document;
  Json::Reader().parse(text, document, false);
  const std::optional<LinkWishes> wishes = linkWishesOf(document);
  if (!wishes) return "unread";
  return std::string(wishes->wired ? "wired" : "") +
         (wishes->wired && wishes->wireless ? " " : "") + (wishes->wireless ? "wireless" : "");
}

}  // namespace

TEST(LinkWishes, OnlyBooleanEnabledMembersCount) {
  for (const std::vector<std::string>& row : fixtureTable("unit/link-wishes.tsv")) {
    EXPECT_EQ(wishesOf(row[0]), row[1]) << row[0];
  }
}

// On NetworkManager the profiles are brought up and down instead of the ifupdown stanzas; the
// status of bringing one up is the verdict, a take-down always counts as reached.
TEST(LinkWishes, NetworkManagerProfilesAreBroughtUpAndDown) {
  pinRunBackEnd(BackEnd::networkManager);
  FakeShell fake;
  fake.status("sudo nmcli connection up qv-netconf-eth0 >/dev/null", 256 * 4);
  takeNotedOutcomes();
  std::ostringstream out;
  const LinkVerdicts reached = reachLinkWishes({true, false}, consoleMode, out);
  pinRunBackEnd(BackEnd::ifupdown);
  EXPECT_FALSE(reached.wired);
  EXPECT_TRUE(reached.wireless);
  EXPECT_EQ(fake.commands(),
            (std::vector<std::string>{"sudo nmcli connection up qv-netconf-eth0 >/dev/null",
                                      "sudo nmcli connection down qv-netconf-wlan0 >/dev/null"}));
  EXPECT_EQ(out.str(),
            "Connecting to eth0... \nConnect to ethernet...\nDisconnecting wlan0...\n"
            "Disconnect Wifi...\n");
  EXPECT_EQ(
      takeNotedOutcomes(),
      (std::vector<std::string>{
          "sudo nmcli connection up qv-netconf-eth0 exited with status 4", "eth0 Incorrect",
          "sudo nmcli connection down qv-netconf-wlan0 exited with status 0", "wlan0 Correct"}));
}
