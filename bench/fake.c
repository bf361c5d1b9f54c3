/* An instant stand-in for a platform utility, so that the benchmark times the tool and not
 * the fakes: statically linked, it writes the canned answer $QV_BENCH_CANNED/<name>_<args>
 * (arguments joined by '_'; "<name>" alone when there are none), else <name>_any, else nothing,
 * and exits 0. Installed as "sudo", it runs its arguments instead. */
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

static const char* baseName(const char* path) {
  const char* slash = strrchr(path, '/');
  return slash != NULL ? slash + 1 : path;
}

static FILE* openAnswer(const char* dir, const char* name, int argc, char** argv) {
  char path[4096];
  int length = snprintf(path, sizeof path, "%s/%s", dir, name);
  for (int i = 1; i < argc && length > 0 && (size_t)length < sizeof path; ++i) {
    length += snprintf(path + length, sizeof path - (size_t)length, "_%s", argv[i]);
  }
  FILE* answer = length > 0 && (size_t)length < sizeof path ? fopen(path, "r") : NULL;
  if (answer == NULL) {
    snprintf(path, sizeof path, "%s/%s_any", dir, name);
    answer = fopen(path, "r");
  }
  return answer;
}

int main(int argc, char** argv) {
  const char* name = baseName(argv[0]);
  if (strcmp(name, "sudo") == 0) {
    if (argc < 2) return 1;
    execvp(argv[1], argv + 1);
    return 127;
  }
  const char* dir = getenv("QV_BENCH_CANNED");
  FILE* answer = dir != NULL ? openAnswer(dir, name, argc, argv) : NULL;
  if (answer == NULL) return 0;
  char buffer[65536];
  size_t count;
  while ((count = fread(buffer, 1, sizeof buffer, answer)) > 0) fwrite(buffer, 1, count, stdout);
  fclose(answer);
  return 0;
}
