#pragma once

#include <cstddef>
#include <string>
#include <vector>

// The legacy reader takes command output with fgets into a fixed buffer, so a long line arrives
// as several pieces and every piece is matched on its own. Reports rely on that.
constexpr std::size_t kLineBuffer = 100;

// Cuts text exactly as successive fgets calls into a buffer of `bufferSize` bytes would: each
// piece ends after a newline or after bufferSize - 1 characters, and is cut at an embedded NUL.
std::vector<std::string> splitPieces(const std::string& text, std::size_t bufferSize = kLineBuffer);

// True when `text` contains `needle` (a plain case-sensitive substring search).
inline bool contains(const std::string& text, const char* needle) {
  return text.find(needle) != std::string::npos;
}
