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

TEST_F(RawLink, WithoutAPacketOnViewNothingOpens) {
  auto* housekeeping = window->showView(ViewKind::Housekeeping);  // no file
  show_in_raw_frame(housekeeping);
  EXPECT_EQ(raw(), nullptr);
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
