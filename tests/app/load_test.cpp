// SPDX-License-Identifier: MIT
#include <QMdiSubWindow>
#include <QTimer>

#include "app_fixture.h"
#include "raw_view.h"
#include "summary_view.h"
#include "twips.h"

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
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(Loading, ACancelledDialogLeavesCaptionCatalogueAndCollectionAlone) {
  FrameWriter writer = testing::three_frames();
  const QString log = write_frames("tmlog.dat", writer);
  window->setLogFile(log);
  window->startCollection();
  ASSERT_TRUE(window->isCollecting());
  const QString caption = window->windowTitle();

  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", ""));
  EXPECT_EQ(window->windowTitle(), caption);
  EXPECT_TRUE(window->isCollecting());
  EXPECT_TRUE(window->collectionTimer()->isActive());
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(Loading, AFileThatCannotBeOpenedIsReportedAndChangesNothing) {
  FrameWriter writer = testing::three_frames();
  const QString path = write_frames("t.css", writer);
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", path));
  const QString caption = window->windowTitle();
  const QString missing = QString::fromStdString(dir.path("missing.css"));
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", missing));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_EQ(dialogs.messages[0], "File not found: " + missing + "; Error number 53");
  EXPECT_EQ(window->windowTitle(), caption);
  EXPECT_EQ(window->session().File_Name, path.toStdString());
  EXPECT_EQ(window->session().catalogue.HK_Count(), 2);
}

TEST_F(Loading, AnEmptyFileStillSetsTheCaptionAndEmptiesTheOpenViews) {
  FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", write_frames("t.css", writer)));
  auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  EXPECT_EQ(summary->model(0)->rowCount(), 2);
  testing::write_file(dir.path("empty.css"), "");
  const QString empty = QString::fromStdString(dir.path("empty.css"));
  ASSERT_TRUE(load_through_menu("mnuFileLoad_CSS", empty));
  EXPECT_EQ(window->windowTitle(), "Morvane EGSE  --- CSS         File loaded - " + empty);
  summary = static_cast<Summary*>(window->view(ViewKind::Summary));
  ASSERT_NE(summary, nullptr);
  EXPECT_EQ(summary->model(0)->rowCount(), 0);
  EXPECT_EQ(summary->countText("packet_count"), "0");
}

TEST_F(Loading, ALoadStopsCollection) {
  FrameWriter writer = testing::three_frames();
  window->setLogFile(write_frames("tmlog.dat", writer));
  window->startCollection();
  ASSERT_TRUE(window->isCollecting());
  ASSERT_TRUE(load_through_menu("mnuLoadFile_GRM", write_frames("t.grm", writer)));
  EXPECT_FALSE(window->isCollecting());
  EXPECT_FALSE(window->collectionTimer()->isActive());
}

TEST_F(Loading, AnErrorPartWayKeepsTheEntriesBeforeItAndIsShown) {
  // The second record lacks its last items: "Input past end of file" after the first.
  std::string text = testing::zeb_text({testing::zeb_record({{5, 1844}, {17, 1}})});
  text += "1, 2, 3\r\n";
  testing::write_file(dir.path("short.zeb"), text);
  ASSERT_TRUE(load_through_menu("mnuLoadFile_ZebFormat", QString::fromStdString(dir.path("short.zeb"))));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].startsWith("Input past end of file")) << dialogs.messages[0].toStdString();
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 62")) << dialogs.messages[0].toStdString();
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

TEST_F(Loading, ExportGuardsAnswerUntilAFileWithSpectraIsLoaded) {
  window->mnuExportHousekeeping_Click();
  window->mnuExportScienceAuxilliary_Click();
  window->mnuExportDockingStationCalibration_Click();
  window->mnuExportScienceSpectra_Click();
  EXPECT_EQ(dialogs.messages, std::vector<QString>(4, "Please load an EGSE data file"));

  // Isotope packets whose flags fail the GRM test (bit value 1) make no spectrum.
  FrameWriter writer(280);
  writer.add_frame({Packet{0x0F3C, 0x8000 + 1, 25, 0, 5, {{16, 3}}, {}}});
  ASSERT_TRUE(load_through_menu("mnuLoadFile_GRM", write_frames("t.grm", writer)));
  dialogs.messages.clear();
  window->mnuExportScienceSpectra_Click();
  EXPECT_EQ(dialogs.messages, std::vector<QString>{"The EGSE data file contains no spectra"});

  window->registerView(ViewKind::ExportHousekeeping,
                       [](EGSE_MDI& mdi) { return new ChildView(mdi, ViewKind::ExportHousekeeping); });
  window->mnuExportHousekeeping_Click();
  ChildView* shown = window->view(ViewKind::ExportHousekeeping);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(window->frameOf(shown)->pos(), twips_to_pixels(4000, 1000, *window));
}

}  // namespace
}  // namespace morvane
