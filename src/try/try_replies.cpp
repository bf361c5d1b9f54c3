#include "try/try_replies.h"

#include <time.h>

#include <sstream>

#include "check/findings_output.h"

namespace {

constexpr const char* kConfirmCommand = "qv-netconf-try --confirm";

std::string findingsJson(const std::vector<finding>& findings) {
  std::ostringstream text;
  printFindingsJson(findings, text);
  std::string array = text.str();
  if (!array.empty() && array.back() == '\n') array.pop_back();
  return array;
}

}  // namespace

std::string utcTime(std::int64_t wallSeconds, bool iso) {
  const time_t seconds = static_cast<time_t>(wallSeconds);
  tm parts{};
  ::gmtime_r(&seconds, &parts);
  char text[32];
  const std::size_t length =
      ::strftime(text, sizeof text, iso ? "%Y-%m-%dT%H:%M:%SZ" : "%Y-%m-%d %H:%M:%S UTC", &parts);
  return std::string(text, length);
}

void printPending(const std::string& config, std::int64_t remainingSeconds, std::size_t checks,
                  const std::vector<finding>& findings, bool json, std::ostream& out) {
  if (json) {
    out << "{\"result\": " << quoted(kResultPending) << ", \"config\": " << quoted(config)
        << ", \"remaining\": " << remainingSeconds << ", \"findings\": " << findingsJson(findings)
        << "}\n";
    return;
  }
  printFindings(config, findings, out);
  out << kResultPending << ": " << config << ", " << remainingSeconds << " s left; ";
  if (checks > 0) out << "its checks or ";
  out << kConfirmCommand << (checks > 0 ? " keep" : " keeps") << " it, else it is rolled back\n";
}

void printEnded(const std::string& result, const std::string& config, const std::string& reason,
                bool json, std::ostream& out) {
  if (json) {
    out << "{\"result\": " << quoted(result) << ", \"config\": " << quoted(config)
        << ", \"reason\": " << quoted(reason) << "}\n";
    return;
  }
  out << result << ": " << config << ": " << reason << "\n";
}

void printRefusal(const std::string& result, const std::string& reason, const std::string& config,
                  const std::vector<finding>& findings, bool withFindings, bool json,
                  std::ostream& out, std::ostream& err) {
  if (json) {
    out << "{\"result\": " << quoted(result) << ", \"reason\": " << quoted(reason);
    if (withFindings) out << ", \"findings\": " << findingsJson(findings);
    out << "}\n";
    return;
  }
  printFindings(config, findings, out);
  err << "qv-netconf-try: " << result << ": " << reason << "\n";
}

void printStatus(const std::optional<pendingView>& pending, const std::optional<tryOutcome>& last,
                 bool json, std::ostream& out) {
  if (json) {
    out << "{\"pending\": ";
    if (pending) {
      out << "{\"config\": " << quoted(pending->config)
          << ", \"remaining\": " << pending->remainingSeconds
          << ", \"phase\": " << quoted(pending->phase)
          << ", \"watcher\": " << quoted(pending->watcher) << "}";
    } else {
      out << "null";
    }
    out << ", \"last\": ";
    if (last) {
      out << "{\"result\": " << quoted(last->result) << ", \"config\": " << quoted(last->config)
          << ", \"reason\": " << quoted(last->reason)
          << ", \"at\": " << quoted(utcTime(last->wallSeconds, true)) << "}";
    } else {
      out << "null";
    }
    out << "}\n";
    return;
  }
  if (pending) {
    out << "pending: " << pending->config << ", " << pending->remainingSeconds << " s left";
    if (pending->phase != kResultPending) out << ", " << pending->phase;
    out << ", watcher " << pending->watcher << "\n";
  } else {
    out << "pending: none\n";
  }
  if (last) {
    out << "last: " << last->result << " " << last->config << " at "
        << utcTime(last->wallSeconds, false) << ": " << last->reason << "\n";
  } else {
    out << "last: none\n";
  }
}
