/* Times the tool against the floor programs.
 *
 *   qv-bench-runner [--rounds N] [--warmup N] [--emulator "PROGRAM ARG..."] [--compare PATH]...
 *                   TOOL FLOOR_DIR "COMMAND ARG..."...
 *
 * For each command line, FLOOR_DIR/COMMAND is the floor: a minimal C program that runs the same
 * shell commands and prints the same reply. Both are first run once from the same starting state
 * (every --compare file restored) and must agree on their output, status and --compare files
 * (contents and modes). Then they are run alternately, ROUNDS times each after WARMUP discarded
 * rounds, with stdout drained through a pipe as the management application reads it. The wall
 * time of a run is from spawn to reaped; its run peak RSS is wait4's (the largest of the process
 * and the children it waited for, so the shell's when that is larger). The process's own peak RSS
 * (VmHWM as it exits, read at a ptrace exit stop) is the median of a few more runs. Prints a
 * Markdown table of medians and ratios; exits 1 when a pair disagrees, 3 when a target is
 * missed. */
#define _GNU_SOURCE
#include <errno.h>
#include <fcntl.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

extern char** environ;

enum { kMaxWords = 32, kMaxFiles = 16, kOwnRssRuns = 7 };
static const double kWallTarget = 1.10;
static const long kRssTargetKib = 1024;

typedef struct {
  char* bytes;
  size_t size;
} Buffer;

typedef struct {
  int present;
  mode_t mode;
  Buffer content;
} FileState;

typedef struct {
  double wallMs;
  long peakRssKib;
  int status;
  Buffer out;
} Run;

static char* emulator[kMaxWords];
static int emulatorWords;
static const char* comparePaths[kMaxFiles];
static int compareCount;
static FileState startState[kMaxFiles];

static void die(const char* what) {
  perror(what);
  exit(2);
}

static void append(Buffer* buffer, const char* bytes, size_t count) {
  buffer->bytes = realloc(buffer->bytes, buffer->size + count + 1);
  if (buffer->bytes == NULL) die("realloc");
  memcpy(buffer->bytes + buffer->size, bytes, count);
  buffer->size += count;
  buffer->bytes[buffer->size] = '\0';
}

static int splitWords(char* text, char** words, int room) {
  int count = 0;
  for (char* word = strtok(text, " "); word != NULL && count < room - 1; word = strtok(NULL, " ")) {
    words[count++] = word;
  }
  words[count] = NULL;
  return count;
}

static double nowMs(void) {
  struct timespec now;
  clock_gettime(CLOCK_MONOTONIC, &now);
  return (double)now.tv_sec * 1e3 + (double)now.tv_nsec / 1e6;
}

/* The program's argv: under the emulator, if any. */
static void commandLine(const char* program, char** args, char** argv) {
  int argc = 0;
  for (int i = 0; i < emulatorWords; ++i) argv[argc++] = emulator[i];
  argv[argc++] = (char*)program;
  for (int i = 0; args[i] != NULL; ++i) argv[argc++] = args[i];
  argv[argc] = NULL;
}

/* Runs program with args (under the emulator, if any); keeps stdout when `keep`. */
static Run runOnce(const char* program, char** args, int keep) {
  char* argv[2 * kMaxWords + 1];
  commandLine(program, args, argv);

  Run run = {0};
  int pipeEnds[2];
  const double start = nowMs();
  if (pipe2(pipeEnds, O_CLOEXEC) != 0) die("pipe2");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, pipeEnds[1], STDOUT_FILENO);
  pid_t pid;
  const int spawned = posix_spawnp(&pid, argv[0], &actions, NULL, argv, environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) {
    errno = spawned;
    die(argv[0]);
  }
  close(pipeEnds[1]);
  char chunk[65536];
  ssize_t count;
  while ((count = read(pipeEnds[0], chunk, sizeof chunk)) != 0) {
    if (count < 0) {
      if (errno == EINTR) continue;
      die("read");
    }
    if (keep) append(&run.out, chunk, (size_t)count);
  }
  close(pipeEnds[0]);
  struct rusage usage;
  int status;
  while (wait4(pid, &status, 0, &usage) < 0) {
    if (errno != EINTR) die("wait4");
  }
  run.wallMs = nowMs() - start;
  run.peakRssKib = usage.ru_maxrss;
  run.status = status;
  return run;
}

static double median(double* values, int count);

static long highWaterKib(pid_t pid) {
  char path[64], line[256];
  snprintf(path, sizeof path, "/proc/%d/status", (int)pid);
  FILE* status = fopen(path, "r");
  if (status == NULL) die(path);
  long kib = -1;
  while (fgets(line, sizeof line, status) != NULL) {
    if (sscanf(line, "VmHWM: %ld kB", &kib) == 1) break;
  }
  fclose(status);
  return kib;
}

