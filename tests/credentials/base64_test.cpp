#include "credentials/base64.h"

#include <gtest/gtest.h>

// Encoding, and decoding whole stored forms, are pinned by the cipher's known answers: every
// length of last group the cipher gives is among them. What is left is how the decoder stops.
TEST(Base64, DecoderStopsSilently) {
  const std::pair<std::string, std::string> cases[] = {
      {"TQ", "M"},               // no padding needed
      {"T", ""},                 // a lone character gives nothing
      {"TWFu TWFu", "Man"},      // a blank ends decoding
      {"TWFu\nTWFu", "Man"},     // so does a line break
      {"TW=Fu", "M"},            // everything after the first "=" is ignored
      {"=TWFu", ""},             //
      {"TWFu-_", "Man"},         // the URL-safe characters are not in the alphabet
      {"TWF\xe2u", "Ma"},        // a byte above 0x7f is not alphanumeric
      {"TR==", "M"},             // bits left in a short group are dropped
      {"TWFuTQ==TWFu", "ManM"},  //
  };
  for (const auto& [text, bytes] : cases) EXPECT_EQ(base64_decode(text), bytes) << text;
}
