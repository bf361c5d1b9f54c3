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

TEST(WpaWiredConf, OnlyEnabledOpenOrEnterpriseFillTheBlock) {
  Requests requests;
  EXPECT_EQ(block(wired("open"), false, requests), "\tkey_mgmt=NONE\n");
  EXPECT_EQ(block(wired("personal", "peap"), true, requests), "");
  ethSettings disabled = wired("enterprise", "peap");
  disabled.enabled = false;
  EXPECT_EQ(block(disabled, true, requests), "");
  EXPECT_EQ(requests, Requests{});
}

TEST(WpaWiredConf, PassThroughCredentialsReplaceTheStoredOnesForPasswordMethods) {
  Requests requests;
  EXPECT_EQ(block(wired("enterprise", "ttls"), false, requests),
            "\tkey_mgmt=IEEE8021X\n\teapol_flags=0\n\tidentity=\"stored-user\"\n\teap=TTLS\n"
            "\tpassword=hash:hash(clear(U))\n");
  EXPECT_EQ(requests, (Requests{"clear eth/user password U", "hash clear(U)"}));
  // The typed password is plain: nothing stored is decrypted.
  EXPECT_EQ(block(wired("enterprise", "peap"), true, requests),
            "\tkey_mgmt=IEEE8021X\n\teapol_flags=0\n\tidentity=\"carol\"\n\teap=PEAP\n"
            "\tpassword=hash:hash(typed)\n\tphase1=\"peaplabel=0\"\n\tphase2=\"auth=MSCHAPV2\"\n");
  EXPECT_EQ(requests, Requests{"hash typed"});
}

TEST(WpaWiredConf, TlsKeepsTheStoredUserName) {
  Requests requests;
  EXPECT_EQ(block(wired("enterprise", "tls"), true, requests),
            "\tkey_mgmt=IEEE8021X\n\teapol_flags=0\n\tidentity=\"stored-user\"\n\teap=TLS\n"
            "\tprivate_key=\"/KQ/configuration/certificates/pkcs12/\"\n"
            "\tprivate_key_passwd=\"clear(P)\"\n");
  EXPECT_EQ(requests, Requests{"clear eth/pkcs12 password P"});
}
