#include "common/text.h"

#include <gtest/gtest.h>

#include <stdexcept>

TEST(Text, RemoveCharacterKeepsTheOrderOfTheRest) {
  std::string text = " a b\tc \n";
  removeCharacter(text, ' ');
  EXPECT_EQ(text, "ab\tc\n");
  removeCharacter(text, '\n');
  EXPECT_EQ(text, "ab\tc");
}

TEST(Text, SplitWordsOnRunsOfBlanksTabsAndNewlines) {
  EXPECT_EQ(splitWords("  inet 10.0.0.5\t netmask  255.0.0.0\n"),
            (std::vector<std::string>{"inet", "10.0.0.5", "netmask", "255.0.0.0"}));
  EXPECT_TRUE(splitWords(" \t\n").empty());
}

TEST(Text, WordAtCountsFromOneAndFailsWithTheLibraryRangeCheck) {
  const std::vector<std::string> words{"inet", "10.0.0.5"};
  EXPECT_EQ(wordAt(words, 2), "10.0.0.5");
  try {
    wordAt(words, 3);
    FAIL() << "no range error";
  } catch (const std::out_of_range& error) {
    EXPECT_NE(std::string(error.what()).find("vector::_M_range_check"), std::string::npos);
  }
}

TEST(Text, EraseFrontBeyondTheEndLeavesNothing) {
  std::string text = "Encryption key:on";
  eraseFront(text, 15);
  EXPECT_EQ(text, "on");
  eraseFront(text, 3);
  EXPECT_EQ(text, "");
}
