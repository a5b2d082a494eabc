// SPDX-License-Identifier: MIT
// The information window on packets whose layout fails: a message, and the window keeps what the
// decoder kept.
#include "information_form.h"

#include <QLabel>
#include <QMdiArea>
#include <QScrollBar>

#include "app_fixture.h"
#include "core/error.h"
#include "drawing_view.h"
#include "summary_view.h"

namespace morvane {
namespace {

using testing::Packet;

class InformationWindow : public testing::AppTest {
 protected:
  // The form on a loaded file, opened as the summary opens it.
  Information_Form* open_on(int32_t index) {
    window->session().Current_Information_Index = index;
    window->show_information_entry();
    return shown<Information_Form>(ViewKind::Information);
  }
  static QString text(const Information_Form* form, int label) { return form->label(label)->text(); }
  // The window shows what a decoder shown the same entries holds.
  static void expect_shows(const Information_Form* form, const InformationPresenter& decoder) {
    const InformationLabels& labels = decoder.labels();
    const std::string* texts[] = {&labels.Label2, &labels.Label3, &labels.Label5, &labels.Label7, &labels.Label9};
    const int numbers[] = {2, 3, 5, 7, 9};
    for (int k = 0; k < 5; ++k) EXPECT_EQ(text(form, numbers[k]).toStdString(), *texts[k]) << "Label" << numbers[k];
    EXPECT_EQ(form->raw_dump()->drawing(), decoder.raw_dump());
    EXPECT_EQ(form->translation()->drawing(), decoder.translation_drawing());
  }
};

TEST_F(InformationWindow, APacketTheLayoutCannotTakeIsAMessageAndTheWindowKeepsWhatTheDecoderKept) {
  struct Case {
    const char* name;
    std::vector<Packet> frame;
    int32_t failing;
  };
  const Case cases[] = {
      {"a packet longer than 64 bytes",
       {Packet{testing::kAcceptanceId, 3, 11, 0, 500, {{14, 0x0100}, {16, 0x1234}}, {}},
        testing::labelled(LabelCode::NormalProgressEvent, 4, 60, 501)},
       2},
      // One EEPROM block of 30 data words from word 13: word 32 is the last there is.
      {"a dump beyond word 32",
       {Packet{testing::kMemoryDumpId, 3, 57, 0, 500, {{16, 0x9701}, {18, 0xA1}, {20, 0xA2}, {22, 30}}, {}}},
       1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    testing::FrameWriter writer(282);
    writer.add_frame(c.frame);
    ASSERT_TRUE(load_frames(writer, std::string(c.name) + ".css"));
    window->close_view(ViewKind::Information);
    dialogs.messages.clear();
    InformationPresenter decoder;
    for (int32_t i = 1; i <= c.failing; ++i) {
      try {
        decoder.show(window->session(), i);
      } catch (const RuntimeError&) {
      }
    }
    Information_Form* form = open_on(1);
    form->scroll_bar()->setValue(c.failing);
    EXPECT_TRUE(one_message("Subscript out of range"));
    expect_shows(form, decoder);
  }
}

}  // namespace
}  // namespace morvane