/* The process's own peak RSS: stopped as it exits (its children are not traced). */
static long ownPeakRss(const char* program, char** args) {
  char* argv[2 * kMaxWords + 1];
  commandLine(program, args, argv);
  const pid_t pid = fork();
  if (pid < 0) die("fork");
  if (pid == 0) {
    const int null = open("/dev/null", O_WRONLY);
    if (null < 0 || dup2(null, STDOUT_FILENO) < 0) _exit(127);
    ptrace(PTRACE_TRACEME, 0, NULL, NULL);
    execvp(argv[0], argv);
    _exit(127);
  }
  long kib = -1;
  int status;
  waitpid(pid, &status, 0); /* stopped at exec */
  ptrace(PTRACE_SETOPTIONS, pid, NULL, (void*)(long)PTRACE_O_TRACEEXIT);
  ptrace(PTRACE_CONT, pid, NULL, NULL);
  while (waitpid(pid, &status, 0) == pid && WIFSTOPPED(status)) {
    int signal = WSTOPSIG(status);
    if (status >> 8 == (SIGTRAP | (PTRACE_EVENT_EXIT << 8))) {
      kib = highWaterKib(pid);
      signal = 0;
    }
    ptrace(PTRACE_CONT, pid, NULL, (void*)(long)signal);
  }
  return kib;
}

static double medianOwnPeakRss(const char* program, char** args) {
  double runs[kOwnRssRuns];
  for (int i = 0; i < kOwnRssRuns; ++i) runs[i] = (double)ownPeakRss(program, args);
  return median(runs, kOwnRssRuns);
}

static FileState readState(const char* path) {
  FileState state = {0};
  struct stat status;
  if (stat(path, &status) != 0) return state;
  state.present = 1;
  state.mode = status.st_mode & 07777;
  FILE* file = fopen(path, "rb");
  if (file == NULL) die(path);
  char chunk[65536];
  size_t count;
  while ((count = fread(chunk, 1, sizeof chunk, file)) > 0) append(&state.content, chunk, count);
  fclose(file);
  return state;
}

static void restoreState(const char* path, const FileState* state) {
  if (!state->present) {
    if (unlink(path) != 0 && errno != ENOENT) die(path);
    return;
  }
  FILE* file = fopen(path, "wb");
  if (file == NULL) die(path);
  if (state->content.size > 0) fwrite(state->content.bytes, 1, state->content.size, file);
  fclose(file);
  chmod(path, state->mode);
}

static int sameState(const FileState* a, const FileState* b) {
  return a->present == b->present && a->mode == b->mode && a->content.size == b->content.size &&
         (a->content.size == 0 || memcmp(a->content.bytes, b->content.bytes, a->content.size) == 0);
}

/* One checked run from the starting state; the --compare files it leaves go to `after`. */
static Run checkedRun(const char* program, char** args, FileState* after) {
  for (int i = 0; i < compareCount; ++i) restoreState(comparePaths[i], &startState[i]);
  Run run = runOnce(program, args, 1);
  for (int i = 0; i < compareCount; ++i) after[i] = readState(comparePaths[i]);
  return run;
}

static int agree(const char* line, const Run* tool, const Run* floor, const FileState* toolFiles,
                 const FileState* floorFiles) {
  int same = 1;
  if (tool->status != floor->status) {
    fprintf(stderr, "%s: status %d from the tool, %d from the floor\n", line, tool->status,
            floor->status);
    same = 0;
  }
  if (tool->out.size != floor->out.size ||
      (tool->out.size > 0 && memcmp(tool->out.bytes, floor->out.bytes, tool->out.size) != 0)) {
    fprintf(stderr, "%s: the outputs differ\n--- tool\n%s\n--- floor\n%s\n", line,
            tool->out.bytes ? tool->out.bytes : "", floor->out.bytes ? floor->out.bytes : "");
    same = 0;
  }
  for (int i = 0; i < compareCount; ++i) {
    if (!sameState(&toolFiles[i], &floorFiles[i])) {
      fprintf(stderr, "%s: %s differs between the tool and the floor\n", line, comparePaths[i]);
      same = 0;
    }
  }
  return same;
}

static int compareDoubles(const void* a, const void* b) {
  const double x = *(const double*)a, y = *(const double*)b;
  return (x > y) - (x < y);
}

static double median(double* values, int count) {
  qsort(values, (size_t)count, sizeof *values, compareDoubles);
  return count % 2 ? values[count / 2] : (values[count / 2 - 1] + values[count / 2]) / 2;
}

