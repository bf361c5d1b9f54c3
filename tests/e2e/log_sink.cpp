// Stands in for the system logger: binds a datagram socket at SOCKET, runs PROGRAM under the name
// NAME with ARGS (as "exec -a NAME PROGRAM ARGS" would), and writes every message it received to
// OUTPUT, one line each, as "daemon.notice qv-netconf: TEXT" (priority decoded, time and pid left
// out, so cases can hold the exact lines). Exits with the program's status (128 + signal when it
// was killed, as a shell reports it).
//   qv-log-sink SOCKET OUTPUT NAME PROGRAM [ARG...]
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
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

// Everything queued on the socket.
void receive(int socket, std::vector<std::string>& messages) {
  std::vector<char> buffer(kMessageSize);
  ssize_t size;
  while ((size = recv(socket, buffer.data(), buffer.size(), MSG_DONTWAIT)) >= 0) {
    messages.push_back(decode(std::string(buffer.data(), static_cast<std::size_t>(size))));
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  if (argc < 5) {
    std::fprintf(stderr, "usage: qv-log-sink SOCKET OUTPUT NAME PROGRAM [ARG...]\n");
    return 2;
  }
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::strncpy(address.sun_path, argv[1], sizeof address.sun_path - 1);
  const int sink = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (sink < 0 || bind(sink, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
    std::perror("qv-log-sink: cannot bind the log socket");
    return 2;
  }
  const pid_t child = fork();
  if (child == 0) {
    const char* program = argv[4];
    argv[4] = argv[3];  // the name it runs under, followed by its arguments
    execv(program, argv + 4);
    _exit(127);
  }
  std::vector<std::string> messages;
  int status = 0;
  // Read while the program runs, so a burst of messages never fills the socket's queue.
  while (waitpid(child, &status, WNOHANG) == 0) {
    pollfd ready{sink, POLLIN, 0};
    if (poll(&ready, 1, kPollMilliseconds) > 0) receive(sink, messages);
  }
  receive(sink, messages);
  unlink(argv[1]);
  std::ofstream output(argv[2]);
  for (const std::string& message : messages) output << message << '\n';
  return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}
