#include "generate/resolv_file.h"

#include <gtest/gtest.h>

TEST(ResolvFile, AlwaysFourLines) {
  const std::pair<dnsSettings, const char*> cases[] = {
      {{"static", "8.8.8.8", "8.8.4.4", "lan"},
       "#Generate by resolvconf\ndomain lan\nnameserver 8.8.8.8\nnameserver 8.8.4.4\n"},
      {{"static", "", "", ""}, "#Generate by resolvconf\n\n\n\n"},
      {{"static", "", "8.8.4.4", ""}, "#Generate by resolvconf\n\n\nnameserver 8.8.4.4\n"},
      {{"static", "1.1.1.1", "", "example.com"},
       "#Generate by resolvconf\ndomain example.com\nnameserver 1.1.1.1\n\n"},
  };
  for (const auto& [dns, text] : cases) EXPECT_EQ(renderResolvConf(dns), text);
}
