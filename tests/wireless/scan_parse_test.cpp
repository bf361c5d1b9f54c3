#include "wireless/scan_parse.h"

#include <gtest/gtest.h>

#include <list>
#include <map>
#include <string>

#include "common/pieces.h"
#include "support/fixtures.h"

namespace {

// The access points of a scan, one line each: SSID, strength, authentication, encryption,
// pairwise ciphers, WPA version, frequency and channel, parted by tabs.
std::string accessPoints(const std::string& output) {
  std::list<wifiItem> list;
  appendAccessPoints(cutScanBlocks(splitPieces(output)), list);
  std::string lines;
  for (const wifiItem& item : list) {
    lines += item.ssid + "\t" + std::to_string(item.signalStrength) + "\t" + item.authentication +
             "\t" + item.encryption + "\t" + item.pairwise + "\t" + item.encryptionVer + "\t" +
             item.frequency + "\t" + std::to_string(item.channel) + "\n";
  }
  return lines;
}

}  // namespace

TEST(ScanParse, CellRules) {
  std::map<std::string, std::string> expected;
  for (const std::vector<std::string>& row : fixtureTable("unit/scan-parse.tsv")) {
    std::string& lines = expected[row[0]];
    for (std::size_t i = 1; i < row.size(); ++i)
      lines += row[i] + (i + 1 < row.size() ? "\t" : "\n");
  }
  for (const auto& [scan, lines] : expected) EXPECT_EQ(accessPoints(fixture(scan)), lines) << scan;
}
