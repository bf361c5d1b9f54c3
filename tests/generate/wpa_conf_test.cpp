#include "generate/wpa_conf.h"

#include <gtest/gtest.h>

#include "support/fake_supplicant_services.h"

namespace {

using Requests = std::vector<std::string>;

constexpr const char* kHead =
    "ctrl_interface=DIR=/var/run/wpa_supplicant GROUP=netdev\nupdate_config=1\nnetwork={\n";

wlanSettings wireless(const std::string& security, const std::string& method = "") {
  wlanSettings wlan;
  wlan.enabled = true;
  wlan.ssid = "Office";
  wlan.security = security;
  wlan.frequency = "auto";
  wlan.authenticationMethod = method;
  wlan.userPassword = "U";
  wlan.pkcs12Password = "P";
  return wlan;
}

// The lines after "scan_ssid", up to the closing brace, and what was asked for on the way.
std::string tail(const wlanSettings& wlan, Requests& requests) {
  FakeSupplicantServices services;
  const std::string text = renderWpaConf(wlan, services);
  requests = services.requests();
  const std::size_t start = text.find('\n', text.find("\tscan_ssid=")) + 1;
  return text.substr(start, text.size() - start - 2);
}

}  // namespace

TEST(WpaConf, DisabledGivesAnEmptyBlockAndDerivesNothing) {
  wlanSettings wlan = wireless("enterprise", "peap");
  wlan.enabled = false;
  FakeSupplicantServices services;
  EXPECT_EQ(renderWpaConf(wlan, services), std::string(kHead) + "}\n");
  EXPECT_EQ(services.requests(), Requests{});
}

// The lines of ordinary networks are pinned end to end with the real derivations; here, the
// empty secrets and the words that match nothing.
TEST(WpaConf, EmptySecretsAreDerivedButOnlyTheUserPasswordIsDecrypted) {
  Requests requests;
  wlanSettings personal = wireless("personal");
  EXPECT_EQ(tail(personal, requests), "\tpsk=psk(Office,)\n");
  EXPECT_EQ(requests, Requests{"psk Office "});

  wlanSettings tls = wireless("enterprise", "tls");
  tls.pkcs12Password = "";
  const std::string bare = tail(tls, requests);
  EXPECT_EQ(bare.substr(bare.find("\tprivate_key_passwd")), "\tprivate_key_passwd=\"\"\n");
  EXPECT_EQ(requests, Requests{});

  wlanSettings peap = wireless("enterprise", "peap");
  peap.userPassword = "";
  tail(peap, requests);
  EXPECT_EQ(requests, (Requests{"clear wlan/user password ", "hash clear()"}));
}

TEST(WpaConf, WordsAreComparedExactly) {
  wlanSettings wlan = wireless("enterprise", "PEAP");
  wlan.encryption = "CCMP";
  wlan.advancedSecurity = "WPA2";
  Requests requests;
  EXPECT_EQ(tail(wlan, requests), "\tkey_mgmt=WPA-EAP\n\tidentity=\"\"\n");
  EXPECT_EQ(requests, Requests{});
}
