#pragma once

#include <cstddef>
#include <string>

// Readings shared by the access-point scan and the current access point report.

// Erases from the start of `text` through `count` characters from where `marker` begins (all
// of it when shorter); leaves `text` as it is when `marker` is absent.
void eraseThroughMarker(std::string& text, const char* marker, std::size_t count);

// Percent from a dBm reading such as "-64dBm..." (it must hold "dBm"): with its first "dBm"
// removed the leading integer is read; -49 dBm and above is 100, below that 2 per dBm above
// -100 (no lower clamp).
int percentFromDbm(std::string reading);

// Percent from a quality reading "N/M": the numbers before and after the first "/" (the whole
// text for both when there is none), truncated toward zero; 0/0 gives 0.
int percentFromQuality(const std::string& reading);
