#include "common/back_end.h"

#include <gtest/gtest.h>

namespace {

// "WORD: REASON" for a choice, "error: MESSAGE" for a refusal.
std::string decided(const std::optional<std::string>& file, bool networkManagerRuns) {
  const backEndDecision decision = decideBackEnd(file, networkManagerRuns);
  if (!decision.choice) return "error: " + decision.error;
  return std::string(backEndWord(decision.choice->backEnd)) + ": " + decision.choice->reason;
}

}  // namespace

TEST(BackEnd, TheFileDecidesOverTheDetection) {
  EXPECT_EQ(decided("networkmanager\n", false), "networkmanager: /etc/qv-netconf/backend says so");
  EXPECT_EQ(decided(" ifupdown \r\n", true), "ifupdown: /etc/qv-netconf/backend says so");
  EXPECT_EQ(decided(std::nullopt, true), "networkmanager: NetworkManager is running");
  EXPECT_EQ(decided(std::nullopt, false), "ifupdown: NetworkManager is not running");
}

TEST(BackEnd, AnyOtherWordIsRefusedNamingTheFileAndBothWords) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"NetworkManager\n", "NetworkManager"},
      {"", ""},
      {"ifupdown networkmanager", "ifupdown networkmanager"},
      {"nm", "nm"}};
  for (const auto& [content, word] : cases) {
    EXPECT_EQ(decided(content, true), "error: /etc/qv-netconf/backend holds \"" + word +
                                          "\", not \"ifupdown\" or \"networkmanager\"")
        << content;
  }
}

TEST(BackEnd, OnlyTheDaemonsOwnNameCounts) {
  EXPECT_TRUE(isNetworkManagerName("NetworkManager\n"));
  EXPECT_FALSE(isNetworkManagerName("nm-dispatcher\n"));
  EXPECT_FALSE(isNetworkManagerName("NetworkManage\n"));
  EXPECT_FALSE(isNetworkManagerName(""));
}
