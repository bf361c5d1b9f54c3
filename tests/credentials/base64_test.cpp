#include "credentials/base64.h"

#include <gtest/gtest.h>

namespace {

std::string encode(const std::string& bytes) {
  return base64_encode(reinterpret_cast<const unsigned char*>(bytes.data()),
                       static_cast<unsigned int>(bytes.size()));
}

}  // namespace

TEST(Base64, KnownAnswers) {
  const std::pair<std::string, std::string> vectors[] = {
      {"", ""},
      {"M", "TQ=="},
      {"Ma", "TWE="},
      {"Man", "TWFu"},
      {"foob", "Zm9vYg=="},
      {"fooba", "Zm9vYmE="},
      {std::string("a\0b\0", 4), "YQBiAA=="},
      {std::string("\x00\x10\x83\x10\x51\x87\x20\x92\x8b\x30\xd3\x8f\x41\x14\x93\x51"
                   "\x55\x97\x61\x96\x9b\x71\xd7\x9f\x82\x18\xa3\x92\x59\xa7\xa2\x9a"
                   "\xab\xb2\xdb\xaf\xc3\x1c\xb3\xd3\x5d\xb7\xe3\x9e\xbb\xf3\xdf\xbf",
                   48),
       "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"},
  };
  for (const auto& [bytes, text] : vectors) {
    EXPECT_EQ(encode(bytes), text) << text;
    EXPECT_EQ(base64_decode(text), bytes) << text;
  }
}

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
