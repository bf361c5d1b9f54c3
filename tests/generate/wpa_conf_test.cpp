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

TEST(WpaConf, OpenNetworkKeyManagementOnlyOnAuto) {
  Requests requests;
  EXPECT_EQ(tail(wireless("open"), requests), "\tkey_mgmt=NONE\n");
  wlanSettings onBand = wireless("open");
  onBand.frequency = "5";
  EXPECT_EQ(tail(onBand, requests), "\tfreq_list=freq(5)\n");
  EXPECT_EQ(requests, Requests{"freq 5"});
}

TEST(WpaConf, PersonalKeyFromTheDecryptedPassPhrase) {
  wlanSettings wlan = wireless("personal");
  wlan.passphrase = "STORED";
  Requests requests;
  EXPECT_EQ(tail(wlan, requests), "\tpsk=psk(Office,clear(STORED))\n");
  EXPECT_EQ(requests, (Requests{"clear wlan/passphrase STORED", "psk Office clear(STORED)"}));
  // Derived even from an empty pass phrase, which is not decrypted.
  wlan.passphrase = "";
  EXPECT_EQ(tail(wlan, requests), "\tpsk=psk(Office,)\n");
  EXPECT_EQ(requests, Requests{"psk Office "});
}

TEST(WpaConf, EnterpriseSecretsByMethod) {
  Requests requests;
  EXPECT_EQ(tail(wireless("enterprise", "ttls"), requests),
            "\tkey_mgmt=WPA-EAP\n\tidentity=\"\"\n\teap=TTLS\n\tpassword=hash:hash(clear(U))\n");
  EXPECT_EQ(requests, (Requests{"clear wlan/user password U", "hash clear(U)"}));

  const std::string tls = tail(wireless("enterprise", "tls"), requests);
  EXPECT_EQ(tls.substr(tls.find("\tprivate_key_passwd")), "\tprivate_key_passwd=\"clear(P)\"\n");
  EXPECT_EQ(requests, Requests{"clear wlan/pkcs12 password P"});

  wlanSettings empty = wireless("enterprise", "tls");
  empty.pkcs12Password = "";
  const std::string bare = tail(empty, requests);
  EXPECT_EQ(bare.substr(bare.find("\tprivate_key_passwd")), "\tprivate_key_passwd=\"\"\n");
  EXPECT_EQ(requests, Requests{});
  // The stored user password is decrypted even when empty.
  empty.authenticationMethod = "peap";
  empty.userPassword = "";
  tail(empty, requests);
  EXPECT_EQ(requests, (Requests{"clear wlan/user password ", "hash clear()"}));

  EXPECT_EQ(tail(wireless("enterprise", "PEAP"), requests),
            "\tkey_mgmt=WPA-EAP\n\tidentity=\"\"\n");
  EXPECT_EQ(requests, Requests{});
}

TEST(WpaConf, PairwiseAndProtoWords) {
  const std::tuple<const char*, const char*, const char*> words[] = {
      {"auto", "\tpairwise=TKIP CCMP\n", "\tproto=WPA RSN\n"},
      {"tkip", "\tpairwise=TKIP\n", ""},
      {"ccmp", "\tpairwise=CCMP\n", ""},
      {"wpa", "", "\tproto=WPA\n"},
      {"wpa2", "", "\tproto=RSN\n"},
      {"CCMP", "", ""},
  };
  for (const auto& [word, pairwise, proto] : words) {
    wlanSettings wlan = wireless("enterprise", "peap");
    wlan.encryption = word;
    wlan.advancedSecurity = word;
    wlan.caCertificate = "ca.pem";
    Requests requests;
    EXPECT_EQ(tail(wlan, requests),
              std::string("\tkey_mgmt=WPA-EAP\n\tidentity=\"\"\n") + pairwise +
                  "\teap=PEAP\n\tca_cert=\"/KQ/configuration/certificates/cacerts/ca.pem\"\n" +
                  proto +
                  "\tpassword=hash:hash(clear(U))\n\tphase1=\"peaplabel=0\"\n"
                  "\tphase2=\"auth=MSCHAPV2\"\n")
        << word;
  }
}
