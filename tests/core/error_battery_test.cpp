// SPDX-License-Identifier: MIT
// The battery of bad inputs: each failure is one run-time error whose message has the classic
// number and description and names what failed (the file, and where there is one the line,
// record and item). A path that is no regular file is refused at once (never read, never waited
// on), a configuration file larger than any real one by its size. Failing disks are the safe
// file test's.
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <filesystem>
#include <functional>

#include "child_process.h"
#include "core/configuration.h"
#include "core/conversion.h"
#include "core/file_bytes.h"
#include "core/free_format_reader.h"
#include "core/input_file.h"
#include "core/session.h"
#include "core/windows_path.h"
#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

namespace fs = std::filesystem;

class ErrorBattery : public ::testing::Test {
 protected:
  void SetUp() override { base = sim::write_configuration(dir.path("base")); }
  std::string config_file(const char* relative) const { return config_path(base, relative); }
  // Writes a ZEB file of one record of `label` whose item holds text, and returns its path.
  std::string zeb_with_item(LabelCode label, int item, const std::string& text) const {
    std::string file = testing::zeb_text({testing::zeb_record(label, {{item, 424242}})});
    file.replace(file.find("424242"), 6, text);
    testing::write_file(dir.path("bad.zeb"), file);
    return dir.path("bad.zeb");
  }
  void load_zeb(LabelCode label, int item, const std::string& text) const {
    Session session;
    load_telemetry(session, zeb_with_item(label, item, text), FileFormat::ZEB);
  }

  testing::TempDir dir;
  std::string base;
};

TEST_F(ErrorBattery, EveryFailureNamesWhatFailed) {
  const std::string zeb = dir.path("bad.zeb"), ntype = config_file(kNTypeFile), sensors = config_file(kSensorsFile);
  // Each row: what fails, its number and description, what the message must name, and how to make
  // it fail on a fresh configuration.
  const std::tuple<const char*, int, const char*, std::vector<std::string>, std::function<void()>> rows[] = {
      {"a ZEB item beyond 32 bits", 6, "Overflow", {zeb, "record 1", "item 20", "99999999999"},
       [&] { load_zeb(LabelCode::Complete, 20, "99999999999"); }},
      {"a ZEB packet item beyond 16 bits", 6, "Overflow", {zeb, "record 1", "item 10", "70000"},
       [&] {
         Session session;
         load_telemetry(session, zeb_with_item(LabelCode::Complete, 10, "70000"), FileFormat::ZEB);
         session.telemetry().zeb().packet_byte(1, 2);
       }},
      {"ZEB segmentation flags beyond 16 bits", 6, "Overflow", {zeb, "record 1", "item 6", "40000"},
       [&] { load_zeb(LabelCode::ScienceUnknown, 6, "40000"); }},
      {"an N-type table with a repeated x", 11, "Division by zero", {ntype, "lines 2 and 3", "same x"},
       [&] {
         testing::write_file(ntype, "0, 0\r\n1, 10\r\n1, 20\r\n2, 30\r\n");
         load_configuration(base);
       }},
      {"a pressure sensor whose two readings are equal", 11, "Division by zero",
       {config_file(kPressureFile), "line 3", "pressure sensor 2"},
       [&] {
         Configuration config = load_configuration(base);
         config.Pressure_Table[1].C2 = config.Pressure_Table[1].C1;
         double voltage = 1, value = 0;
         std::string unit;
         Convert_Sensor(config, 23, voltage, value, unit);
       }},
      {"a sensor table item that is no number", 13, "Type mismatch",
       {sensors + " line 3", "byte offset", "\"twelve\""},
       [&] {
         testing::write_file(sensors, "2\r\nHeater, 12, 1, 0, V\r\nValve, twelve, 1, 0, V\r\n");
         load_configuration(base);
       }},
  };
  for (const auto& [failure, number, description, names, fail] : rows) {
    fs::remove_all(dir.path("base"));
    SetUp();
    const testing::Thrown error = testing::thrown(fail);
    EXPECT_EQ(error.number, number) << failure << ": " << error.message;
    EXPECT_EQ(error.message.rfind(std::string(description) + ": ", 0), 0u) << failure << ": " << error.message;
    EXPECT_PRED2(testing::contains, error.message, "; Error number " + std::to_string(number)) << failure;
    for (const std::string& name : names) EXPECT_PRED2(testing::contains, error.message, name) << failure;
  }
}


// Every reader of a named file: the telemetry load, the configuration tables, the file length.
const std::pair<const char*, std::function<void(const std::string&)>> kReaders[] = {
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

  const std::pair<std::string, const char*> kInputs[] = {
      {pipe, " is a named pipe, not a regular file"},
      {"/dev/zero", " is a character device, not a regular file"},
      {socket_path, " is a socket, not a regular file"},
      {dir.root(), " is a folder, not a file"},
  };
  for (const auto& [reader, read_path] : kReaders) {
    for (const auto& [path, says] : kInputs) {
      const testing::Thrown error = testing::thrown([&] { read_path(path); });
      EXPECT_EQ(error.number, 52) << reader << " of " << path << ": " << error.message;
      EXPECT_PRED2(testing::contains, error.message, path + says) << reader;
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
  for (const auto& [reader, read_path] : kReaders) {
    if (std::string(reader) == "file length") continue;  // a length needs no reading
    // The superuser reads anything: the reader runs as an ordinary user.
    const testing::ChildEnd end = testing::in_child([&] {
      if (!testing::become_unprivileged()) ::_exit(3);
      read_path(path);
    });
    if (end.exit_status == 3) GTEST_SKIP() << "cannot give up the superuser's rights here";
    EXPECT_EQ(end.exit_status, 1) << reader;
    EXPECT_EQ(end.error.rfind("Permission denied: " + path, 0), 0u) << reader << ": " << end.error;
    EXPECT_PRED2(testing::contains, end.error, "; Error number 70") << reader;
  }
}

TEST(InputFiles, ALoopOfLinksIsARunTimeErrorNamingThePath) {
  testing::TempDir dir;
  fs::create_symlink("b", dir.path("a"));
  fs::create_symlink("a", dir.path("b"));
  for (const auto& [reader, read_path] : kReaders) {
    const testing::Thrown error = testing::thrown([&] { read_path(dir.path("a")); });
    EXPECT_EQ(error.number, 76) << reader << ": " << error.message;
    EXPECT_PRED2(testing::contains, error.message, dir.path("a")) << reader;
  }
}

}  // namespace
}  // namespace morvane
