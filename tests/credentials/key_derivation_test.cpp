#include "credentials/key_derivation.h"

#include <gtest/gtest.h>

#include "support/fake_shell.h"
#include "support/fixtures.h"

TEST(KeyDerivation, PskFromTheLastKeyLine) {
  EXPECT_EQ(pskFromPieces(splitPieces(fixture("wpa_passphrase/rpi-mt7601u-plain.txt"))),
            "7763537e8128e46f91200bab0a3d9adc08d701a0e1a555d0285fd1e10b185ab9");
  EXPECT_EQ(pskFromPieces(splitPieces(fixture("wpa_passphrase/passphrase-too-short-error.txt"))),
            "");
  const std::string key(64, 'a');
  // An SSID holding "psk" gives a candidate of its own; the key line after it replaces it.
  EXPECT_EQ(pskFromPieces(
                splitPieces("network={\n\tssid=\"mypsk\"\n\t#psk=\"x\"\n\tpsk=" + key + "\n}\n")),
            key);
  // Without a key line the last candidate stands, cut by four characters ("ssid").
  EXPECT_EQ(pskFromPieces(splitPieces("network={\n\tssid=\"my psk net\"\n}\n")), "=mypsknet");
  // Blanks, quotes and tabs go before the comment test.
  EXPECT_EQ(pskFromPieces({" \t\"#psk=\"secret\"\n"}), "");
  // A key line cut at 99 characters leaves its tail, which holds no "psk", behind.
  EXPECT_EQ(pskFromPieces(splitPieces("psk=" + std::string(120, 'b') + "\n")),
            std::string(95, 'b'));
}

TEST(KeyDerivation, HashFromTheFirstDigestLine) {
  for (const std::vector<std::string>& row : fixtureTable("unit/md4-outputs.tsv")) {
    FakeShell fake;
    fake.answer("echo -n 'pw' | iconv -t utf16le | openssl md4", row[0]);
    EXPECT_EQ(generateHashWpaPassword("pw", silentMode), row[1]) << row[0];
  }
}
