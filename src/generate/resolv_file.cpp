#include "generate/resolv_file.h"

#include "generate/generated_file.h"
#include "generate/setting_words.h"

const char* const kResolvPath = "/etc/resolv.conf";

namespace {

std::string optionalLine(const char* label, const std::string& value) {
  return (value.empty() ? std::string() : label + value) + "\n";
}

}  // namespace

std::string renderResolvConf(const dnsSettings& dns) {
  // Always four lines: the management application reads them by position.
  return "#Generate by resolvconf\n" + optionalLine("domain ", dns.domain) +
         optionalLine("nameserver ", dns.dns1) + optionalLine("nameserver ", dns.dns2);
}

void generateResolvFile(UserMode mode, std::ostream& out, std::ostream& err) {
  if (settingsTab.dns.type != kTypeStatic) {
    // Whatever the type is, the message says dhcp: the DHCP client owns the file then.
    if (mode == consoleMode) {
      out << "Skipped generating " << kResolvPath << " file. DNS is dhcp." << std::endl;
    }
    return;
  }
  if (mode == consoleMode) out << "Putting settings to " << kResolvPath << "..." << std::endl;
  writeGeneratedFile(
      kResolvPath, FileAccess::everyone, [] { return renderResolvConf(settingsTab.dns); }, mode,
      err);
  if (mode == consoleMode) {
    out << "Putting settings to " << kResolvPath << " file completed." << std::endl;
  }
}
