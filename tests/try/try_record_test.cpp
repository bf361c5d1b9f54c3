#include "try/try_record.h"

#include <gtest/gtest.h>

namespace {

tryRecord sample() {
  tryRecord record;
  record.id = "1764000000.5.812";
  record.phase = tryPhase::rollingBack;
  record.reason = "not confirmed within 120 s";
  record.config = "/srv/device/config.json";
  record.configText = "{\"network settings\": {}}\n";
  record.timeoutSeconds = 120;
  record.deadline = {"5c2f0f4e-boot", 73512, 1764000120};
  // A check may hold quotes, line breaks and bytes that are not UTF-8.
  record.confirmWhen = {"ping -c1 -W1 10.20.0.1", "curl -fs \"http://mgmt/\"\n\xff"};
  record.previousLinks = {true, false};
  savedFile secret{"/etc/wpa_supplicant/wpa_supplicant.conf",
                   true,
                   std::string("psk=\"a\0b\xc3\x28\"\n", 12),
                   0600,
                   0,
                   105};
  savedFile absent{"/etc/resolv.conf", false, "", 0, 0, 0};
  record.files = {secret, absent};
  return record;
}

void expectSame(const tryRecord& a, const tryRecord& b) {
  EXPECT_EQ(a.id, b.id);
  EXPECT_EQ(a.phase, b.phase);
  EXPECT_EQ(a.reason, b.reason);
  EXPECT_EQ(a.config, b.config);
  EXPECT_EQ(a.configText, b.configText);
  EXPECT_EQ(a.timeoutSeconds, b.timeoutSeconds);
  EXPECT_EQ(a.deadline.bootId, b.deadline.bootId);
  EXPECT_EQ(a.deadline.sinceBootMs, b.deadline.sinceBootMs);
  EXPECT_EQ(a.deadline.wallSeconds, b.deadline.wallSeconds);
  EXPECT_EQ(a.confirmWhen, b.confirmWhen);
  EXPECT_EQ(a.previousLinks.wired, b.previousLinks.wired);
  EXPECT_EQ(a.previousLinks.wireless, b.previousLinks.wireless);
  ASSERT_EQ(a.files.size(), b.files.size());
  for (std::size_t i = 0; i < a.files.size(); ++i) {
    EXPECT_EQ(a.files[i].path, b.files[i].path);
    EXPECT_EQ(a.files[i].existed, b.files[i].existed);
    EXPECT_EQ(a.files[i].content, b.files[i].content);
    EXPECT_EQ(a.files[i].mode, b.files[i].mode);
    EXPECT_EQ(a.files[i].uid, b.files[i].uid);
    EXPECT_EQ(a.files[i].gid, b.files[i].gid);
  }
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

}  // namespace

// What is put back after a restart is exactly what was recorded, whatever bytes the files hold.
TEST(TryRecord, EveryPhaseComesBackWhole) {
  for (const tryPhase phase : {tryPhase::pending, tryPhase::confirmed, tryPhase::rollingBack}) {
    tryRecord record = sample();
    record.phase = phase;
    const std::optional<tryRecord> back = parseRecord(recordText(record));
    ASSERT_TRUE(back);
    expectSame(record, *back);
  }
}

// A record that is not whole must never be taken for one: a try would be rolled back to files
// that were never there.
TEST(TryRecord, ARecordThatIsNotWholeIsNoRecord) {
  const std::string text = recordText(sample());
  EXPECT_FALSE(parseRecord(text.substr(0, text.size() / 2)));
  EXPECT_FALSE(parseRecord(""));
  EXPECT_FALSE(parseRecord("[]"));
  EXPECT_FALSE(parseRecord(replaced(text, "\"rolling back\"", "\"half done\"")));
  EXPECT_FALSE(parseRecord(replaced(text, "\"timeout\" : 120", "\"timeout\" : \"120\"")));
  EXPECT_FALSE(parseRecord(replaced(text, "\"existed\" : true", "\"existed\" : 1")));
  EXPECT_FALSE(parseRecord(replaced(text, "\"gid\" : 105", "\"gid\" : null")));
  EXPECT_FALSE(parseRecord(replaced(text, "\"previous eth0\" : true,", "")));
  EXPECT_FALSE(parseRecord(replaced(text, "\"since boot ms\" : 73512", "\"since boot\" : 73512")));
  // Base64 the record never writes.
  EXPECT_FALSE(parseRecord(replaced(text, "\"config text\" : \"", "\"config text\" : \"!")));
}

TEST(TryRecord, TheDeadlineIsKeptOnTheBootsClockAndARestartEndsIt) {
  const tryClock deadline{"boot-a", 10000, 1764000120};
  EXPECT_EQ(remainingMs(deadline, {"boot-a", 2500, 1764000112}), 7500);
  EXPECT_EQ(remainingMs(deadline, {"boot-a", 10000, 1764000120}), 0);
  EXPECT_EQ(remainingMs(deadline, {"boot-a", 10001, 1764000121}), 0);
  // The wall clock of a board without a battery jumps when it is set; it decides nothing.
  EXPECT_EQ(remainingMs(deadline, {"boot-a", 9000, 1900000000}), 1000);
  EXPECT_EQ(remainingMs(deadline, {"boot-b", 10, 1764000000}), 0);
}

TEST(TryRecord, TheLastOutcomeComesBackWhole) {
  const tryOutcome outcome{"1.2.3", "confirmed", "/c.json", "by its checks", 1764000200, "00ff"};
  const std::optional<tryOutcome> back = parseOutcome(outcomeText(outcome));
  ASSERT_TRUE(back);
  EXPECT_EQ(back->id, outcome.id);
  EXPECT_EQ(back->result, outcome.result);
  EXPECT_EQ(back->config, outcome.config);
  EXPECT_EQ(back->reason, outcome.reason);
  EXPECT_EQ(back->wallSeconds, outcome.wallSeconds);
  EXPECT_EQ(back->filesPrint, outcome.filesPrint);
  EXPECT_FALSE(parseOutcome("{\"id\": 5}"));
}

// Two files that together hold the same bytes, cut elsewhere, are not the same files.
TEST(TryRecord, FingerprintsTellFilesApart) {
  EXPECT_EQ(fingerprint({"ab", "c"}), fingerprint({"ab", "c"}));
  EXPECT_NE(fingerprint({"ab", "c"}), fingerprint({"a", "bc"}));
  EXPECT_NE(fingerprint({"ab", ""}), fingerprint({"", "ab"}));
  EXPECT_EQ(fingerprint({}).size(), 16U);
}
