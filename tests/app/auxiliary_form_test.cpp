// SPDX-License-Identifier: MIT
// The auxiliary view: the summary's double click, scrolling over auxiliary packets, and a file
// without any.
#include <QScrollBar>

#include "../decoders/decoder_fixture.h"
#include "app_fixture.h"
#include "auxiliary_form.h"
#include "drawing_view.h"
#include "summary_view.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::hk_packet;

class AuxiliaryFormTest : public testing::AppTest {
 protected:
  Auxiliary_form* open_view() { return show<Auxiliary_form>(ViewKind::Auxiliary); }
};

// Reactor 1 (channel 101) reading 0 V, pressure 1 (channel 23) reading 2.5 V.
const std::vector<testing::AuxTestReading> kTwoReadings{{0, 2001, 101, 0}, {0, 2002, 23, 0x2000}};

TEST_F(AuxiliaryFormTest, TheSummaryOpensTheChosenPacketWithItsLabelsAndTable) {
  ASSERT_TRUE(load_packets({aux_packet({}, 11, 3000), hk_packet(2), aux_packet(kTwoReadings, 12, 3001)}));
  auto* summary = show<Summary>(ViewKind::Summary);
  summary->List2_DblClick(1);  // the second science entry, the second auxiliary packet
  auto* view = shown<Auxiliary_form>(ViewKind::Auxiliary);
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->windowTitle(), "Auxiliary Data Packet");
  EXPECT_EQ(view->current_aux_number(), 2);
  EXPECT_EQ(view->scroll_bar()->maximum(), 2);
  EXPECT_EQ(view->scroll_bar()->value(), 2);
  EXPECT_EQ(view->label_text("Sequence Control"), "12");
  EXPECT_EQ(view->label_text("Number of Auxiliary Data Packets"), "2");
  EXPECT_FALSE(view->picture()->drawing().empty());
  EXPECT_TRUE(view->notice().isEmpty());

  view->scroll_bar()->setValue(1);
  EXPECT_EQ(view->label_text("Sequence Control"), "11");
  EXPECT_EQ(view->label_text("Sensor readings"), "0");
  EXPECT_EQ(window->session().Current_Science_Index, 2);  // not written back

  summary->List2_DblClick(1);  // the open view goes to the chosen packet
  EXPECT_EQ(window->view(ViewKind::Auxiliary), view);
  EXPECT_EQ(view->current_aux_number(), 2);
  EXPECT_EQ(view->label_text("Sequence Control"), "12");
  EXPECT_TRUE(no_message());
}

TEST_F(AuxiliaryFormTest, WithoutAuxiliaryPacketsTheViewSaysSo) {
  EXPECT_EQ(open_view()->notice(), "Please load an EGSE data file");
  window->close_view(ViewKind::Auxiliary);
  ASSERT_TRUE(load_packets({hk_packet(2)}));
  Auxiliary_form* view = open_view();
  EXPECT_EQ(view->notice(), "The EGSE data file contains no auxiliary data packets");
  EXPECT_FALSE(view->scroll_bar()->isEnabled());
  EXPECT_TRUE(view->picture()->drawing().empty());
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
