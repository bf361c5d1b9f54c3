#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "try/saved_files.h"
#include "try/try_store.h"

namespace {

namespace fs = std::filesystem;

class TryFiles : public ::testing::Test {
 protected:
  void SetUp() override {
    char pattern[] = "/tmp/qv-saved-files.XXXXXX";
    ASSERT_NE(::mkdtemp(pattern), nullptr);
    dir_ = pattern;
  }
  void TearDown() override { fs::remove_all(dir_); }

  std::string path(const std::string& name) const { return dir_ + "/" + name; }

  void write(const std::string& name, const std::string& text, mode_t mode) const {
    std::ofstream(path(name), std::ios::binary) << text;
    ::chmod(path(name).c_str(), mode);
  }

  std::string read(const std::string& name) const {
    std::string text;
    EXPECT_EQ(readWholeFile(path(name), text), 0) << name;
    return text;
  }

  static mode_t modeOf(const std::string& file) {
    struct stat status {};
    ::stat(file.c_str(), &status);
    return status.st_mode & 07777;
  }

  std::string dir_;
};

}  // namespace

TEST_F(TryFiles, AFileComesBackWithItsBytesAndBitsAfterAReplacement) {
  write("wpa.conf", std::string("psk=old\0\n", 9), 0644);
  savedFile saved;
  ASSERT_EQ(captureFile(path("wpa.conf"), saved), 0);
  EXPECT_TRUE(saved.existed);
  EXPECT_EQ(saved.mode, 0644U);
  // What the tool leaves: a secret file tightened to 0600, with new content.
  write("wpa.conf", "psk=new\n", 0600);
  EXPECT_FALSE(isAsSaved(saved));
  ASSERT_EQ(restoreFile(saved), 0);
  EXPECT_EQ(read("wpa.conf"), std::string("psk=old\0\n", 9));
  EXPECT_EQ(modeOf(path("wpa.conf")), 0644U);
  EXPECT_TRUE(isAsSaved(saved));
  // Already as saved: nothing is written again.
  const auto before = fs::last_write_time(path("wpa.conf"));
  ASSERT_EQ(restoreFile(saved), 0);
  EXPECT_EQ(fs::last_write_time(path("wpa.conf")), before);
}

TEST_F(TryFiles, TheOwnerComesBackToo) {
  if (::geteuid() != 0) GTEST_SKIP() << "giving a file to another owner needs root";
  write("interfaces", "old\n", 0644);
  ASSERT_EQ(::chown(path("interfaces").c_str(), 1234, 4321), 0);
  savedFile saved;
  ASSERT_EQ(captureFile(path("interfaces"), saved), 0);
  write("interfaces", "new\n", 0644);
  ASSERT_EQ(::chown(path("interfaces").c_str(), 0, 0), 0);
  ASSERT_EQ(restoreFile(saved), 0);
  struct stat status {};
  ::stat(path("interfaces").c_str(), &status);
  EXPECT_EQ(status.st_uid, 1234U);
  EXPECT_EQ(status.st_gid, 4321U);
  EXPECT_EQ(read("interfaces"), "old\n");
}

TEST_F(TryFiles, AFileThatWasNotThereIsRemoved) {
  savedFile saved;
  ASSERT_EQ(captureFile(path("wired.conf"), saved), 0);
  EXPECT_FALSE(saved.existed);
  write("wired.conf", "new\n", 0600);
  ASSERT_EQ(restoreFile(saved), 0);
  EXPECT_FALSE(fs::exists(path("wired.conf")));
  EXPECT_EQ(restoreFile(saved), 0);
}

// A resolver file managed by another package is a link: what it points to is put back, and the
// link stays.
TEST_F(TryFiles, ALinkIsFollowedAndStaysALink) {
  write("target", "nameserver 10.0.0.1\n", 0644);
  fs::create_symlink("target", path("resolv.conf"));
  savedFile saved;
  ASSERT_EQ(captureFile(path("resolv.conf"), saved), 0);
  EXPECT_EQ(saved.content, "nameserver 10.0.0.1\n");
  write("target", "nameserver 192.168.1.1\n", 0644);
  ASSERT_EQ(restoreFile(saved), 0);
  EXPECT_TRUE(fs::is_symlink(path("resolv.conf")));
  EXPECT_EQ(read("target"), "nameserver 10.0.0.1\n");
}

TEST_F(TryFiles, WhatCannotBeReadWholeIsNotTakenForTheFile) {
  fs::create_directory(path("interfaces"));
  savedFile saved;
  EXPECT_EQ(captureFile(path("interfaces"), saved), EISDIR);
  EXPECT_FALSE(saved.existed);
}

TEST_F(TryFiles, TheStateDirectoryIsRootsAloneAndHoldsOneTryAtATime) {
  TryStore store(path("state"));
  ASSERT_EQ(store.prepare(), 0);
  EXPECT_EQ(modeOf(path("state")), 0700U);
  ::chmod(path("state").c_str(), 0755);
  ASSERT_EQ(store.prepare(), 0);
  EXPECT_EQ(modeOf(path("state")), 0700U);

  EXPECT_FALSE(store.hasPending());
  tryRecord record;
  record.id = "1";
  record.config = "/c.json";
  ASSERT_EQ(store.savePending(record), 0);
  EXPECT_EQ(modeOf(store.pendingPath()), 0600U);
  ASSERT_TRUE(store.pending());
  EXPECT_EQ(store.pending()->config, "/c.json");
  ASSERT_EQ(store.forgetPending(), 0);
  EXPECT_FALSE(store.hasPending());

  ASSERT_EQ(store.lock(false), 0);
  TryStore other(path("state"));
  EXPECT_EQ(other.lock(false), EWOULDBLOCK);
  store.unlock();
  EXPECT_EQ(other.lock(false), 0);
}

// The record holds the previous secrets: a directory that is a link is not used.
TEST_F(TryFiles, AStateDirectoryThatIsALinkIsRefused) {
  fs::create_directory(path("elsewhere"));
  fs::create_directory_symlink(path("elsewhere"), path("state"));
  EXPECT_EQ(TryStore(path("state")).prepare(), EPERM);
}
