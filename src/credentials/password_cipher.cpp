#include "credentials/password_cipher.h"

#include <cryptopp/aes.h>
#include <cryptopp/filters.h>
#include <cryptopp/modes.h>

#include "common/run_log.h"
#include "credentials/base64.h"
#include "credentials/cipher_key.h"

std::string encodePassword(std::string plain) {
  if (plain.empty()) return std::string();
  std::string cipherText;
  CryptoPP::AES::Encryption aes(key, kCipherBlock);
  CryptoPP::CBC_Mode_ExternalCipher::Encryption cbc(aes, iv);
  CryptoPP::StreamTransformationFilter filter(cbc, new CryptoPP::StringSink(cipherText));
  filter.Put(reinterpret_cast<const CryptoPP::byte*>(plain.data()), plain.size());
  filter.MessageEnd();
  return base64_encode(reinterpret_cast<const unsigned char*>(cipherText.data()),
                       static_cast<unsigned int>(cipherText.size()));
}

std::string decodePassword(std::string stored) {
  if (stored.empty()) return std::string();
  const std::string cipherText = base64_decode(stored);
  std::string plain;
  CryptoPP::AES::Decryption aes(key, kCipherBlock);
  CryptoPP::CBC_Mode_ExternalCipher::Decryption cbc(aes, iv);
  CryptoPP::StreamTransformationFilter filter(cbc, new CryptoPP::StringSink(plain));
  filter.Put(reinterpret_cast<const CryptoPP::byte*>(cipherText.data()), cipherText.size());
  filter.MessageEnd();
  return plain;
}

std::string decodeSetting(const std::string& stored, const char* group, const char* member,
                          UserMode mode, std::ostream& err) {
  try {
    return decodePassword(stored);
  } catch (const CryptoPP::Exception&) {
    // Plain text where a stored form belongs, or a damaged value. The run fails before the file
    // being rendered replaces anything, so the board keeps the configuration it had.
    if (mode == consoleMode) {
      err << "Error: Cannot decrypt \"" << member << "\" of " << group << " in config.json."
          << std::endl;
    }
    // The setting's name only: the value may be a password left in clear.
    failRun(std::string("cannot decrypt \"") + member + "\" of " + group + " in config.json");
  }
}
