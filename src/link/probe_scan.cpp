#include "link/probe_scan.h"

#include "common/pieces.h"
#include "common/text.h"

bool anyPieceContains(const std::vector<std::string>& pieces, const char* needle) {
  for (const std::string& piece : pieces) {
    if (contains(piece, needle)) return true;
  }
  return false;
}

bool anyPieceContainsBoth(const std::vector<std::string>& pieces, const char* first,
                          const char* second) {
  for (const std::string& piece : pieces) {
    if (contains(piece, first) && contains(piece, second)) return true;
  }
  return false;
}

bool lastSelectedWordVerdict(const std::vector<std::string>& pieces, const char* selector,
                             const std::string& yesWord, const std::string& noWord) {
  std::string selected;
  for (const std::string& piece : pieces) {
    if (contains(piece, selector)) selected = piece;
  }
  bool verdict = false;
  for (const std::string& word : splitWords(selected)) {
    if (word == yesWord) verdict = true;
    if (word == noWord) verdict = false;
  }
  return verdict;
}
