// SPDX-License-Identifier: MIT
// Loading a file: the caption and catalogue, a cancelled dialog, files that cannot be opened or
// end early, the worker thread with its progress dialog, and files no engineer meant to open.
#include <filesystem>
#include <random>
#include <thread>

#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include "app_fixture.h"
#include "background_pass.h"
#include "core/error.h"
#include "summary_view.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

using Loading = testing::AppTest;

TEST_F(Loading, ALoadSetsTheCaptionAndTheCatalogue) {
  FrameWriter writer = testing::three_frames();
  const QString path = write_frames("t.qm", writer);
  ASSERT_TRUE(load_through_menu("mnuLoadFile_QM", path));
  EXPECT_EQ(window->windowTitle(), "Morvane EGSE  --- QM         File loaded - " + path);
  const Session& s = window->session();
  EXPECT_EQ(s.File_Name, path.toStdString());
  EXPECT_EQ(s.File_Type, FileFormat::QM);
  EXPECT_EQ(s.Packet_Count, 3);
  EXPECT_EQ(s.catalogue.HK_Count(), 2);
  EXPECT_EQ(s.catalogue.Science_Count(), 4);
  EXPECT_EQ(s.HK_Sensor_Data.entries(), 2);
  EXPECT_EQ(s.catalogue.Previous_Packet_Count, 3);  // the counts are saved for collection
  EXPECT_TRUE(no_message());
}

TEST_F(Loading, ACancelledDialogChangesNothingWhileALoadStopsCollection) {
  write_log(testing::three_frames());
  window->startCollection();
  ASSERT_TRUE(window->isCollecting());
  const QString caption = window->windowTitle();

  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", ""));
  EXPECT_EQ(window->windowTitle(), caption);
  EXPECT_TRUE(window->collectionTimer()->isActive());
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);

  FrameWriter writer = testing::three_frames(280);
  ASSERT_TRUE(load_through_menu("mnuLoadFile_GRM", write_frames("t.grm", writer)));
  EXPECT_FALSE(window->isCollecting());
  EXPECT_FALSE(window->collectionTimer()->isActive());
  EXPECT_TRUE(no_message());
}

TEST_F(Loading, AnEmptyFileStillSetsTheCaptionAndEmptiesTheOpenViews) {
  ASSERT_TRUE(load_frames(testing::three_frames()));
  auto* summary = show<Summary>(ViewKind::Summary);
  EXPECT_EQ(summary->model(0)->rowCount(), 2);
  testing::write_file(dir.path("empty.css"), "");
  const QString empty = QString::fromStdString(dir.path("empty.css"));
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", empty));
  EXPECT_EQ(window->windowTitle(), "Morvane EGSE  --- CSS         File loaded - " + empty);
  summary = shown<Summary>(ViewKind::Summary);
  ASSERT_NE(summary, nullptr);
  EXPECT_EQ(summary->model(0)->rowCount(), 0);
  EXPECT_EQ(summary->countText("packet_count"), "0");
}

TEST_F(Loading, AnErrorPartWayKeepsTheEntriesBeforeItAndIsShown) {
  // The second record lacks its last items: "Input past end of file" after the first.
  testing::write_file(dir.path("short.zeb"),
                      testing::zeb_text({testing::zeb_record({{5, 1844}, {17, 1}})}) + "1, 2, 3\r\n");
  ASSERT_TRUE(load_through_menu("mnuLoadFile_ZebFormat", QString::fromStdString(dir.path("short.zeb"))));
  EXPECT_TRUE(one_message("Input past end of file"));
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 62"));
  EXPECT_EQ(window->session().catalogue.HK_Count(), 1);
  EXPECT_TRUE(window->windowTitle().startsWith("Morvane EGSE  --- ZEB"));
}

TEST_F(Loading, TheWindowLoadGivesTheCatalogueOfADirectLoad) {
  // Enough frames for several blocks on several threads, with progress reported between them.
  FrameWriter writer(282);
  for (int f = 0; f < 40000; ++f) {
    writer.add_frame({Packet{0x0F34, f % 16384, 51, 0, f, {{16, 1 + f % 2}}, {}},
                      Packet{0x0F37, f % 16384, 11, 0, f, {{14, (f % 3) * 256}}, {}}});
  }
  const QString path = write_frames("big.css", writer);
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, path));
  Session direct;
  direct.config = window->session().config;
  load_telemetry(direct, path.toStdString(), FileFormat::CSS);
  const Catalogue& a = window->session().catalogue;
  const Catalogue& b = direct.catalogue;
  ASSERT_EQ(a.HK_Count(), b.HK_Count());
  ASSERT_EQ(a.Information_Count(), b.Information_Count());
  EXPECT_EQ(a.counters.Warning_Event_Count, b.counters.Warning_Event_Count);
  for (int32_t i = 1; i <= a.Information_Count(); i += 997) {
    EXPECT_EQ(a.Information_List[i].Packet_Position, b.Information_List[i].Packet_Position) << i;
    EXPECT_EQ(a.Information_List[i].Label, b.Information_List[i].Label) << i;
  }
  EXPECT_EQ(window->session().HK_Sensor_Data.at(5, 40000), direct.HK_Sensor_Data.at(5, 40000));
}

