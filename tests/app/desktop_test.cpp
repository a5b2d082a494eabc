// SPDX-License-Identifier: MIT
// The desktop program: status bar, Window and Help menus, Enter and Ctrl+C in lists, Ctrl+O, read-outs.
#include "app_fixture.h"
#include "help_menu.h"
#include "spectra_form.h"
#include "spectrum_plot.h"
#include "status_line.h"
#include "summary_view.h"
#include "trend_chart.h"

namespace morvane {
namespace {

class Desktop : public testing::AppTest {
 protected:
  StatusLine* status() const { return window->findChild<StatusLine*>("StatusLine"); }
  StatusLine* refreshed_status() const { return status()->refresh(), status(); }
  // The items of a menu as it shows them when opened.
  QStringList items(QMenu* m) const {
    emit m->aboutToShow();
    QStringList texts;
    for (QAction* action : m->actions())
      if (!action->isSeparator()) texts.append(action->text() + (action->isChecked() ? " [x]" : ""));
    return texts;
  }
};

TEST_F(Desktop, TheStatusBarSaysFileFormatByteOrderFramesFollowingAndTheLastWarningAndCtrlOTheLastFormat) {
  ASSERT_NE(status(), nullptr);
  EXPECT_EQ(status()->file_text(), "No file loaded");
  ASSERT_TRUE(load_frames(testing::three_frames()));
  EXPECT_EQ(status()->file_text(), "t.css");
  EXPECT_EQ(status()->format_text(), "CSS");
  EXPECT_EQ(status()->byte_order_text(), "Low byte first");
  EXPECT_EQ(status()->frames_text(), "3 frames");
  window->mnuDisplayByteReverse_Click();
  EXPECT_EQ(refreshed_status()->byte_order_text(), "High byte first");
  window->mnuDisplayByteReverse_Click();

  // A text file loaded as a binary format: the load goes through, with a word of doubt.
  std::string text;
  for (int k = 0; k < 3000; ++k) text += std::to_string(k % 997) + ", ";
  testing::write_file(dir.path("wrong.qm"), text);
  ASSERT_TRUE(window->load_file(FileFormat::QM, QString::fromStdString(dir.path("wrong.qm"))));
  EXPECT_TRUE(status()->warning_text().startsWith("Warning: no known packet identifier in the first 16 frames"));
  EXPECT_EQ(show<Summary>(ViewKind::Summary)->format_warning_text(), status()->warning_text());
  EXPECT_TRUE(no_message());

  // Following a log, then paused by the concise window's button (the timer stops).
  testing::FrameWriter log_frames(282);
  log_frames.add_frame({testing::labelled(LabelCode::Concise, 1, 51, 5)});
  write_log(log_frames);
  window->start_collection();
  EXPECT_EQ(refreshed_status()->follow_text(), "Live: following, 282 bytes");
  window->collection_timer()->stop();
  EXPECT_EQ(refreshed_status()->follow_text(), "Live: paused, 282 bytes");
  window->stop_collection();
  EXPECT_EQ(refreshed_status()->follow_text(), "Live: stopped");

  // Ctrl+O asks for a file of the format loaded last.
  QAction* open = window->menu_item("mnuFileOpenLastFormat");
  ASSERT_TRUE(window->load_file(FileFormat::GRM, write_frames("t.grm", testing::three_frames(280))));
  EXPECT_EQ(open->text(), "&Open GRM file...");
  dialogs.files.push_back(write_frames("u.grm", testing::three_frames(280)));
  open->trigger();
  EXPECT_EQ(window->session().File_Type, FileFormat::GRM);
  EXPECT_TRUE(window->session().File_Name.ends_with("u.grm"));
}

TEST_F(Desktop, TheWindowAndHelpMenusAndInEveryListEnterOpensTheLineAndCtrlCCopiesTheSelection) {
  QMenu* windows = window->findChild<QMenu*>("mnuWindow");
  ASSERT_NE(windows, nullptr);
  const int fixed_items = static_cast<int>(items(windows).size());
  window->show_view(ViewKind::Summary);
  window->show_view(ViewKind::RawData);
  const QStringList listed = items(windows);
  ASSERT_EQ(listed.size(), fixed_items + 2);
  EXPECT_EQ(listed[fixed_items], "&1 Summary");
  EXPECT_TRUE(listed.back().startsWith("&2 ") && listed.back().endsWith(" [x]")) << listed.back().toStdString();

  // Arranging and stepping are the window area's own; choosing and closing are the views'.
  window->menu_item("mnuWindowShow1")->trigger();
  EXPECT_EQ(window->mdi_area()->activeSubWindow(), window->frame_of(window->view(ViewKind::Summary)));
  window->menu_item("mnuWindowCloseAll")->trigger();
  testing::delete_closed_windows();
  EXPECT_EQ(window->view(ViewKind::Summary), nullptr);
  EXPECT_EQ(window->view(ViewKind::RawData), nullptr);

  // The Help menu: the guide shipped inside the program, the shortcuts and the About.
  auto* help = window->findChild<HelpMenu*>();
  ASSERT_NE(help, nullptr);
  QTextBrowser* guide = help->show_guide();
  ASSERT_NE(guide, nullptr);
  EXPECT_TRUE(guide->toPlainText().startsWith("Morvane EGSE user guide")) << guide->toPlainText().left(80).toStdString();
  EXPECT_TRUE(help->show_shortcuts()->toPlainText().contains("Ctrl+Tab"));
  help->show_about();
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].contains(QStringLiteral("Qt: ") + qVersion()));

