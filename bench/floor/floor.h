/* What the floor programs share. A floor does only what cannot be avoided: it runs the same
 * shell commands as the tool (popen and fgets pieces of the same size, or system), reads and
 * writes the same files, and prints the same reply. */
#ifndef QV_BENCH_FLOOR_H
#define QV_BENCH_FLOOR_H

#include <fcntl.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

/* Receives one fgets piece; returns 0 to stop reading. */
typedef int (*PieceVisitor)(const char* piece, void* context);

static inline void readCommand(const char* command, int bufferSize, PieceVisitor visit,
                               void* context) {
  FILE* pipe = popen(command, "r");
  if (pipe == NULL) return;
  char buffer[256];
  while (fgets(buffer, bufferSize, pipe) != NULL) {
    if (visit != NULL && !visit(buffer, context)) break;
  }
  pclose(pipe);
}

/* Keeps the last piece that contains the needle. */
typedef struct {
  const char* needle;
  char last[256];
} LastMatch;

static inline int keepLastMatch(const char* piece, void* context) {
  LastMatch* match = (LastMatch*)context;
  if (strstr(piece, match->needle) != NULL) snprintf(match->last, sizeof match->last, "%s", piece);
  return 1;
}

/* A durable replacement: a temporary file beside the target, written, synced and renamed over
 * it, then the directory synced. */
static inline void writeFile(const char* path, const char* text, mode_t mode) {
  char temporary[256];
  snprintf(temporary, sizeof temporary, "%s.floor-XXXXXX", path);
  const int fd = mkstemp(temporary);
  if (fd < 0) return;
  fchmod(fd, mode);
  const size_t size = strlen(text);
  if (write(fd, text, size) != (ssize_t)size || fsync(fd) != 0) perror(path);
  close(fd);
  if (rename(temporary, path) != 0) perror(path);
  char directory[256];
  snprintf(directory, sizeof directory, "%s", path);
  *strrchr(directory, '/') = '\0';
  const int dirFd = open(directory, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (dirFd >= 0 && fsync(dirFd) != 0) perror(directory);
  if (dirFd >= 0) close(dirFd);
}

/* The writing runs are serialised: one lock, held to the end. */
static inline void lockWriters(void) {
  const int fd = open("/run/qv-netconf.lock", O_RDWR | O_CREAT | O_CLOEXEC, 0644);
  if (fd >= 0) flock(fd, LOCK_EX);
}

/* The probe behind is-wlan0-connected: the last line naming wlan0 says UP. */
static inline int wlan0Up(void) {
  LastMatch line = {"wlan0", ""};
  readCommand("ip link show wlan0", 100, keepLastMatch, &line);
  return strstr(line.last, " UP ") != NULL;
}

#endif
