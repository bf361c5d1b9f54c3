#pragma once

#include <optional>
#include <string>
#include <vector>

// Writes the five network files exactly as "qv-netconf set-config A CONFIG [USER [PASSWORD]]"
// does, with the tool's own code, in a process of its own: a failure ends that process only,
// with the files it had replaced so far replaced. Nothing is printed. Empty when every file was
// written, else why not (as the tool would log it).
std::optional<std::string> writeNetworkFiles(const std::string& config,
                                             const std::vector<std::string>& credentials);
