#pragma once

#include <string>
#include <vector>

// The bytes of tests/fixtures/<relativePath>; an unreadable fixture fails the calling test.
std::string fixture(const std::string& relativePath);

// The rows of the case table tests/fixtures/<relativePath>: a row a line, its fields parted by
// tabs; blank lines and lines starting with "#" are skipped. In a field, \n \t \\ and \xHH stand
// for their bytes, and a field "@<path>" stands for the bytes of the fixture <path>.
std::vector<std::vector<std::string>> fixtureTable(const std::string& relativePath);
