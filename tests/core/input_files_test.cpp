// SPDX-License-Identifier: MIT
// Inputs must be what they claim: a telemetry, configuration or limit path that is not a regular
// file is refused at once (never read, never waited on), and a configuration file larger than
// any real one is refused by its size.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>

#include "child_process.h"
#include "core/configuration.h"
#include "core/file_bytes.h"
#include "core/input_file.h"
#include "core/free_format_reader.h"
#include "core/session.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

// Every reader of a named file: the telemetry load, the configuration tables, the file length.
struct Reader {
  const char* name;
  std::function<void(const std::string&)> read;
};
const Reader kReaders[] = {
    {"telemetry", [](const std::string& path) { Session session; load_telemetry(session, path, FileFormat::CSS); }},
    {"sensor table", [](const std::string& path) { read_sensor_table(path); }},
    {"free-format text", [](const std::string& path) { FreeFormatReader reader(path); }},
    {"file length", [](const std::string& path) { file_length(path); }},
};

TEST(InputFiles, APipeADeviceASocketOrAFolderIsRefusedWithoutWaiting) {
  testing::TempDir dir;
  const std::string pipe = dir.path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);  // no writer: an ordinary open would wait for ever
  const std::string socket_path = dir.path("socket");
  const int socket_fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  std::snprintf(address.sun_path, sizeof address.sun_path, "%s", socket_path.c_str());
  ASSERT_EQ(::bind(socket_fd, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);

  const struct {
    std::string path;
    int number;
    std::string says;
  } kInputs[] = {
      {pipe, 52, " is a named pipe, not a regular file"},
      {"/dev/zero", 52, " is a character device, not a regular file"},
      {socket_path, 52, " is a socket, not a regular file"},
      {dir.root(), 52, " is a folder, not a file"},
  };
  for (const Reader& reader : kReaders) {
    for (const auto& input : kInputs) {
      const testing::Thrown error = testing::thrown([&] { reader.read(input.path); });
      EXPECT_EQ(error.number, input.number) << reader.name << " of " << input.path << ": " << error.message;
      EXPECT_PRED2(testing::contains, error.message, input.path + input.says) << reader.name;
    }
  }
  ::close(socket_fd);
}

TEST(InputFiles, AConfigurationFileOverSixteenMebibytesIsRefusedWithItsSizeAndTheLimit) {
  testing::TempDir dir;
  const std::string path = dir.path("Sensors.txt");
  testing::write_file(path, "");
  fs::resize_file(path, kLargestTextFile + 1);  // sparse: no disk is used
  const testing::Thrown error = testing::thrown([&] { read_sensor_table(path); });
  EXPECT_EQ(error.number, 52);
  EXPECT_PRED2(testing::contains, error.message, path + " is 16777217 bytes, more than the 16777216 bytes");
  fs::resize_file(path, kLargestTextFile);  // at the limit it is read (and its zeros are no count)
  EXPECT_EQ(testing::thrown([&] { read_sensor_table(path); }).number, 13);
}

TEST(InputFiles, AFileThatCannotBeReadIsPermissionDenied) {
  testing::TempDir dir;
  const std::string path = dir.path("locked.txt");
  testing::write_file(path, "1\n");
  ::chmod(path.c_str(), 0);
  for (const Reader& reader : kReaders) {
    if (std::string(reader.name) == "file length") continue;  // a length needs no reading
    // The superuser reads anything: the reader runs as an ordinary user.
    const testing::ChildEnd end = testing::in_child([&] {
      if (!testing::become_unprivileged()) ::_exit(3);
      reader.read(path);
    });
    if (end.exit_status == 3) GTEST_SKIP() << "cannot give up the superuser's rights here";
    EXPECT_EQ(end.exit_status, 1) << reader.name;
    EXPECT_EQ(end.error.rfind("Permission denied: " + path, 0), 0u) << reader.name << ": " << end.error;
    EXPECT_PRED2(testing::contains, end.error, "; Error number 70") << reader.name;
  }
}

TEST(InputFiles, ALoopOfLinksIsARunTimeErrorNamingThePath) {
  testing::TempDir dir;
  fs::create_symlink("b", dir.path("a"));
  fs::create_symlink("a", dir.path("b"));
  for (const Reader& reader : kReaders) {
    const testing::Thrown error = testing::thrown([&] { reader.read(dir.path("a")); });
    EXPECT_EQ(error.number, 76) << reader.name << ": " << error.message;
    EXPECT_PRED2(testing::contains, error.message, dir.path("a")) << reader.name;
  }
}

}  // namespace
}  // namespace morvane
