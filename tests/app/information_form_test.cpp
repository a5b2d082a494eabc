// SPDX-License-Identifier: MIT
// The information window: every kind of packet of a simulated file, the summary's double click,
// ZEB records, and packets whose layout fails.
#include "information_form.h"

#include <QLabel>
#include <QMdiArea>
#include <QScrollBar>

#include "app_fixture.h"
#include "drawing_view.h"
#include "sim/telemetry_writer.h"
#include "summary_view.h"

namespace morvane {
namespace {

class InformationWindow : public testing::AppTest {
 protected:
  // The form on a loaded file, opened as the summary opens it.
  Information_Form* open_on(int32_t index) {
    window->session().Current_Information_Index = index;
    window->showInformationEntry();
    return dynamic_cast<Information_Form*>(window->view(ViewKind::Information));
  }
  static QString text(QLabel* label) { return label ? label->text() : QStringLiteral("<none>"); }
  std::string first_message() const { return dialogs.messages.empty() ? "" : dialogs.messages[0].toStdString(); }
};

// The first line a kind of packet translates to, and the colours of its five lines.
struct KindCase {
  LabelCode label;
  const char* first_line;  // a prefix
  std::array<Colour, 5> colours;
};

constexpr std::array<Colour, 5> kAllBlack{kBlack, kBlack, kBlack, kBlack, kBlack};
constexpr std::array<Colour, 5> kAllRed{kRed, kRed, kRed, kRed, kRed};

TEST_F(InformationWindow, EveryKindOfPacketOfASimulatedFileIsTranslatedInItsColours) {
  sim::Telemetry_Options options;
  sim::write_telemetry(dir.path("cycle.css"), options);
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, QString::fromStdString(dir.path("cycle.css"))));
  const Catalogue& catalogue = window->session().catalogue;
  Information_Form* form = open_on(1);
  ASSERT_NE(form, nullptr);

  const KindCase cases[] = {
      {LabelCode::NormalProgressEvent, "Morvane Power-on start", kAllBlack},
      {LabelCode::AcceptanceSuccess, "Packet ID of accepted packet         ", kAllBlack},
      {LabelCode::AcceptanceFailure, "Packet ID of rejected packet         ", kAllRed},
      {LabelCode::UnknownAcceptance, "Unknown Acceptance Packet", kAllBlack},
      {LabelCode::UnknownProgressEvent, "An unknown progress event occurred", kAllBlack},
      {LabelCode::MemoryDump, "Memory dump          Total of ", kAllBlack},
      {LabelCode::NpeMemoryChecksum, "Memory Checksum packet of ", kAllBlack},
      {LabelCode::Empty, "Looks like an empty packet, perhaps Morvane is bored", kAllBlack},
      {LabelCode::Unknown, "Unknown packet - user to interpret", kAllBlack},
  };
  for (const KindCase& kind : cases) {
    const std::string name(label_text(kind.label));
    int32_t index = 0;
    for (int32_t i = 1; i <= catalogue.Information_Count() && index == 0; ++i) {
      if (catalogue.Information_List[i].Label == kind.label) index = i;
    }
    ASSERT_GT(index, 0) << name;
    form->scrollBar()->setValue(index);
    EXPECT_EQ(text(form->label(3)), QStringLiteral("Information Pkt %1").arg(index)) << name;
    EXPECT_EQ(text(form->label(5)).toStdString(), name);
    // Picture2 begins with the five lines, one a row from the top.
    const Drawing& lines = form->translation()->drawing();
    ASSERT_GE(lines.size(), 5u) << name;
    EXPECT_EQ(lines[0].text.rfind(kind.first_line, 0), 0u) << name << ": " << lines[0].text;
    for (size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(lines[i].y, static_cast<int>(i) * kTranslationRowHeight) << name;
      EXPECT_EQ(lines[i].colour, kind.colours[i]) << name << " line " << i + 1;
    }
    // Picture1: the packet's words in blue.
    const Drawing& dump = form->rawDump()->drawing();
    EXPECT_EQ(static_cast<int>(dump.size()), form->decoder().words().count()) << name;
    for (const Placed_Text& word : dump) EXPECT_EQ(word.colour, kBlue) << name;
    if (kind.label == LabelCode::MemoryDump && lines.size() > 5) {
      EXPECT_EQ(lines[5].colour, kRed) << "a block's first header word";
      EXPECT_EQ(lines[5].y, 600);
    }
  }
  // The warnings are red but for a connection test's first and third lines.
  for (int32_t i = 1; i <= catalogue.Information_Count(); ++i) {
    if (catalogue.Information_List[i].Label != LabelCode::WarningAnomalousEvent) continue;
    form->scrollBar()->setValue(i);
    const Drawing& lines = form->translation()->drawing();
    const bool connection_test = lines[0].text == "Connection Test";
    EXPECT_EQ(lines[0].colour, connection_test ? kBlack : kRed) << lines[0].text;
    EXPECT_EQ(lines[1].colour, kRed) << lines[0].text;
  }
  EXPECT_TRUE(dialogs.messages.empty()) << first_message();
}

