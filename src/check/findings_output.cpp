#include "check/findings_output.h"

namespace {

const char* severityWord(severity level) {
  return level == severity::error ? "error" : "warning";
}

}  // namespace

void printFindings(const std::string& config, const std::vector<finding>& findings,
                   std::ostream& out) {
  for (const finding& f : findings) {
    out << config << ": " << severityWord(f.level) << ": " << f.path << ": " << f.message << "\n";
  }
}

void printFindingsJson(const std::vector<finding>& findings, std::ostream& out) {
  out << "[";
  const char* separator = "";
  for (const finding& f : findings) {
    out << separator << "{\"severity\": " << quoted(severityWord(f.level))
        << ", \"path\": " << quoted(f.path) << ", \"message\": " << quoted(f.message) << "}";
    separator = ", ";
  }
  out << "]\n";
}
