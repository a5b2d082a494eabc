// SPDX-License-Identifier: MIT
#include "core/safe_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

#include "child_process.h"
#include "folder_names.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;
using testing::names_in;

// A file holding "old\n" in a fresh folder.
struct OldFile {
  testing::TempDir dir;
  std::string path;
  explicit OldFile(const std::string& name = "export.txt") : path(dir.path(name)) { testing::write_file(path, "old\n"); }
};

TEST(SafeFile, ReplacesTheContentKeepingThePermissionsAndContinuesShortWrites) {
  testing::TempDir dir;
  const std::string path = dir.path("cal.txt");
  testing::write_file(path, "old content that is longer\n");
  ::chmod(path.c_str(), 0640);
  replace_file(path, "new\n");
  EXPECT_EQ(testing::read_file(path), "new\n");
  EXPECT_EQ(fs::status(path).permissions(), fs::perms(0640));
  EXPECT_EQ(names_in(dir.root()), std::vector<std::string>{"cal.txt"});

  // A file that did not exist, taken three bytes a call: short writes are continued.
  replace_file(dir.path("fresh.txt"), "made in parts\n", [](int fd, const void* data, size_t size) {
    return ::write(fd, data, std::min<size_t>(size, 3));
  });
  EXPECT_EQ(testing::read_file(dir.path("fresh.txt")), "made in parts\n");
}

TEST(SafeFile, AReplacementWrittenInPartsTakesTheNameOnlyWhenCommitted) {
  const OldFile old;
  for (const bool commit : {false, true}) {
    ReplacementFile file(old.path);
    EXPECT_EQ(fs::path(file.temporary_path()).parent_path(), fs::path(old.path).parent_path());
    file.write("first part, ");
    EXPECT_EQ(testing::read_file(old.path), "old\n");
    file.write("second part\n");
    if (commit) file.commit();
  }  // the first dropped without commit
  EXPECT_EQ(testing::read_file(old.path), "first part, second part\n");
  EXPECT_EQ(names_in(old.dir.root()), std::vector<std::string>{"export.txt"});
}

TEST(SafeFile, ANameThatCannotBeWrittenIsAClearErrorAndLeavesTheOldFile) {
  testing::TempDir dir;
  fs::create_symlink("b", dir.path("a"));
  fs::create_symlink("a", dir.path("b"));
  fs::create_directory(dir.path("locked"));
  testing::write_file(dir.path("locked/cal.txt"), "old\n");
  fs::permissions(dir.path("locked"), fs::perms(0555));
  const std::tuple<std::string, int, std::string> cases[] = {  // the name, the error number, what it says
      {dir.path("missing/cal.txt"), 76, dir.path("missing/cal.txt")},
      {dir.path("a"), 76, dir.path("a")},  // a loop of links
      {dir.root(), 52, dir.root() + " is a folder"},
      {dir.path("locked/cal.txt"), 70, dir.path("locked/cal.txt")},  // a read-only folder
  };
  for (const auto& [path, number, says] : cases) {
    if (number == 70 && ::geteuid() == 0) continue;  // permissions do not bind the superuser
    const testing::Thrown error = testing::thrown([&] { replace_file(path, "new\n"); });
    EXPECT_EQ(error.number, number) << path << ": " << error.message;
    EXPECT_PRED2(testing::contains, error.message, says);
  }
  fs::permissions(dir.path("locked"), fs::perms(0755));
  EXPECT_EQ(testing::read_file(dir.path("locked/cal.txt")), "old\n");
}

// A disk that takes `room` bytes, then reports itself full.
WriteFunction disk_with_room(size_t room) {
  return [left = std::make_shared<size_t>(room)](int fd, const void* data, size_t size) -> ssize_t {
    if (*left == 0) {
      errno = ENOSPC;
      return -1;
    }
    const ssize_t written = ::write(fd, data, std::min(size, *left));
    if (written > 0) *left -= static_cast<size_t>(written);
    return written;
  };
}

