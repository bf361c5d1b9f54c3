#pragma once

#include <string>

// The bytes of tests/fixtures/<relativePath>; an unreadable fixture fails the calling test.
std::string fixture(const std::string& relativePath);
