// SPDX-License-Identifier: MIT
// Loading a file: cancelled, empty, missing, damaged or truncated, and the worker thread's progress.
#include <filesystem>
#include <thread>

#include "app_fixture.h"
#include "mutated_files.h"
#include "background_pass.h"
#include "core/error.h"
#include "summary_view.h"

namespace morvane {
namespace {

using testing::FrameWriter, testing::Packet;

using Loading = testing::AppTest;

TEST_F(Loading, ACancelledDialogChangesNothingWhileALoadStopsCollectionEmptiesTheViewsOrShowsItsError) {
  write_log(testing::three_frames());
  window->start_collection();
  const QString caption = window->windowTitle();

  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", ""));
  EXPECT_EQ(window->windowTitle(), caption);
  EXPECT_TRUE(window->collection_timer()->isActive());

  ASSERT_TRUE(load_through_menu("mnuLoadFile_GRM", write_frames("t.grm", testing::three_frames(280))));
  EXPECT_FALSE(window->collection_timer()->isActive());

  // An empty file still sets the caption and empties the open views.
  show<Summary>(ViewKind::Summary);
  const QString empty = write_frames("empty.css", FrameWriter(282));
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", empty));
  EXPECT_EQ(window->windowTitle(), "Morvane EGSE  --- CSS         File loaded - " + empty);
  auto* summary = shown<Summary>(ViewKind::Summary);
  ASSERT_NE(summary, nullptr);
  EXPECT_EQ(summary->model(0)->rowCount(), 0);

  // The second record lacks its last items: "Input past end of file" after the first.
  testing::write_file(dir.path("short.zeb"),
                      testing::zeb_text({testing::zeb_record(LabelCode::Concise)}) + "1, 2, 3\r\n");
  ASSERT_TRUE(load_through_menu("mnuLoadFile_ZebFormat", QString::fromStdString(dir.path("short.zeb"))));
  EXPECT_TRUE(one_message("Input past end of file"));
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 62"));
  EXPECT_EQ(window->session().catalogue.HK_Count(), 1);
  EXPECT_TRUE(window->windowTitle().startsWith("Morvane EGSE  --- ZEB"));
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

// Whatever file is opened, the load and every window cope: a message at worst, never a crash.
class BadFiles : public testing::AppTest {
 protected:
  void load_and_open_everything(FileFormat format, const std::string& name) {
    ASSERT_TRUE(window->load_file(format, QString::fromStdString(dir.path(name))) || !dialogs.messages.empty());
    for (ViewKind kind : kAllViewKinds) {
      if (!window->is_registered(kind)) continue;
      window->guarded([&] { window->show_view(kind); });
      QApplication::processEvents();
    }
    window->Reload_Open_Views();
    QApplication::processEvents();
    EXPECT_TRUE(window->isVisible());
  }
};

TEST_F(BadFiles, TruncatedOverlongDamagedAndMissingFilesOfEveryFormatLoadAndEveryWindowCopes) {
  FrameWriter cut = testing::three_frames();
  cut.bytes().resize(282 * 2 + 30);  // the third frame cut inside its first packet
  FrameWriter overlong(282);         // lengths that run past the file
  overlong.add_frame({testing::labelled(LabelCode::Complete, 1, 0xFFFF, 5)});
  overlong.add_frame({Packet{testing::kScienceId, 0xC001, 0xFFF0, 0, 6, {{16, 3}, {30, 0xFFFF}}, {}}});
  overlong.add_frame({testing::labelled(LabelCode::NormalProgressEvent, 2, 0xFFFE, 7)});
  overlong.add_frame({Packet{testing::kMemoryDumpId, 3, 0xFFFD, 0, 8, {{16, 0x98FF}}, {}}});
  testing::write_bytes(dir.path("cut.qm"), cut.bytes());
  testing::write_bytes(dir.path("long.css"), overlong.bytes());

  load_and_open_everything(FileFormat::QM, "cut.qm");
  load_and_open_everything(FileFormat::CSS, "long.css");
  EXPECT_EQ(window->session().catalogue.HK_Count(), 1);

  std::filesystem::create_directory(dir.path("files"));
  for (const FileFormat format : testing::kAllFormats) {
    for (const testing::Mutant& mutant : testing::write_mutants(dir.path("files"), format, 5)) {
      SCOPED_TRACE(mutant.how);
      load_and_open_everything(format, "files/" + std::filesystem::path(mutant.path).filename().string());
      dialogs.messages.clear();  // a message at worst
    }
  }

  // A file that cannot be opened is reported and the one before still shows.
  const QString path = write_frames("gone.css", testing::three_frames());
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", path));
  const QString caption = window->windowTitle();
  std::filesystem::remove(path.toStdString());
  const QString missing = QString::fromStdString(dir.path("missing.css"));
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", missing));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_EQ(dialogs.messages[0], "File not found: " + missing + "; Error number 53");
  EXPECT_EQ(window->windowTitle(), caption);
  EXPECT_EQ(window->session().File_Name, path.toStdString());
  load_and_open_everything(FileFormat::CSS, "missing.css");  // the windows show the file before
}

}  // namespace
}  // namespace morvane
