#include "link/probes.h"

#include <gtest/gtest.h>

#include <map>
#include <sstream>

#include "support/fake_shell.h"
#include "support/fixtures.h"

TEST(Probes, AnswerFromUtilityOutput) {
  const std::map<std::string, bool (*)(UserMode, std::ostream&)> probes = {
      {"isEnabledWired", isEnabledWired},     {"isEnabledWireless", isEnabledWireless},
      {"isLinkedWired", isLinkedWired},       {"isConnectedWireless", isConnectedWireless},
      {"isConnectedWired", isConnectedWired}, {"isConnectedPpp0", isConnectedPpp0},
      {"isConnectedTun0", isConnectedTun0},   {"isConnectedIpsec", isConnectedIpsec},
  };
  for (const std::vector<std::string>& row : fixtureTable("unit/probes.tsv")) {
    FakeShell fake;
    fake.answer(row[1], row[2]);
    std::ostringstream out;
    EXPECT_EQ(probes.at(row[0])(applicationMode, out), row[3] == "true") << row[0] << row[2];
    EXPECT_EQ(out.str(), row[3]) << row[0] << row[2];
    EXPECT_EQ(fake.commands(), std::vector<std::string>{row[1]}) << row[0];
  }
}
