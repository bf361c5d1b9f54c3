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

}  // namespace

TEST(AccessPoint, NameRules) {
  for (const std::vector<std::string>& row : fixtureTable("unit/access-point.tsv")) {
    EXPECT_EQ(accessPointName(lastLine(row[0], "ESSID")), row[1]) << row[0];
    EXPECT_EQ(accessPointSignal(lastLine(row[0], "Link Quality")), row[2]) << row[0];
  }
}
