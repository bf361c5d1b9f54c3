#include "credentials/password_cipher.h"

#include <cryptopp/cryptlib.h>
#include <gtest/gtest.h>

#include "credentials/cipher_key.h"

namespace {

class PasswordCipher : public testing::Test {
 protected:
  void SetUp() override { loadCipherKey(); }
};

}  // namespace

// Stored forms made with `printf %s PLAIN | openssl enc -aes-128-cbc -K <key> -iv <iv> | base64`.
TEST_F(PasswordCipher, InteroperatesWithOpensslEnc) {
  const std::pair<std::string, std::string> vectors[] = {
      {"password", "NR6RWwHUZRWwPkG0/Skv+A=="},
      {"0123456789abcde", "P542rRlmZ6DZk5IcUabuqA=="},
      {"0123456789abcdef", "CrHc9Wu5eLfdI4B2nDbyBbfCBawhJorYvov0Iw/bTIQ="},
      {"0123456789abcdef0123456789abcdef",
       "CrHc9Wu5eLfdI4B2nDbyBRnCYea6lNHnb9QmQ917pZySVAw6N7kpaVM9m2IkoDGd"},
      {"Za\xc5\xbc\xc3\xb3\xc5\x82\xc4\x87 g\xc4\x99\xc5\x9bl\xc4\x85 ja\xc5\xba\xc5\x84",
       "YTrWF2GzRoDkr5PGnbiCmgHaTqWZFTPmlTS45m+7ZxM="},
      {std::string("\xff\x80\x00\x01", 4), "BL0e5htt8azmvf1uG/RFLQ=="},
      {"", ""},
  };
  for (const auto& [plain, stored] : vectors) {
    EXPECT_EQ(encodePassword(plain), stored);
    EXPECT_EQ(decodePassword(stored), plain) << stored;
  }
}

TEST_F(PasswordCipher, ValuesThatAreNotStoredFormsThrow) {
  const char* notStored[] = {
      "password",                  // plain text: six bytes after base64
      "!!!!",                      // nothing decodes at all
      "NR6RWwHUZRWwPkG0/Skv",      // a block cut short
      "SUeNGct2xj/4VdQLETNkBw==",  // one block ending in a zero byte
      "Nw3yCCV5GUiyyseADoa72w==",  // "\x02\x03" at the end
      "f5V9UYlj9WlEAEqm5StGqg==",  // a pad length above the block size
  };
  for (const char* stored : notStored) {
    EXPECT_THROW(decodePassword(stored), CryptoPP::InvalidCiphertext) << stored;
  }
}
