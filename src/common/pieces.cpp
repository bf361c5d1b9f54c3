#include "common/pieces.h"

#include <cstring>

std::vector<std::string> splitPieces(const std::string& text, std::size_t bufferSize) {
  std::vector<std::string> pieces;
  const std::size_t limit = bufferSize > 1 ? bufferSize - 1 : 1;
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = start;
    while (end < text.size() && end - start < limit) {
      if (text[end++] == '\n') break;
    }
    std::string piece = text.substr(start, end - start);
    piece.resize(std::strlen(piece.c_str()));
    pieces.push_back(std::move(piece));
    start = end;
  }
  return pieces;
}
