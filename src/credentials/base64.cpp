#include "credentials/base64.h"

#include <cctype>

const std::string base64_chars = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

namespace {

constexpr char kPad = '=';

bool isBase64(unsigned char c) {
  return std::isalnum(c) || c == '+' || c == '/';
}

// Three bytes into four six-bit indices.
void toIndices(const unsigned char bytes[3], unsigned char indices[4]) {
  indices[0] = (bytes[0] & 0xfc) >> 2;
  indices[1] = ((bytes[0] & 0x03) << 4) + ((bytes[1] & 0xf0) >> 4);
  indices[2] = ((bytes[1] & 0x0f) << 2) + ((bytes[2] & 0xc0) >> 6);
  indices[3] = bytes[2] & 0x3f;
}

// Four six-bit values into three bytes.
void toBytes(const unsigned char values[4], unsigned char bytes[3]) {
  bytes[0] = (values[0] << 2) + ((values[1] & 0x30) >> 4);
  bytes[1] = ((values[1] & 0x0f) << 4) + ((values[2] & 0x3c) >> 2);
  bytes[2] = ((values[2] & 0x03) << 6) + values[3];
}

}  // namespace

std::string base64_encode(const unsigned char* bytes, unsigned int length) {
  std::string encoded;
  unsigned char group[3];
  unsigned char indices[4];
  unsigned int held = 0;
  for (unsigned int i = 0; i < length; ++i) {
    group[held++] = bytes[i];
    if (held == 3) {
      toIndices(group, indices);
      for (unsigned char index : indices) encoded += base64_chars[index];
      held = 0;
    }
  }
  if (held > 0) {
    for (unsigned int i = held; i < 3; ++i) group[i] = 0;
    toIndices(group, indices);
    for (unsigned int i = 0; i < held + 1; ++i) encoded += base64_chars[indices[i]];
    for (unsigned int i = held; i < 3; ++i) encoded += kPad;
  }
  return encoded;
}

std::string base64_decode(const std::string& encoded) {
  std::string decoded;
  unsigned char values[4];
  unsigned char bytes[3];
  unsigned int held = 0;
  for (const char c : encoded) {
    if (c == kPad || !isBase64(static_cast<unsigned char>(c))) break;
    values[held++] = static_cast<unsigned char>(base64_chars.find(c));
    if (held == 4) {
      toBytes(values, bytes);
      decoded.append(reinterpret_cast<const char*>(bytes), 3);
      held = 0;
    }
  }
  if (held > 0) {
    for (unsigned int i = held; i < 4; ++i) values[i] = 0;
    toBytes(values, bytes);
    decoded.append(reinterpret_cast<const char*>(bytes), held - 1);
  }
  return decoded;
}
