#include "common/text.h"

#include <algorithm>
#include <sstream>

void removeCharacter(std::string& text, char c) {
  text.erase(std::remove(text.begin(), text.end(), c), text.end());
}

std::vector<std::string> splitWords(const std::string& line) {
  std::istringstream stream(line);
  std::vector<std::string> words;
  std::string word;
  while (stream >> word) words.push_back(word);
  return words;
}

const std::string& wordAt(const std::vector<std::string>& words, std::size_t number) {
  return words.at(number - 1);
}

void eraseFront(std::string& text, std::size_t count) {
  text.erase(0, std::min(count, text.size()));
}
