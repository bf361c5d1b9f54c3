#include "inputs.h"

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <sstream>
#include <vector>

namespace {

const char* const kScans[] = {
    "iwlist/rpi-brcmfmac-20-cells-dual-band.txt",
    "iwlist/rpi3-brcmfmac-plus-wlan1-cell-without-essid.txt",
    "iwlist/rpi-brcmfmac-wlan0-plus-usb-wlan1.txt",
    "iwlist/prism54-signal-only-no-channel.txt",
    "iwlist/rpi-realtek-vendor-protocol-line.txt",
};
const char* const kInterfaceBlocks[] = {
    "ifconfig/lab-net-tools-2.10-eth0-static.txt",
    "ifconfig/lab-net-tools-2.10-wlan0-address.txt",
    "ifconfig/lab-net-tools-2.10-tun0-point-to-point.txt",
};
const char* const kLinks[] = {
    "ip-link/lab-iproute2-6.1-veth-wlan0-up.txt",
    "ip-link/rpi-zero-w-not-associated-no-carrier-down.txt",
    "ip-link/laptop-interface-admin-down.txt",
};
constexpr const char* kAssociatedLink = "ip-link/rpi-associated-pfifo-fast-up.txt";
constexpr const char* kScanHeading = "wlan0     Scan completed :\n";
constexpr const char* kRouteHeading =
    "Kernel IP routing table\n"
    "Destination     Gateway         Genmask         Flags Metric Ref    Use Iface\n";

std::vector<std::string> linesOf(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream stream(text);
  for (std::string line; std::getline(stream, line);) lines.push_back(line + "\n");
  return lines;
}

std::string replaceFirst(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

template <typename... Values>
std::string formatted(const char* format, Values... values) {
  char buffer[128];
  std::snprintf(buffer, sizeof buffer, format, values...);
  return buffer;
}

// One line of "route -n" in the table's own columns.
std::string routeLine(const std::string& destination, const std::string& gateway,
                      const char* genmask, const char* flags, int metric, int use,
                      const char* iface) {
  return formatted("%-15s %-15s %-15s %-5s %-6d %-2d %7d %s\n", destination.c_str(),
                   gateway.c_str(), genmask, flags, metric, 0, use, iface);
}

// The cells of every recorded scan, each a run of lines from its "Cell NN - Address:" line up
// to the next cell, a blank line or the next interface's heading.
const std::vector<std::vector<std::string>>& recordedCells() {
  static const std::vector<std::vector<std::string>> cells = [] {
    std::vector<std::vector<std::string>> found;
    for (const char* scan : kScans) {
      bool inCell = false;
      for (const std::string& line : linesOf(fixtureText(scan))) {
        if (line.find(" - Address: ") != std::string::npos) {
          found.emplace_back();
          inCell = true;
        } else if (line[0] != ' ') {
          inCell = false;
        }
        if (inCell) found.back().push_back(line);
      }
    }
    return found;
  }();
  return cells;
}

// Cell `number` from its recorded template: the scanner's two-digit numbering, the template's
// vendor prefix with a station part of its own, and a named ESSID made unique.
std::string variedCell(const std::vector<std::string>& recorded, int number) {
  std::string cell;
  for (const std::string& line : recorded) {
    const std::size_t address = line.find(" - Address: ");
    const std::size_t essid = line.find("ESSID:\"");
    if (address != std::string::npos) {
      const std::string vendor = line.substr(address + 12, 8);
      cell += formatted("          Cell %02d - Address: ", number) + vendor +
              formatted(":%02X:%02X:%02X\n", (number >> 16) & 0xFF, (number >> 8) & 0xFF,
                        number & 0xFF);
    } else if (essid != std::string::npos && line.compare(essid, 8, "ESSID:\"\"") != 0 &&
               line.find("\\x00") == std::string::npos) {
      cell += replaceFirst(line, "\"\n", formatted("-%d\"\n", number));
    } else {
      cell += line;
    }
  }
  return cell;
}

// A recorded block with its interface renamed and its IPv4 address replaced.
std::string variedBlock(const std::string& recorded, const std::string& name,
                        const std::string& address) {
  std::string block = recorded.substr(recorded.find(':'));
  block = name + block;
  const std::size_t inet = block.find("inet ") + 5;
  block.replace(inet, block.find(' ', inet) - inet, address);
  return block;
}

}  // namespace

std::string fixtureText(const std::string& relativePath) {
  std::ifstream file(std::string(QV_FIXTURES_DIR) + "/" + relativePath, std::ios::binary);
  if (!file) {
    std::cerr << "cannot read fixture " << relativePath << std::endl;
    std::exit(1);
  }
  std::ostringstream text;
  text << file.rdbuf();
  return text.str();
}

std::string scanOutput(int cells) {
  const std::vector<std::vector<std::string>>& recorded = recordedCells();
  std::string output = kScanHeading;
  for (int number = 1; number <= cells; ++number) {
    output += variedCell(recorded[(number - 1) % recorded.size()], number);
  }
  return output + "\n";
}

std::string routeTable(int routes) {
  std::string table = kRouteHeading;
  for (int i = 0; i + 1 < routes; ++i) {
    const int a = 1 + (i / 250) % 250;
    const int b = 1 + i % 250;
    switch (i % 4) {
      case 0:
        table += routeLine(formatted("10.8.%d.%d", a, b), "0.0.0.0", "255.255.255.255", "UH", 0, 0,
                           "tun0");
        break;
      case 1: {
        const bool wired = i % 8 == 1;
        table += routeLine(formatted("172.%d.%d.0", 16 + a % 16, b), "0.0.0.0", "255.255.255.0",
                           "U", wired ? 202 : 303, i % 1000, wired ? "eth0" : "wlan0");
        break;
      }
      case 2:
        table += routeLine(formatted("10.%d.%d.0", 20 + a % 200, b), formatted("192.168.4.%d", b),
                           "255.255.255.0", "UG", 303, i % 5000, "wlan0");
        break;
      default:
        table += routeLine(formatted("10.%d.%d.128", 20 + a % 200, b), formatted("192.168.1.%d", b),
                           "255.255.255.128", "UG", 202, i % 700, "eth0");
        break;
    }
  }
  return table + routeLine("0.0.0.0", kGeneratedDefaultGateway, "0.0.0.0", "UG", 202, 0, "eth0");
}

std::string ifconfigOutput(int interfaces) {
  const char* const prefixes[] = {"eth", "wlan", "tun"};
  std::vector<std::string> recorded;
  for (const char* block : kInterfaceBlocks) recorded.push_back(fixtureText(block));
  std::string output;
  for (int i = 1; i < interfaces; ++i) {
    const int kind = i % 3;
    output += variedBlock(recorded[kind], prefixes[kind] + std::to_string(i),
                          formatted("10.%d.%d.%d", 100 + kind, (i >> 8) & 0xFF, i & 0xFF));
  }
  return output + recorded[0];
}

std::string ipLinkOutput(int interfaces) {
  std::vector<std::string> recorded;
  for (const char* link : kLinks) {
    const std::string text = fixtureText(link);
    recorded.push_back(text.substr(text.find(':', text.find(": ") + 2)));  // after the name
  }
  std::string output;
  for (int i = 1; i < interfaces; ++i) {
    output += std::to_string(i) + ": veth" + std::to_string(i) + recorded[i % 3];
  }
  const std::string associated = fixtureText(kAssociatedLink);
  return output + std::to_string(interfaces) + associated.substr(associated.find(':'));
}
