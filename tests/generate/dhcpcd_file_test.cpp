#include "generate/dhcpcd_file.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fixtures.h"

TEST(DhcpcdFile, PrefixLengthReadsTheOctetsAsALittleEndianSignedInteger) {
  for (const std::vector<std::string>& row : fixtureTable("unit/prefix-lengths.tsv")) {
    EXPECT_EQ(std::to_string(prefixLength(row[0])), row[1]) << row[0];
  }
}

TEST(DhcpcdFile, HeadEndsBeforeTheFirstLineMentioningInterfaceInLowerCase) {
  std::istringstream in("hostname\n\nInterface eth0\n#interface wlan0\nnodev\n");
  EXPECT_EQ(keptHead(in), (std::vector<std::string>{"hostname", "", "Interface eth0"}));
}

TEST(DhcpcdFile, StaticBlocksOnlyForEnabledStaticInterfaces) {
  networkSettings settings;
  settings.eth.type = "static";
  settings.wlan.type = "static";
  settings.dns.type = "static";
  EXPECT_EQ(renderDhcpcdConf({"nodev"}, settings),
            "nodev\ndenyinterfaces eth0\ndenyinterfaces wlan0\n");
  settings.eth.enabled = true;
  settings.eth.ipAddress = "10.0.0.5";
  settings.eth.networkMask = "255.255.255.0";
  settings.eth.defaultGateway = "10.0.0.1";
  // Static DNS without any server still closes the block with its name-server line.
  EXPECT_EQ(renderDhcpcdConf({}, settings),
            "denyinterfaces wlan0\ninterface eth0\nstatic ip_address=10.0.0.5/24\n"
            "static routers=10.0.0.1\nstatic domain_name_servers=\n");
}
