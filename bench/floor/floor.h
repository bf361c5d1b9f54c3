/* What the floor programs share. A floor does only what cannot be avoided: it runs the same
 * shell commands as the tool (popen and fgets pieces of the same size, or system), reads and
 * writes the same files, and prints the same reply. */
#ifndef QV_BENCH_FLOOR_H
#define QV_BENCH_FLOOR_H

#include <fcntl.h>
#include <stdio.h>
#include <string.h>
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

static inline void writeFile(const char* path, const char* text, mode_t mode) {
  const int fd = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, mode);
  if (fd < 0) return;
  /* Keys and hashes: nobody else may read the file, even if an older copy was readable. */
  if (mode == 0600) fchmod(fd, mode);
  const size_t size = strlen(text);
  if (write(fd, text, size) != (ssize_t)size) perror(path);
  close(fd);
}

/* The probe behind is-wlan0-connected: the last line naming wlan0 says UP. */
static inline int wlan0Up(void) {
  LastMatch line = {"wlan0", ""};
  readCommand("ip link show wlan0", 100, keepLastMatch, &line);
  return strstr(line.last, " UP ") != NULL;
}

#endif
