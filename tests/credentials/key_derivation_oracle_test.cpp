// The derivations run the real utilities here, checked against Crypto++'s PBKDF2 and MD4: the
// quoting has to survive a real shell.
#include <cryptopp/hex.h>
#include <cryptopp/pwdbased.h>
#include <cryptopp/sha.h>
#define CRYPTOPP_ENABLE_NAMESPACE_WEAK 1
#include <cryptopp/md4.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include "credentials/key_derivation.h"

namespace {

std::string hex(const CryptoPP::byte* bytes, std::size_t length) {
  std::string text;
  CryptoPP::HexEncoder encoder(new CryptoPP::StringSink(text), false);
  encoder.Put(bytes, length);
  encoder.MessageEnd();
  return text;
}

const CryptoPP::byte* bytes(const std::string& text) {
  return reinterpret_cast<const CryptoPP::byte*>(text.data());
}

}  // namespace

TEST(KeyDerivationThroughUtilities, PskMatchesPbkdf2) {
  const std::pair<std::string, std::string> networks[] = {
      {"$HOME `id` \"x\"", "\\n$(id) 'y' \\"},
      {"psk", "psk=psk=psk"},
      {"  blanks  ", std::string(63, ' ')},
  };
  for (const auto& [ssid, passphrase] : networks) {
    CryptoPP::byte key[32];
    CryptoPP::PKCS5_PBKDF2_HMAC<CryptoPP::SHA1>().DeriveKey(
        key, sizeof key, 0, bytes(passphrase), passphrase.size(), bytes(ssid), ssid.size(), 4096);
    EXPECT_EQ(generatePsk(ssid, passphrase, silentMode), hex(key, sizeof key)) << ssid;
  }
}

TEST(KeyDerivationThroughUtilities, NtHashMatchesMd4) {
  // The device's OpenSSL has MD4; on OpenSSL 3 it lives in the legacy provider.
  setenv("OPENSSL_CONF", QV_OPENSSL_LEGACY_CNF, 1);
  for (const std::string password : {"it's", "$HOME `id` \"x\" ;|&", "-n", " "}) {
    std::string utf16;
    for (const char c : password) utf16 += std::string{c, '\0'};
    CryptoPP::byte digest[CryptoPP::Weak::MD4::DIGESTSIZE];
    CryptoPP::Weak::MD4().CalculateDigest(digest, bytes(utf16), utf16.size());
    EXPECT_EQ(generateHashWpaPassword(password, silentMode), hex(digest, sizeof digest))
        << password;
  }
  unsetenv("OPENSSL_CONF");
}
