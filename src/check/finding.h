#pragma once

#include <string>
#include <vector>

// What a finding means for the file: an error never works, a warning works but is probably not
// what was meant.
enum class severity { error, warning };

// One finding: its severity, the member it is about (names from the top, joined by "/"; empty for
// the file as a whole) and one line saying what will happen and what to write instead.
struct finding {
  severity level;
  std::string path;
  std::string message;
};

// Findings in the order they are found.
class findingList {
 public:
  void add(severity level, const std::string& path, const std::string& message) {
    items_.push_back({level, path, message});
  }
  void error(const std::string& path, const std::string& message) {
    add(severity::error, path, message);
  }
  void warning(const std::string& path, const std::string& message) {
    add(severity::warning, path, message);
  }
  const std::vector<finding>& items() const { return items_; }

 private:
  std::vector<finding> items_;
};

// `text` as a JSON string literal, so that a value quoted in a message stays on one line.
std::string quoted(const std::string& text);
