#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"

// What the supplicant files need from outside the settings: stored secrets in clear, derived
// keys and hashes, and frequency lists. Templates call these in the order of their lines.
class SupplicantServices {
 public:
  virtual ~SupplicantServices() = default;
  // The clear text of the stored value of member `member` of config.json group `group`.
  virtual std::string clear(const std::string& stored, const char* group, const char* member) = 0;
  // The pre-shared key of a personal network.
  virtual std::string psk(const std::string& ssid, const std::string& passphrase) = 0;
  // The NT hash of a plain password.
  virtual std::string ntHash(const std::string& password) = 0;
  // The freq_list value of a band.
  virtual std::string frequencies(const std::string& band) = 0;
};

// The device's services: the stored-password cipher, wpa_passphrase, the NT-hash pipeline and
// the frequency-list utility, each talking in `mode` on `out` and `err`.
class DeviceSupplicantServices : public SupplicantServices {
 public:
  DeviceSupplicantServices(UserMode mode, std::ostream& out, std::ostream& err)
      : mode_(mode), out_(out), err_(err) {}
  std::string clear(const std::string& stored, const char* group, const char* member) override;
  std::string psk(const std::string& ssid, const std::string& passphrase) override;
  std::string ntHash(const std::string& password) override;
  std::string frequencies(const std::string& band) override;

 private:
  UserMode mode_;
  std::ostream& out_;
  std::ostream& err_;
};
