#include "link/autoconnect.h"

#include <gtest/gtest.h>

#include <string>

namespace {

Json::Value parsed(const std::string& text) {
  Json::Value document;
  Json::Reader().parse(text, document, false);
  return document;
}

std::string enabled(const std::string& eth, const std::string& wlan) {
  return R"({"network settings": {"interfaces": {"eth": {"enabled": )" + eth +
         R"(}, "wlan": {"enabled": )" + wlan + "}}}}";
}

}  // namespace

// A shape the JSON library rejects gives no wishes at all; otherwise only a boolean true counts.
TEST(LinkWishes, OnlyBooleanEnabledMembersCount) {
  const struct {
    std::string json;
    bool read;
    bool wired;
    bool wireless;
  } cases[] = {
      {enabled("true", "false"), true, true, false},
      {enabled("false", "true"), true, false, true},
      {enabled("null", "{}"), true, false, false},
      {R"({"network settings": {"interfaces": {"wlan": {"enabled": true}}}})", true, false, true},
      {"null", true, false, false},
      {"[true]", false, false, false},
      {"5", false, false, false},
      {R"("text")", false, false, false},
      {R"({"network settings": {"interfaces": 5}})", false, false, false},
      {R"({"network settings": {"interfaces": {"eth": [true]}}})", false, false, false},
      {R"({"encoding": {"name": "UTF-8"}})", false, false, false},
  };
  for (const auto& c : cases) {
    const std::optional<LinkWishes> wishes = linkWishesOf(parsed(c.json));
    ASSERT_EQ(wishes.has_value(), c.read) << c.json;
    if (!c.read) continue;
    EXPECT_EQ(wishes->wired, c.wired) << c.json;
    EXPECT_EQ(wishes->wireless, c.wireless) << c.json;
  }
}
