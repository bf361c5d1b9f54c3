#include "generate/nm_profile.h"

#include <gtest/gtest.h>

#include "support/fake_supplicant_services.h"

namespace {

using Requests = std::vector<std::string>;

const passThroughCredentials kTyped{"carol", "typed pass"};

dnsSettings staticDns() {
  dnsSettings dns;
  dns.type = "static";
  dns.dns1 = "10.0.0.53";
  dns.dns2 = "9.9.9.9";
  dns.domain = "lab.example";
  return dns;
}

ethSettings wiredEnterprise(const std::string& method) {
  ethSettings eth;
  eth.enabled = true;
  eth.type = "dhcp";
  eth.security = "enterprise";
  eth.authenticationMethod = method;
  eth.userName = "stored-user";
  eth.userPassword = "U";
  eth.caCertificate = "ca.pem";
  eth.pkcs12Certificate = "client.p12";
  eth.pkcs12Password = "P";
  return eth;
}

wlanSettings wireless(const std::string& security) {
  wlanSettings wlan;
  wlan.enabled = true;
  wlan.type = "dhcp";
  wlan.ssid = "Lab's net";
  wlan.security = security;
  wlan.passphrase = "S";
  wlan.frequency = "auto";
  return wlan;
}

// The text of one section ("[802-1x]" and its lines), empty when there is none.
std::string section(const std::string& profile, const std::string& name) {
  const std::size_t start = profile.find("[" + name + "]\n");
  if (start == std::string::npos) return "";
  const std::size_t end = profile.find("\n[", start);
  return profile.substr(start, end == std::string::npos ? std::string::npos : end + 1 - start);
}

}  // namespace

TEST(NetworkManagerProfile, WirelessPersonalStaticHiddenOnABand) {
  wlanSettings wlan = wireless("personal");
  wlan.type = "static";
  wlan.ipAddress = "192.168.50.20";
  wlan.networkMask = "255.255.254.0";
  wlan.defaultGateway = "192.168.50.1";
  wlan.hiddenSsid = true;
  wlan.frequency = "2.4";
  FakeSupplicantServices services;
  EXPECT_EQ(renderWirelessProfile(wlan, staticDns(), services),
            "[connection]\nid=qv-netconf-wlan0\nuuid=5f0c6e2a-8d41-4b7e-9a53-0e6c1d2f7a02\n"
            "type=wifi\ninterface-name=wlan0\nautoconnect=true\n"
            "\n[wifi]\nmode=infrastructure\nssid=Lab's net\nhidden=true\nband=bg\n"
            "\n[wifi-security]\nkey-mgmt=wpa-psk\npsk=psk(Lab's net,clear(S))\n"
            "\n[ipv4]\nmethod=manual\naddress1=192.168.50.20/23,192.168.50.1\n"
            "dns=10.0.0.53;9.9.9.9;\ndns-search=lab.example;\nignore-auto-dns=true\n"
            "\n[ipv6]\nmethod=ignore\n");
  EXPECT_EQ(services.requests(), (Requests{"clear wlan/passphrase S", "psk Lab's net clear(S)"}));
}

TEST(NetworkManagerProfile, WirelessOpenDisabledOnFiveGigahertzByDhcp) {
  wlanSettings wlan = wireless("open");
  wlan.enabled = false;
  wlan.frequency = "5";
  FakeSupplicantServices services;
  const std::string profile = renderWirelessProfile(wlan, dnsSettings{}, services);
  EXPECT_NE(profile.find("autoconnect=false\n"), std::string::npos);
  EXPECT_EQ(section(profile, "wifi"), "[wifi]\nmode=infrastructure\nssid=Lab's net\nband=a\n\n");
  EXPECT_EQ(section(profile, "wifi-security"), "");
  EXPECT_EQ(section(profile, "ipv4"), "[ipv4]\nmethod=auto\n\n");
  EXPECT_EQ(services.requests(), Requests{});
}

