// SPDX-License-Identifier: MIT
#include "summary_find_bar.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTest>

#include "app_fixture.h"
#include "housekeeping_form.h"
#include "summary_view.h"

namespace morvane {
namespace {

using Field = Summary_Find_Bar::Field;
using testing::FrameWriter;
using testing::Packet;

// Frame f holds housekeeping packet f (complete when f is even, concise when odd) with
// sequence count f and lander time 100 + 10 f, and a progress event.
FrameWriter numbered_frames(int first, int last) {
  FrameWriter writer(282);
  for (int f = first; f <= last; ++f) {
    writer.add_frame({Packet{0x0F34, f, 51, 0, 100 + 10 * f, {{16, f % 2 == 0 ? 2 : 1}}, {}},
                      Packet{0x0F37, f, 11, 0, 100 + 10 * f, {{14, 0x0100}}, {}}});
  }
  return writer;
}

class SummaryFind : public testing::AppTest {
 protected:
  Summary* open_summary(int frames = 40) {
    FrameWriter writer = numbered_frames(1, frames);
    EXPECT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
    summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
    bar = summary->findBar(0);
    return summary;
  }
  void choose_label(const QString& text) {
    bar->refreshLabels();
    const int at = bar->labelChoice()->findText(text);
    ASSERT_GE(at, 0) << text.toStdString();
    bar->labelChoice()->setCurrentIndex(at);
  }
  void type(Field field, const QString& text) { bar->field(field)->setText(text); }
  bool done() {
    return testing::wait_until([&] { return !bar->searching(); });
  }
  // The entry number of the selected line of the housekeeping list, 0 when none.
  int32_t selected() const {
    const QModelIndex current = summary->list(0)->currentIndex();
    return current.isValid() ? summary->model(0)->entryNumber(current.row()) : 0;
  }
  QString line(int row) const { return summary->model(0)->data(summary->model(0)->index(row)).toString(); }

