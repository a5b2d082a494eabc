// SPDX-License-Identifier: MIT
// The auxiliary view: its labels and table, scrolling over auxiliary packets, the summary's
// double click, the files it cannot show, and a new load under an open view.
#include <QScrollBar>

#include "../views/decoder_fixture.h"
#include "app_fixture.h"
#include "auxiliary_form.h"
#include "drawing_view.h"
#include "summary_view.h"
#include "views/auxiliary_view.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::hk_packet;

class AuxiliaryFormTest : public testing::AppTest {
 protected:
  Auxiliary_form* open_view() { return show<Auxiliary_form>(ViewKind::Auxiliary); }
  // The table of a science entry's readings.
  Drawing table_of(int32_t science_index) {
    const Session& s = window->session();
    return draw_aux_table(s.config, Load_Lander_Data(s, s.catalogue.Science_List[science_index])).drawing;
  }
};

// Reactor 1 (channel 101) reading 0 V, pressure 1 (channel 23) reading 2.5 V.
const std::vector<testing::Aux_Test_Reading> kTwoReadings{{0, 2001, 101, 0}, {0, 2002, 23, 0x2000}};

TEST_F(AuxiliaryFormTest, TheSummaryOpensTheChosenPacketWithItsLabelsAndTable) {
  ASSERT_TRUE(load_packets({aux_packet({}, 11, 3000), hk_packet(2), aux_packet(kTwoReadings, 12, 3001)}));
  auto* summary = show<Summary>(ViewKind::Summary);
  summary->List2_DblClick(1);  // the second science entry, the second auxiliary packet
  auto* view = shown<Auxiliary_form>(ViewKind::Auxiliary);
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->windowTitle(), "Auxiliary Data Packet");
  EXPECT_EQ(view->currentAuxNumber(), 2);
  EXPECT_EQ(view->scrollBar()->maximum(), 2);
  EXPECT_EQ(view->scrollBar()->value(), 2);
  const std::pair<const char*, const char*> labels[] = {{"Aux Data number", "2"},
                                                        {"Sequence Control", "12"},
                                                        {"Lander Time", "3001"},
                                                        {"Sensor readings", "2"},
                                                        {"Number of Auxiliary Data Packets", "2"},
                                                        {"AD590 compensation temperature", "0.00"}};
  for (const auto& [caption, value] : labels) EXPECT_EQ(view->labelText(caption), value) << caption;
  EXPECT_EQ(view->picture()->drawing(), table_of(2));
  EXPECT_TRUE(view->notice().isEmpty());

  view->scrollBar()->setValue(1);
  EXPECT_EQ(view->labelText("Sequence Control"), "11");
  EXPECT_EQ(view->labelText("Sensor readings"), "0");
  EXPECT_EQ(view->picture()->drawing(), table_of(1));
  EXPECT_EQ(window->session().Current_Science_Index, 2);  // not written back

  summary->List2_DblClick(1);  // the open view goes to the chosen packet
  EXPECT_EQ(window->view(ViewKind::Auxiliary), view);
  EXPECT_EQ(view->currentAuxNumber(), 2);
  EXPECT_EQ(view->labelText("Sequence Control"), "12");
  EXPECT_TRUE(no_message());
}

TEST_F(AuxiliaryFormTest, WithoutAuxiliaryPacketsTheViewSaysSo) {
  EXPECT_EQ(open_view()->notice(), "Please load an EGSE data file");
  window->closeView(ViewKind::Auxiliary);
  ASSERT_TRUE(load_packets({hk_packet(2)}));
  Auxiliary_form* view = open_view();
  EXPECT_EQ(view->notice(), "The EGSE data file contains no auxiliary data packets");
  EXPECT_FALSE(view->scrollBar()->isEnabled());
  EXPECT_TRUE(view->picture()->drawing().empty());
  EXPECT_TRUE(no_message());
}

TEST_F(AuxiliaryFormTest, AChannelOfNoSensorIsToldAndTheRowsBeforeItShown) {
  ASSERT_TRUE(load_packets({aux_packet({{0, 1, 101, 0}, {0, 2, 999, 0}}, 7)}));
  Auxiliary_form* view = open_view();
  EXPECT_TRUE(one_message("Subscript out of range"));
  EXPECT_TRUE(dialogs.messages[0].contains("channel ID 999"));
  EXPECT_EQ(view->picture()->drawing(), table_of(1));
  EXPECT_GT(view->picture()->drawing().size(), std::size(kAuxiliaryHeadings));
  EXPECT_EQ(view->labelText("Sequence Control"), "7");
}

TEST_F(AuxiliaryFormTest, AfterANewLoadTheNextScrollStartsOverOnTheNewFileAndAZebFileShowsNoReadings) {
  ASSERT_TRUE(load_packets({aux_packet({}, 1), aux_packet(kTwoReadings, 2), aux_packet({}, 3)}));
  Auxiliary_form* view = open_view();
  view->scrollBar()->setValue(2);
  ASSERT_GT(view->picture()->drawing().size(), std::size(kAuxiliaryHeadings));
  load_simulated(FileFormat::ZEB, "t.zeb");
  const std::vector<int32_t> aux_index = build_aux_index(window->session().catalogue);
  ASSERT_GT(aux_index.size(), 2u);
  view->scrollBar()->setValue(3);  // the first scroll after a load starts over on the new file
  EXPECT_EQ(view->currentAuxNumber(), 1);
  EXPECT_EQ(view->scrollBar()->maximum(), static_cast<int>(aux_index.size()));
  EXPECT_EQ(view->labelText("Number of Auxiliary Data Packets"), QString::number(aux_index.size()));
  view->scrollBar()->setValue(3);
  EXPECT_EQ(view->currentAuxNumber(), 3);
  EXPECT_EQ(view->labelText("Sequence Control").toInt(),
            window->session().catalogue.Science_List[aux_index[2]].Sequence_Count);
  EXPECT_EQ(view->labelText("Sensor readings"), "0");
  EXPECT_EQ(view->picture()->drawing().size(), std::size(kAuxiliaryHeadings));
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
