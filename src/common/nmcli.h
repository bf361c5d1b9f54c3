#pragma once

#include <string>

// The NetworkManager commands the tool runs, and the one question it asks before changing
// anything. A hung daemon must not hang the tool: the question has a deadline.

// Prints "running" when NetworkManager answers on the system bus.
extern const char* const kNmcliRunning;
// Tells NetworkManager to read the keyfile at `path` again. Its status is 0 even when
// NetworkManager refuses the file; only what it prints tells ("Could not load file ...").
std::string nmcliLoad(const std::string& path);
// Tells NetworkManager to read every keyfile again, noticing removed ones.
extern const char* const kNmcliReload;
// Brings the profile up (waiting for it) or takes it down.
std::string nmcliUp(const std::string& profile);
std::string nmcliDown(const std::string& profile);
// What up and down report on success is not a reply of the tool: run with this, only their
// errors are shown.
extern const char* const kNmcliQuiet;

// Whether NetworkManager answers within the deadline.
bool networkManagerAnswers();

// Whether NetworkManager has the profile active now.
bool profileActive(const std::string& profile);

// Has NetworkManager load the keyfile at `path`: empty when it took it, else what nmcli said
// (its first line).
std::string loadProfile(const std::string& path);