  Summary* summary = nullptr;
  Summary_Find_Bar* bar = nullptr;
};

TEST_F(SummaryFind, TheTypeChoiceOffersTheLabelsOfItsList) {
  open_summary();
  bar->refreshLabels();
  QStringList offered;
  for (int i = 0; i < bar->labelChoice()->count(); ++i) offered << bar->labelChoice()->itemText(i);
  EXPECT_EQ(offered, (QStringList{"All types", "Concise", "Complete"}));
  summary->findBar(2)->refreshLabels();
  EXPECT_EQ(summary->findBar(2)->labelChoice()->itemText(1), "Normal Progress Event");
}

TEST_F(SummaryFind, EveryConditionMustHoldAndTheCountSaysHowManyMatch) {
  open_summary();
  EXPECT_EQ(bar->countText(), "");  // no conditions
  choose_label("Complete");
  ASSERT_TRUE(done());
  EXPECT_EQ(bar->countText(), "20 of 40");
  EXPECT_EQ(summary->model(0)->rowCount(), 40);  // finding hides nothing
  type(Field::SequenceFrom, "10");
  type(Field::SequenceTo, "20");
  ASSERT_TRUE(done());
  EXPECT_EQ(bar->countText(), "6 of 40");  // 10, 12, ..., 20
  type(Field::TimeFrom, "250");            // frames 15 and up
  ASSERT_TRUE(done());
  EXPECT_EQ(bar->countText(), "3 of 40");
  type(Field::FrameTo, "17");
  ASSERT_TRUE(done());
  EXPECT_EQ(summary->model(0)->matches(), (std::vector<int32_t>{16}));
  EXPECT_EQ(bar->countText(), "1 of 40");
  type(Field::FrameFrom, "30");
  ASSERT_TRUE(done());
  EXPECT_EQ(bar->countText(), "0 of 40");
  // A field that holds no number yet leaves its end open.
  type(Field::FrameFrom, "-");
  ASSERT_TRUE(done());
  EXPECT_EQ(bar->countText(), "1 of 40");
}

TEST_F(SummaryFind, OnlyMatchesHidesTheOtherLinesWhichKeepTheirEntryNumbers) {
  open_summary();
  choose_label("Complete");
  type(Field::SequenceFrom, "31");
  bar->onlyMatches()->setChecked(true);
  ASSERT_TRUE(done());
  ASSERT_EQ(summary->model(0)->rowCount(), 5);  // 32, 34, ..., 40
  EXPECT_TRUE(line(0).startsWith("32      ")) << line(0).toStdString();
  EXPECT_TRUE(line(4).startsWith("40      "));
  EXPECT_EQ(bar->countText(), "5 of 40");
  // The other lists are filtered on their own (a progress event and an empty slot a frame).
  EXPECT_EQ(summary->model(2)->rowCount(), 80);
  bar->onlyMatches()->setChecked(false);
  EXPECT_EQ(summary->model(0)->rowCount(), 40);
}

TEST_F(SummaryFind, EnterSelectsTheNextMatchAndGoesRound) {
  open_summary();
  choose_label("Complete");
  type(Field::SequenceFrom, "10");
  type(Field::SequenceTo, "14");
  ASSERT_TRUE(done());
  for (const int32_t expected : {10, 12, 14, 10}) {
    QTest::keyClick(bar->field(Field::SequenceTo), Qt::Key_Return);
    EXPECT_EQ(selected(), expected);
  }
  // From a line chosen by hand the next match after it.
  summary->list(0)->setCurrentIndex(summary->model(0)->index(10));  // entry 11
  bar->nextButton()->click();
  EXPECT_EQ(selected(), 12);
  EXPECT_EQ(summary->model(0)->rowCount(), 40);

  // Filtered, Enter steps through the lines shown, keeping the selected entry.
  bar->onlyMatches()->setChecked(true);
  EXPECT_EQ(selected(), 12);
  QTest::keyClick(bar->labelChoice(), Qt::Key_Return);
  EXPECT_EQ(selected(), 14);
  QTest::keyClick(bar->labelChoice(), Qt::Key_Enter);
  EXPECT_EQ(selected(), 10);
}

TEST_F(SummaryFind, AFindWaitsForItsMatchWhileTheSearchGoesOn) {
  open_summary();
  bar->setSlice(4, 0);  // four entries a slice: the search takes ten turns of the event loop
  type(Field::SequenceFrom, "37");
  EXPECT_TRUE(bar->searching());
  EXPECT_EQ(bar->countText(), "0 of 40...");
  bar->findNext();
  EXPECT_EQ(selected(), 0);  // not found yet
  ASSERT_TRUE(done());
  EXPECT_EQ(selected(), 37);
  EXPECT_EQ(bar->countText(), "4 of 40");
  // Changing the conditions mid-way starts the search again.
  type(Field::SequenceFrom, "3");
  type(Field::SequenceTo, "3");
  ASSERT_TRUE(done());
  EXPECT_EQ(summary->model(0)->matches(), (std::vector<int32_t>{3}));
}

TEST_F(SummaryFind, ClearingRestoresTheFullList) {
  open_summary();
  choose_label("Concise");
  type(Field::FrameTo, "5");
  bar->onlyMatches()->setChecked(true);
  ASSERT_TRUE(done());
  EXPECT_EQ(summary->model(0)->rowCount(), 3);
  bar->clearButton()->click();
  EXPECT_EQ(summary->model(0)->rowCount(), 40);
  EXPECT_EQ(bar->countText(), "");
  EXPECT_EQ(bar->labelChoice()->currentIndex(), 0);
  EXPECT_TRUE(bar->field(Field::FrameTo)->text().isEmpty());
  EXPECT_EQ(line(39).left(2), "40");
}

TEST_F(SummaryFind, ADoubleClickOnAFilteredLineOpensItsEntry) {
  open_summary();
  choose_label("Complete");
  type(Field::SequenceFrom, "20");
  bar->onlyMatches()->setChecked(true);
  ASSERT_TRUE(done());
  QListView* list = summary->list(0);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(list->window()));
  QApplication::processEvents();
  const QRect second = list->visualRect(summary->model(0)->index(1));  // entry 22
  QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, second.center());
  QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, second.center());
  EXPECT_EQ(window->session().Current_HK_Index, 22);
  auto* housekeeping = dynamic_cast<Housekeeping_form*>(window->view(ViewKind::Housekeeping));
  ASSERT_NE(housekeeping, nullptr);
  EXPECT_EQ(housekeeping->headerText("HK Packet number"), "22");
  // The information list, filtered too, opens its own entries.
  Summary_Find_Bar* information = summary->findBar(2);
  information->field(Field::FrameFrom)->setText("33");
  information->onlyMatches()->setChecked(true);
  ASSERT_TRUE(testing::wait_until([&] { return !information->searching(); }));
  const QModelIndex first = summary->model(2)->index(0);
  emit summary->list(2)->doubleClicked(first);
  EXPECT_EQ(window->session().Current_Information_Index, 65);  // frame 33's progress event
}

TEST_F(SummaryFind, LiveFollowFiltersTheEntriesAsTheyArrive) {
  const std::string log = dir.path("tmlog.dat");
  window->setLogFile(QString::fromStdString(log));
  testing::write_bytes(log, numbered_frames(1, 4).bytes());
  window->startCollection();
  summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  bar = summary->findBar(0);
  choose_label("Complete");
  bar->onlyMatches()->setChecked(true);
  ASSERT_TRUE(done());
  EXPECT_EQ(summary->model(0)->rowCount(), 2);

  testing::write_bytes(log, numbered_frames(1, 11).bytes());
  window->Timer1_Timer();
  EXPECT_EQ(summary->model(0)->rowCount(), 5);  // 2, 4, ..., 10, tested as they came
  EXPECT_EQ(bar->countText(), "5 of 11");
  EXPECT_TRUE(line(4).startsWith("10      "));
  // Without the filter every line that arrived is there.
  bar->clear();
  EXPECT_EQ(summary->model(0)->rowCount(), 11);
}

}  // namespace
}  // namespace morvane
