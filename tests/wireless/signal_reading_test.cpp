#include "wireless/signal_reading.h"

#include <gtest/gtest.h>

#include "support/fixtures.h"

TEST(SignalReading, DbmAndQualityReadings) {
  for (const std::vector<std::string>& row : fixtureTable("unit/signal-reading.tsv")) {
    const int percent = row[0] == "dBm" ? percentFromDbm(row[1]) : percentFromQuality(row[1]);
    EXPECT_EQ(std::to_string(percent), row[2]) << row[1];
  }
  // Single-precision arithmetic loses one on several of these (53/100, 59/100).
  for (int n = 0; n <= 100; ++n) {
    EXPECT_EQ(percentFromQuality(std::to_string(n) + "/100"), n) << n << "/100";
  }
}
