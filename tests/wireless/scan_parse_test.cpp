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
  const char* ssid;
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

void expectEntries(const std::list<wifiItem>& list, const std::vector<Expected>& expected) {
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

TEST(ScanParse, TwentyCellDualBandScanFromABoard) {
  // Four hidden cells are dropped, duplicates stay, the open cell is "NONE" without IE fields,
  // the cell with WPA2 before WPA keeps WPA2, and inner blanks of a name are kept.
  expectEntries(scan(fixture("iwlist/rpi-brcmfmac-20-cells-dual-band.txt")),
                {
                    {"ATT2D825w4", 100, "PSK", "on", "CCMP", "WPA2", "2.412", 1},
                    {"TRENDnet740_QCDJ", 72, "802.1x", "on", "CCMP", "WPA2", "2.412", 1},
                    {"Gate K", 86, "PSK", "on", "CCMP TKIP", "WPA2", "2.412", 1},
                    {"ATT8u6i2n8", 64, "PSK", "on", "CCMP", "WPA2", "2.422", 3},
                    {"PacificJune", 56, "PSKunknown(8)", "on", "CCMP", "WPA2", "2.437", 6},
                    {"TRENDnet840_1719_8", 36, "PSK", "on", "CCMP", "WPA2", "5.24", 48},
                    {"TRENDnet840_1719", 36, "PSK", "on", "CCMP", "WPA2", "5.24", 48},
                    {"ATT8u6i2n8", 60, "PSK", "on", "CCMP", "WPA2", "5.26", 52},
                    {"ATT2D825w4", 100, "PSK", "on", "CCMP", "WPA2", "5.26", 52},
                    {"PacificJune", 34, "PSKunknown(8)", "on", "CCMP", "WPA2", "5.5", 100},
                    {"LaLaSatellite", 68, "PSK", "on", "CCMP", "WPA2", "2.412", 1},
                    {"RAWR", 50, "PSK", "on", "CCMP", "WPA2", "2.457", 10},
                    {"Houston  Control", 24, "PSK", "on", "CCMP", "WPA2", "5.22", 44},
                    {"xfinitywifi", 22, "NONE", "off", "", "", "5.22", 44},
                    {"XFINITY", 20, "802.1x", "on", "CCMP", "WPA2", "5.22", 44},
                    {"Grandpas house boat", 22, "PSK", "on", "CCMP", "WPA2", "5.22", 44},
                });
}

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

TEST(ScanParse, VendorDriverLayouts) {
  // The Protocol line names IEEE, so it is the first qualifying IE line.
  expectEntries(scan(fixture("iwlist/rpi-realtek-vendor-protocol-line.txt")),
                {{"Your_SSID", 58, "PSK", "on", "CCMP", "WPA2", "2.437", 0}});
  // No IE lines and no channel at all; quality-form signal levels.
  expectEntries(scan(fixture("iwlist/prism54-signal-only-no-channel.txt")),
                {{"XXXXXXXXX", 69, "", "on", "", "", "2.412", 0},
                 {"Wireless", 49, "", "on", "", "", "2.462", 0}});
}

TEST(ScanParse, SignalAndChannelCarryOverFromTheCellBefore) {
  const std::string noSignalNoChannel = cell(5, {"ESSID:\"next\"", "Encryption key:off"});
  // A colon-form level (neither dBm nor "/") reads as 50, even in a dropped hidden cell.
  expectEntries(scan(fixture("iwlist/fragment-colon-form-no-dbm-no-slash.txt") + noSignalNoChannel),
                {{"next", 50, "NONE", "off", "", "", "", 0}});
  expectEntries(scan(fixture("iwlist/fragment-noise-dbm-open-empty-essid.txt") + noSignalNoChannel),
                {{"next", 94, "NONE", "off", "", "", "", 0}});
  expectEntries(scan(kHeader + cell(1, {"Channel:11", "Signal level=-75 dBm", "ESSID:\"a\""}) +
                     cell(2, {"ESSID:\"b\""}) + cell(3, {"Signal level=45/100", "ESSID:\"c\""}) +
                     cell(4, {"Signal strength unknown", "ESSID:\"d\""})),
                {{"a", 50, "", "", "", "", "", 11},
                 {"b", 50, "", "", "", "", "", 11},
                 {"c", 45, "", "", "", "", "", 11},
                 {"d", 50, "", "", "", "", "", 11}});
}

TEST(ScanParse, DropRules) {
  const std::list<wifiItem> list =
      scan(kHeader + cell(1, {"Encryption key:on", "ESSID:\"\""}) +
           cell(2, {"Encryption key:on", "ESSID:\"\\x00\\x00\\x00\\x00\""}) +
           cell(3, {"Encryption key:on", "ESSID:\"lab\"", "IE: Unknown: 00036C6162",
                    "    Authentication Suites (1) : WEP"}) +
           cell(4, {"Encryption key:on", "ESSID:\"old-wep\""}));
  expectEntries(list, {{"old-wep", 0, "", "on", "", "", "", 0}});
}

TEST(ScanParse, FirstQualifyingLineOnlyForIePairwiseAuthenticationFrequencyChannel) {
  expectEntries(
      scan(cell(1, {"Channel:6", "Frequency:2.437 GHz (Channel 6)", "Channel:11",
                    "Frequency:5.18 GHz (Channel 36)", "ESSID:\"both\"",
                    "IE: Unknown: DD0900037F01010000FF7F", "IE: WPA Version 1",
                    "    Pairwise Ciphers (2) : CCMP TKIP", "    Authentication Suites (1) : PSK",
                    "IE: IEEE 802.11i/WPA2 Version 1", "    Pairwise Ciphers (1) : CCMP",
                    "    Authentication Suites (1) : 802.1x"})),
      {{"both", 0, "PSK", "", "CCMP TKIP", "WPA", "2.437", 6}});
}

TEST(ScanParse, FrequencyWithoutGhzAndTabs) {
  expectEntries(scan(cell(1, {"Frequency:2412 MHz", "ESSID:\"mhz\"",
                              "    Pairwise Ciphers (1) : \tCCMP", "Encryption key:\ton"})),
                {{"mhz", 0, "", "on", "CCMP", "", "2.400", 0}});
}

TEST(ScanParse, LongLinesAreReadWholeAcrossPieces) {
  const std::string name(120, 'n');
  const std::list<wifiItem> list =
      scan(cell(1, {"IE: Unknown: " + std::string(180, 'A'), "ESSID:\"" + name + "\"",
                    "IE: IEEE 802.11i/WPA2 Version 1", "Encryption key:on"}));
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list.front().ssid, name);
  EXPECT_EQ(list.front().encryptionVer, "WPA2");
}

TEST(ScanParse, ANameHoldingCellStartsABlockOfItsOwn) {
  // Every piece holding "Cell" opens a block, so the fields above such a name stay behind.
  expectEntries(scan(cell(1, {"Frequency:2.412 GHz (Channel 1)", "Encryption key:on",
                              "ESSID:\"CellTower\"", "IE: WPA Version 1"})),
                {{"CellTower", 0, "", "", "", "WPA", "", 0}});
}

TEST(ScanParse, NothingScanned) {
  EXPECT_TRUE(scan("").empty());
  EXPECT_TRUE(scan("wlan0     Interface doesn't support scanning.\n\n").empty());
  // Text after the last newline is never read.
  std::string unterminated = cell(1, {"ESSID:\"unterminated\""});
  unterminated.pop_back();
  EXPECT_TRUE(scan(unterminated).empty());
}
