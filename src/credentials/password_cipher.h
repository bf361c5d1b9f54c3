#pragma once

#include <iostream>
#include <string>

#include "common/user_mode.h"

// The stored form of `plain`: base64 of its AES-128-CBC ciphertext (PKCS #7 padding) under the
// working key and IV; empty for an empty argument.
std::string encodePassword(std::string plain);

// The plain text of a stored form; empty for an empty argument. A value that is not whole
// blocks or not validly padded makes the cipher library throw CryptoPP::InvalidCiphertext.
std::string decodePassword(std::string stored);

// decodePassword of the config.json member `member` of group `group`. A value that does not
// decrypt ends the run with status 1, naming the setting on `err` in console mode.
std::string decodeSetting(const std::string& stored, const char* group, const char* member,
                          UserMode mode, std::ostream& err = std::cerr);
