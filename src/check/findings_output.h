#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "check/finding.h"

// One line per finding: "CONFIG: error: PLACE: REASON" or "CONFIG: warning: PLACE: REASON";
// nothing for no findings.
void printFindings(const std::string& config, const std::vector<finding>& findings,
                   std::ostream& out);

// One JSON array of {"severity", "path", "message"} objects and a line end; "[]" for none.
void printFindingsJson(const std::vector<finding>& findings, std::ostream& out);
