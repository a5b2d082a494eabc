// SPDX-License-Identifier: MIT
#include "core/safe_file.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include "core/error.h"
#include "test_files.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

int error_number_of(const std::function<void()>& action) {
  try {
    action();
  } catch (const RuntimeError& error) {
    return error.number();
  }
  return 0;
}

TEST(SafeFile, ReplacesTheContentAndKeepsThePermissions) {
  testing::TempDir dir;
  const std::string path = dir.path("cal.txt");
  testing::write_file(path, "old content that is longer\n");
  ::chmod(path.c_str(), 0640);
  replace_file(path, "new\n");
  EXPECT_EQ(testing::read_file(path), "new\n");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.root()), fs::directory_iterator()), 1);

  replace_file(dir.path("fresh.txt"), "made\n");  // a file that did not exist
  EXPECT_EQ(testing::read_file(dir.path("fresh.txt")), "made\n");
}

TEST(SafeFile, ShortWritesAreContinued) {
  testing::TempDir dir;
  const std::string path = dir.path("cal.txt");
  replace_file(path, "0123456789", [](int fd, const void* data, size_t size) {
    return ::write(fd, data, std::min<size_t>(size, 3));
  });
  EXPECT_EQ(testing::read_file(path), "0123456789");
}

TEST(SafeFile, AFailedWriteLeavesTheOldFileAndNoOther) {
  testing::TempDir dir;
  const std::string path = dir.path("cal.txt");
  testing::write_file(path, "old\n");
  const int number = error_number_of([&] {
    replace_file(path, "new content\n", [](int, const void*, size_t) -> ssize_t {
      errno = EIO;
      return -1;
    });
  });
  EXPECT_EQ(number, 57);
  EXPECT_EQ(testing::read_file(path), "old\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.root()), fs::directory_iterator()), 1);
}

TEST(SafeFile, AReplacementWrittenInPartsTakesTheNameOnlyWhenCommitted) {
  testing::TempDir dir;
  const std::string path = dir.path("export.txt");
  testing::write_file(path, "old\n");
  {
    Replacement_File file(path);
    EXPECT_EQ(fs::path(file.temporary_path()).parent_path(), fs::path(path).parent_path());
    file.write("first part, ");
    EXPECT_EQ(testing::read_file(path), "old\n");
  }  // dropped without commit
  EXPECT_EQ(testing::read_file(path), "old\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.root()), fs::directory_iterator()), 1);

  Replacement_File file(path);
  file.write("first part, ");
  file.write("second part\n");
  file.commit();
  EXPECT_EQ(testing::read_file(path), "first part, second part\n");
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.root()), fs::directory_iterator()), 1);
}

TEST(SafeFile, AMissingFolderIsAClearError) {
  testing::TempDir dir;
  EXPECT_EQ(error_number_of([&] { replace_file(dir.path("missing/cal.txt"), "x"); }), 76);
}

TEST(SafeFile, AReadOnlyFolderIsAClearError) {
  testing::TempDir dir;
  if (::geteuid() == 0) GTEST_SKIP() << "permissions do not bind the superuser";
  fs::create_directory(dir.path("locked"));
  testing::write_file(dir.path("locked/cal.txt"), "old\n");
  fs::permissions(dir.path("locked"), fs::perms(0555));
  EXPECT_EQ(error_number_of([&] { replace_file(dir.path("locked/cal.txt"), "new\n"); }), 70);
  fs::permissions(dir.path("locked"), fs::perms(0755));
  EXPECT_EQ(testing::read_file(dir.path("locked/cal.txt")), "old\n");
}

}  // namespace
}  // namespace morvane
