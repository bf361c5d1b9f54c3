#include "try/try_options.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fixtures.h"

namespace {

const char* const kActionWords[] = {"start", "confirm", "rollback", "status",
                                    "boot",  "watch",   "help"};

std::vector<std::string> words(const std::string& joined) {
  std::vector<std::string> parts;
  if (joined.empty()) return parts;
  std::istringstream in(joined);
  std::string part;
  while (std::getline(in, part, '|')) parts.push_back(part);
  if (joined.back() == '|') parts.emplace_back();
  return parts;
}

std::string described(const tryOptions& o) {
  std::string text = kActionWords[static_cast<int>(o.action)];
  text += " " + std::to_string(o.timeoutSeconds) + (o.wait ? " wait" : " -") +
          (o.force ? " force" : " -") + (o.json ? " json" : " -");
  if (!o.config.empty()) text += " " + o.config;
  for (const std::string& word : o.credentials) text += " " + word;
  for (const std::string& check : o.confirmWhen) text += " check:" + check;
  return text;
}

}  // namespace

TEST(TryOptions, EachCommandLineAsksForOneThingOrIsRefused) {
  for (const auto& row : fixtureTable("unit/try-options.tsv")) {
    std::string problem;
    const std::optional<tryOptions> options = parseTryOptions(words(row.at(0)), problem);
    EXPECT_EQ(options ? described(*options) : "refused: " + problem, row.at(1)) << row.at(0);
  }
}

// The manual page and the completion are held to this text by the docs test; here, only that
// every option the parser takes is in it.
TEST(TryOptions, UsageNamesEveryOption) {
  std::ostringstream usage;
  printTryUsage(usage);
  for (const char* option :
       {"--timeout", "--confirm-when", "--wait", "--force", "--json", "--confirm", "--rollback",
        "--status", "--boot", "--watch", "--help"}) {
    EXPECT_NE(usage.str().find(option), std::string::npos) << option;
  }
}