  // Enter opens the selected line, Ctrl+C copies every selected line, "Show this spectrum" its spectrum.
  ASSERT_TRUE(load_frames(testing::three_frames()));
  auto* summary = show<Summary>(ViewKind::Summary);
  QListView* list = summary->list(0);
  list->setFocus();
  list->setCurrentIndex(summary->model(0)->index(1));
  QTest::keyClick(list, Qt::Key_Return);
  EXPECT_EQ(window->session().Current_HK_Index, 2);
  ASSERT_NE(window->view(ViewKind::Housekeeping), nullptr);
  EXPECT_EQ(window->mdi_area()->activeSubWindow(), window->frame_of(window->view(ViewKind::Housekeeping)));

  list->selectionModel()->select({summary->model(0)->index(0), summary->model(0)->index(1)}, QItemSelectionModel::Select);
  QTest::keyClick(list, Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(),
            summary->model(0)->index(0).data().toString() + "\n" + summary->model(0)->index(1).data().toString());

  EXPECT_EQ(summary->list(1)->actions().size(), 2);  // the science lines' menu: raw frame, spectrum
  summary->show_this_spectrum(1);  // auxiliary data: no spectrum
  EXPECT_EQ(window->view(ViewKind::Spectra), nullptr);
  summary->show_this_spectrum(3);  // the GC spectrum, spectrum 2 after the complete one
  auto* spectra = shown<Spectra_Form>(ViewKind::Spectra);
  ASSERT_NE(spectra, nullptr);
  EXPECT_EQ(spectra->spectrum_scroll()->value(), 2);
  EXPECT_EQ(spectra->decoder().spectrum(), 2);
  EXPECT_EQ(dialogs.messages.size(), 1u);  // the About's
}

TEST_F(Desktop, PlotsReadOutTheNearestPointOfEachSeriesAndTheBinUnderThePointer) {
  const std::vector<TrendSeries> series{{28, "AD590", "oC", {{100, 1.5}, {160, 2.25}, {400, -3}}},
                                         {29, "Docking station", "mm", {{130, 7}}}};
  EXPECT_EQ(trend_readout(series, 125), "t = 125 s\nAD590: 1.5 oC at 100 s\nDocking station: 7 mm at 130 s");
  EXPECT_EQ(trend_readout(series, 150), "t = 150 s\nAD590: 2.25 oC at 160 s\nDocking station: 7 mm at 130 s");
  EXPECT_EQ(trend_readout(series, 9999), "t = 9999 s\nAD590: -3 oC at 400 s\nDocking station: 7 mm at 130 s");

  SpectrumPlot plot;
  plot.resize(600, 400);
  Spectrum_Bins bins{};
  bins[0] = 5;
  bins[512] = 80;
  plot.set_bins(&bins, 1025, SpectrumAxis{});
  SpectrumGraph graph;
  graph.width = 1025;  // the whole range at zoom 1
  plot.set_graph(graph);
  const QRect area = plot.plot_area();
  EXPECT_EQ(plot.readout_at({area.left(), area.center().y()}), "Bin 0: 5 counts");
  const int middle = area.left() + static_cast<int>(512.5 * area.width() / 1025);
  EXPECT_EQ(plot.readout_at({middle, area.center().y()}), "Bin 512: 80 counts");
  EXPECT_EQ(plot.readout_at({area.left() - 3, area.center().y()}), "");
}

}  // namespace
}  // namespace morvane
