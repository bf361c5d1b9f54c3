#include "credentials/key_derivation.h"

#include <gtest/gtest.h>

#include <sstream>

#include "support/fake_shell.h"
#include "support/fixtures.h"

namespace {

constexpr const char* kPasswordHashCommand = "echo -n 'password' | iconv -t utf16le | openssl md4";

}  // namespace

TEST(ShellQuoting, OnlySingleQuotesChange) {
  EXPECT_EQ(quoteForShell("it's"), "it'\"'\"'s");
  EXPECT_EQ(quoteForShell("''"), "'\"'\"''\"'\"'");
  EXPECT_EQ(quoteForShell("a \"b\" $c `d` \\e"), "a \"b\" $c `d` \\e");
}

TEST(Psk, CommandQuotesBothArguments) {
  FakeShell fake;
  generatePsk("it's", "pass 'phrase'", silentMode);
  EXPECT_EQ(fake.commands(),
            std::vector<std::string>{"wpa_passphrase 'it'\"'\"'s' 'pass '\"'\"'phrase'\"'\"''"});
}

TEST(Psk, KeyLineOfRealOutput) {
  const std::pair<const char*, const char*> outputs[] = {
      {"wpa_passphrase/rpi-mt7601u-plain.txt",
       "7763537e8128e46f91200bab0a3d9adc08d701a0e1a555d0285fd1e10b185ab9"},
      {"wpa_passphrase/ssid-with-blank-tabs-shown-as-blanks.txt",
       "27231323cedae4b8036557f8dcd5f38bfb6e0ac9a5ab894a4ee5104f7998fc93"},
      {"wpa_passphrase/passphrase-too-short-error.txt", ""},
  };
  for (const auto& [file, key] : outputs) {
    EXPECT_EQ(pskFromPieces(splitPieces(fixture(file))), key) << file;
  }
}

TEST(Psk, CandidateRules) {
  const std::string key(64, 'a');
  // An SSID holding "psk" gives a candidate of its own; the key line after it replaces it.
  EXPECT_EQ(pskFromPieces(
                splitPieces("network={\n\tssid=\"mypsk\"\n\t#psk=\"x\"\n\tpsk=" + key + "\n}\n")),
            key);
  // Without a key line the last candidate stands, cut by four characters ("ssid").
  EXPECT_EQ(pskFromPieces(splitPieces("network={\n\tssid=\"my psk net\"\n}\n")), "=mypsknet");
  // Blanks, quotes and tabs go before the comment test.
  EXPECT_EQ(pskFromPieces({" \t\"#psk=\"secret\"\n"}), "");
  // A piece is tested on its own: a key line cut at 99 characters leaves its tail, which holds
  // no "psk", behind.
  const std::string longLine = "psk=" + std::string(120, 'b') + "\n";
  EXPECT_EQ(pskFromPieces(splitPieces(longLine)), std::string(95, 'b'));
}

TEST(Psk, ConsoleModeShowsProgressAndKey) {
  FakeShell fake;
  fake.answer("wpa_passphrase 'MERCURY_4E1A' 'blackcar'",
              fixture("wpa_passphrase/rpi-mt7601u-plain.txt"));
  std::ostringstream out;
  EXPECT_EQ(generatePsk("MERCURY_4E1A", "blackcar", consoleMode, out).size(), 64u);
  EXPECT_EQ(out.str(),
            "Get psk value...\n"
            "Psk: 7763537e8128e46f91200bab0a3d9adc08d701a0e1a555d0285fd1e10b185ab9\n");
  std::ostringstream quiet;
  generatePsk("MERCURY_4E1A", "blackcar", applicationMode, quiet);
  EXPECT_EQ(quiet.str(), "");
}

TEST(NtHash, CommandQuotesThePassword) {
  FakeShell fake;
  generateHashWpaPassword("it's", silentMode);
  EXPECT_EQ(fake.commands(),
            std::vector<std::string>{"echo -n 'it'\"'\"'s' | iconv -t utf16le | openssl md4"});
}

TEST(NtHash, DigestLineOfEitherOpensslGeneration) {
  const std::pair<const char*, const char*> outputs[] = {
      {"MD4(stdin)= 8846f7eaee8fb117ad06bdd830b7586c\n", "8846f7eaee8fb117ad06bdd830b7586c"},
      {"(stdin)= 8846f7eaee8fb117ad06bdd830b7586c\n", "8846f7eaee8fb117ad06bdd830b7586c"},
      // The first "(stdin)" line wins; reading stops there.
      {"noise\n(stdin)= 11\n(stdin)= 22\n", "11"},
      // OpenSSL 3 without the legacy provider prints an error and no digest.
      {"Error setting digest\n", kEmptyPasswordHash},
      {"(stdin) without a digest\n", kEmptyPasswordHash},
      {"", kEmptyPasswordHash},
  };
  for (const auto& [output, hash] : outputs) {
    FakeShell fake;
    fake.answer(kPasswordHashCommand, output);
    EXPECT_EQ(generateHashWpaPassword("password", silentMode), hash) << output;
  }
}

TEST(NtHash, ConsoleModeShowsProgressAndHash) {
  FakeShell fake;
  fake.answer(kPasswordHashCommand, "MD4(stdin)= 8846f7eaee8fb117ad06bdd830b7586c\n");
  std::ostringstream out;
  generateHashWpaPassword("password", consoleMode, out);
  EXPECT_EQ(out.str(),
            "Generate wpa_supplicant hash password...\n"
            "Hash password: 8846f7eaee8fb117ad06bdd830b7586c\n");
  std::ostringstream quiet;
  generateHashWpaPassword("password", applicationMode, quiet);
  EXPECT_EQ(quiet.str(), "");
}
