// SPDX-License-Identifier: MIT
// The housekeeping view: its header and pages, the "More..." button, scrolling and the summary's
// double click.
#include <filesystem>

#include <QPushButton>
#include <QScrollBar>

#include "../views/decoder_fixture.h"
#include "app_fixture.h"
#include "drawing_view.h"
#include "housekeeping_form.h"
#include "summary_view.h"
#include "views/hk_registers.h"
#include "views/hk_sensors.h"

namespace morvane {
namespace {

using testing::hk_packet;

class HousekeepingFormTest : public testing::AppTest {
 protected:
  Housekeeping_form* open_view() { return show<Housekeeping_form>(ViewKind::Housekeeping); }
  // The sensor page the records of the shown packet make.
  Drawing sensor_page() { return draw_sensor_page(window->session().config).drawing; }
  static bool more_visible(Housekeeping_form* view) { return view->moreButton()->isVisibleTo(view); }
};

TEST_F(HousekeepingFormTest, OpensOnTheCurrentEntryWithItsHeaderAndSensorPage) {
  ASSERT_TRUE(load_packets({hk_packet(2, {{18, 11}, {21, 7}}, {}, 41, 5000), hk_packet(1, {}, {}, 42, 5001)}));
  window->session().Current_HK_Index = 1;
  Housekeeping_form* view = open_view();
  EXPECT_EQ(view->windowTitle(), "Housekeeping");
  EXPECT_EQ(view->packetTypeText(), "Packet type -  Complete ");
  const std::pair<const char*, const char*> header[] = {
      {"HK Packet number", "1"},      {"Sequence Control", "41"},
      {"Lander Time", "5000"},        {"Number of Housekeeping Packets", "2"},
      {"Mode", "11  -  Calibration"}, {"Line", "7"}};
  for (const auto& [caption, value] : header) EXPECT_EQ(view->headerText(caption), value) << caption;
  EXPECT_EQ(view->picture()->drawing(), sensor_page());
  EXPECT_EQ(view->scrollBar()->maximum(), 2);
  EXPECT_EQ(view->scrollBar()->value(), 1);
  EXPECT_TRUE(more_visible(view));
  EXPECT_EQ(view->moreButton()->text(), "More...");
  EXPECT_TRUE(no_message());
}

TEST_F(HousekeepingFormTest, MoreShowsTheRegistersOfCompletePacketsAndAScrollReturnsToTheSensorPage) {
  ASSERT_TRUE(load_packets({hk_packet(2, {}, {{66, 0x8001}}), hk_packet(1), hk_packet(2)}));
  Housekeeping_form* view = open_view();
  view->moreButton()->click();
  EXPECT_TRUE(view->showingRegisters());
  EXPECT_EQ(view->moreButton()->text(), "Sensors");
  EXPECT_EQ(view->picture()->drawing(), Show_HK_Extra(window->session(), 1).drawing);
  view->moreButton()->click();
  EXPECT_FALSE(view->showingRegisters());
  EXPECT_EQ(view->moreButton()->text(), "More...");
  EXPECT_EQ(view->picture()->drawing(), sensor_page());

  view->moreButton()->click();
  view->scrollBar()->setValue(2);  // a concise packet: no registers to show
  EXPECT_EQ(window->session().Current_HK_Index, 2);
  EXPECT_FALSE(view->showingRegisters());
  EXPECT_FALSE(more_visible(view));
  EXPECT_EQ(view->packetTypeText(), "Packet type -  Concise  ");
  EXPECT_EQ(view->picture()->drawing(), sensor_page());
  view->scrollBar()->setValue(3);
  view->moreButton()->click();
  ASSERT_TRUE(view->showingRegisters());
  view->scrollBar()->setValue(1);
  EXPECT_FALSE(view->showingRegisters());
  EXPECT_TRUE(more_visible(view));
  EXPECT_EQ(view->moreButton()->text(), "More...");
  EXPECT_EQ(view->headerText("HK Packet number"), "1");

  // Drawing the pages leaves no file handle open.
  auto open_handles = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  };
  const auto before = open_handles();
  for (int k = 0; k < 20; ++k) {
    view->moreButton()->click();
    view->scrollBar()->setValue(1 + 2 * ((k + 1) % 2));
  }
  EXPECT_EQ(open_handles(), before);
}

TEST_F(HousekeepingFormTest, AnOverflowingLineIsToldWhileThePageIsDrawn) {
  ASSERT_TRUE(load_packets({hk_packet(2, {{18, 3}, {21, 9}}), hk_packet(2, {{18, 4}, {20, 128}}, {}, 8, 7000)}));
  Housekeeping_form* view = open_view();
  Drawing drawn_at_message;
  QString time_at_message;
  dialogs.on_message = [&] {
    drawn_at_message = view->picture()->drawing();
    time_at_message = view->headerText("Lander Time");
  };
  view->scrollBar()->setValue(2);
  EXPECT_TRUE(one_message("Overflow"));
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 6"));
  EXPECT_EQ(drawn_at_message, sensor_page());
  EXPECT_EQ(time_at_message, "7000");
  EXPECT_EQ(view->headerText("Mode"), "3  -  Cruise Phase");  // the previous packet's
  EXPECT_EQ(view->headerText("Line"), "9");
  EXPECT_TRUE(more_visible(view));
}

TEST_F(HousekeepingFormTest, WithoutHousekeepingPacketsTheViewStaysEmpty) {
  ASSERT_TRUE(load_packets({testing::aux_packet({})}));
  Housekeeping_form* view = open_view();
  EXPECT_TRUE(view->picture()->drawing().empty());
  EXPECT_FALSE(more_visible(view));
  EXPECT_EQ(view->scrollBar()->maximum(), 1);
  EXPECT_TRUE(no_message());
}

TEST_F(HousekeepingFormTest, TheSummaryDoubleClickShowsItsEntryOnTheSensorPage) {
  ASSERT_TRUE(load_packets({hk_packet(2, {}, {}, 1), hk_packet(1, {}, {}, 2), hk_packet(2, {}, {}, 3)}));
  auto* summary = show<Summary>(ViewKind::Summary);
  summary->List1_DblClick(2);
  auto* view = shown<Housekeeping_form>(ViewKind::Housekeeping);
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->headerText("HK Packet number"), "3");
  EXPECT_EQ(view->headerText("Sequence Control"), "3");
  EXPECT_EQ(view->scrollBar()->value(), 3);
  view->moreButton()->click();
  summary->List1_DblClick(2);  // the same entry again: back to its sensor page
  EXPECT_EQ(window->view(ViewKind::Housekeeping), view);
  EXPECT_FALSE(view->showingRegisters());
  EXPECT_EQ(view->moreButton()->text(), "More...");
  summary->List1_DblClick(1);
  EXPECT_EQ(view->headerText("HK Packet number"), "2");
  EXPECT_FALSE(more_visible(view));
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
