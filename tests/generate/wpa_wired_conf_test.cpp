#include "generate/wpa_wired_conf.h"

#include <gtest/gtest.h>

#include "support/fake_supplicant_services.h"

namespace {

using Requests = std::vector<std::string>;

const passThroughCredentials kTyped{"carol", "typed"};

ethSettings wired(const std::string& security, const std::string& method = "") {
  ethSettings eth;
  eth.enabled = true;
  eth.security = security;
  eth.authenticationMethod = method;
  eth.userName = "stored-user";
  eth.userPassword = "U";
  eth.pkcs12Password = "P";
  return eth;
}

// The lines of the network block and what was asked for on the way.
std::string block(const ethSettings& eth, bool passThrough, Requests& requests) {
  FakeSupplicantServices services;
  const std::string text = renderWpaWiredConf(eth, passThrough, kTyped, services);
  requests = services.requests();
  const std::size_t start = text.find("network={\n") + 10;
  return text.substr(start, text.size() - start - 2);
}

}  // namespace

// The blocks of each method, with stored and typed credentials, are pinned end to end.
TEST(WpaWiredConf, OnlyEnabledOpenOrEnterpriseFillTheBlock) {
  Requests requests;
  EXPECT_EQ(block(wired("personal", "peap"), true, requests), "");
  ethSettings disabled = wired("enterprise", "peap");
  disabled.enabled = false;
  EXPECT_EQ(block(disabled, true, requests), "");
  EXPECT_EQ(requests, Requests{});
}

TEST(WpaWiredConf, TypedPasswordIsUsedPlainAndNothingStoredIsDecrypted) {
  Requests requests;
  block(wired("enterprise", "ttls"), true, requests);
  EXPECT_EQ(requests, Requests{"hash typed"});
}
