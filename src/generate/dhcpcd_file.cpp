#include "generate/dhcpcd_file.h"

#include <arpa/inet.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <fstream>

#include "common/pieces.h"
#include "common/run_log.h"
#include "generate/generated_file.h"
#include "generate/setting_words.h"

const char* const kDhcpcdPath = "/etc/dhcpcd.conf";

namespace {

void staticBlock(const char* name, const std::string& address, const std::string& mask,
                 const std::string& gateway, const std::string& nameServers, bool staticDns,
                 std::vector<std::string>& lines) {
  lines.push_back(std::string("interface ") + name);
  lines.push_back("static ip_address=" + address + "/" + std::to_string(prefixLength(mask)));
  lines.push_back("static routers=" + gateway);
  if (staticDns) lines.push_back(nameServers);
}

// `direction` is "reading" or "writing".
[[noreturn]] void fail(const char* message, const char* direction, int error, UserMode mode,
                       std::ostream& err) {
  const std::string reason =
      std::string("cannot open ") + kDhcpcdPath + " for " + direction + ": " + std::strerror(error);
  if (mode == consoleMode) err << message << std::endl;
  failRun(reason);
}

}  // namespace

std::vector<std::string> keptHead(std::istream& in) {
  std::vector<std::string> head;
  std::string line;
  while (std::getline(in, line) && !contains(line, "interface")) head.push_back(line);
  return head;
}

int prefixLength(const std::string& mask) {
  unsigned char octets[4];
  if (inet_pton(AF_INET, mask.c_str(), octets) != 1) return 0;
  const auto value = static_cast<std::int32_t>(
      static_cast<std::uint32_t>(octets[0]) | static_cast<std::uint32_t>(octets[1]) << 8 |
      static_cast<std::uint32_t>(octets[2]) << 16 | static_cast<std::uint32_t>(octets[3]) << 24);
  // Deliberately not a count of leading ones: the files on the devices were written this way.
  int bits = 0;
  for (std::int32_t rest = value; rest > 0; rest >>= 1) ++bits;
  return bits;
}

std::vector<std::string> dhcpcdLines(const networkSettings& settings) {
  const ethSettings& eth = settings.eth;
  const wlanSettings& wlan = settings.wlan;
  const dnsSettings& dns = settings.dns;
  const std::string nameServers =
      "static domain_name_servers=" + dns.dns1 + (dns.dns1.empty() ? "" : " ") + dns.dns2;
  const bool staticDns = dns.type == kTypeStatic;
  std::vector<std::string> lines;
  if (!eth.enabled) lines.push_back("denyinterfaces eth0");
  if (!wlan.enabled) lines.push_back("denyinterfaces wlan0");
  if (wlan.type == kTypeStatic && wlan.enabled) {
    staticBlock("wlan0", wlan.ipAddress, wlan.networkMask, wlan.defaultGateway, nameServers,
                staticDns, lines);
  }
  if (eth.type == kTypeStatic && eth.enabled) {
    staticBlock("eth0", eth.ipAddress, eth.networkMask, eth.defaultGateway, nameServers, staticDns,
                lines);
  }
  return lines;
}

std::string renderDhcpcdConf(const std::vector<std::string>& head,
                             const networkSettings& settings) {
  std::string text;
  for (const std::string& line : head) text += line + "\n";
  for (const std::string& line : dhcpcdLines(settings)) text += line + "\n";
  return text;
}

void generateDhcpcdConf(UserMode mode, std::ostream& out, std::ostream& err) {
  if (mode == consoleMode) out << "Putting settings to " << kDhcpcdPath << "..." << std::endl;
  std::vector<std::string> head;
  {
    std::ifstream in(kDhcpcdPath);
    if (!in.is_open()) {
      fail("Error: Reading from /etc/dhcpcd.conf incompleted.", "reading", errno, mode, err);
    }
    head = keptHead(in);
  }
  FileReplacement file(kDhcpcdPath, FileAccess::everyone);
  // Fatal despite the word "Warning".
  if (!file.isOpen()) {
    fail("Warning! Append /etc/dhcpcd.conf incompleted.", "writing", file.openError(), mode, err);
  }
  commitGeneratedFile(file, kDhcpcdPath, renderDhcpcdConf(head, settingsTab), mode, err);
  if (mode == consoleMode) {
    out << "Putting settings to " << kDhcpcdPath << " file completed." << std::endl;
  }
}
