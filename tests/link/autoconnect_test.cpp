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

TEST(LinkWishes, OnlyBooleanEnabledMembersCount) {
  struct {
    std::string json;
    bool wired;
    bool wireless;
  } const cases[] = {
      {enabled("true", "false"), true, false},
      {enabled("false", "true"), false, true},
      {enabled("\"true\"", "1"), false, false},
      {enabled("null", "{}"), false, false},
      {R"({"network settings": {"interfaces": {"wlan": {"enabled": true}}}})", false, true},
      {R"({"encoding": "latin1"})", false, false},
      {"{}", false, false},
      {"null", false, false},
  };
  for (const auto& c : cases) {
    const std::optional<LinkWishes> wishes = linkWishesOf(parsed(c.json));
    ASSERT_TRUE(wishes.has_value()) << c.json;
    EXPECT_EQ(wishes->wired, c.wired) << c.json;
    EXPECT_EQ(wishes->wireless, c.wireless) << c.json;
  }
}

TEST(LinkWishes, ShapesTheJsonLibraryRejectsGiveNothing) {
  const char* const cases[] = {
      "[]",
      "[true]",
      "5",
      R"("text")",
      R"({"network settings": "x"})",
      R"({"network settings": {"interfaces": 5}})",
      R"({"network settings": {"interfaces": {"eth": [true]}}})",
      R"({"encoding": {"name": "UTF-8"}})",
  };
  for (const char* json : cases) EXPECT_FALSE(linkWishesOf(parsed(json)).has_value()) << json;
}
