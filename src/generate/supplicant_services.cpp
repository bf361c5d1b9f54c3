#include "generate/supplicant_services.h"

#include "credentials/key_derivation.h"
#include "credentials/password_cipher.h"
#include "generate/frequency_list.h"

std::string DeviceSupplicantServices::clear(const std::string& stored, const char* group,
                                            const char* member) {
  return decodeSetting(stored, group, member, mode_, err_);
}

std::string DeviceSupplicantServices::psk(const std::string& ssid, const std::string& passphrase) {
  return generatePsk(ssid, passphrase, mode_, out_);
}

std::string DeviceSupplicantServices::ntHash(const std::string& password) {
  return generateHashWpaPassword(password, mode_, out_);
}

std::string DeviceSupplicantServices::frequencies(const std::string& band) {
  return getWiFiFrequencies(band, mode_, out_);
}
