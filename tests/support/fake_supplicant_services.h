#pragma once

#include <string>
#include <vector>

#include "generate/supplicant_services.h"

// Answers every request with a text naming it ("clear(<stored>)", "psk(<ssid>,<passphrase>)",
// "hash(<password>)", "freq(<band>)") and records the requests in order, so a test sees what
// each line was derived from.
class FakeSupplicantServices : public SupplicantServices {
 public:
  std::string clear(const std::string& stored, const char* group, const char* member) override;
  std::string psk(const std::string& ssid, const std::string& passphrase) override;
  std::string ntHash(const std::string& password) override;
  std::string frequencies(const std::string& band) override;

  // Every request, as "<request> <arguments>" lines: "clear wlan/passphrase <stored>" and so on.
  const std::vector<std::string>& requests() const { return requests_; }

 private:
  std::vector<std::string> requests_;
};
