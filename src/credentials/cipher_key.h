#pragma once

#include <cstddef>

constexpr std::size_t kCipherBlock = 16;

// The fixed AES-128 key and CBC initialisation vector of the stored-password form.
extern const unsigned char key_16[kCipherBlock];
extern const unsigned char iv_16[kCipherBlock];

// Working copies that the cipher reads; the front end fills them before any command runs.
extern unsigned char key[kCipherBlock];
extern unsigned char iv[kCipherBlock];

// Copies key_16 and iv_16 into the working buffers.
void loadCipherKey();
