#include "wireless/signal_reading.h"

#include <gtest/gtest.h>

#include <climits>

TEST(SignalReading, DbmReadings) {
  const struct {
    const char* reading;
    int percent;
  } cases[] = {
      {"-40dBm", 100},
      {"-49dBm", 100},
      {"-50dBm", 100},
      {"-51dBm", 98},
      {"-75dBm", 50},
      {"-100dBm", 0},
      {"-110dBm", -20},
      {"-120dBm", -40},
      {"-26dBmNoiselevel=0dBm", 100},
      {"-53dBmNoiselevel=-92dBm", 94},
  };
  for (const auto& c : cases) EXPECT_EQ(percentFromDbm(c.reading), c.percent) << c.reading;
}

TEST(SignalReading, QualityReadings) {
  const struct {
    const char* reading;
    int percent;
  } cases[] = {
      {"70/70", 100},
      {"46/70", 65},
      {"45/100Noiselevel=0/100", 45},
      {"0/0", 0},
      {"", 0},
      // Without "/" the whole text is both numbers.
      {"16Noiselevel:0", 100},
      {"0", 0},
      {"5/0", INT_MAX},
  };
  for (const auto& c : cases) EXPECT_EQ(percentFromQuality(c.reading), c.percent) << c.reading;
  // Single-precision arithmetic loses one on several of these (53/100, 59/100).
  for (int n = 0; n <= 100; ++n) {
    EXPECT_EQ(percentFromQuality(std::to_string(n) + "/100"), n) << n << "/100";
  }
}