TEST_F(InformationWindow, TheSummaryDoubleClickShowsItsEntryInTheOpenWindow) {
  testing::FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  const Catalogue& catalogue = window->session().catalogue;
  auto index_of = [&](LabelCode label) {
    for (int32_t i = 1; i <= catalogue.Information_Count(); ++i) {
      if (catalogue.Information_List[i].Label == label) return i;
    }
    return 0;
  };
  const int32_t failure = index_of(LabelCode::AcceptanceFailure);
  const int32_t progress = index_of(LabelCode::NormalProgressEvent);
  ASSERT_GT(failure, 0);
  ASSERT_GT(progress, 0);

  auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  summary->List3_DblClick(failure - 1);
  auto* form = dynamic_cast<Information_Form*>(window->view(ViewKind::Information));
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->windowTitle(), "Information Packet");
  EXPECT_EQ(text(form->label(1)), "Raw Data");
  EXPECT_EQ(text(form->label(4)), "Packet type  -");
  EXPECT_EQ(text(form->label(6)), "Sequence Count");
  EXPECT_EQ(text(form->label(8)), "Lander Time");
  EXPECT_EQ(form->scrollBar()->maximum(), catalogue.Information_Count());
  EXPECT_EQ(form->scrollBar()->value(), failure);
  EXPECT_EQ(text(form->label(2)), "Lander Pkt  2");
  EXPECT_EQ(text(form->label(3)), QStringLiteral("Information Pkt %1").arg(failure));
  EXPECT_EQ(text(form->label(5)), " Acceptance Failure      ");
  EXPECT_EQ(text(form->label(7)), "6");
  EXPECT_EQ(text(form->label(9)), "1004");
  EXPECT_EQ(form->translation()->drawing()[0].text, "Packet ID of rejected packet         0000");

  // Another line refreshes the same window and brings it to the front.
  window->showView(ViewKind::Summary);
  summary->List3_DblClick(progress - 1);
  EXPECT_EQ(window->view(ViewKind::Information), form);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(form));
  EXPECT_EQ(text(form->label(3)), QStringLiteral("Information Pkt %1").arg(progress));
  EXPECT_EQ(text(form->label(5)), " Normal Progress Event   ");
  EXPECT_EQ(form->translation()->drawing()[0].text, "Unknown Event ID");
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(InformationWindow, AZebRecordShowsItsNumbersAndKeepsTheTranslation) {
  testing::FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  Information_Form* form = open_on(2);
  ASSERT_NE(form, nullptr);
  const Drawing translated = form->translation()->drawing();
  const int binary_height = form->rawDump()->minimumHeight();

  // The window is not rebuilt by a load: the next entry shown comes from the ZEB file.
  testing::write_file(dir.path("t.zeb"),
                      testing::zeb_text({testing::zeb_record({{5, 1847}, {15, 1}, {7, 12}, {9, 777}}),
                                         testing::zeb_record({{5, 1847}, {15, 2}, {7, 13}, {9, 778}, {136, 4242}})}));
  ASSERT_TRUE(window->loadFile(FileFormat::ZEB, QString::fromStdString(dir.path("t.zeb"))));
  window->session().Current_Information_Index = 2;
  window->showInformationEntry();
  EXPECT_EQ(text(form->label(2)), "Lander Pkt  2");
  EXPECT_EQ(text(form->label(5)), " Warning Anomalous Event ");
  EXPECT_EQ(text(form->label(7)), "13");
  EXPECT_EQ(text(form->label(9)), "778");
  const Drawing& dump = form->rawDump()->drawing();
  ASSERT_EQ(dump.size(), 136u);
  EXPECT_EQ(dump[4].text, "1847");
  EXPECT_EQ(dump[135].text, "4242");
  EXPECT_EQ(dump[135].y, 16 * 250);
  EXPECT_GT(form->rawDump()->minimumHeight(), binary_height) << "seventeen rows of items";
  EXPECT_EQ(form->translation()->drawing(), translated);
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(InformationWindow, APacketTooLongIsAMessageAndTheDumpStays) {
  testing::FrameWriter writer(282);
  writer.add_frame({testing::Packet{0x0F31, 3, 11, 0, 500, {{14, 0x0100}, {16, 0x1234}}, {}},
                    testing::Packet{0x0F37, 4, 60, 0, 501, {{14, 0x0100}}, {}}});  // 67 bytes
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("long.css", writer)));
  Information_Form* form = open_on(1);
  ASSERT_NE(form, nullptr);
  const Drawing dump = form->rawDump()->drawing();
  const Drawing translated = form->translation()->drawing();
  EXPECT_EQ(translated[0].text, "Packet ID of accepted packet         1234");

  form->scrollBar()->setValue(2);
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].startsWith("Subscript out of range")) << dialogs.messages[0].toStdString();
  EXPECT_EQ(text(form->label(3)), "Information Pkt 2");
  EXPECT_EQ(text(form->label(7)), "4");
  EXPECT_EQ(form->rawDump()->drawing(), dump);
  EXPECT_EQ(form->translation()->drawing(), translated);
}

