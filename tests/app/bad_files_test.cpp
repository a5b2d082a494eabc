// SPDX-License-Identifier: MIT
// Whatever file an engineer opens, the load path and every window cope: a message at worst,
// never a crash, and the program carries on.
#include <filesystem>
#include <random>

#include "app_fixture.h"
#include "child_view.h"
#include "view_kind.h"

namespace morvane::testing {
namespace {

class BadFiles : public AppTest {
 protected:
  // Loads the file, then opens every window that exists and lets it draw.
  void load_and_open_everything(FileFormat format, const std::string& name) {
    ASSERT_TRUE(window->loadFile(format, QString::fromStdString(dir.path(name))) || !dialogs.messages.empty());
    for (ViewKind kind : kAllViewKinds) {
      if (!window->isRegistered(kind)) continue;
      window->guarded([&] { window->showView(kind); });
      QApplication::processEvents();
    }
    window->Reload_Open_Views();
    QApplication::processEvents();
    EXPECT_TRUE(window->isVisible());
  }
};

TEST_F(BadFiles, ATruncatedFrameLoadsAndShows) {
  FrameWriter writer = three_frames();
  writer.bytes().resize(282 * 2 + 30);  // the third frame cut inside its first packet
  write_bytes(dir.path("cut.qm"), writer.bytes());
  load_and_open_everything(FileFormat::QM, "cut.qm");
  EXPECT_EQ(window->session().Packet_Count, 3);
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);
}

TEST_F(BadFiles, LengthsThatRunPastTheFileLoadAndShow) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F34, 1, 0xFFFF, 0, 5, {{16, 2}}, {}}});
  writer.add_frame({Packet{0x0F3C, 0xC001, 0xFFF0, 0, 6, {{16, 3}, {30, 0xFFFF}}, {}}});
  writer.add_frame({Packet{0x0F37, 2, 0xFFFE, 0, 7, {{14, 0x0100}}, {}}});
  writer.add_frame({Packet{0x0F39, 3, 0xFFFD, 0, 8, {{16, 0x98FF}}, {}}});
  write_bytes(dir.path("long.css"), writer.bytes());
  load_and_open_everything(FileFormat::CSS, "long.css");
  EXPECT_EQ(window->session().catalogue.HK_List[1].Packet_Length, 0xFFFF + 7);
}

TEST_F(BadFiles, GarbageInEveryFormatLoadsOrIsReported) {
  std::mt19937 random(7);
  std::vector<uint8_t> bytes(282 * 40);
  for (auto& b : bytes) b = static_cast<uint8_t>(random());
  // Sprinkle real identifiers so the decoders have packets to chew on.
  for (size_t at = 22; at + 1 < bytes.size(); at += 282) {
    const uint16_t ids[] = {0x0F34, 0x0F3C, 0x0F37, 0x0F31, 0x0F39};
    const uint16_t id = ids[(at / 282) % 5];
    bytes[at] = static_cast<uint8_t>(id & 0xFF);
    bytes[at + 1] = static_cast<uint8_t>(id >> 8);
  }
  write_bytes(dir.path("garbage.dat"), bytes);
  for (FileFormat format : {FileFormat::CSS, FileFormat::GRM, FileFormat::ZEB}) {
    load_and_open_everything(format, "garbage.dat");
  }
}

TEST_F(BadFiles, AFileThatVanishesAfterLoadingStillShows) {
  FrameWriter writer = three_frames();
  write_bytes(dir.path("gone.qm"), writer.bytes());
  ASSERT_TRUE(window->loadFile(FileFormat::QM, QString::fromStdString(dir.path("gone.qm"))));
  std::filesystem::remove(dir.path("gone.qm"));
  load_and_open_everything(FileFormat::QM, "missing-now.qm");  // this load fails and changes nothing
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);
  EXPECT_EQ(window->session().File_Name, dir.path("gone.qm"));
}

}  // namespace
}  // namespace morvane::testing
