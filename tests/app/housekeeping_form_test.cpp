// SPDX-License-Identifier: MIT
// The housekeeping view: its pages, the "More..." button, scrolling, live follow and the
// summary's double click.
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
using testing::Packet;

class HousekeepingFormTest : public testing::AppTest {
 protected:
  // One packet a frame, written in the start-up byte order.
  QString write_packets(const std::vector<Packet>& packets, const std::string& name = "t.css") {
    testing::FrameWriter writer(282);
    for (const Packet& packet : packets) writer.add_frame({packet});
    return write_frames(name, writer);
  }
  Housekeeping_form* open_view() { return static_cast<Housekeeping_form*>(window->showView(ViewKind::Housekeeping)); }
  // The sensor page the records of the shown packet make.
  Drawing sensor_page() { return draw_sensor_page(window->session().config).drawing; }
  bool more_visible(Housekeeping_form* view) { return view->moreButton()->isVisibleTo(view); }
};

TEST_F(HousekeepingFormTest, OpensOnTheCurrentEntryWithItsHeaderAndSensorPage) {
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({hk_packet(2, {{18, 11}, {21, 7}}, {}, 41, 5000),
                                                               hk_packet(1, {}, {}, 42, 5001)})));
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
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(HousekeepingFormTest, TheButtonSwitchesBetweenTheSensorAndRegisterPages) {
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({hk_packet(2, {}, {{66, 0x8001}})})));
  Housekeeping_form* view = open_view();
  const Drawing sensors = view->picture()->drawing();

  view->moreButton()->click();
  EXPECT_TRUE(view->showingRegisters());
  EXPECT_EQ(view->moreButton()->text(), "Sensors");
  EXPECT_EQ(view->picture()->drawing(), Show_HK_Extra(window->session(), 1).drawing);
  EXPECT_EQ(testing::text_at(view->picture()->drawing(), 0, 0), "Valve enable register    8001");

  view->moreButton()->click();
  EXPECT_FALSE(view->showingRegisters());
  EXPECT_EQ(view->moreButton()->text(), "More...");
  EXPECT_EQ(view->picture()->drawing(), sensors);
}

TEST_F(HousekeepingFormTest, MoreIsOfferedForCompletePacketsOnlyAndAScrollReturnsToTheSensorPage) {
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({hk_packet(2), hk_packet(1), hk_packet(2)})));
  Housekeeping_form* view = open_view();
  view->moreButton()->click();
  ASSERT_TRUE(view->showingRegisters());

  view->scrollBar()->setValue(2);  // a concise packet
  EXPECT_EQ(window->session().Current_HK_Index, 2);
  EXPECT_FALSE(view->showingRegisters());
  EXPECT_FALSE(more_visible(view));
  EXPECT_EQ(view->moreButton()->text(), "More...");
  EXPECT_EQ(view->packetTypeText(), "Packet type -  Concise  ");
  EXPECT_EQ(view->picture()->drawing(), sensor_page());

  view->moreButton()->click();  // registers again, then on to a complete packet
  view->scrollBar()->setValue(3);
  view->moreButton()->click();
  ASSERT_TRUE(view->showingRegisters());
  view->scrollBar()->setValue(1);
  EXPECT_FALSE(view->showingRegisters());
  EXPECT_TRUE(more_visible(view));
  EXPECT_EQ(view->moreButton()->text(), "More...");
  EXPECT_EQ(view->headerText("HK Packet number"), "1");
  EXPECT_EQ(view->picture()->drawing(), sensor_page());
}

TEST_F(HousekeepingFormTest, AnOverflowingLineIsToldWhileThePageIsDrawn) {
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({hk_packet(2, {{18, 3}, {21, 9}}),
                                                               hk_packet(2, {{18, 4}, {20, 128}}, {}, 8, 7000)})));
  Housekeeping_form* view = open_view();
  Drawing drawn_at_message;
  QString time_at_message;
  dialogs.on_message = [&] {
    drawn_at_message = view->picture()->drawing();
    time_at_message = view->headerText("Lander Time");
  };
  view->scrollBar()->setValue(2);
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].startsWith("Overflow")) << dialogs.messages[0].toStdString();
  EXPECT_TRUE(dialogs.messages[0].endsWith("; Error number 6"));
  EXPECT_EQ(drawn_at_message, sensor_page());
  EXPECT_EQ(time_at_message, "7000");
  EXPECT_EQ(view->headerText("Mode"), "3  -  Cruise Phase");  // the previous packet's
  EXPECT_EQ(view->headerText("Line"), "9");
  EXPECT_TRUE(more_visible(view));
}