TEST(SafeFile, AFullDiskLeavesTheOldFileAndKeepsTheWholeLinesWrittenBesideIt) {
  const OldFile old;
  const std::string partial = old.dir.path("export.partial.txt");
  const testing::Thrown error =
      testing::thrown([&] { replace_file(old.path, "line 1\r\nline 2\r\nline 3\r\n", disk_with_room(12)); });
  EXPECT_EQ(error.number, 61);
  for (const std::string& part : {"Disk full: " + old.path, std::string("disk full"), "in the folder " + old.dir.root(),
                                  old.path + " is left as it was", "the lines written so far are in " + partial}) {
    EXPECT_PRED2(testing::contains, error.message, part);
  }
  EXPECT_EQ(testing::read_file(old.path), "old\n");
  EXPECT_EQ(testing::read_file(partial), "line 1\r\n");  // "line 2" was cut
  EXPECT_EQ(names_in(old.dir.root()), (std::vector<std::string>{"export.partial.txt", "export.txt"}));
}

TEST(SafeFile, APartialFileIsNamedAfterTheChosenOne) {
  const std::pair<const char*, const char*> cases[] = {{"/a/b/out.txt", "/a/b/out.partial.txt"},
      {"out.tar.gz", "out.tar.partial.gz"}, {"/a/report", "/a/report.partial"}, {"/a/.hidden", "/a/.hidden.partial"}};
  for (const auto& [path, partial] : cases) EXPECT_EQ(partial_path(path), partial);
}

TEST(SafeFile, AFailedWriteKeepsNothingWhenNothingWholeWasWrittenOrTheContentIsBinary) {
  const OldFile old("report.pdf");
  const auto broken = [](int, const void*, size_t) -> ssize_t { errno = EIO; return -1; };
  EXPECT_EQ(testing::thrown([&] { replace_file(old.path, "new content\n", broken); }).number, 57);
  EXPECT_EQ(testing::thrown([&] { replace_file(old.path, "no line break yet", disk_with_room(5)); }).number, 61);
  const auto binary = [&] { replace_file(old.path, "%PDF\nbinary\n", disk_with_room(8), PartialContent::Nothing); };
  EXPECT_EQ(testing::thrown(binary).number, 61);
  EXPECT_EQ(names_in(old.dir.root()), std::vector<std::string>{"report.pdf"});
  EXPECT_EQ(testing::read_file(old.path), "old\n");
}

TEST(SafeFile, ALinkIsFollowedAndStaysALink) {
  testing::TempDir dir;
  fs::create_directory(dir.path("real"));
  testing::write_file(dir.path("real/data.txt"), "old\n");

  fs::create_symlink("real/data.txt", dir.path("link.txt"));
  fs::create_symlink("link.txt", dir.path("link2.txt"));  // a link to a link
  replace_file(dir.path("link2.txt"), "new\n");
  EXPECT_TRUE(fs::is_symlink(dir.path("link.txt")) && fs::is_symlink(dir.path("link2.txt")));
  EXPECT_EQ(testing::read_file(dir.path("real/data.txt")), "new\n");
  EXPECT_EQ(names_in(dir.path("real")), std::vector<std::string>{"data.txt"});

  fs::create_symlink("real/new.txt", dir.path("dangling.txt"));  // a link to a file not yet made
  replace_file(dir.path("dangling.txt"), "made\n");
  EXPECT_TRUE(fs::is_symlink(dir.path("dangling.txt")));
  EXPECT_EQ(testing::read_file(dir.path("real/new.txt")), "made\n");
}

TEST(SafeFile, APipeIsWrittenInPlaceAndInOrder) {
  testing::TempDir dir;
  const std::string pipe = dir.path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  std::string received, sent;
  for (int i = 1; i <= 1000; ++i) sent += "line " + std::to_string(i) + "\n";
  std::thread reader([&] { received = testing::read_file(pipe); });
  {
    ReplacementFile file(pipe);
    EXPECT_TRUE(file.direct() && file.temporary_path().empty());
    for (size_t at = 0; at < sent.size(); at += 7) file.write(sent.substr(at, 7));
    file.commit();
  }
  reader.join();
  EXPECT_EQ(received, sent);
  EXPECT_EQ(fs::status(pipe).type(), fs::file_type::fifo);
  EXPECT_EQ(names_in(dir.root()), std::vector<std::string>{"pipe"});
}

