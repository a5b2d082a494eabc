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
struct MarkedWords {
  int first = 0;
  int last = 0;
  int count = 0;
  bool whole = true;
  bool operator==(const MarkedWords&) const = default;
};
void PrintTo(const MarkedWords& m, std::ostream* out) {
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
  MarkedWords packet_words() const { return words(kPacketMarkColour); }
  MarkedWords byte_words() const { return words(kByteMarkColour); }
  MarkedWords words(const Colour& colour) const {
    MarkedWords m;
    for (const DrawingView::TextMark& mark : raw()->picture()->text_marks()) {
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

TEST_F(RawLink, FromTheHousekeepingViewTheRawViewOpensOnThePacketsWords) {
  load_three_frames();
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  show_in_raw_frame(housekeeping);
  ASSERT_NE(raw(), nullptr);
  EXPECT_EQ(window->mdi_area()->activeSubWindow(), window->frame_of(raw()));
  EXPECT_EQ(raw()->current_frame(), 1);
  EXPECT_EQ(raw()->frame_label(), "Lander packet number 1");
  EXPECT_EQ(packet_words(), (MarkedWords{12, 40, 29, true}));
  EXPECT_EQ(byte_words().count, 0);

  housekeeping->scroll_bar()->setValue(2);
  show_in_raw_frame(housekeeping);
  EXPECT_EQ(raw()->current_frame(), 3);
  EXPECT_EQ(packet_words(), (MarkedWords{12, 40, 29, true}));
  // Stepping to another frame leaves nothing of the packet to mark there.
  raw()->show_frame(2);
  EXPECT_EQ(packet_words().count, 0);
  raw()->show_frame(3);
  EXPECT_EQ(packet_words().count, 29);
}

TEST_F(RawLink, WithoutAPacketOnViewNothingOpens) {
  auto* housekeeping = window->show_view(ViewKind::Housekeeping);  // no file
  show_in_raw_frame(housekeeping);
  EXPECT_EQ(raw(), nullptr);
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
