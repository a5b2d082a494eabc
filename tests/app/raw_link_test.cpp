// SPDX-License-Identifier: MIT
#include "raw_link.h"

#include <QAction>
#include <QListView>
#include <QMdiArea>
#include <QScrollBar>
#include <QTabWidget>
#include <QTest>

#include "app_fixture.h"
#include "auxiliary_form.h"
#include "core/number_text.h"
#include "drawing_view.h"
#include "housekeeping_form.h"
#include "information_form.h"
#include "raw_view.h"
#include "sensor_picker.h"
#include "spectra_form.h"
#include "summary_view.h"
#include "twips.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;

// What the raw view marks: the first and last word and how many, and whether every one is whole.
struct Marked_Words {
  int first = 0;
  int last = 0;
  int count = 0;
  bool whole = true;
  bool operator==(const Marked_Words&) const = default;
};
void PrintTo(const Marked_Words& m, std::ostream* out) {
  *out << "words " << m.first << ".." << m.last << " (" << m.count << (m.whole ? ", whole)" : ", partly)");
}

class RawLink : public testing::AppTest {
 protected:
  void load_three_frames() { ASSERT_TRUE(load_frames(testing::three_frames())); }
  static void show_in_raw_frame(ChildView* view) {
    ASSERT_NE(view, nullptr);
    QAction* action = view->findChild<QAction*>("actShowInRawFrame");
    ASSERT_NE(action, nullptr);
    EXPECT_EQ(action->text(), "Show in raw frame");
    EXPECT_TRUE(view->actions().contains(action));  // in the window's context menu
    action->trigger();
  }
  RawData* raw() const { return shown<RawData>(ViewKind::RawData); }
  Marked_Words packet_words() const { return words(kPacketMarkColour); }
  Marked_Words byte_words() const { return words(kByteMarkColour); }
  Marked_Words words(const Colour& colour) const {
    Marked_Words m;
    for (const DrawingView::Text_Mark& mark : raw()->picture()->textMarks()) {
      if (!(mark.colour == colour)) continue;
      const int word = static_cast<int>(mark.text) + 1;
      if (m.count++ == 0) m.first = word;
      m.last = word;
      m.whole = m.whole && mark.first_char == 0 &&
                mark.char_count == static_cast<int>(raw()->picture()->drawing()[mark.text].text.size());
    }
    return m;
  }
};

// Three frames: frame 1 holds housekeeping (bytes 23..80), auxiliary (81..112) and isotope
// (113..144) packets; frame 2 an event (305..322), an acceptance failure (323..340) and a GC
// spectrum (341..372); frame 3 a concise housekeeping packet (587..644).
TEST_F(RawLink, FromTheHousekeepingViewTheRawViewOpensOnThePacketsWords) {
  load_three_frames();
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  show_in_raw_frame(housekeeping);
  ASSERT_NE(raw(), nullptr);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(raw()));
  EXPECT_EQ(raw()->currentFrame(), 1);
  EXPECT_EQ(raw()->frameLabel(), "Lander packet number 1");
  EXPECT_EQ(packet_words(), (Marked_Words{12, 40, 29, true}));
  EXPECT_EQ(byte_words().count, 0);

  housekeeping->scrollBar()->setValue(2);
  show_in_raw_frame(housekeeping);
  EXPECT_EQ(raw()->currentFrame(), 3);
  EXPECT_EQ(packet_words(), (Marked_Words{12, 40, 29, true}));
  // Stepping to another frame leaves nothing of the packet to mark there.
  raw()->showFrame(2);
  EXPECT_EQ(packet_words().count, 0);
  raw()->showFrame(3);
  EXPECT_EQ(packet_words().count, 29);
}

