#include "check/check_command.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <sstream>

#include "check/config_check.h"
#include "check/findings_output.h"
#include "common/back_end.h"
#include "credentials/cipher_key.h"
#include "generate/setting_words.h"
#include "settings/config_file.h"

namespace {

void printUsage(std::ostream& out) {
  out << "Usage: qv-netconf-check [--json] [--certificates DIR] CONFIG\n"
         "       qv-netconf-check [--json] --backend\n"
         "Checks CONFIG, a config.json for qv-netconf, before it is applied: every setting that "
         "can\nnever work is an error, every one that works but is probably not what was meant a "
         "warning.\n"
         "  --json              print the findings as one JSON array\n"
         "  --certificates DIR  look certificate files up in DIR/"
      << kCaCertificatesDir << " and DIR/" << kPkcs12Dir << "\n"
      << "                      (default " << kCertificateStore << ")\n"
      << "  --backend           print the back end qv-netconf would use here, and why\n"
         "  --help              print this text\n"
         "Exit status: 0 no error, 1 errors (or a back-end file that names no back end), 2 CONFIG\n"
         "cannot be read or is not a JSON object.\n";
}

struct options {
  bool json = false;
  std::string certificates = kCertificateStore;
  std::string config;
};

// False (with the reason on `err`) for a command line that names no single CONFIG.
bool parseOptions(const std::vector<std::string>& args, options& chosen, std::ostream& err) {
  bool haveConfig = false;
  bool optionsEnd = false;
  for (std::size_t i = 0; i < args.size(); ++i) {
    const std::string& word = args[i];
    if (!optionsEnd && word == "--json") {
      chosen.json = true;
    } else if (!optionsEnd && word == "--certificates" && i + 1 < args.size()) {
      chosen.certificates = args[++i];
    } else if (!optionsEnd && word == "--") {
      optionsEnd = true;
    } else if ((optionsEnd || word.empty() || word[0] != '-') && !haveConfig) {
      chosen.config = word;
      haveConfig = true;
    } else {
      err << "qv-netconf-check: unexpected " << quoted(word) << "\n";
      printUsage(err);
      return false;
    }
  }
  if (!haveConfig) {
    err << "qv-netconf-check: no CONFIG given\n";
    printUsage(err);
  }
  return haveConfig;
}

bool isRegularFile(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

// Why the file cannot be parsed, in one line: the reader's first message with its position.
std::string unreadable(const std::string& path) {
  struct stat status {};
  if (stat(path.c_str(), &status) != 0 || access(path.c_str(), R_OK) != 0) {
    return std::string("cannot be read: ") + std::strerror(errno);
  }
  if (S_ISDIR(status.st_mode)) return "cannot be read: it is a directory";
  // "* Line 1, Column 2\n  Syntax error: ...\n": the first error, on one line.
  std::istringstream messages(reader.getFormattedErrorMessages());
  std::string position;
  std::string reason;
  std::getline(messages, position);
  std::getline(messages, reason);
  position.erase(0, position.find_first_not_of("* "));
  reason.erase(0, reason.find_first_not_of(' '));
  const std::string detail = reason.empty() ? position : position + ": " + reason;
  return "is not valid JSON" + (detail.empty() ? std::string() : " (" + detail + ")") +
         ": the tool stops and writes no file; fix the file";
}

const char* jsonKind(const Json::Value& value) {
  switch (value.type()) {
    case Json::arrayValue:
      return "an array";
    case Json::stringValue:
      return "a string";
    case Json::nullValue:
      return "null";
    case Json::booleanValue:
      return "a bool";
    default:
      return "a number";
  }
}

}  // namespace

checkResult checkConfigFile(const std::string& path, const std::string& certificates) {
  if (!parseConfigJson(path)) {
    return {kCheckUnusable, {{severity::error, "", unreadable(path)}}};
  }
  if (!root.isObject()) {
    return {kCheckUnusable,
            {{severity::error, "",
              std::string("is ") + jsonKind(root) +
                  ", not a JSON object: the tool reads no settings from it; write one object "
                  "holding \"network settings\""}}};
  }
  loadCipherKey();
  const auto holds = [&certificates](const char* dir, const std::string& name) {
    return isRegularFile(certificates + "/" + dir + "/" + name);
  };
  checkResult result{kCheckClean, checkConfig(root, {certificates, holds})};
  for (const finding& f : result.findings) {
    if (f.level == severity::error) result.status = kCheckErrors;
  }
  return result;
}

namespace {

// "--backend" with or without "--json" and nothing else.
bool asksBackEnd(const std::vector<std::string>& args, bool& json) {
  bool backEnd = false;
  json = false;
  for (const std::string& word : args) {
    if (word == "--backend") {
      backEnd = true;
    } else if (word == "--json") {
      json = true;
    } else {
      return false;
    }
  }
  return backEnd;
}

int reportBackEnd(bool json, std::ostream& out, std::ostream& err) {
  const backEndDecision decision = detectBackEnd();
  if (!decision.choice) {
    err << "qv-netconf-check: " << decision.error << "\n";
    return kCheckErrors;
  }
  const char* word = backEndWord(decision.choice->backEnd);
  if (json) {
    out << "{\"backend\": " << quoted(word) << ", \"reason\": " << quoted(decision.choice->reason)
        << "}\n";
  } else {
    out << word << ": " << decision.choice->reason << "\n";
  }
  return kCheckClean;
}

}  // namespace

int runCheck(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  if (args.size() == 1 && args[0] == "--help") {
    printUsage(out);
    return kCheckClean;
  }
  bool json = false;
  if (asksBackEnd(args, json)) return reportBackEnd(json, out, err);
  options chosen;
  if (!parseOptions(args, chosen, err)) return kCheckUnusable;
  const checkResult result = checkConfigFile(chosen.config, chosen.certificates);
  if (chosen.json) {
    printFindingsJson(result.findings, out);
  } else {
    printFindings(chosen.config, result.findings, out);
  }
  return result.status;
}
