// Stands in for the system logger: binds a datagram socket at SOCKET and writes every message it
// receives to OUTPUT, one line each, as "daemon.notice qv-netconf: TEXT" (priority decoded, time
// and pid left out, so cases can hold the exact lines). Runs until SIGTERM, then takes what is
// still queued and ends.
//   qv-log-sink SOCKET OUTPUT
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr int kPollMilliseconds = 50;
constexpr std::size_t kMessageSize = 8192;

const std::array<const char*, 8> kSeverities = {"emerg",   "alert",  "crit", "err",
                                                "warning", "notice", "info", "debug"};
const std::array<const char*, 12> kFacilities = {"kern", "user",   "mail",     "daemon",
                                                 "auth", "syslog", "lpr",      "news",
                                                 "uucp", "cron",   "authpriv", "ftp"};

volatile std::sig_atomic_t stopping = 0;

extern "C" void stop(int /*signal*/) {
  stopping = 1;
}

std::string facilityName(unsigned facility) {
  return facility < kFacilities.size() ? kFacilities[facility] : std::to_string(facility);
}

// "<PRI>Mmm dd hh:mm:ss IDENT[PID]: TEXT", as syslog(3) sends it.
std::string decode(std::string raw) {
  if (!raw.empty() && raw.back() == '\n') raw.pop_back();
  const std::size_t close = raw.find('>');
  const std::size_t colon = raw.find(": ", close);
  if (raw.empty() || raw[0] != '<' || close == std::string::npos || colon == std::string::npos) {
    return "unparsed " + raw;
  }
  const unsigned priority = std::stoul(raw.substr(1, close - 1));
  const std::string header = raw.substr(close + 1, colon - close - 1);
  std::string ident = header.substr(header.rfind(' ') + 1);
  ident = ident.substr(0, ident.find('['));
  return facilityName(priority >> 3) + "." + kSeverities[priority & 7] + " " + ident + ": " +
         raw.substr(colon + 2);
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: qv-log-sink SOCKET OUTPUT\n");
    return 2;
  }
  std::signal(SIGTERM, stop);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, argv[1], sizeof address.sun_path - 1);
  const int sink = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (sink < 0 || bind(sink, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    std::perror("qv-log-sink: cannot bind the log socket");
    return 2;
  }
  std::ofstream output(argv[2]);
  std::vector<char> buffer(kMessageSize);
  // Read as messages come, so that a burst never fills the socket's queue. The stop comes after
  // the program that logs has ended, so one more pass takes all it sent.
  for (bool last = false; !last;) {
    last = stopping != 0;
    ssize_t size;
    while ((size = recv(sink, buffer.data(), buffer.size(), MSG_DONTWAIT)) >= 0) {
      output << decode(std::string(buffer.data(), static_cast<std::size_t>(size))) << '\n';
    }
    if (!last) {
      pollfd ready{sink, POLLIN, 0};
      poll(&ready, 1, kPollMilliseconds);
    }
  }
  unlink(argv[1]);
  return 0;
}
