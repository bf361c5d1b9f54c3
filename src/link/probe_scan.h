#pragma once

#include <string>
#include <vector>

// Pure scans of command output pieces behind the state probes.

// True as soon as one piece contains `needle`; it never turns false again.
bool anyPieceContains(const std::vector<std::string>& pieces, const char* needle);

// True as soon as one piece contains both `first` and `second`.
bool anyPieceContainsBoth(const std::vector<std::string>& pieces, const char* first,
                          const char* second);

// The last piece holding `selector` is cut into words; each word equal to `yesWord` makes the
// answer true and each equal to `noWord` makes it false, so the last of them decides. No such
// piece, or neither word in it, gives false.
bool lastSelectedWordVerdict(const std::vector<std::string>& pieces, const char* selector,
                             const std::string& yesWord, const std::string& noWord);
