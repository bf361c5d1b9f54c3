#include "main/usage.h"

#include <gtest/gtest.h>

#include <sstream>

#include "main/front_end.h"

namespace {

struct Printed {
  std::string out;
  std::string err;
};

Printed usage(const std::string& key, UserMode mode) {
  std::ostringstream out;
  std::ostringstream err;
  Usage(key, mode, out, err);
  return {out.str(), err.str()};
}

}  // namespace

TEST(Usage, ConsoleTextsCarryTheirOwnNewlines) {
  EXPECT_EQ(usage("in proggress", consoleMode).out,
            "Valid arguments. Operation is going to start...\n");
  EXPECT_EQ(usage("set config files", consoleMode).out,
            "Network configuration files will be ganerated based on config.json.\n");
  EXPECT_EQ(usage("autoconnect complete", consoleMode).out, "Autoconnect complete.\n");
  EXPECT_EQ(usage("autoconnect false", consoleMode).out, "Autoconnect false.\n");
  EXPECT_EQ(usage("In proggress", consoleMode).out, "");
}

TEST(Usage, ApplicationModeIsSilentForOrdinaryKeys) {
  for (const char* key : {"intro", "in proggress", "set config files", "autoconnect false"}) {
    const Printed printed = usage(key, applicationMode);
    EXPECT_EQ(printed.out + printed.err, "") << key;
  }
}

TEST(Usage, ModesAboveConsoleMakeEveryKeyANoOpEvenTheErrors) {
  for (const char* key : {"intro", "input error", "error config.json", "autoconnect complete"}) {
    const Printed printed = usage(key, silentMode);
    EXPECT_EQ(printed.out + printed.err, "") << key;
  }
}

TEST(Usage, ErrorKeysEndTheRunWithStatusOneInBothModes) {
  EXPECT_EXIT(Usage("input error", applicationMode), testing::ExitedWithCode(1), "^$");
  EXPECT_EXIT(Usage("input error", consoleMode), testing::ExitedWithCode(1),
              "^Wrong arguments! Please correct command line.\n$");
  EXPECT_EXIT(Usage("error config.json", consoleMode), testing::ExitedWithCode(1),
              "^No config.json file in command line. Please check arguments.\n$");
}

TEST(Usage, IntroNamesTheProgramAsTyped) {
  deamonName = "../bin/qv-netconf";
  const std::string intro = usage("intro", consoleMode).out;
  EXPECT_NE(intro.find("Available first arguments for tool ../bin/qv-netconf:\n"),
            std::string::npos);
  EXPECT_NE(intro.find("|is-ipsec-connected\n   \nThe second argument"), std::string::npos);
}

TEST(CheckMethods, ExactCaseSensitiveMatchAgainstTheTable) {
  EXPECT_EQ(methodsInput.size(), 28u);
  EXPECT_TRUE(checkMethods("set-config"));
  EXPECT_TRUE(checkMethods("is-ipsec-connected"));
  EXPECT_FALSE(checkMethods("Set-config"));
  EXPECT_FALSE(checkMethods("set-config "));
  EXPECT_FALSE(checkMethods(""));
  const auto saved = methodsInput;
  methodsInput.clear();
  EXPECT_FALSE(checkMethods("set-config"));
  methodsInput = saved;
}