TEST(NetworkManagerProfile, WirelessEnterpriseMethodsCarryClearSecrets) {
  wlanSettings wlan = wireless("enterprise");
  wlan.userName = "alice";
  wlan.userPassword = "U";
  wlan.caCertificate = "lab-ca.pem";
  wlan.pkcs12Certificate = "client.p12";
  wlan.pkcs12Password = "P";
  wlan.encryption = "auto";
  wlan.advancedSecurity = "wpa2";
  FakeSupplicantServices services;
  wlan.authenticationMethod = "peap";
  std::string profile = renderWirelessProfile(wlan, dnsSettings{}, services);
  EXPECT_EQ(section(profile, "wifi-security"),
            "[wifi-security]\nkey-mgmt=wpa-eap\npairwise=tkip;ccmp;\nproto=rsn;\n\n");
  EXPECT_EQ(section(profile, "802-1x"),
            "[802-1x]\neap=peap;\nidentity=alice\n"
            "ca-cert=/KQ/configuration/certificates/cacerts/lab-ca.pem\npassword=clear(U)\n"
            "phase2-auth=mschapv2\n\n");
  wlan.authenticationMethod = "ttls";
  wlan.encryption = "tkip";
  wlan.advancedSecurity = "auto";
  profile = renderWirelessProfile(wlan, dnsSettings{}, services);
  EXPECT_EQ(section(profile, "wifi-security"),
            "[wifi-security]\nkey-mgmt=wpa-eap\npairwise=tkip;\nproto=wpa;rsn;\n\n");
  EXPECT_NE(section(profile, "802-1x").find("eap=ttls;\n"), std::string::npos);
  wlan.authenticationMethod = "tls";
  wlan.encryption = "none";
  wlan.advancedSecurity = "wpa";
  profile = renderWirelessProfile(wlan, dnsSettings{}, services);
  EXPECT_EQ(section(profile, "wifi-security"), "[wifi-security]\nkey-mgmt=wpa-eap\nproto=wpa;\n\n");
  EXPECT_EQ(section(profile, "802-1x"),
            "[802-1x]\neap=tls;\nidentity=alice\n"
            "ca-cert=/KQ/configuration/certificates/cacerts/lab-ca.pem\n"
            "client-cert=/KQ/configuration/certificates/pkcs12/client.p12\n"
            "private-key=/KQ/configuration/certificates/pkcs12/client.p12\n"
            "private-key-password=clear(P)\n\n");
  EXPECT_EQ(services.requests(),
            (Requests{"clear wlan/user password U", "clear wlan/user password U",
                      "clear wlan/pkcs12 password P"}));
}

TEST(NetworkManagerProfile, WiredCredentialsFollowTheSupplicantFilesRules) {
  FakeSupplicantServices services;
  std::string profile;
  for (const char* method : {"peap", "ttls"}) {
    profile =
        renderWiredProfile(wiredEnterprise(method), dnsSettings{}, false, true, kTyped, services);
    EXPECT_NE(section(profile, "802-1x").find("identity=carol\n"), std::string::npos) << method;
    EXPECT_NE(section(profile, "802-1x").find("password=typed pass\n"), std::string::npos)
        << method;
  }
  EXPECT_EQ(profile.substr(0, profile.find("\n[802-1x]")),
            "[connection]\nid=qv-netconf-eth0\nuuid=5f0c6e2a-8d41-4b7e-9a53-0e6c1d2f7a01\n"
            "type=ethernet\ninterface-name=eth0\nautoconnect=true\n\n[ethernet]\n");
  EXPECT_EQ(services.requests(), Requests{});
  // TLS keeps the stored identity even with typed credentials.
  profile =
      renderWiredProfile(wiredEnterprise("tls"), dnsSettings{}, false, true, kTyped, services);
  EXPECT_NE(section(profile, "802-1x").find("identity=stored-user\n"), std::string::npos);
  profile =
      renderWiredProfile(wiredEnterprise("ttls"), dnsSettings{}, false, false, kTyped, services);
  EXPECT_NE(section(profile, "802-1x").find("password=clear(U)\n"), std::string::npos);
  EXPECT_EQ(services.requests(),
            (Requests{"clear eth/pkcs12 password P", "clear eth/user password U"}));
}

