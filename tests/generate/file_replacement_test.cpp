#include "generate/file_replacement.h"

#include <gtest/gtest.h>

// The sandboxed cases run under one umask and see new files and loose secret files; these are the
// combinations they cannot reach.
TEST(FileReplacement, ModeOfTheNewFile) {
  const struct {
    bool exists;
    mode_t existing;
    FileAccess access;
    mode_t umask;
    mode_t expected;
  } cases[] = {
      {false, 0, FileAccess::everyone, 027, 0640},      // a new file honours the umask
      {false, 0, FileAccess::ownerOnly, 077, 0600},     // a secret one never gains bits from it
      {true, 0400, FileAccess::ownerOnly, 022, 0400},   // tighter than 0600: kept
      {true, 04755, FileAccess::everyone, 077, 04755},  // an existing file keeps all its bits
      {true, 0604, FileAccess::ownerOnly, 0, 0600},     // readable by others: tightened
  };
  for (const auto& c : cases) {
    EXPECT_EQ(replacementMode(c.exists, c.existing, c.access, c.umask), c.expected)
        << std::oct << c.existing << " umask " << c.umask;
  }
}