TEST_F(RawLink, FromTheAuxiliaryInformationAndSpectrumViewsAndTheSelectedSummaryLine) {
  load_three_frames();
  show_in_raw_frame(window->showView(ViewKind::Auxiliary));
  EXPECT_EQ(raw()->currentFrame(), 1);
  EXPECT_EQ(packet_words(), (Marked_Words{41, 56, 16, true}));

  window->session().Current_Information_Index = 3;  // the acceptance failure
  window->showInformationEntry();
  show_in_raw_frame(window->view(ViewKind::Information));
  EXPECT_EQ(raw()->currentFrame(), 2);
  EXPECT_EQ(packet_words(), (Marked_Words{21, 29, 9, true}));
  // An empty slot marks its identifier word.
  auto* information = shown<Information_Form>(ViewKind::Information);
  information->scrollBar()->setValue(1);
  show_in_raw_frame(information);
  EXPECT_EQ(raw()->currentFrame(), 1);
  EXPECT_EQ(packet_words(), (Marked_Words{73, 73, 1, true}));

  auto* spectra = show<Spectra_Form>(ViewKind::Spectra);
  show_in_raw_frame(spectra);  // the complete spectrum's sub-packet
  EXPECT_EQ(raw()->currentFrame(), 1);
  EXPECT_EQ(packet_words(), (Marked_Words{57, 72, 16, true}));
  spectra->spectrumScroll()->setValue(2);  // the GC spectrum
  show_in_raw_frame(spectra);
  EXPECT_EQ(raw()->currentFrame(), 2);
  EXPECT_EQ(packet_words(), (Marked_Words{30, 45, 16, true}));

  raw()->showFrame(3);
  auto* summary = show<Summary>(ViewKind::Summary);
  summary->tabs()->setCurrentIndex(1);
  summary->list(1)->setCurrentIndex(summary->model(1)->index(2));  // the GC spectrum again
  show_in_raw_frame(summary);
  EXPECT_EQ(raw()->currentFrame(), 2);
  EXPECT_EQ(packet_words(), (Marked_Words{30, 45, 16, true}));
}

TEST_F(RawLink, WithoutAPacketOnViewNothingOpens) {
  auto* housekeeping = window->showView(ViewKind::Housekeeping);  // no file
  show_in_raw_frame(housekeeping);
  EXPECT_EQ(raw(), nullptr);
  EXPECT_TRUE(no_message());
}

TEST_F(RawLink, APacketRunningIntoTheNextFrameIsMarkedThereToo) {
  FrameWriter writer(282);
  writer.add_frame({Packet{0x0F39, 1, 293, 0, 1000, {}, {}}});  // a memory dump of 300 bytes
  writer.add_frame({});
  ASSERT_TRUE(load_frames(writer, "long.css"));
  window->session().Current_Information_Index = 1;
  window->showInformationEntry();
  show_in_raw_frame(window->view(ViewKind::Information));
  EXPECT_EQ(packet_words(), (Marked_Words{12, 141, 130, true}));
  raw()->scrollBar()->setValue(2);
  EXPECT_EQ(packet_words(), (Marked_Words{1, 20, 20, true}));
  raw()->findChild<QAction*>("actClearMark")->trigger();
  EXPECT_EQ(packet_words().count, 0);
  EXPECT_FALSE(raw()->mark().has_value());
}

// A sensor line clicked on the sensor page marks the sensor's byte: the half of the word that
// shows the byte the page decoded, in either byte order.
class SensorByte : public RawLink, public ::testing::WithParamInterface<bool> {
 protected:
  // The centre of a sensor's line on the page, in pixels.
  QPoint line_of(int sensor) const {
    for (const Sensor_Line& line : draw_sensor_page(window->session().config).lines) {
      if (line.sensor != sensor) continue;
      const Twips_Box box = sensor_line_box(line);
      return twips_to_pixels(box.x + box.width / 2, box.y + box.height / 2, *housekeeping->picture());
    }
    return {};
  }
  void click_sensor(int sensor) { QTest::mouseClick(housekeeping->picture(), Qt::LeftButton, {}, line_of(sensor)); }
  // The text of the byte the raw view marks.
  QString marked_byte_text() const {
    const auto& marks = raw()->picture()->textMarks();
    for (const auto& mark : marks) {
      if (mark.colour == kByteMarkColour) {
        return QString::fromStdString(raw()->picture()->drawing()[mark.text].text)
            .mid(mark.first_char, mark.char_count);
      }
    }
    return {};
  }
  Housekeeping_form* housekeeping = nullptr;
};

