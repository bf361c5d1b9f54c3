#include "try/try_options.h"

#include <cerrno>
#include <cstdlib>

namespace {

// A window longer than a day is no longer a try.
constexpr long kMaxTimeoutSeconds = 86400;
constexpr std::size_t kMaxCredentials = 2;

struct actionWord {
  const char* word;
  tryAction action;
};

const actionWord kActions[] = {
    {"--confirm", tryAction::confirm}, {"--rollback", tryAction::rollback},
    {"--status", tryAction::status},   {"--boot", tryAction::boot},
    {"--watch", tryAction::watch},     {"--help", tryAction::help},
};

// Whole seconds in 1..kMaxTimeoutSeconds, digits only.
bool seconds(const std::string& text, int& value) {
  if (text.empty() || text.find_first_not_of("0123456789") != std::string::npos) return false;
  errno = 0;
  const long parsed = std::strtol(text.c_str(), nullptr, 10);
  if (errno != 0 || parsed < 1 || parsed > kMaxTimeoutSeconds) return false;
  value = static_cast<int>(parsed);
  return true;
}

std::optional<tryOptions> refuse(std::string& problem, const std::string& why) {
  problem = why;
  return std::nullopt;
}

}  // namespace

std::optional<tryOptions> parseTryOptions(const std::vector<std::string>& args,
                                          std::string& problem) {
  tryOptions chosen;
  bool actionGiven = false;
  bool startOptions = false;  // an option only a try takes
  bool optionsEnd = false;
  std::vector<std::string> positional;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& word = args[i];
    const bool option = !optionsEnd && word.size() > 1 && word[0] == '-';
    if (!option) {
      positional.push_back(word);
      continue;
    }
    const bool hasValue = i + 1 < args.size();
    if (word == "--") {
      optionsEnd = true;
    } else if (word == "--json") {
      chosen.json = true;
    } else if (word == "--wait" || word == "--force") {
      (word == "--wait" ? chosen.wait : chosen.force) = true;
      startOptions = true;
    } else if (word == "--timeout") {
      if (!hasValue || !seconds(args[++i], chosen.timeoutSeconds)) {
        return refuse(problem, "--timeout takes whole seconds from 1 to 86400");
      }
      startOptions = true;
    } else if (word == "--confirm-when") {
      if (!hasValue || args[i + 1].empty()) {
        return refuse(problem, "--confirm-when takes a command");
      }
      chosen.confirmWhen.push_back(args[++i]);
      startOptions = true;
    } else {
      bool known = false;
      for (const actionWord& a : kActions) {
        if (word != a.word) continue;
        if (actionGiven) return refuse(problem, "one of --confirm, --rollback, --status, --boot");
        chosen.action = a.action;
        actionGiven = known = true;
      }
      if (!known) return refuse(problem, "unknown option " + word);
    }
  }
  if (chosen.action != tryAction::start) {
    if (startOptions || !positional.empty()) {
      return refuse(problem, "this takes no CONFIG and no option of a try");
    }
    const bool jsonAllowed = chosen.action == tryAction::confirm ||
                             chosen.action == tryAction::rollback ||
                             chosen.action == tryAction::status;
    if (chosen.json && !jsonAllowed) return refuse(problem, "--json goes with a try or an answer");
    return chosen;
  }
  if (positional.empty()) return refuse(problem, "no CONFIG given");
  if (positional.size() > 1 + kMaxCredentials) return refuse(problem, "too many words");
  chosen.config = positional[0];
  chosen.credentials.assign(positional.begin() + 1, positional.end());
  return chosen;
}

void printTryUsage(std::ostream& out) {
  out << "Usage: qv-netconf-try [--timeout SECONDS] [--confirm-when COMMAND]... [--wait] "
         "[--force]\n"
         "                      [--json] CONFIG [USER [PASSWORD]]\n"
         "       qv-netconf-try --confirm | --rollback | --status [--json]\n"
         "       qv-netconf-try --boot | --watch | --help\n"
         "Applies CONFIG, a config.json for qv-netconf, as \"qv-netconf set-config\" does (USER "
         "and\n"
         "PASSWORD as there) and brings eth0 and wlan0 up or down as it says; unless the try is\n"
         "confirmed in time, the previous files and links are put back by themselves, even across "
         "a\n"
         "restart.\n"
         "  --timeout SECONDS       the time to confirm in (default 120)\n"
         "  --confirm-when COMMAND  confirm as soon as COMMAND, run by /bin/sh every few seconds,\n"
         "                          succeeds with every other one given; repeatable\n"
         "  --wait                  stay until the try ends\n"
         "  --force                 apply even where qv-netconf-check finds errors\n"
         "  --json                  answer with one JSON object\n"
         "  --confirm               keep the pending try\n"
         "  --rollback              undo the pending try now\n"
         "  --status                say whether a try is pending and how the last one ended\n"
         "  --boot                  at boot, before the network: undo a try left unconfirmed\n"
         "  --watch                 keep the pending try's deadline (a try starts it itself)\n"
         "  --help                  print this text\n"
         "Exit status: 0 done (a try applied, or confirmed with --wait), 1 refused or failed\n"
         "(nothing changed), 2 bad command line, 3 rolled back.\n";
}
