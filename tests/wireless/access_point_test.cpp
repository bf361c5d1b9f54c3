#include "wireless/access_point.h"

#include <gtest/gtest.h>

#include <string>

#include "common/pieces.h"
#include "support/fixtures.h"

namespace {

// The last piece holding `needle`, as the report selects its lines.
std::string lastLine(const std::string& output, const char* needle) {
  std::string kept;
  for (const std::string& piece : splitPieces(output)) {
    if (contains(piece, needle)) kept = piece;
  }
  return kept;
}

std::string nameIn(const std::string& path) {
  return accessPointName(lastLine(fixture(path), "ESSID"));
}

std::string signalIn(const std::string& path) {
  return accessPointSignal(lastLine(fixture(path), "Link Quality"));
}

}  // namespace

// The two-radio board and the colon-form card are pinned end to end.
TEST(AccessPoint, RealIwconfigOutputs) {
  EXPECT_EQ(nameIn("iwconfig/orangepi-rtl8821au-unassociated-nickname-only.txt"), "");
  EXPECT_EQ(nameIn("iwconfig/rpi3-jessie-brcmfmac-not-associated.txt"), "off/any");
  EXPECT_EQ(signalIn("iwconfig/rpi3-jessie-brcmfmac-not-associated.txt"), "0");
}

TEST(AccessPoint, NameRules) {
  const struct {
    const char* line;
    const char* name;
  } cases[] = {
      {"wlan0     IEEE 802.11  ESSID:\"Houston  Control\"  \n", "Houston Control"},
      {"wlan0     IEEE 802.11  ESSID:\"\"  Nickname:\"<WIFI@REALTEK>\"\n", ""},
      // Tabs go before the split, so a tab does not part the name from the nickname.
      {"wlan0     IEEE 802.11  ESSID:\"office\"\tNickname:\"x\"\n", "offic"},
      {"wlan0     IEEE 802.11  ESSID:Nickname:\"a\"  Nickname:\"b\"\n", "Nickname:a"},
      {"wlan0     IEEE 802.11  ESSID:Nickname:\"a\"\n", "Nickname:a"},
      {"", ""},
  };
  for (const auto& c : cases) EXPECT_EQ(accessPointName(c.line), c.name) << c.line;
}

TEST(AccessPoint, SignalWithoutTheFallback) {
  const struct {
    const char* line;
    const char* signal;
  } cases[] = {
      {"          Link Quality=70/70  Signal level=-40 dBm  \n", "100"},
      {"          Link Quality=50/70  Signal level=-60 dBm  \n", "80"},
      {"          Link Quality=0/70  Signal level=-120 dBm  \n", "-40"},
      {"          Link Quality=45/100  Signal level=45/100  Noise level=0/100\n", "45"},
      {"          Link Quality=64/100  Signal level=-26 dBm  Noise level=0 dBm\n", "100"},
      {"          Link Quality=5  Signal level=5\n", "100"},
      {"          Link Quality:5  Signal level:5  Noise level:0\n", "0"},
      {"", "0"},
  };
  for (const auto& c : cases) EXPECT_EQ(accessPointSignal(c.line), c.signal) << c.line;
}
