#include "support/fake_supplicant_services.h"

std::string FakeSupplicantServices::clear(const std::string& stored, const char* group,
                                          const char* member) {
  requests_.push_back(std::string("clear ") + group + "/" + member + " " + stored);
  return "clear(" + stored + ")";
}

std::string FakeSupplicantServices::psk(const std::string& ssid, const std::string& passphrase) {
  requests_.push_back("psk " + ssid + " " + passphrase);
  return "psk(" + ssid + "," + passphrase + ")";
}

std::string FakeSupplicantServices::ntHash(const std::string& password) {
  requests_.push_back("hash " + password);
  return "hash(" + password + ")";
}

std::string FakeSupplicantServices::frequencies(const std::string& band) {
  requests_.push_back("freq " + band);
  return "freq(" + band + ")";
}
