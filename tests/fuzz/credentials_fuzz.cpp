// Any text as a stored password: the tolerant base64 decoder and the cipher. The decoder must
// round-trip what it accepts; the only exception the cipher may raise is the library's
// invalid-ciphertext error, which ends the run by design.
#include <cryptopp/cryptlib.h>

#include <cstddef>
#include <cstdint>
#include <string>

#include "credentials/base64.h"
#include "credentials/cipher_key.h"
#include "credentials/password_cipher.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static const bool keyLoaded = (loadCipherKey(), true);
  (void)keyLoaded;
  const std::string text(reinterpret_cast<const char*>(data), size);

  const std::string bytes = base64_decode(text);
  if (bytes.size() > size) __builtin_trap();
  const std::string again =
      base64_encode(reinterpret_cast<const unsigned char*>(text.data()), text.size());
  if (base64_decode(again) != text) __builtin_trap();

  try {
    decodePassword(text);
  } catch (const CryptoPP::InvalidCiphertext&) {
  }
  if (decodePassword(encodePassword(text)) != text) __builtin_trap();
  return 0;
}
