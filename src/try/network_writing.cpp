#include "try/network_writing.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <iostream>

#include "common/run_log.h"
#include "common/user_mode.h"
#include "generate/generate_configs.h"
#include "settings/config_reader.h"
#include "settings/network_settings.h"

namespace {

constexpr const char* kFailedMark = " failed: ";

// The writing process's end of the pipe its failure goes back through.
int failurePipe = -1;

// The line the tool would log on a failure goes to the parent instead.
void sendToParent(int /*priority*/, const std::string& line) {
  const std::string text = line + "\n";
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t written = ::write(failurePipe, text.data() + done, text.size() - done);
    if (written <= 0) break;
    done += static_cast<std::size_t>(written);
  }
}

[[noreturn]] void writeInChild(const std::string& config,
                               const std::vector<std::string>& credentials) {
  // Whatever a utility prints is not the companion's answer.
  ::dup2(STDERR_FILENO, STDOUT_FILENO);
  installLogSender(sendToParent);
  noteRunCommand("set-config");
  noteConfigPath(config);
  if (!credentials.empty()) ethernetPassThroughCredentials.userName = credentials[0];
  if (credentials.size() > 1) ethernetPassThroughCredentials.userPassword = credentials[1];
  initConfig(config, silentMode);
  generateConfigs(silentMode);
  ::_exit(std::fflush(nullptr) == 0 ? 0 : 1);
}

std::string reasonOf(const std::string& logged) {
  std::string reason = logged;
  while (!reason.empty() && reason.back() == '\n') reason.pop_back();
  const std::size_t mark = reason.find(kFailedMark);
  return mark == std::string::npos ? reason : reason.substr(mark + std::string(kFailedMark).size());
}

}  // namespace

std::optional<std::string> writeNetworkFiles(const std::string& config,
                                             const std::vector<std::string>& credentials) {
  int ends[2];
  if (::pipe2(ends, O_CLOEXEC) != 0) return std::string("cannot start the writing process");
  // Nothing buffered here may be written twice by the child.
  std::cout.flush();
  std::cerr.flush();
  static_cast<void>(std::fflush(nullptr));
  const pid_t child = ::fork();
  if (child < 0) {
    ::close(ends[0]);
    ::close(ends[1]);
    return std::string("cannot start the writing process");
  }
  if (child == 0) {
    ::close(ends[0]);
    failurePipe = ends[1];
    writeInChild(config, credentials);
  }
  ::close(ends[1]);
  std::string logged;
  char buffer[512];
  ssize_t got;
  while ((got = ::read(ends[0], buffer, sizeof buffer)) != 0) {
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) break;
    logged.append(buffer, static_cast<std::size_t>(got));
  }
  ::close(ends[0]);
  int status = 0;
  while (::waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  if (WIFEXITED(status) && WEXITSTATUS(status) == 0) return std::nullopt;
  if (!logged.empty()) return reasonOf(logged);
  return commandStatus("the writing process", status);
}
