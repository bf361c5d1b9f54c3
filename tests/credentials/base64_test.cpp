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
      {"foobar", "Zm9vYmFy"},
      {std::string("a\0b\0", 4), "YQBiAA=="},
      {"\xfb\xff\xbf", "+/+/"},
  };
  for (const auto& [bytes, text] : vectors) {
    EXPECT_EQ(encode(bytes), text);
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

TEST(Base64, EveryByteStringSurvivesTheRoundTrip) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  for (std::size_t length = 0; length <= bytes.size(); length += 7) {
    const std::string part = bytes.substr(bytes.size() - length);
    EXPECT_EQ(base64_decode(encode(part)), part) << length;
  }
}
