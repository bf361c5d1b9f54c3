#pragma once

#include <string>

// The standard alphabet; a character's value is its position here.
extern const std::string base64_chars;

// The padded base64 text of exactly `length` bytes (zero bytes included); never fails.
std::string base64_encode(const unsigned char* bytes, unsigned int length);

// The bytes of `encoded` up to its end, its first "=" or its first character outside the
// alphabet, whichever comes first; a short last group gives what its bits hold. Never fails.
std::string base64_decode(const std::string& encoded);
