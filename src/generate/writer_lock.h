#pragma once

// Waits until no other run is writing the network files, then keeps them to this run until it
// ends, so that the five files always come from one config.json. Where the lock cannot be had
// (no writable /run) the run goes on without it.
void lockNetworkFiles();

// The same lock, held while the object lives: a companion that goes on after writing must not
// keep the tool's writers waiting.
class NetworkFilesLock {
 public:
  NetworkFilesLock();
  ~NetworkFilesLock();
  NetworkFilesLock(const NetworkFilesLock&) = delete;
  NetworkFilesLock& operator=(const NetworkFilesLock&) = delete;

 private:
  int fd_;
};