TEST_F(InformationWindow, ADumpBeyondWord32IsAMessageAfterTheWordsBeforeIt) {
  testing::FrameWriter writer(282);
  // One EEPROM block of 30 data words from word 13: word 32 is the last there is.
  writer.add_frame({testing::Packet{0x0F39, 3, 57, 0, 500, {{16, 0x9701}, {18, 0xA1}, {20, 0xA2}, {22, 30}}, {}}});
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("dump.css", writer)));
  Information_Form* form = open_on(1);
  ASSERT_NE(form, nullptr);
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].startsWith("Subscript out of range")) << dialogs.messages[0].toStdString();
  EXPECT_EQ(text(form->label(5)), " Memory Dump             ");
  EXPECT_EQ(form->rawDump()->drawing().size(), 32u);
  // The title lines come after the table and are not there; the table's words up to 32 are.
  const Drawing& picture = form->translation()->drawing();
  ASSERT_EQ(picture.size(), 5u + 23u);
  for (size_t i = 0; i < 5; ++i) EXPECT_EQ(picture[i].text, "");
  EXPECT_EQ(picture[5].text, "00A1");
  EXPECT_EQ(picture[5].colour, kRed);
  EXPECT_EQ(picture[7].text, "001E");
  EXPECT_EQ(picture[7].colour, kBlack);
  EXPECT_EQ(picture[8].colour, kBlue);
}

TEST_F(InformationWindow, WithoutAFileNothingIsShown) {
  auto* form = static_cast<Information_Form*>(window->showView(ViewKind::Information));
  EXPECT_EQ(form->scrollBar()->maximum(), 1);
  form->scrollBar()->setValue(1);
  EXPECT_TRUE(form->rawDump()->drawing().empty());
  EXPECT_EQ(text(form->label(3)), "");
  EXPECT_TRUE(dialogs.messages.empty());
}

}  // namespace
}  // namespace morvane
