// SPDX-License-Identifier: MIT
// Getting back to where one was: recent files, files dropped on the window, the window layout.
#include "app_fixture.h"
#include "file_drop.h"
#include "recent_files.h"
#include "window_layout.h"

namespace morvane {
namespace {

class Sessions : public testing::AppTest {
 protected:
  QString file(const std::string& name) { return write_frames(name, testing::three_frames()); }
  QMenu* recent_menu() const { return window->findChild<QMenu*>("mnuRecentFiles"); }
  // Drops files on the main window as a file manager does.
  bool drop(const QList<QUrl>& urls) {
    QMimeData data;
    data.setUrls(urls);
    const QPoint at = window->rect().center();
    QDragEnterEvent enter(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &enter);
    if (!enter.isAccepted()) return false;
    QDropEvent dropped(QPointF(at), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(window.get(), &dropped);
    return dropped.isAccepted();
  }
};

TEST_F(Sessions, LoadedFilesAreRememberedAboveExitWithTheirFormatMostRecentFirstAndAGoneOneLeavesTheList) {
  EXPECT_FALSE(recent_menu()->actions().front()->isEnabled());  // "(none)"
  const QString a = file("a.dat"), b = file("b.dat");
  ASSERT_TRUE(load_through_menu("mnuLoadFile_QM", a));
  ASSERT_TRUE(window->load_file(FileFormat::GRM, b));
  ASSERT_TRUE(window->load_file(FileFormat::CSS, a));  // again, as another format
  EXPECT_EQ(recent_files(), (std::vector<RecentFile>{{FileFormat::CSS, a}, {FileFormat::GRM, b}}));
  QStringList items;
  for (QAction* item : recent_menu()->actions()) items << item->text();
  EXPECT_EQ(items, (QStringList{"&1  CSS  " + QDir::toNativeSeparators(a), "&2  GRM  " + QDir::toNativeSeparators(b)}));

  // Choosing one loads it in its format.
  window->menu_item("mnuRecentFile2")->trigger();
  EXPECT_EQ(window->session().File_Name, b.toStdString());
  EXPECT_EQ(window->session().File_Type, FileFormat::GRM);
  EXPECT_EQ(recent_files().front(), (RecentFile{FileFormat::GRM, b}));

  // One that is gone is a message and leaves the list; nothing else changes.
  const QString gone = file("gone.dat");
  ASSERT_TRUE(window->load_file(FileFormat::QM, gone));
  ASSERT_TRUE(QFile::remove(gone));
  ASSERT_TRUE(window->load_file(FileFormat::GRM, b));
  const int32_t hk = window->session().catalogue.HK_Count();
  window->menu_item("mnuRecentFile2")->trigger();
  EXPECT_TRUE(one_message("", QDir::toNativeSeparators(gone)));
  EXPECT_EQ(recent_files(), (std::vector<RecentFile>{{FileFormat::GRM, b}, {FileFormat::CSS, a}}));
  EXPECT_EQ(window->session().File_Name, b.toStdString());
  EXPECT_EQ(window->session().catalogue.HK_Count(), hk);

  // The list is kept to its length.
  for (int i = 0; i < kRecentFileCount + 2; ++i)
    ASSERT_TRUE(window->load_file(FileFormat::QM, file("f" + std::to_string(i) + ".dat")));
  EXPECT_EQ(recent_files().size(), static_cast<size_t>(kRecentFileCount));
  EXPECT_EQ(recent_files().front().path, QString::fromStdString(dir.path("f9.dat")));
}

TEST_F(Sessions, ADroppedFileIsLoadedInTheFormatChosenAndTheLayoutComesBackWithTheViewsInPlace) {
  const QString path = file("dropped.qm");
  dialogs.choices.push_back(1);  // "Load &GRM file (280 bytes)"
  ASSERT_TRUE(drop({QUrl::fromLocalFile(path)}));
  EXPECT_TRUE(dialogs.choices_offered.empty());  // the question comes once the drop is over
  ASSERT_TRUE(testing::wait_until([&] { return !window->session().File_Name.empty(); }));
  ASSERT_EQ(dialogs.choices_offered.size(), 1u);
  EXPECT_EQ(dialogs.choices_offered[0], 3);  // the suffix names QM
  EXPECT_EQ(window->session().File_Type, FileFormat::GRM);
  EXPECT_EQ(recent_files().front(), (RecentFile{FileFormat::GRM, path}));

  // A cancelled question loads nothing; without a suffix the last format is offered.
  ASSERT_TRUE(window->load_file(FileFormat::FM, file("before.bin")));
  ASSERT_TRUE(drop({QUrl::fromLocalFile(file("x.bin"))}));
  ASSERT_TRUE(testing::wait_until([&] { return dialogs.choices_offered.size() == 2; }));
  EXPECT_EQ(dialogs.choices_offered[1], 2);  // FM
  QApplication::processEvents();
  EXPECT_EQ(window->session().File_Name, dir.path("before.bin"));
  // Nothing that is not a local file is taken.
  EXPECT_FALSE(drop({QUrl("https://example.org/t.css")}));

  // The layout comes back with the views in their places.
  window->resize(900, 700);
  window->frame_of(window->show_view(ViewKind::Summary))->setGeometry(10, 20, 500, 400);
  window->frame_of(window->show_view(ViewKind::RawData))->setGeometry(300, 40, 420, 360);
  window->show_view(ViewKind::AD590);    // a dialog: not brought back
  window->show_view(ViewKind::Summary);  // on top
  save_window_layout(*window);
  window.reset();

  window = std::make_unique<EGSE_MDI>(load_configuration(base), dialogs);
  window->show();
  restore_window_layout(*window);
  ASSERT_NE(window->view(ViewKind::Summary), nullptr);
  ASSERT_NE(window->view(ViewKind::RawData), nullptr);
  EXPECT_EQ(window->view(ViewKind::AD590), nullptr);
  EXPECT_EQ(window->frame_of(window->view(ViewKind::Summary))->geometry(), QRect(10, 20, 500, 400));
  EXPECT_EQ(window->frame_of(window->view(ViewKind::RawData))->geometry(), QRect(300, 40, 420, 360));
  EXPECT_EQ(window->mdi_area()->subWindowList(QMdiArea::StackingOrder).last(),
            window->frame_of(window->view(ViewKind::Summary)));
  EXPECT_EQ(window->size(), QSize(900, 700));
}

}  // namespace
}  // namespace morvane
