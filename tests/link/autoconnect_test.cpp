#include "link/autoconnect.h"

#include <gtest/gtest.h>

#include <string>

#include "support/fixtures.h"

namespace {

// The wishes read from `text`: "unread", or the interfaces wished up, parted by blanks.
std::string wishesOf(const std::string& text) {
  Json::Value document;
  Json::Reader().parse(text, document, false);
  const std::optional<LinkWishes> wishes = linkWishesOf(document);
  if (!wishes) return "unread";
  return std::string(wishes->wired ? "wired" : "") +
         (wishes->wired && wishes->wireless ? " " : "") + (wishes->wireless ? "wireless" : "");
}

}  // namespace

TEST(LinkWishes, OnlyBooleanEnabledMembersCount) {
  for (const std::vector<std::string>& row : fixtureTable("unit/link-wishes.tsv")) {
    EXPECT_EQ(wishesOf(row[0]), row[1]) << row[0];
  }
}
