#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <set>
#include <string>

#include "check/config_check.h"
#include "credentials/cipher_key.h"
#include "settings/config_file.h"

// No false alarms: every config.json that the end-to-end cases apply, and the example, passes
// without an error, except the cases that are broken on purpose, which are caught where they are
// broken. The sandbox holds no certificate store; on a device the files they name are there.
TEST(ConfigCheckCorpus, AppliedFilesPassAndBrokenOnesAreCaught) {
  const std::string eth = "network settings/interfaces/eth/";
  const std::string wlan = "network settings/interfaces/wlan/";
  const std::map<std::string, std::set<std::string>> broken = {
      {"set-config/dhcpcd-first-line-names-an-interface",
       {eth + "network mask", wlan + "network mask"}},
      {"set-config/dhcpcd-head-without-interface-and-final-newline",
       {eth + "network mask", wlan + "network mask"}},
      {"set-config/dhcpcd-stock-comment-mentioning-interface", {wlan + "network mask"}},
      {"set-config/dns-static-first-server-and-domain", {wlan + "network mask"}},
      {"set-config/interfaces-unopenable-stops-every-writer", {wlan + "frequency"}},
      {"set-config/wired-certificate-password-in-plain-text", {eth + "pkcs12 password"}},
      {"set-config/wired-peap-password-not-stored-form-console", {eth + "user password"}},
      {"set-config/wireless-open-on-2.4-has-no-key-management", {wlan + "frequency"}},
      {"set-config/wireless-passphrase-in-plain-text-console", {wlan + "passphrase"}},
      {"set-config/wireless-personal-5-quotes-console", {wlan + "ssid"}},
      {"set-config/wireless-personal-passphrase-too-short", {wlan + "passphrase"}},
      {"set-wpa-config/passphrase-in-plain-text-application", {wlan + "passphrase"}},
  };
  const certificateStore everything{"/store", [](const char*, const std::string&) { return true; }};
  std::map<std::string, std::string> files = {{"example", QV_SOURCE_DIR "/examples/config.json"}};
  const std::filesystem::path cases = QV_SOURCE_DIR "/tests/e2e/cases";
  for (const char* group : {"set-config", "set-open-wired-config", "set-wpa-config"}) {
    for (const auto& entry : std::filesystem::directory_iterator(cases / group)) {
      files[std::string(group) + "/" + entry.path().filename().string()] =
          (entry.path() / "input" / "config.json").string();
    }
  }
  loadCipherKey();
  for (const auto& [name, path] : files) {
    ASSERT_TRUE(parseConfigJson(path)) << path;
    std::set<std::string> errors;
    for (const finding& f : checkConfig(root, everything)) {
      if (f.level == severity::error) errors.insert(f.path);
    }
    const auto expected = broken.find(name);
    EXPECT_EQ(errors, expected == broken.end() ? std::set<std::string>() : expected->second)
        << name;
  }
  EXPECT_GT(files.size(), broken.size() * 2);
}
