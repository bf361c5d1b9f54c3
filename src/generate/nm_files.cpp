#include "generate/nm_files.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <functional>
#include <optional>
#include <sstream>

#include "common/nmcli.h"
#include "common/run_log.h"
#include "common/shell.h"
#include "credentials/password_cipher.h"
#include "generate/generated_file.h"
#include "generate/interfaces_file.h"
#include "generate/nm_profile.h"
#include "settings/network_settings.h"

namespace {

// A file as it was before the run replaced it.
struct previousFile {
  std::string content;
  fileAttributes attributes;
};

std::optional<previousFile> readPrevious(const std::string& path) {
  struct stat status;
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::ostringstream content;
  content << file.rdbuf();
  return previousFile{content.str(), {status.st_mode & 07777, status.st_uid, status.st_gid}};
}

void announce(const std::string& path, const char* end, UserMode mode, std::ostream& out) {
  if (mode == consoleMode) out << "Putting settings to " << path << " file" << end << std::endl;
}

// Puts back what the refused profile replaced, and has NetworkManager read it again.
void putBack(const std::string& path, const std::optional<previousFile>& previous) {
  if (previous) {
    FileReplacement file(path, previous->attributes);
    if (file.isOpen()) file.commit(previous->content);
    loadProfile(path);
  } else {
    // NetworkManager forgets the profile of a file that is gone when asked to load it.
    ::unlink(path.c_str());
    loadProfile(path);
  }
  noteFileRestored(path);
}

void putProfile(const char* name, const std::string& path,
                const std::function<std::string()>& render, UserMode mode, std::ostream& out,
                std::ostream& err) {
  announce(path, "...", mode, out);
  const std::optional<previousFile> previous = readPrevious(path);
  writeGeneratedFile(path, FileAccess::ownerOnly, render, mode, err);
  const std::string complaint = loadProfile(path);
  if (!complaint.empty()) {
    putBack(path, previous);
    const char* kept = previous ? "the previous one is kept" : "there was none before";
    if (mode == consoleMode) {
      err << "Error: NetworkManager refused the profile " << name << "; " << kept << "."
          << std::endl;
    }
    failRun("NetworkManager refused the profile " + std::string(name) + " (" + complaint + "); " +
            kept);
  }
  announce(path, " completed.", mode, out);
}

// A disabled wlan0 without a network name has no profile: the one of an earlier run goes.
void dropProfile(const std::string& path, UserMode mode, std::ostream& out, std::ostream& err) {
  struct stat status;
  if (::lstat(path.c_str(), &status) != 0) return;
  if (mode == consoleMode) out << "Removing " << path << " file..." << std::endl;
  if (::unlink(path.c_str()) != 0) {
    const std::string reason = std::strerror(errno);
    if (mode == consoleMode) err << "Error: File " << path << " cannot be removed!" << std::endl;
    failRun("cannot remove " + path + ": " + reason);
  }
  noteFileReplaced(path);
  loadProfile(path);
}

// An interfaces file left by the ifupdown stack would keep eth0 and wlan0 from NetworkManager.
void releaseInterfaces(UserMode mode, std::ostream& out, std::ostream& err) {
  const std::optional<previousFile> current = readPrevious(kInterfacesPath);
  if (!current || !claimsNetworkInterfaces(current->content)) return;
  announce(kInterfacesPath, "...", mode, out);
  writeGeneratedFile(kInterfacesPath, FileAccess::everyone, renderLoopbackInterfaces, mode, err);
  shell().run(kNmcliReload);
  announce(kInterfacesPath, " completed.", mode, out);
}

}  // namespace

void generateNetworkManagerFiles(bool withWired, UserMode mode, std::ostream& out,
                                 std::ostream& err) {
  if (!networkManagerAnswers()) {
    if (mode == consoleMode) err << "Error: NetworkManager does not answer." << std::endl;
    failRun("NetworkManager does not answer (" + std::string(kNmcliRunning) +
            "); nothing was written");
  }
  DeviceSupplicantServices services(mode, out, err);
  releaseInterfaces(mode, out, err);
  if (withWired) {
    putProfile(
        kWiredProfile, kWiredProfilePath,
        [&services, mode, &out] {
          if (mode == consoleMode) {
            // The typed password is shown only in its stored form, as on the ifupdown stack.
            out << "Pass through credentials: user: " << ethernetPassThroughCredentials.userName
                << " password: " << encodePassword(ethernetPassThroughCredentials.userPassword)
                << std::endl;
          }
          return renderWiredProfile(settingsTab.eth, settingsTab.dns, openWiredConfig,
                                    ethernetPassThrough, ethernetPassThroughCredentials, services);
        },
        mode, out, err);
  }
  if (!wantsWirelessProfile(settingsTab.wlan)) {
    dropProfile(kWirelessProfilePath, mode, out, err);
    return;
  }
  putProfile(
      kWirelessProfile, kWirelessProfilePath,
      [&services] { return renderWirelessProfile(settingsTab.wlan, settingsTab.dns, services); },
      mode, out, err);
}
