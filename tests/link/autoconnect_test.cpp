#include "link/autoconnect.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "support/fake_shell.h"

namespace {

Json::Value parsed(const std::string& text) {
  Json::Value document;
  Json::Reader().parse(text, document, false);
  return document;
}

std::string enabled(const std::string& eth, const std::string& wlan) {
  return R"({"network settings": {"interfaces": {"eth": {"enabled": )" + eth +
         R"(}, "wlan": {"enabled": )" + wlan + "}}}}";
}

// A config.json on disk for the length of a test.
class ConfigFile {
 public:
  explicit ConfigFile(const std::string& content) { std::ofstream(path_) << content; }
  ~ConfigFile() { std::remove(path_.c_str()); }
  const std::string& path() const { return path_; }

 private:
  std::string path_ = ::testing::TempDir() + "autoconnect-config.json";
};

}  // namespace

TEST(LinkWishes, OnlyBooleanEnabledMembersCount) {
  struct {
    std::string json;
    bool wired;
    bool wireless;
  } const cases[] = {
      {enabled("true", "false"), true, false},
      {enabled("false", "true"), false, true},
      {enabled("\"true\"", "1"), false, false},
      {enabled("null", "{}"), false, false},
      {R"({"network settings": {"interfaces": {"wlan": {"enabled": true}}}})", false, true},
      {R"({"encoding": "latin1"})", false, false},
      {"{}", false, false},
      {"null", false, false},
  };
  for (const auto& c : cases) {
    const std::optional<LinkWishes> wishes = linkWishesOf(parsed(c.json));
    ASSERT_TRUE(wishes.has_value()) << c.json;
    EXPECT_EQ(wishes->wired, c.wired) << c.json;
    EXPECT_EQ(wishes->wireless, c.wireless) << c.json;
  }
}

TEST(LinkWishes, ShapesTheJsonLibraryRejectsGiveNothing) {
  const char* const cases[] = {
      "[]",
      "[true]",
      "5",
      R"("text")",
      R"({"network settings": "x"})",
      R"({"network settings": {"interfaces": 5}})",
      R"({"network settings": {"interfaces": {"eth": [true]}}})",
      R"({"encoding": {"name": "UTF-8"}})",
  };
  for (const char* json : cases) EXPECT_FALSE(linkWishesOf(parsed(json)).has_value()) << json;
}

TEST(Autoconnect, HandlesWiredThenWirelessAndReportsEach) {
  ConfigFile config(enabled("true", "false"));
  FakeShell fake;
  std::ostringstream out;
  EXPECT_TRUE(autoconnect(config.path(), consoleMode, out));
  EXPECT_EQ(out.str(),
            "Starting autoconnect...\n"
            "Connecting to eth0... \n"
            "Connect to ethernet...\n"
            "Disconnecting wlan0...\n"
            "Disconnect Wifi...\n"
            "Status autoconnect Ethernet: Correct\n"
            "Status autoconnect WiFi: Correct\n");
  EXPECT_EQ(fake.commands(), (std::vector<std::string>{"sudo ifdown eth0 --force", "sudo ifup eth0",
                                                       "sudo ifdown wlan0 --force"}));
}

TEST(Autoconnect, AFailedBringUpIsIncorrectAndTheOtherInterfaceIsStillHandled) {
  ConfigFile config(enabled("true", "true"));
  FakeShell fake;
  fake.status("sudo ifup eth0", 1);
  fake.status("sudo ifdown wlan0 --force", 1);
  std::ostringstream out;
  EXPECT_FALSE(autoconnect(config.path(), consoleMode, out));
  EXPECT_NE(out.str().find("Status autoconnect Ethernet: Incorrect\n"
                           "Status autoconnect WiFi: Correct\n"),
            std::string::npos);
  EXPECT_EQ(fake.commands().back(), "sudo ifup wlan0");
}

TEST(Autoconnect, FailedTakeDownsStillCountAsDoneAndApplicationModeIsSilent) {
  ConfigFile config(R"({"encoding": "UTF-8"})");
  FakeShell fake;
  fake.status("sudo ifdown eth0 --force", 1);
  fake.status("sudo ifdown wlan0 --force", 1);
  std::ostringstream out;
  EXPECT_TRUE(autoconnect(config.path(), applicationMode, out));
  EXPECT_EQ(out.str(), "");
  EXPECT_EQ(fake.commands(),
            (std::vector<std::string>{"sudo ifdown eth0 --force", "sudo ifdown wlan0 --force"}));
}