TEST_P(SensorByte, ClickingASensorLineMarksItsByte) {
  const bool reversed = GetParam();
  FrameWriter writer(282, reversed);
  Packet packet{0x0F34, 1, 89, 0, 1000, {{16, 2}}, {}};
  for (int k = 20; k < 96; ++k) packet.bytes[k] = static_cast<uint8_t>(k + 100);
  writer.add_frame({packet});
  window->setByteReverse(reversed);
  ASSERT_TRUE(window->loadFile(FileFormat::QM, write_frames("hk.qm", writer)));
  const Session& s = window->session();
  const Packet_Entry& entry = s.catalogue.HK_List[1];

  housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  ASSERT_TRUE(QTest::qWaitForWindowExposed(housekeeping->window()));
  // With no raw view open a click only chooses the line.
  click_sensor(28);
  EXPECT_EQ(housekeeping->sensorPicker()->sensor(), 28);
  EXPECT_EQ(housekeeping->picture()->boxMarks().size(), 1u);
  EXPECT_EQ(raw(), nullptr);
  show_in_raw_frame(housekeeping);
  ASSERT_NE(raw(), nullptr);

  for (const int sensor : {28, 2, 33}) {
    click_sensor(sensor);
    const int k = s.config.sensor(sensor).Byte_Offset;
    const int64_t position = entry.Packet_Position + (reversed ? swapped_byte_offset(k) : k);
    ASSERT_TRUE(raw()->mark().has_value());
    EXPECT_EQ(raw()->mark()->byte, (Raw_Span{position, position})) << sensor;
    EXPECT_EQ(byte_words().count, 1) << sensor;
    EXPECT_FALSE(byte_words().whole) << sensor;
    EXPECT_EQ(marked_byte_text().toStdString(), hex2(s.telemetry().packet_byte(entry, k, reversed))) << sensor;
    EXPECT_EQ(marked_byte_text().toStdString(), hex2(s.HK_Sensor_Data.at(sensor, 1))) << sensor;
  }
  // A click beside the lines chooses none; the register page has none.
  QTest::mouseClick(housekeeping->picture(), Qt::LeftButton, {}, QPoint(2, 2));
  EXPECT_EQ(housekeeping->sensorPicker()->sensor(), 0);
  EXPECT_TRUE(housekeeping->picture()->boxMarks().empty());
  click_sensor(2);
  housekeeping->Command1_Click();
  EXPECT_EQ(housekeeping->sensorPicker()->sensor(), 0);
}

INSTANTIATE_TEST_SUITE_P(BothByteOrders, SensorByte, ::testing::Bool(),
                         [](const auto& info) { return info.param ? "Reversed" : "Normal"; });

TEST_F(RawLink, AZebRecordMarksItsItems) {
  testing::write_file(dir.path("t.zeb"),
                      testing::zeb_text({testing::zeb_record({{5, 1844}, {7, 12}, {8, 51}, {9, 1000}, {17, 2}})}));
  ASSERT_TRUE(window->loadFile(FileFormat::ZEB, QString::fromStdString(dir.path("t.zeb"))));
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  show_in_raw_frame(housekeeping);
  EXPECT_EQ(raw()->currentFrame(), 1);
  EXPECT_EQ(packet_words(), (Marked_Words{5, 136, 132, true}));
  const QPoint board = twips_to_pixels(3200 + 1600, 200 + 100, *housekeeping->picture());  // sensor 28
  QTest::mouseClick(housekeeping->picture(), Qt::LeftButton, {}, board);
  const int item = window->session().config.sensor(28).Byte_Offset / 2 + 9;
  EXPECT_EQ(byte_words(), (Marked_Words{item, item, 1, true}));
}

}  // namespace
}  // namespace morvane
