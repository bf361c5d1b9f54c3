// Any text as an existing dhcpcd.conf and any first line as a network mask: the head keeping,
// the prefix-length rule and the rendering of the new file.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <string>

#include "generate/dhcpcd_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string text(reinterpret_cast<const char*>(data), size);
  const std::string mask = text.substr(0, text.find('\n'));
  const int prefix = prefixLength(mask);
  if (prefix < 0 || prefix > 31) __builtin_trap();

  std::istringstream oldFile(text);
  const auto head = keptHead(oldFile);
  for (const std::string& line : head) {
    if (line.find("interface") != std::string::npos || line.find('\n') != std::string::npos) {
      __builtin_trap();
    }
  }
  networkSettings settings;
  settings.wlan.enabled = true;
  settings.wlan.type = "static";
  settings.wlan.networkMask = mask;
  settings.dns.type = "static";
  const std::string rendered = renderDhcpcdConf(head, settings);
  if (!head.empty() && rendered.compare(0, head[0].size(), head[0]) != 0) __builtin_trap();
  return 0;
}
