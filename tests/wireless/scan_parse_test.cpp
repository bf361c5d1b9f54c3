#include "wireless/scan_parse.h"

#include <gtest/gtest.h>

#include <iterator>
#include <list>
#include <string>
#include <vector>

#include "common/pieces.h"
#include "support/fixtures.h"

namespace {

struct Expected {
  std::string ssid;
  int signal;
  const char* authentication;
  const char* encryption;
  const char* pairwise;
  const char* encryptionVer;
  const char* frequency;
  int channel;
};

std::list<wifiItem> scan(const std::string& output) {
  std::list<wifiItem> list;
  appendAccessPoints(cutScanBlocks(splitPieces(output)), list);
  return list;
}

void expectEntries(const std::list<wifiItem>& list, const std::vector<Expected>& expected,
                   const char* name = "") {
  SCOPED_TRACE(name);
  ASSERT_EQ(list.size(), expected.size());
  auto item = list.begin();
  for (const Expected& e : expected) {
    EXPECT_EQ(item->ssid, e.ssid);
    EXPECT_EQ(item->signalStrength, e.signal) << e.ssid;
    EXPECT_EQ(item->authentication, e.authentication) << e.ssid;
    EXPECT_EQ(item->encryption, e.encryption) << e.ssid;
    EXPECT_EQ(item->pairwise, e.pairwise) << e.ssid;
    EXPECT_EQ(item->encryptionVer, e.encryptionVer) << e.ssid;
    EXPECT_EQ(item->frequency, e.frequency) << e.ssid;
    EXPECT_EQ(item->channel, e.channel) << e.ssid;
    ++item;
  }
}

// A cell as the scanner indents it: 10 blanks before "Cell", 20 before the fields.
std::string cell(int number, const std::vector<std::string>& fields) {
  std::string text = "          Cell 0" + std::to_string(number) + " - Address: 00:11:22:33:44:5" +
                     std::to_string(number) + "\n";
  for (const std::string& field : fields) text += std::string(20, ' ') + field + "\n";
  return text;
}

const std::string kHeader = "wlan0     Scan completed :\n";

}  // namespace

TEST(ScanParse, BoardsWithASecondRadio) {
  // The second interface's cells follow the first's; a 5 GHz frequency without a channel in
  // brackets takes the separate Channel line.
  const std::list<wifiItem> two = scan(fixture("iwlist/rpi-brcmfmac-wlan0-plus-usb-wlan1.txt"));
  ASSERT_EQ(two.size(), 11u);
  const wifiItem& fiveGhz = *std::next(two.begin(), 5);
  EXPECT_EQ(fiveGhz.ssid, "braingang2_5GEXT");
  EXPECT_EQ(fiveGhz.frequency, "5.765");
  EXPECT_EQ(fiveGhz.channel, 153);
  // A cell without any ESSID line is dropped; -105 dBm gives a negative strength.
  const std::list<wifiItem> three =
      scan(fixture("iwlist/rpi3-brcmfmac-plus-wlan1-cell-without-essid.txt"));
  ASSERT_EQ(three.size(), 11u);
  EXPECT_EQ(std::next(three.begin(), 7)->ssid, "RED");
  EXPECT_EQ(std::next(three.begin(), 7)->signalStrength, -10);
  EXPECT_EQ(three.back().ssid, "Spectrum Mobile");
}

// The twenty-cell board scan and the vendor-driver layouts are pinned end to end.
TEST(ScanParse, CellRules) {
  const std::string next = cell(5, {"ESSID:\"next\"", "Encryption key:off"});
  const std::string longName(120, 'n');
  const struct {
    const char* name;
    std::string output;
    std::vector<Expected> entries;
  } cases[] = {
      // A colon-form level (neither dBm nor "/") reads as 50, even in a dropped hidden cell.
      {"colon-form level carried over",
       fixture("iwlist/fragment-colon-form-no-dbm-no-slash.txt") + next,
       {{"next", 50, "NONE", "off", "", "", "", 0}}},
      {"dBm level carried over",
       fixture("iwlist/fragment-noise-dbm-open-empty-essid.txt") + next,
       {{"next", 94, "NONE", "off", "", "", "", 0}}},
      {"signal and channel carried over",
       kHeader + cell(1, {"Channel:11", "Signal level=-75 dBm", "ESSID:\"a\""}) +
           cell(2, {"ESSID:\"b\""}) + cell(3, {"Signal level=45/100", "ESSID:\"c\""}) +
           cell(4, {"Signal strength unknown", "ESSID:\"d\""}),
       {{"a", 50, "", "", "", "", "", 11},
        {"b", 50, "", "", "", "", "", 11},
        {"c", 45, "", "", "", "", "", 11},
        {"d", 50, "", "", "", "", "", 11}}},
      {"hidden, NUL-named and WEP cells dropped",
       kHeader + cell(1, {"Encryption key:on", "ESSID:\"\""}) +
           cell(2, {"Encryption key:on", "ESSID:\"\\x00\\x00\\x00\\x00\""}) +
           cell(3, {"Encryption key:on", "ESSID:\"lab\"", "IE: Unknown: 00036C6162",
                    "    Authentication Suites (1) : WEP"}) +
           cell(4, {"Encryption key:on", "ESSID:\"old-wep\""}),
       {{"old-wep", 0, "", "on", "", "", "", 0}}},
      {"first qualifying line only for IE, pairwise, authentication, frequency and channel",
       cell(1, {"Channel:6", "Frequency:2.437 GHz (Channel 6)", "Channel:11",
                "Frequency:5.18 GHz (Channel 36)", "ESSID:\"both\"",
                "IE: Unknown: DD0900037F01010000FF7F", "IE: WPA Version 1",
                "    Pairwise Ciphers (2) : CCMP TKIP", "    Authentication Suites (1) : PSK",
                "IE: IEEE 802.11i/WPA2 Version 1", "    Pairwise Ciphers (1) : CCMP",
                "    Authentication Suites (1) : 802.1x"}),
       {{"both", 0, "PSK", "", "CCMP TKIP", "WPA", "2.437", 6}}},
      {"frequency without GHz, tabs in values",
       cell(1, {"Frequency:2412 MHz", "ESSID:\"mhz\"", "    Pairwise Ciphers (1) : \tCCMP",
                "Encryption key:\ton"}),
       {{"mhz", 0, "", "on", "CCMP", "", "2.400", 0}}},
      {"long lines read whole across pieces",
       cell(1, {"IE: Unknown: " + std::string(180, 'A'), "ESSID:\"" + longName + "\"",
                "IE: IEEE 802.11i/WPA2 Version 1", "Encryption key:on"}),
       {{longName, 0, "", "on", "", "WPA2", "", 0}}},
      // Every piece holding "Cell" opens a block, so the fields above such a name stay behind.
      {"a name holding Cell starts a block",
       cell(1, {"Frequency:2.412 GHz (Channel 1)", "Encryption key:on", "ESSID:\"CellTower\"",
                "IE: WPA Version 1"}),
       {{"CellTower", 0, "", "", "", "WPA", "", 0}}},
      {"nothing", "", {}},
      {"no scanning", "wlan0     Interface doesn't support scanning.\n\n", {}},
      // Text after the last newline is never read.
      {"unterminated", cell(1, {}) + std::string(20, ' ') + "ESSID:\"unterminated\"", {}},
  };
  for (const auto& c : cases) expectEntries(scan(c.output), c.entries, c.name);
}