TEST_F(HousekeepingFormTest, WithoutHousekeepingPacketsTheViewStaysEmpty) {
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({testing::aux_packet({})})));
  Housekeeping_form* view = open_view();
  EXPECT_TRUE(view->picture()->drawing().empty());
  EXPECT_FALSE(more_visible(view));
  EXPECT_EQ(view->scrollBar()->maximum(), 1);
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(HousekeepingFormTest, ShowingThePagesLeavesNoFileHandleOpen) {
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_packets({hk_packet(2), hk_packet(2)})));
  Housekeeping_form* view = open_view();
  auto open_handles = [] {
    const std::filesystem::path fds("/proc/self/fd");
    return std::distance(std::filesystem::directory_iterator(fds), std::filesystem::directory_iterator());
  };
  const auto before = open_handles();
  for (int k = 0; k < 20; ++k) {
    view->moreButton()->click();
    view->scrollBar()->setValue(1 + (k + 1) % 2);
  }
  EXPECT_EQ(open_handles(), before);
}

TEST_F(HousekeepingFormTest, TheSummaryDoubleClickShowsItsEntryOnTheSensorPage) {
  ASSERT_TRUE(window->loadFile(
      FileFormat::CSS, write_packets({hk_packet(2, {}, {}, 1), hk_packet(1, {}, {}, 2), hk_packet(2, {}, {}, 3)})));
  auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  summary->List1_DblClick(2);
  auto* view = static_cast<Housekeeping_form*>(window->view(ViewKind::Housekeeping));
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
  EXPECT_TRUE(dialogs.messages.empty());
}

// A log that grows as the ground station writes it.
class HousekeepingLiveTest : public HousekeepingFormTest {
 protected:
  void SetUp() override {
    HousekeepingFormTest::SetUp();
    log = dir.path("tmlog.dat");
    window->setLogFile(QString::fromStdString(log));
  }
  void write_log(const std::vector<Packet>& packets) {
    testing::FrameWriter writer(282);
    for (const Packet& packet : packets) writer.add_frame({packet});
    testing::write_bytes(log, writer.bytes());
  }
  std::string log;
};

TEST_F(HousekeepingLiveTest, NewPacketsMoveTheViewToTheNewest) {
  const Packet event{0x0F37, 1, 11, 0, 100, {{14, 0x0100}}, {}};
  std::vector<Packet> packets{hk_packet(2, {}, {}, 1), event};
  write_log(packets);
  window->startCollection();
  Housekeeping_form* view = open_view();
  EXPECT_EQ(view->headerText("HK Packet number"), "1");

  packets.push_back(hk_packet(1, {}, {}, 2));
  packets.push_back(hk_packet(2, {}, {}, 3, 4321));
  write_log(packets);
  window->Timer1_Timer();
  EXPECT_EQ(view->scrollBar()->maximum(), 3);
  EXPECT_EQ(view->scrollBar()->value(), 3);
  EXPECT_EQ(view->headerText("HK Packet number"), "3");
  EXPECT_EQ(view->headerText("Lander Time"), "4321");
  EXPECT_EQ(view->headerText("Number of Housekeeping Packets"), "3");

  view->moreButton()->click();  // frames without housekeeping leave the page alone
  packets.push_back(event);
  write_log(packets);
  window->Timer1_Timer();
  EXPECT_EQ(window->session().Packet_Count, 5);
  EXPECT_TRUE(view->showingRegisters());
  window->stopCollection();
}

TEST_F(HousekeepingLiveTest, TheFirstHousekeepingPacketOfALogIsDrawn) {
  const Packet event{0x0F37, 1, 11, 0, 100, {{14, 0x0100}}, {}};
  write_log({event});
  window->startCollection();
  Housekeeping_form* view = open_view();
  EXPECT_TRUE(view->picture()->drawing().empty());
  write_log({event, hk_packet(2, {}, {}, 9)});
  window->Timer1_Timer();
  EXPECT_EQ(view->headerText("HK Packet number"), "1");
  EXPECT_EQ(view->headerText("Sequence Control"), "9");
  EXPECT_EQ(view->picture()->drawing(), sensor_page());
  EXPECT_TRUE(more_visible(view));
  window->stopCollection();
}

}  // namespace
}  // namespace morvane
