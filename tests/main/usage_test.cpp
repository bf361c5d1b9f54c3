#include "main/usage.h"

#include <gtest/gtest.h>

#include <sstream>

#include "main/front_end.h"

// The console texts, the intro and the error exits are pinned end to end; what the command line
// cannot reach is pinned here.
TEST(Usage, ModesAboveConsoleMakeEveryKeyANoOpEvenTheErrors) {
  for (const char* key : {"intro", "input error", "error config.json", "autoconnect complete"}) {
    std::ostringstream out;
    std::ostringstream err;
    Usage(key, silentMode, out, err);
    EXPECT_EQ(out.str() + err.str(), "") << key;
  }
}

TEST(CheckMethods, ExactMatchAgainstTheTable) {
  EXPECT_TRUE(checkMethods("set-config"));
  EXPECT_TRUE(checkMethods("is-ipsec-connected"));
  EXPECT_FALSE(checkMethods("set-config "));
  EXPECT_FALSE(checkMethods(""));
}