TEST(SafeFile, ADeviceAndStandardOutputAreWrittenInPlace) {
  ReplacementFile null_device("/dev/null");
  EXPECT_TRUE(null_device.direct());
  null_device.write("nothing\n");
  null_device.commit();
  EXPECT_EQ(fs::status("/dev/null").type(), fs::file_type::character);

  testing::TempDir dir;
  const int saved = ::dup(STDOUT_FILENO);
  const int capture = ::open(dir.path("out").c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ::dup2(capture, STDOUT_FILENO);
  {
    ReplacementFile standard_output("-");
    standard_output.write("to standard output\n");
    standard_output.commit();
  }
  ::dup2(saved, STDOUT_FILENO);
  ::close(saved);
  ::close(capture);
  EXPECT_EQ(testing::read_file(dir.path("out")), "to standard output\n");
  EXPECT_FALSE(fs::exists(dir.path("-")));
}

TEST(SafeFile, TemporaryFilesHaveARecognisableNameAndStaleOnesAreRemoved) {
  const OldFile old;
  const auto& [dir, path] = old;
  // A writer killed in the middle of its write leaves its temporary file, and the old file whole.
  const testing::ChildEnd killed = testing::in_child([&] {
    ReplacementFile file(path);
    file.write("the first lines\n");
    ::raise(SIGKILL);
  });
  EXPECT_EQ(killed.signal, SIGKILL);
  EXPECT_EQ(testing::read_file(path), "old\n");
  const std::vector<std::string> left = names_in(dir.root());
  ASSERT_EQ(left.size(), 2u);
  EXPECT_EQ(left[0].rfind(".export.txt.morvane-tmp-", 0), 0u) << left[0];

  // A temporary of a writer still running (this process's parent stands for one) is kept.
  const std::string live = dir.path(".export.txt.morvane-tmp-" + std::to_string(::getppid()) + "-abcdef");
  testing::write_file(live, "being written\n");
  replace_file(path, "new\n");
  EXPECT_EQ(testing::read_file(path), "new\n");
  EXPECT_EQ(names_in(dir.root()), (std::vector<std::string>{fs::path(live).filename().string(), "export.txt"}));
}

TEST(SafeFile, ASignalRemovesTheTemporaryFilesOfTheWritesUnderWay) {
  const OldFile old;
  for (const int signal_number : {SIGINT, SIGTERM, SIGHUP}) {
    const testing::ChildEnd end = testing::in_child([&] {
      ::signal(signal_number, SIG_DFL);  // as from a terminal, whatever the test runner ignores
      remove_temporary_files_on_signals();
      ReplacementFile first(old.path);
      ReplacementFile second(old.dir.path("other.txt"));
      first.write("part\n");
      ::raise(signal_number);
    });
    EXPECT_EQ(end.signal, signal_number);  // the process still ends by the signal
    EXPECT_EQ(names_in(old.dir.root()), std::vector<std::string>{"export.txt"});
    EXPECT_EQ(testing::read_file(old.path), "old\n");
  }
}

TEST(SafeFile, AFileSizeLimitIsADiskFullThatLeavesTheOldFile) {
  const OldFile old("cal.txt");
  std::string content;
  for (int i = 0; i < 20000; ++i) content += "22, 1234.5,  56.25\r\n";
  const testing::ChildEnd end = testing::in_child([&] {
    testing::limit_file_size(64 * 1024);
    replace_file(old.path, content);
  });
  EXPECT_EQ(end.exit_status, 1);
  EXPECT_PRED2(testing::contains, end.error, "Disk full: " + old.path);
  EXPECT_PRED2(testing::contains, end.error, "; Error number 61");
  EXPECT_EQ(testing::read_file(old.path), "old\n");
  const std::string kept = testing::read_file(old.dir.path("cal.partial.txt"));
  ASSERT_GT(kept.size(), 0u);
  EXPECT_LE(kept.size(), 64u * 1024);
  EXPECT_EQ(kept, content.substr(0, kept.size()));
  EXPECT_EQ(kept.back(), '\n');
}

}  // namespace
}  // namespace morvane
