// The derivations run the real utilities here and are checked against Crypto++'s own PBKDF2 and
// MD4, so quoting, piece handling and the utilities' output formats are tested together.
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

std::string expectedPsk(const std::string& ssid, const std::string& passphrase) {
  CryptoPP::byte key[32];
  CryptoPP::PKCS5_PBKDF2_HMAC<CryptoPP::SHA1> pbkdf2;
  pbkdf2.DeriveKey(key, sizeof key, 0, reinterpret_cast<const CryptoPP::byte*>(passphrase.data()),
                   passphrase.size(), reinterpret_cast<const CryptoPP::byte*>(ssid.data()),
                   ssid.size(), 4096);
  return hex(key, sizeof key);
}

// The NT hash of an ASCII password: MD4 of its UTF-16LE form.
std::string expectedNtHash(const std::string& password) {
  std::string utf16;
  for (const char c : password) {
    utf16 += c;
    utf16 += '\0';
  }
  CryptoPP::Weak::MD4 md4;
  CryptoPP::byte digest[CryptoPP::Weak::MD4::DIGESTSIZE];
  md4.CalculateDigest(digest, reinterpret_cast<const CryptoPP::byte*>(utf16.data()), utf16.size());
  return hex(digest, sizeof digest);
}

class RealUtilities : public testing::Test {
 protected:
  // The device's OpenSSL has MD4; on OpenSSL 3 it lives in the legacy provider.
  void SetUp() override { setenv("OPENSSL_CONF", QV_OPENSSL_LEGACY_CNF, 1); }
  void TearDown() override { unsetenv("OPENSSL_CONF"); }
};

}  // namespace

TEST_F(RealUtilities, PskMatchesPbkdf2) {
  const std::pair<std::string, std::string> networks[] = {
      {"IEEE", "password"},
      {"it's", "don't 'quote' me"},
      {"  blanks  ", " blanks and  blanks "},
      {"psk", "psk=psk=psk"},
      {"$HOME `id` \"x\"", "\\n$(id) \"y\" \\"},
      {"ThirtyTwoCharacterSsidForTheTest", std::string(63, 'p')},
      {"short", "12345678"},
  };
  for (const auto& [ssid, passphrase] : networks) {
    EXPECT_EQ(generatePsk(ssid, passphrase, silentMode), expectedPsk(ssid, passphrase))
        << ssid << " / " << passphrase;
  }
}

TEST_F(RealUtilities, RejectedPassPhraseGivesNoKey) {
  // Outside 8 to 63 characters, or holding a control character such as a tab.
  for (const std::string& passphrase :
       {std::string(), std::string("1234567"), std::string(64, 'p'), std::string("tab\tinside")}) {
    EXPECT_EQ(generatePsk("net", passphrase, silentMode), "") << passphrase;
  }
}

TEST_F(RealUtilities, NtHashMatchesMd4) {
  EXPECT_EQ(generateHashWpaPassword("password", silentMode), "8846f7eaee8fb117ad06bdd830b7586c");
  for (const char* password : {"it's", "two  blanks ", "$HOME `id` \"x\"", "-n", "p@ss;w0rd|"}) {
    EXPECT_EQ(generateHashWpaPassword(password, silentMode), expectedNtHash(password)) << password;
  }
  EXPECT_EQ(generateHashWpaPassword("", silentMode), kEmptyPasswordHash);
}
