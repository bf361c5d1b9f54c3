#pragma once

#include <string>
#include <vector>

// Removes every occurrence of `c` from `text` in place, keeping the order of the rest.
void removeCharacter(std::string& text, char c);

// The white-space-delimited words of `line`, as successive stream extractions give them.
std::vector<std::string> splitWords(const std::string& line);

// Word `number` (counted from 1). Too few words throw std::out_of_range
// ("vector::_M_range_check"), which the reports deliberately leave uncaught.
const std::string& wordAt(const std::vector<std::string>& words, std::size_t number);

// Erases the first `count` characters, or everything when the text is shorter.
void eraseFront(std::string& text, std::size_t count);