TEST(BackgroundPass, AFinishedPassReportsSuccessItsErrorsComeBackAndCancelEndsItAtItsNextProgressCall) {
  QWidget parent;
  int calls = 0;
  EXPECT_TRUE(run_with_progress(&parent, "pass", [&](const ProgressFunction& progress) {
    progress(1, 2);
    ++calls;
  }));
  EXPECT_EQ(calls, 1);
  EXPECT_THROW(run_with_progress(&parent, "pass", [](const ProgressFunction&) { raise(ErrorNumber::Overflow); }),
               RuntimeError);

  QTimer cancel;
  QObject::connect(&cancel, &QTimer::timeout, [&] {
    auto* dialog = parent.findChild<QProgressDialog*>();
    if (!dialog || !dialog->isVisible()) return;
    if (auto* button = dialog->findChild<QPushButton*>()) button->click();
  });
  cancel.start(20);
  int steps = 0;  // about two seconds of progress calls
  EXPECT_FALSE(run_with_progress(&parent, "pass", [&](const ProgressFunction& progress) {
    for (steps = 0; steps < 400; ++steps) {
      progress(steps, 400);
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
  }));
  EXPECT_LT(steps, 400);
}

// Whatever file an engineer opens, the load and every window cope: a message at worst, never a
// crash, and the program carries on.
class BadFiles : public testing::AppTest {
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

TEST_F(BadFiles, TruncatedOverlongAndRandomFilesLoadOrAreReported) {
  FrameWriter cut = testing::three_frames();
  cut.bytes().resize(282 * 2 + 30);  // the third frame cut inside its first packet
  FrameWriter overlong(282);         // lengths that run past the file
  overlong.add_frame({Packet{0x0F34, 1, 0xFFFF, 0, 5, {{16, 2}}, {}}});
  overlong.add_frame({Packet{0x0F3C, 0xC001, 0xFFF0, 0, 6, {{16, 3}, {30, 0xFFFF}}, {}}});
  overlong.add_frame({Packet{0x0F37, 2, 0xFFFE, 0, 7, {{14, 0x0100}}, {}}});
  overlong.add_frame({Packet{0x0F39, 3, 0xFFFD, 0, 8, {{16, 0x98FF}}, {}}});
  std::mt19937 random(7);
  std::vector<uint8_t> garbage(282 * 40);
  for (auto& b : garbage) b = static_cast<uint8_t>(random());
  // Real identifiers sprinkled in give the decoders packets to chew on.
  const uint16_t ids[] = {0x0F34, 0x0F3C, 0x0F37, 0x0F31, 0x0F39};
  for (size_t at = 22; at + 1 < garbage.size(); at += 282) {
    garbage[at] = static_cast<uint8_t>(ids[(at / 282) % 5] & 0xFF);
    garbage[at + 1] = static_cast<uint8_t>(ids[(at / 282) % 5] >> 8);
  }
  testing::write_bytes(dir.path("cut.qm"), cut.bytes());
  testing::write_bytes(dir.path("long.css"), overlong.bytes());
  testing::write_bytes(dir.path("garbage.dat"), garbage);

  load_and_open_everything(FileFormat::QM, "cut.qm");
  EXPECT_EQ(window->session().Packet_Count, 3);
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);
  load_and_open_everything(FileFormat::CSS, "long.css");
  EXPECT_EQ(window->session().catalogue.HK_List[1].Packet_Length, 0xFFFF + 7);
  for (FileFormat format : {FileFormat::CSS, FileFormat::GRM, FileFormat::ZEB}) {
    load_and_open_everything(format, "garbage.dat");
  }
}

TEST_F(BadFiles, AFileThatCannotBeOpenedIsReportedAndTheOneBeforeStillShows) {
  FrameWriter writer = testing::three_frames();
  const QString path = write_frames("gone.css", writer);
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", path));
  const QString caption = window->windowTitle();
  std::filesystem::remove(path.toStdString());
  const QString missing = QString::fromStdString(dir.path("missing.css"));
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", missing));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_EQ(dialogs.messages[0], "File not found: " + missing + "; Error number 53");
  EXPECT_EQ(window->windowTitle(), caption);
  load_and_open_everything(FileFormat::CSS, "missing.css");  // fails again and changes nothing
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);
  EXPECT_EQ(window->session().File_Name, path.toStdString());
}

}  // namespace
}  // namespace morvane
