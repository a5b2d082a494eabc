// SPDX-License-Identifier: MIT
// The information window: what the decoder makes of every entry of a simulated file, the
// summary's double click, ZEB records, and packets whose layout fails.
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
    window->showInformationEntry();
    return shown<Information_Form>(ViewKind::Information);
  }
  static QString text(const Information_Form* form, int label) { return form->label(label)->text(); }
  // The window shows what a decoder shown the same entries holds.
  static void expect_shows(const Information_Form* form, const Information_View& decoder) {
    const Information_Labels& labels = decoder.labels();
    const std::string* texts[] = {&labels.Label2, &labels.Label3, &labels.Label5, &labels.Label7, &labels.Label9};
    const int numbers[] = {2, 3, 5, 7, 9};
    for (int k = 0; k < 5; ++k) EXPECT_EQ(text(form, numbers[k]).toStdString(), *texts[k]) << "Label" << numbers[k];
    EXPECT_EQ(form->rawDump()->drawing(), decoder.raw_dump());
    EXPECT_EQ(form->translation()->drawing(), decoder.translation_drawing());
  }
};

TEST_F(InformationWindow, EveryEntryOfASimulatedFileShowsWhatTheDecoderMakesOfIt) {
  load_simulated(FileFormat::CSS, "cycle.css");
  Information_Form* form = open_on(1);
  ASSERT_NE(form, nullptr);
  Information_View decoder;
  for (int32_t i = 1; i <= window->session().catalogue.Information_Count(); ++i) {
    SCOPED_TRACE(i);
    form->scrollBar()->setValue(i);
    decoder.show(window->session(), i);
    expect_shows(form, decoder);
  }
  EXPECT_TRUE(no_message());
}

TEST_F(InformationWindow, TheSummaryDoubleClickShowsItsEntryInTheOpenWindowInFront) {
  ASSERT_TRUE(load_frames(testing::three_frames()));
  auto* summary = show<Summary>(ViewKind::Summary);
  summary->List3_DblClick(2);  // the acceptance failure
  auto* form = shown<Information_Form>(ViewKind::Information);
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->windowTitle(), "Information Packet");
  const std::pair<int, const char*> captions[] = {
      {1, "Raw Data"}, {4, "Packet type  -"}, {6, "Sequence Count"}, {8, "Lander Time"}};
  for (const auto& [label, caption] : captions) EXPECT_EQ(text(form, label), caption);
  EXPECT_EQ(form->scrollBar()->maximum(), window->session().catalogue.Information_Count());
  EXPECT_EQ(form->scrollBar()->value(), 3);
  EXPECT_EQ(text(form, 2), "Lander Pkt  2");
  EXPECT_EQ(text(form, 3), "Information Pkt 3");
  EXPECT_EQ(text(form, 5), " Acceptance Failure      ");
  EXPECT_EQ(text(form, 7), "6");
  EXPECT_EQ(text(form, 9), "1004");

  // Another line refreshes the same window and brings it to the front.
  window->showView(ViewKind::Summary);
  summary->List3_DblClick(1);
  EXPECT_EQ(window->view(ViewKind::Information), form);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(form));
  EXPECT_EQ(text(form, 3), "Information Pkt 2");
  EXPECT_EQ(text(form, 5), " Normal Progress Event   ");
  EXPECT_TRUE(no_message());
}

TEST_F(InformationWindow, AZebRecordShowsItsItemsInATallerDumpAndKeepsTheTranslation) {
  ASSERT_TRUE(load_frames(testing::three_frames()));
  Information_Form* form = open_on(2);
  const Drawing translated = form->translation()->drawing();
  const int binary_height = form->rawDump()->minimumHeight();

  // The window is not rebuilt by a load: the next entry shown comes from the ZEB file.
  testing::write_file(dir.path("t.zeb"),
                      testing::zeb_text({testing::zeb_record({{5, 1847}, {15, 1}, {7, 12}, {9, 777}}),
                                         testing::zeb_record({{5, 1847}, {15, 2}, {7, 13}, {9, 778}, {136, 4242}})}));
  ASSERT_TRUE(window->loadFile(FileFormat::ZEB, QString::fromStdString(dir.path("t.zeb"))));
  window->session().Current_Information_Index = 2;
  window->showInformationEntry();
  EXPECT_EQ(text(form, 5), " Warning Anomalous Event ");
  EXPECT_EQ(text(form, 9), "778");
  ASSERT_EQ(form->rawDump()->drawing().size(), 136u);
  EXPECT_EQ(form->rawDump()->drawing()[135].text, "4242");
  EXPECT_GT(form->rawDump()->minimumHeight(), binary_height) << "seventeen rows of items";
  EXPECT_EQ(form->translation()->drawing(), translated);
  EXPECT_TRUE(no_message());
}

TEST_F(InformationWindow, APacketTheLayoutCannotTakeIsAMessageAndTheWindowKeepsWhatTheDecoderKept) {
  struct Case {
    const char* name;
    std::vector<Packet> frame;
    int32_t failing;
  };
  const Case cases[] = {
      {"a packet longer than 64 bytes",
       {Packet{0x0F31, 3, 11, 0, 500, {{14, 0x0100}, {16, 0x1234}}, {}}, Packet{0x0F37, 4, 60, 0, 501, {{14, 0x0100}}, {}}},
       2},
      // One EEPROM block of 30 data words from word 13: word 32 is the last there is.
      {"a dump beyond word 32", {Packet{0x0F39, 3, 57, 0, 500, {{16, 0x9701}, {18, 0xA1}, {20, 0xA2}, {22, 30}}, {}}}, 1},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    testing::FrameWriter writer(282);
    writer.add_frame(c.frame);
    ASSERT_TRUE(load_frames(writer, std::string(c.name) + ".css"));
    window->closeView(ViewKind::Information);
    dialogs.messages.clear();
    Information_View decoder;
    for (int32_t i = 1; i <= c.failing; ++i) {
      try {
        decoder.show(window->session(), i);
      } catch (const RuntimeError&) {
      }
    }
    Information_Form* form = open_on(1);
    form->scrollBar()->setValue(c.failing);
    EXPECT_TRUE(one_message("Subscript out of range"));
    expect_shows(form, decoder);
  }
}

TEST_F(InformationWindow, WithoutAFileNothingIsShown) {
  auto* form = show<Information_Form>(ViewKind::Information);
  EXPECT_EQ(form->scrollBar()->maximum(), 1);
  form->scrollBar()->setValue(1);
  EXPECT_TRUE(form->rawDump()->drawing().empty());
  EXPECT_EQ(text(form, 3), "");
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
