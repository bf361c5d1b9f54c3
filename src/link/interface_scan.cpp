#include "link/interface_scan.h"

#include "common/pieces.h"
#include "common/text.h"

namespace {

// ifconfig indents its address lines by 8 blanks.
constexpr std::size_t kInetIndent = 8;

std::string lastPieceHolding(const std::vector<std::string>& pieces, const std::string& first,
                             const char* second = "") {
  std::string kept;
  for (const std::string& piece : pieces) {
    if (contains(piece, first.c_str()) && contains(piece, second)) kept = piece;
  }
  return kept;
}

}  // namespace

InterfaceSighting sightInterface(const std::vector<std::string>& pieces, const std::string& name) {
  InterfaceSighting sighting;
  for (const std::string& piece : pieces) {
    if (contains(piece, "inet ")) {
      sighting.inetLine = piece;
      sighting.addressSeen = true;
    }
    if (contains(piece, name.c_str())) sighting.named = true;
  }
  return sighting;
}

std::string configuredType(const std::vector<std::string>& pieces, const std::string& searchLine) {
  const std::string line = lastPieceHolding(pieces, searchLine);
  return !contains(line, "dhcp") && contains(line, "static") ? "static" : "dhcp";
}

std::pair<std::string, std::string> addressAndNetmask(std::string inetLine) {
  removeCharacter(inetLine, '\n');
  eraseFront(inetLine, kInetIndent);
  const std::vector<std::string> words = splitWords(inetLine);
  const std::string address = wordAt(words, 2);
  return {address, wordAt(words, 4)};
}

std::string interfaceGateway(const std::vector<std::string>& routePieces, const std::string& name) {
  return gatewayColumn(lastPieceHolding(routePieces, name, "UG"));
}

bool isDefaultRoute(const std::string& piece) {
  return contains(piece, "0.0.0.0") && contains(piece, "UG");
}

std::string gatewayColumn(const std::string& routeLine) {
  if (routeLine.empty()) return "";
  return wordAt(splitWords(routeLine), 2);
}

std::string ipsecAddress(const std::vector<std::string>& pipelinePieces) {
  if (pipelinePieces.empty()) return "";
  std::string address = pipelinePieces.back();
  removeCharacter(address, ' ');
  removeCharacter(address, '\n');
  return address;
}
