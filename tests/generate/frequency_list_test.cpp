#include "generate/frequency_list.h"

#include <gtest/gtest.h>

#include "support/fake_shell.h"

TEST(FrequencyList, AllOutputJoinedWithoutLineFeeds) {
  FakeShell fake;
  // Longer than one 200-byte read: the pieces are joined again.
  std::string list;
  for (int mhz = 5180; mhz <= 5825; mhz += 10) list += std::to_string(mhz) + " ";
  fake.answer("/usr/bin/qv-get-freq-list 5", list + "\n\n5845\n");
  EXPECT_EQ(getWiFiFrequencies("5", silentMode), list + "5845");
  EXPECT_EQ(fake.commands(), std::vector<std::string>{"/usr/bin/qv-get-freq-list 5"});
}
