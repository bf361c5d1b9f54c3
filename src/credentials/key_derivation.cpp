#include "credentials/key_derivation.h"

#include "common/pieces.h"
#include "common/shell.h"
#include "common/text.h"

namespace {

constexpr const char* kQuotedQuote = "'\"'\"'";
constexpr std::size_t kPskPrefixLength = 4;  // "psk="

}  // namespace

std::string quoteForShell(const std::string& text) {
  std::string quoted;
  for (const char c : text) {
    if (c == '\'') {
      quoted += kQuotedQuote;
    } else {
      quoted += c;
    }
  }
  return quoted;
}

std::string pskFromPieces(const std::vector<std::string>& pieces) {
  std::string result;
  for (const std::string& piece : pieces) {
    if (!contains(piece, "psk")) continue;
    std::string candidate = piece;
    removeCharacter(candidate, ' ');
    removeCharacter(candidate, '"');
    removeCharacter(candidate, '\t');
    // The utility repeats the pass phrase on a commented-out line.
    if (candidate[0] == '#') continue;
    result = candidate;
  }
  eraseFront(result, kPskPrefixLength);
  removeCharacter(result, ' ');
  removeCharacter(result, '\n');
  return result;
}

std::string hashFromDigestPiece(std::string piece) {
  removeCharacter(piece, ' ');
  removeCharacter(piece, '\n');
  const std::size_t equals = piece.find('=');
  if (equals == std::string::npos) return kEmptyPasswordHash;
  return piece.substr(equals + 1);
}

std::string generatePsk(std::string ssid, std::string passphrase, UserMode mode,
                        std::ostream& out) {
  if (mode == consoleMode) out << "Get psk value..." << std::endl;
  const std::string command =
      "wpa_passphrase '" + quoteForShell(ssid) + "' '" + quoteForShell(passphrase) + "'";
  std::string psk = pskFromPieces(capturePieces(command));
  if (mode == consoleMode) out << "Psk: " << psk << std::endl;
  return psk;
}

std::string generateHashWpaPassword(std::string password, UserMode mode, std::ostream& out) {
  std::string hash = kEmptyPasswordHash;
  if (mode == consoleMode) out << "Generate wpa_supplicant hash password..." << std::endl;
  const std::string command =
      "echo -n '" + quoteForShell(password) + "' | iconv -t utf16le | openssl md4";
  shell().read(command, [&hash](const std::string& piece) {
    if (!contains(piece, "(stdin)")) return true;
    hash = hashFromDigestPiece(piece);
    return false;
  });
  if (mode == consoleMode) out << "Hash password: " << hash << std::endl;
  return hash;
}