int main(int argc, char** argv) {
  int rounds = 200, warmup = 10, arg = 1;
  for (; arg < argc && strncmp(argv[arg], "--", 2) == 0; arg += 2) {
    if (arg + 1 >= argc) break;
    if (strcmp(argv[arg], "--rounds") == 0) {
      rounds = atoi(argv[arg + 1]);
    } else if (strcmp(argv[arg], "--warmup") == 0) {
      warmup = atoi(argv[arg + 1]);
    } else if (strcmp(argv[arg], "--emulator") == 0) {
      emulatorWords = splitWords(strdup(argv[arg + 1]), emulator, kMaxWords);
    } else if (strcmp(argv[arg], "--compare") == 0 && compareCount < kMaxFiles) {
      comparePaths[compareCount++] = argv[arg + 1];
    } else {
      break;
    }
  }
  if (argc - arg < 3 || rounds < 1) {
    fprintf(stderr,
            "usage: qv-bench-runner [--rounds N] [--warmup N] [--emulator \"PROGRAM "
            "ARG...\"] [--compare PATH]... TOOL FLOOR_DIR \"COMMAND ARG...\"...\n");
    return 2;
  }
  const char* tool = argv[arg];
  const char* floorDir = argv[arg + 1];
  for (int i = 0; i < compareCount; ++i) startState[i] = readState(comparePaths[i]);

  printf(
      "| command | tool ms | floor ms | wall ratio | tool own peak RSS KiB | floor own peak RSS "
      "KiB | own RSS over floor KiB | run peak RSS KiB, tool / floor | targets |\n"
      "|---|---:|---:|---:|---:|---:|---:|---:|---|\n");
  int disagreements = 0, missed = 0;
  double* toolMs = calloc((size_t)rounds, sizeof(double));
  double* floorMs = calloc((size_t)rounds, sizeof(double));
  double* toolRss = calloc((size_t)rounds, sizeof(double));
  double* floorRss = calloc((size_t)rounds, sizeof(double));
  if (!toolMs || !floorMs || !toolRss || !floorRss) die("calloc");
  for (int scenario = arg + 2; scenario < argc; ++scenario) {
    char* args[kMaxWords + 1];
    const char* line = argv[scenario];
    splitWords(strdup(line), args, kMaxWords);
    char floor[4096];
    snprintf(floor, sizeof floor, "%s/%s", floorDir, args[0]);

    FileState toolFiles[kMaxFiles], floorFiles[kMaxFiles];
    Run toolRun = checkedRun(tool, args, toolFiles);
    Run floorRun = checkedRun(floor, args, floorFiles);
    if (!agree(line, &toolRun, &floorRun, toolFiles, floorFiles)) {
      ++disagreements;
      continue;
    }
    for (int round = -warmup; round < rounds; ++round) {
      const int toolFirst = (round & 1) == 0;
      Run first = runOnce(toolFirst ? tool : floor, args, 0);
      Run second = runOnce(toolFirst ? floor : tool, args, 0);
      if (round < 0) continue;
      const Run *t = toolFirst ? &first : &second, *f = toolFirst ? &second : &first;
      toolMs[round] = t->wallMs;
      floorMs[round] = f->wallMs;
      toolRss[round] = (double)t->peakRssKib;
      floorRss[round] = (double)f->peakRssKib;
    }
    const double toolWall = median(toolMs, rounds), floorWall = median(floorMs, rounds);
    const double toolPeak = median(toolRss, rounds), floorPeak = median(floorRss, rounds);
    const double toolOwn = medianOwnPeakRss(tool, args), floorOwn = medianOwnPeakRss(floor, args);
    const double ratio = toolWall / floorWall;
    const int met = ratio <= kWallTarget && toolOwn - floorOwn <= (double)kRssTargetKib &&
                    toolPeak - floorPeak <= (double)kRssTargetKib;
    /* Under an emulator the RSS is the emulator's and the times are mostly translation: the
     * targets are for the board itself. */
    const char* verdict = emulatorWords > 0 ? "n/a (emulated)" : met ? "met" : "**missed**";
    missed += emulatorWords == 0 && !met;
    printf("| `%s` | %.3f | %.3f | %.3f | %.0f | %.0f | %+.0f | %.0f / %.0f | %s |\n", line,
           toolWall, floorWall, ratio, toolOwn, floorOwn, toolOwn - floorOwn, toolPeak, floorPeak,
           verdict);
    fflush(stdout);
  }
  printf(
      "\n%d rounds per command after %d warm-up rounds; targets: wall ratio <= %.2f, peak RSS "
      "<= floor + %ld KiB (own and run).\n",
      rounds, warmup, kWallTarget, kRssTargetKib);
  if (disagreements > 0) return 1;
  return missed > 0 ? 3 : 0;
}
