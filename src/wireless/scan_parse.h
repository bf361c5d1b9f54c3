#pragma once

#include <list>
#include <string>
#include <vector>

#include "wireless/wifi_item.h"

// Pure reading of "iwlist wlan0 scan" output.

// Cuts the output's pieces into blocks: every piece holding "Cell" closes the block gathered so
// far and opens the next. The first block is the text before the first cell.
std::vector<std::string> cutScanBlocks(const std::vector<std::string>& pieces);

// Reads each block's complete lines into an entry and appends the entries worth offering, in
// order: no name, a hidden ("\x00") name or WEP authentication drop an entry, and an open
// network's authentication becomes "NONE". Signal strength and channel carry over from the
// previous block when a block lacks them (0 before the first).
void appendAccessPoints(const std::vector<std::string>& blocks, std::list<wifiItem>& list);
