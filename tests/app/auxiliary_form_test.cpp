// SPDX-License-Identifier: MIT
// The auxiliary view: its table and labels, scrolling over auxiliary packets, the summary's
// double click, the files it cannot show, and a new load under an open view.
#include <QScrollBar>

#include "../views/decoder_fixture.h"
#include "app_fixture.h"
#include "auxiliary_form.h"
#include "drawing_view.h"
#include "sim/telemetry_writer.h"
#include "summary_view.h"

namespace morvane {
namespace {

using testing::aux_packet;
using testing::hk_packet;
using testing::Packet;
using testing::text_at;

class AuxiliaryFormTest : public testing::AppTest {
 protected:
  QString write_packets(const std::vector<Packet>& packets, const std::string& name = "t.css") {
    testing::FrameWriter writer(282);
    for (const Packet& packet : packets) writer.add_frame({packet});
    return write_frames(name, writer);
  }
  Auxiliary_form* open_view() { return static_cast<Auxiliary_form*>(window->showView(ViewKind::Auxiliary)); }
};

// Reactor 1 (channel 101) reading 0 V, pressure 1 (channel 23) reading 2.5 V.
const std::vector<testing::Aux_Test_Reading> kTwoReadings{{0, 2001, 101, 0}, {0, 2002, 23, 0x2000}};

TEST_F(AuxiliaryFormTest, TheSummaryOpensTheChosenPacketWithItsLabelsAndTable) {
  ASSERT_TRUE(window->loadFile(
      FileFormat::CSS, write_packets({aux_packet({}, 11, 3000), hk_packet(2), aux_packet(kTwoReadings, 12, 3001)})));
  auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  summary->List2_DblClick(1);  // the second science entry, the second auxiliary packet
  auto* view = static_cast<Auxiliary_form*>(window->view(ViewKind::Auxiliary));
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
  const Drawing& table = view->picture()->drawing();
  EXPECT_EQ(text_at(table, 0, 50), "Component");
  EXPECT_EQ(text_at(table, 0, 420), "Reactor 1");
  EXPECT_EQ(text_at(table, 0, 640), "Pressure 1");
  EXPECT_TRUE(view->notice().isEmpty());

  view->scrollBar()->setValue(1);
  EXPECT_EQ(view->labelText("Aux Data number"), "1");
  EXPECT_EQ(view->labelText("Sequence Control"), "11");
  EXPECT_EQ(view->labelText("Sensor readings"), "0");
  EXPECT_EQ(window->session().Current_Science_Index, 2);  // not written back

  summary->List2_DblClick(1);  // the open view goes to the chosen packet
  EXPECT_EQ(window->view(ViewKind::Auxiliary), view);
  EXPECT_EQ(view->currentAuxNumber(), 2);
  EXPECT_EQ(view->labelText("Sequence Control"), "12");
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(AuxiliaryFormTest, WithoutAuxiliaryPacketsTheViewSaysSo) {
  Auxiliary_form* view = open_view();  // no file yet
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->notice(), "Please load an EGSE data file");
  window->closeView(ViewKind::Auxiliary);

  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({hk_packet(2)})));
  view = open_view();
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->notice(), "The EGSE data file contains no auxiliary data packets");
  EXPECT_FALSE(view->scrollBar()->isEnabled());
  EXPECT_TRUE(view->picture()->drawing().empty());
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(AuxiliaryFormTest, AChannelOfNoSensorIsToldAndTheRowsBeforeItShown) {
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({aux_packet({{0, 1, 101, 0}, {0, 2, 999, 0}}, 7)})));
  Auxiliary_form* view = open_view();
  ASSERT_NE(view, nullptr);
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].startsWith("Subscript out of range")) << dialogs.messages[0].toStdString();
  EXPECT_TRUE(dialogs.messages[0].contains("channel ID 999"));
  EXPECT_EQ(text_at(view->picture()->drawing(), 0, 420), "Reactor 1");
  EXPECT_EQ(text_at(view->picture()->drawing(), 0, 640), "(nothing)");
  EXPECT_EQ(view->labelText("Sequence Control"), "7");
}

TEST_F(AuxiliaryFormTest, AfterANewLoadTheNextScrollStartsOverOnTheNewFile) {
  ASSERT_TRUE(
      window->loadFile(FileFormat::CSS, write_packets({aux_packet({}, 1), aux_packet({}, 2), aux_packet({}, 3)})));
  Auxiliary_form* view = open_view();
  view->scrollBar()->setValue(3);
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({hk_packet(2), aux_packet(kTwoReadings, 21)}, "u.css")));
  view->scrollBar()->setValue(2);
  EXPECT_EQ(view->scrollBar()->maximum(), 1);
  EXPECT_EQ(view->currentAuxNumber(), 1);
  EXPECT_EQ(view->labelText("Sequence Control"), "21");
  EXPECT_EQ(view->labelText("Number of Auxiliary Data Packets"), "1");
  EXPECT_EQ(text_at(view->picture()->drawing(), 0, 420), "Reactor 1");
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(AuxiliaryFormTest, AZebFileShowsTheHeadingsWithoutReadings) {
  sim::Telemetry_Options options;
  options.format = FileFormat::ZEB;
  const sim::Telemetry_Summary written = sim::write_telemetry(dir.path("t.zeb"), options);
  ASSERT_GT(written.count(LabelCode::AuxiliaryData), 1);
  ASSERT_TRUE(window->loadFile(FileFormat::ZEB, QString::fromStdString(dir.path("t.zeb"))));
  Auxiliary_form* view = open_view();
  const Drawing& table = view->picture()->drawing();
  EXPECT_EQ(table.size(), std::size(kAuxiliaryHeadings));
  EXPECT_EQ(view->labelText("Sensor readings"), "0");
  view->scrollBar()->setValue(2);
  EXPECT_EQ(view->labelText("Aux Data number"), "2");
  EXPECT_EQ(view->picture()->drawing().size(), std::size(kAuxiliaryHeadings));
  EXPECT_TRUE(dialogs.messages.empty());
}

}  // namespace
}  // namespace morvane
