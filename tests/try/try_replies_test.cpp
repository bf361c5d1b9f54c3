#include "try/try_replies.h"

#include <gtest/gtest.h>
#include <json/json.h>

#include <sstream>

namespace {

const std::vector<finding> kFindings = {
    {severity::warning, "network settings/DNS/dns1", "static DNS without a server"},
    {severity::error, "network settings/interfaces/wlan/ssid", "holds a \"quote\""}};

// Every JSON answer is one object a JSON parser takes.
Json::Value parsed(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(Json::Reader().parse(text, value, false)) << text;
  EXPECT_TRUE(value.isObject()) << text;
  EXPECT_EQ(text.back(), '\n');
  return value;
}

}  // namespace

TEST(TryReplies, APersonReadsOneLineAnAnswer) {
  std::ostringstream out;
  printPending("/c.json", 120, 0, {}, false, out);
  printPending("/c.json", 30, 2, {}, false, out);
  printEnded(kResultConfirmed, "/c.json", "by its checks", false, out);
  printEnded(kResultRolledBack, "/c.json", "not confirmed within 30 s", false, out);
  EXPECT_EQ(out.str(),
            "pending: /c.json, 120 s left; qv-netconf-try --confirm keeps it, else it is rolled "
            "back\n"
            "pending: /c.json, 30 s left; its checks or qv-netconf-try --confirm keep it, else it "
            "is rolled back\n"
            "confirmed: /c.json: by its checks\n"
            "rolled back: /c.json: not confirmed within 30 s\n");
}

TEST(TryReplies, ARefusalNamesTheFindingsOnTheOutputAndItsReasonOnTheErrorStream) {
  std::ostringstream out;
  std::ostringstream err;
  printRefusal(kResultRefused, "/c.json has 1 error", "/c.json", kFindings, true, false, out, err);
  EXPECT_EQ(out.str(),
            "/c.json: warning: network settings/DNS/dns1: static DNS without a server\n"
            "/c.json: error: network settings/interfaces/wlan/ssid: holds a \"quote\"\n");
  EXPECT_EQ(err.str(), "qv-netconf-try: refused: /c.json has 1 error\n");
}

TEST(TryReplies, JsonAnswersAreObjectsWithEveryValueEscaped) {
  std::ostringstream pending;
  printPending("/odd \"dir\"/c.json", 120, 1, kFindings, true, pending);
  const Json::Value p = parsed(pending.str());
  EXPECT_EQ(p["result"].asString(), "pending");
  EXPECT_EQ(p["config"].asString(), "/odd \"dir\"/c.json");
  EXPECT_EQ(p["remaining"].asInt(), 120);
  EXPECT_EQ(p["findings"][1]["message"].asString(), "holds a \"quote\"");

  std::ostringstream refused;
  std::ostringstream err;
  printRefusal(kResultRefused, "no try is pending", "", {}, false, true, refused, err);
  EXPECT_EQ(refused.str(), "{\"result\": \"refused\", \"reason\": \"no try is pending\"}\n");
  EXPECT_EQ(err.str(), "");

  std::ostringstream status;
  printStatus(pendingView{"/c.json", 87, "pending", "running"},
              tryOutcome{"1", "rolled back", "/b.json", "asked\nby \"you\"", 1764000000, ""}, true,
              status);
  const Json::Value s = parsed(status.str());
  EXPECT_EQ(s["pending"]["remaining"].asInt(), 87);
  EXPECT_EQ(s["pending"]["watcher"].asString(), "running");
  EXPECT_EQ(s["last"]["reason"].asString(), "asked\nby \"you\"");
  EXPECT_EQ(s["last"]["at"].asString(), "2025-11-24T16:00:00Z");

  std::ostringstream none;
  printStatus(std::nullopt, std::nullopt, true, none);
  EXPECT_EQ(none.str(), "{\"pending\": null, \"last\": null}\n");
}

TEST(TryReplies, StatusSaysWhatIsPendingAndHowTheLastTryEnded) {
  std::ostringstream out;
  printStatus(pendingView{"/c.json", 87, "rolling back", "busy"},
              tryOutcome{"1", "confirmed", "/b.json", "by its checks", 1764000000, ""}, false, out);
  printStatus(std::nullopt, std::nullopt, false, out);
  EXPECT_EQ(out.str(),
            "pending: /c.json, 87 s left, rolling back, watcher busy\n"
            "last: confirmed /b.json at 2025-11-24 16:00:00 UTC: by its checks\n"
            "pending: none\n"
            "last: none\n");
}
