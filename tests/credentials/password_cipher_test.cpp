#include "credentials/password_cipher.h"

#include <cryptopp/cryptlib.h>
#include <gtest/gtest.h>

#include "credentials/cipher_key.h"
#include "support/fixtures.h"

TEST(PasswordCipher, InteroperatesWithOpensslEnc) {
  loadCipherKey();
  for (const std::vector<std::string>& row : fixtureTable("unit/stored-passwords.tsv")) {
    if (row[1] == "invalid") {
      EXPECT_THROW(decodePassword(row[0]), CryptoPP::InvalidCiphertext) << row[0];
      continue;
    }
    EXPECT_EQ(encodePassword(row[1]), row[0]);
    EXPECT_EQ(decodePassword(row[0]), row[1]) << row[0];
  }
}
