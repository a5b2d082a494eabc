// SPDX-License-Identifier: MIT
// The housekeeping view: its header and sensor page on the current entry.
#include <QPushButton>
#include <QScrollBar>

#include "../decoders/decoder_fixture.h"
#include "app_fixture.h"
#include "drawing_view.h"
#include "housekeeping_form.h"
#include "decoders/hk_sensors.h"

namespace morvane {
namespace {

using testing::hk_packet;

class HousekeepingFormTest : public testing::AppTest {
 protected:
  Housekeeping_form* open_view() { return show<Housekeeping_form>(ViewKind::Housekeeping); }
  // The sensor page of the current entry.
  Drawing sensor_page() {
    const Session& session = window->session();
    return draw_sensor_page(session.config,
                            decode_housekeeping(session.config, session.HK_Sensor_Data, session.Current_HK_Index))
        .drawing;
  }
  static bool more_visible(Housekeeping_form* view) { return view->more_button()->isVisibleTo(view); }
};

TEST_F(HousekeepingFormTest, OpensOnTheCurrentEntryWithItsHeaderAndSensorPage) {
  ASSERT_TRUE(load_packets({hk_packet(2, {{18, 11}, {21, 7}}, {}, 41, 5000), hk_packet(1, {}, {}, 42, 5001)}));
  window->session().Current_HK_Index = 1;
  Housekeeping_form* view = open_view();
  EXPECT_EQ(view->windowTitle(), "Housekeeping");
  EXPECT_EQ(view->packet_type_text(), "Packet type -  Complete ");
  EXPECT_EQ(view->header_text("Sequence Control"), "41");
  EXPECT_EQ(view->header_text("Mode"), "11  -  Calibration");
  EXPECT_EQ(view->picture()->drawing(), sensor_page());
  EXPECT_EQ(view->scroll_bar()->maximum(), 2);
  EXPECT_EQ(view->scroll_bar()->value(), 1);
  EXPECT_TRUE(more_visible(view));
  EXPECT_EQ(view->more_button()->text(), "More...");
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
