#pragma once

#include <optional>
#include <ostream>
#include <string>
#include <vector>

// What one run of qv-netconf-try is asked to do.
enum class tryAction { start, confirm, rollback, status, boot, watch, help };

inline constexpr int kDefaultTimeoutSeconds = 120;

struct tryOptions {
  tryAction action = tryAction::start;
  int timeoutSeconds = kDefaultTimeoutSeconds;
  std::vector<std::string> confirmWhen;
  bool wait = false;
  bool force = false;
  bool json = false;
  std::string config;
  // The wired 802.1X user name and password typed after CONFIG, as set-config takes them.
  std::vector<std::string> credentials;
};

// The options of `args` (the words after the program name); empty, with the reason in `problem`,
// for a command line that asks for nothing or for two things at once.
std::optional<tryOptions> parseTryOptions(const std::vector<std::string>& args,
                                          std::string& problem);

// The usage text.
void printTryUsage(std::ostream& out);
