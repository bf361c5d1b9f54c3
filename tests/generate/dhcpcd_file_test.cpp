#include "generate/dhcpcd_file.h"

#include <gtest/gtest.h>

#include <sstream>

TEST(DhcpcdFile, PrefixLengthReadsTheOctetsAsALittleEndianSignedInteger) {
  const std::pair<const char*, int> masks[] = {
      {"255.0.0.0", 8},        {"255.255.0.0", 16},
      {"255.255.255.0", 24},   {"255.255.240.0", 24},
      {"255.255.255.128", 0},  {"255.255.255.255", 0},
      {"255.255.255.127", 31}, {"0.0.1.0", 17},
      {"0.0.0.0", 0},          {"", 0},
      {"255.255.255", 0},      {"255.255.255.0 ", 0},
      {"256.0.0.0", 0},
  };
  for (const auto& [mask, length] : masks) EXPECT_EQ(prefixLength(mask), length) << mask;
}

TEST(DhcpcdFile, HeadEndsBeforeTheFirstLineMentioningInterface) {
  using Lines = std::vector<std::string>;
  const std::pair<const char*, Lines> files[] = {
      {"hostname\n\nnoarp", {"hostname", "", "noarp"}}, {"interface eth0\nnodev\n", {}},
      {"duid\n#interface eth0\nnodev\n", {"duid"}},     {"a\ndenyinterfaces wlan0\nb\n", {"a"}},
      {"a\n# the interfaces below\n", {"a"}},           {"a\nInterface\n", {"a", "Interface"}},
  };
  for (const auto& [text, head] : files) {
    std::istringstream in(text);
    EXPECT_EQ(keptHead(in), head) << text;
  }
}

TEST(DhcpcdFile, StaticBlocksOnlyForEnabledStaticInterfaces) {
  networkSettings settings;
  settings.eth.type = "static";
  settings.wlan.type = "static";
  settings.dns.type = "dhcp";
  EXPECT_EQ(renderDhcpcdConf({"nodev"}, settings),
            "nodev\ndenyinterfaces eth0\ndenyinterfaces wlan0\n");
  settings.eth.enabled = true;
  settings.eth.ipAddress = "10.0.0.5";
  settings.eth.networkMask = "255.255.255.0";
  settings.eth.defaultGateway = "10.0.0.1";
  EXPECT_EQ(renderDhcpcdConf({}, settings),
            "denyinterfaces wlan0\ninterface eth0\nstatic ip_address=10.0.0.5/24\n"
            "static routers=10.0.0.1\n");
}

TEST(DhcpcdFile, BothInterfacesOnDhcpLeaveOnlyTheHead) {
  networkSettings settings;
  settings.eth.enabled = true;
  settings.wlan.enabled = true;
  settings.dns.type = "static";
  EXPECT_EQ(renderDhcpcdConf({"nodev", ""}, settings), "nodev\n\n");
}

// The same name-server line closes both static blocks, wireless first, even when it names none.
TEST(DhcpcdFile, NameServerLineOfStaticDns) {
  const std::pair<std::pair<const char*, const char*>, const char*> servers[] = {
      {{"8.8.8.8", "8.8.4.4"}, "static domain_name_servers=8.8.8.8 8.8.4.4"},
      {{"8.8.8.8", ""}, "static domain_name_servers=8.8.8.8 "},
      {{"", "8.8.4.4"}, "static domain_name_servers=8.8.4.4"},
      {{"", ""}, "static domain_name_servers="},
  };
  for (const auto& [dns, line] : servers) {
    networkSettings settings;
    settings.eth.enabled = true;
    settings.eth.type = "static";
    settings.wlan.enabled = true;
    settings.wlan.type = "static";
    settings.wlan.networkMask = "255.255.255.192";
    settings.dns = {"static", dns.first, dns.second, "lan"};
    const std::string nameServers = std::string(line) + "\n";
    EXPECT_EQ(renderDhcpcdConf({}, settings),
              "interface wlan0\nstatic ip_address=/0\nstatic routers=\n" + nameServers +
                  "interface eth0\nstatic ip_address=/0\nstatic routers=\n" + nameServers)
        << line;
  }
}