TEST(NetworkManagerProfile, WiredWithout8021X) {
  FakeSupplicantServices services;
  // set-open-wired-config, and an open wired port.
  EXPECT_EQ(section(renderWiredProfile(wiredEnterprise("peap"), staticDns(), true, false, kTyped,
                                       services),
                    "802-1x"),
            "");
  ethSettings eth = wiredEnterprise("peap");
  eth.security = "open";
  eth.enabled = false;
  eth.type = "static";
  eth.ipAddress = "10.1.2.3";
  eth.networkMask = "255.0.0.0";
  const std::string profile =
      renderWiredProfile(eth, dnsSettings{}, false, false, kTyped, services);
  EXPECT_EQ(section(profile, "802-1x"), "");
  EXPECT_NE(profile.find("autoconnect=false\n"), std::string::npos);
  EXPECT_EQ(section(profile, "ipv4"), "[ipv4]\nmethod=manual\naddress1=10.1.2.3/8\n\n");
  EXPECT_EQ(services.requests(), Requests{});
}

TEST(NetworkManagerProfile, PrefixIsCountedFromTheMask) {
  const std::vector<std::pair<std::string, std::string>> cases = {{"255.255.255.0", "24"},
                                                                  {"255.255.254.0", "23"},
                                                                  {"255.255.255.255", "32"},
                                                                  {"0.0.0.0", "0"},
                                                                  {"255.255.255.128", "25"},
                                                                  {"24", "24"},
                                                                  {"32", "32"},
                                                                  {"33", "33"},
                                                                  {"255.255.0", "255.255.0"},
                                                                  {"", ""}};
  for (const auto& [mask, prefix] : cases) EXPECT_EQ(profilePrefix(mask), prefix) << mask;
}

TEST(NetworkManagerProfile, ValuesAndNamesReadBackExactly) {
  EXPECT_EQ(keyfileText("a b\\c"), "a b\\\\c");
  // Only the first of the leading blanks would be lost; the last one is escaped for safety.
  EXPECT_EQ(keyfileText("  pad "), "\\s pad\\s");
  EXPECT_EQ(keyfileText("line\nnext\ttab\r"), "line\\nnext\\ttab\\r");
  EXPECT_EQ(keyfileText("semi;colon=\"quoted\""), "semi;colon=\"quoted\"");
  EXPECT_EQ(keyfileSsid("Lab's net #1"), "Lab's net #1");
  EXPECT_EQ(keyfileSsid("123"), "49;50;51;");
  EXPECT_EQ(keyfileSsid("a;b"), "97;59;98;");
  EXPECT_EQ(keyfileSsid(" x"), "32;120;");
  EXPECT_EQ(keyfileSsid("caf\xc3\xa9"), "99;97;102;195;169;");
  EXPECT_EQ(keyfileSsid("back\\slash"), "98;97;99;107;92;115;108;97;115;104;");
}

TEST(NetworkManagerProfile, AddressingTypeIsReadFromTheIpv4Section) {
  EXPECT_EQ(profileAddressingType("[ipv4]\nmethod=manual\naddress1=1.2.3.4/24\n"), "static");
  EXPECT_EQ(profileAddressingType("[ipv4]\nmethod=auto\n[ipv6]\nmethod=manual\n"), "dhcp");
  EXPECT_EQ(profileAddressingType("[ipv6]\nmethod=manual\n"), "dhcp");
  EXPECT_EQ(profileAddressingType(""), "dhcp");
}

TEST(NetworkManagerProfile, ADisabledWlanWithoutANameHasNoProfile) {
  wlanSettings wlan;
  EXPECT_FALSE(wantsWirelessProfile(wlan));
  wlan.ssid = "x";
  EXPECT_TRUE(wantsWirelessProfile(wlan));
  wlan.ssid.clear();
  wlan.enabled = true;
  EXPECT_TRUE(wantsWirelessProfile(wlan));
}
