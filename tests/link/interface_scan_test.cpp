#include "link/interface_scan.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "common/pieces.h"
#include "support/fixtures.h"

namespace {

// What one row of the readings' table reads: its kind, the interface and the utility's output.
std::string reading(const std::string& kind, const std::string& name, const std::string& output) {
  const std::vector<std::string> pieces = splitPieces(output);
  if (kind == "type") return configuredType(pieces, "iface " + name + " inet");
  if (kind == "gateway") return interfaceGateway(pieces, name);
  if (kind == "ipsec") return ipsecAddress(pieces);
  std::string inetLine = output;
  if (kind == "sighting") {
    const InterfaceSighting sighting = sightInterface(pieces, name);
    if (!sighting.named) return "unnamed";
    if (!sighting.addressSeen) return "no address";
    inetLine = sighting.inetLine;
  }
  const auto [address, netmask] = addressAndNetmask(inetLine);
  return address + " " + netmask;
}

}  // namespace

TEST(InterfaceScan, ReadingsOfRealAndEdgeOutputs) {
  for (const std::vector<std::string>& row : fixtureTable("unit/interface-scan.tsv")) {
    std::string read;
    try {
      read = reading(row[0], row[1], row[2]);
    } catch (const std::out_of_range&) {
      read = "out of range";
    }
    EXPECT_EQ(read, row[3]) << row[0] << " " << row[1] << " " << row[2];
  }
}
