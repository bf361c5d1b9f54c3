#include "generate/output_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/temp_dir.h"

namespace {

mode_t modeOf(const std::string& path) {
  struct stat status;
  EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
  return status.st_mode & 07777;
}

}  // namespace

TEST(OutputFile, ExistingFilesAreTruncatedAndOnlySecretOnesTightened) {
  TempDir dir;
  const std::tuple<FileAccess, mode_t, mode_t> cases[] = {
      {FileAccess::ownerOnly, 0700, 0600},
      {FileAccess::ownerOnly, 0400, 0400},
      {FileAccess::everyone, 0755, 0755},
      {FileAccess::everyone, 0600, 0600},
  };
  for (const auto& [access, before, after] : cases) {
    const std::string path = dir.write("file", "old content, longer than the new one\n");
    chmod(path.c_str(), before);
    {
      OutputFile file(path, access);
      ASSERT_TRUE(file.isOpen());
      EXPECT_EQ(modeOf(path), after) << std::oct << before;
      file.write("new\n");
    }
    EXPECT_EQ(dir.read("file"), "new\n");
  }
}
