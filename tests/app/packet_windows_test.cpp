// SPDX-License-Identifier: MIT
// The windows of one packet or frame: they show the decoders' output, step, and survive errors.
#include "../decoders/decoder_fixture.h"
#include "app_fixture.h"
#include "auxiliary_form.h"
#include "concise_view.h"
#include "core/error.h"
#include "decoders/concise_frame.h"
#include "decoders/hk_sensors.h"
#include "decoders/raw_frame.h"
#include "drawing_view.h"
#include "housekeeping_form.h"
#include "information_form.h"
#include "raw_link.h"
#include "raw_view.h"
#include "spectra_form.h"
#include "spectrum_plot.h"
#include "summary_view.h"
#include "twips.h"

namespace morvane {
namespace {

using testing::aux_packet, testing::FrameWriter, testing::hk_packet, testing::Packet;

using PacketWindows = testing::AppTest;

// The words the raw view marks as the packet's: the first, the last and how many.
std::tuple<int, int, int> packet_words(const RawData* raw) {
  std::tuple<int, int, int> marked{0, 0, 0};
  for (const DrawingView::TextMark& mark : raw->picture()->text_marks()) {
    if (!(mark.colour == kPacketMarkColour)) continue;
    const int word = static_cast<int>(mark.text) + 1;
    if (std::get<2>(marked)++ == 0) std::get<0>(marked) = word;
    std::get<1>(marked) = word;
  }
  return marked;
}

TEST_F(PacketWindows, TheRawAndConciseViewsStepThroughFramesAndShowInRawFrameMarksThePacketsWords) {
  auto show_in_raw_frame = [](ChildView* view) { view->findChild<QAction*>("actShowInRawFrame")->trigger(); };
  show_in_raw_frame(window->show_view(ViewKind::Housekeeping));  // no file
  EXPECT_EQ(shown<RawData>(ViewKind::RawData), nullptr);

  ASSERT_TRUE(load_frames(testing::three_frames()));
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  EXPECT_TRUE(housekeeping->actions().contains(housekeeping->findChild<QAction*>("actShowInRawFrame")));
  housekeeping->scroll_bar()->setValue(2);
  show_in_raw_frame(housekeeping);
  RawData* raw = shown<RawData>(ViewKind::RawData);
  ASSERT_NE(raw, nullptr);
  EXPECT_EQ(window->mdi_area()->activeSubWindow(), window->frame_of(raw));
  EXPECT_EQ(raw->current_frame(), 3);
  EXPECT_EQ(packet_words(raw), std::make_tuple(12, 40, 29));
  // Stepping to another frame leaves nothing of the packet to mark there.
  raw->show_frame(2);
  EXPECT_EQ(std::get<2>(packet_words(raw)), 0);
  raw->show_frame(3);
  EXPECT_EQ(std::get<2>(packet_words(raw)), 29);

  // The view steps through every frame, painting only what is in view.
  EXPECT_EQ(raw->scroll_bar()->maximum(), 3);
  raw->scroll_bar()->setValue(2);
  EXPECT_EQ(raw->picture()->drawing(), Display_282_Byte_Packet(window->session(), 2).words);

  DrawingView* picture = raw->picture();
  QApplication::processEvents();  // the whole picture's pending paint goes first
  picture->repaint(QRect(0, 0, picture->width(), picture->text_rects()[8].top()));
  EXPECT_EQ(picture->texts_painted(), 8);  // the first row
  EXPECT_EQ(picture->text_rects()[4].left(), twips_to_pixels(picture->drawing()[4].x, picture->logicalDpiX()));

  // Beyond the 32767 frames a classic scroll bar reached.
  testing::write_bytes(dir.path("long.css"), std::vector<uint8_t>(282u * 40000u, 0));
  ASSERT_TRUE(window->load_file(FileFormat::CSS, QString::fromStdString(dir.path("long.css"))));
  raw = shown<RawData>(ViewKind::RawData);
  raw->scroll_bar()->setValue(39999);
  raw->scroll_bar()->triggerAction(QAbstractSlider::SliderSingleStepAdd);
  EXPECT_EQ(raw->current_frame(), 40000);

  // The concise view steps through frames, reports a frame that starts past the end, and pauses.
  ASSERT_TRUE(load_frames(testing::three_frames()));
  auto* concise = show<Concise_Form>(ViewKind::Concise);
  concise->scroll_bar()->setValue(2);
  EXPECT_EQ(concise->frame_text(), "2");
  EXPECT_EQ(concise->slot_text(1).toStdString(), Show_Lander_Packet(window->session(), 2)[1]);

  // 840 bytes: four frames.
  ASSERT_TRUE(window->load_file(FileFormat::FM, write_frames("t.fm", testing::three_frames(280))));
  concise = shown<Concise_Form>(ViewKind::Concise);
  concise->scroll_bar()->setValue(4);
  EXPECT_TRUE(one_message("Input past end of file"));
  EXPECT_EQ(concise->frame_text(), "1");  // the slots keep what they showed

  QPushButton* button = concise->pause_button();  // Pause and Continue switch the collection timer
  window->collection_timer()->start();
  for (const auto& [active, caption] : {std::pair{true, "Pause"}, {false, "Continue"}, {true, "Pause"}}) {
    EXPECT_EQ(button->text(), caption);
    EXPECT_EQ(window->collection_timer()->isActive(), active);
    button->click();  // the last leaves it paused
  }
}

// A spectrum sub-packet: header words at bytes 18..31, then its bin words.
Packet sub_packet(int32_t sequence_word, int32_t sub_type, int32_t flags, int32_t first_bin,
                  const std::vector<int32_t>& bin_words) {
  Packet packet{testing::kScienceId, sequence_word, 25 + 2 * static_cast<int32_t>(bin_words.size()), 0, 2000, {}, {}};
  packet.words = {{16, sub_type}, {18, flags}, {28, first_bin}, {30, static_cast<int32_t>(bin_words.size())}};
  for (int i = 0; i < 4; ++i) packet.words[20 + 2 * i] = 10 * sequence_word + i;
  for (size_t j = 0; j < bin_words.size(); ++j) packet.words[32 + 2 * static_cast<int>(j)] = bin_words[j];
  return packet;
}

TEST_F(PacketWindows, TheEntryWindowsShowTheEntryChosenStepThroughTheirPacketsAndKeepWhatTheDecoderKept) {
  EXPECT_EQ(show<Auxiliary_form>(ViewKind::Auxiliary)->notice(), "Please load an EGSE data file");
  // Reactor 1 (channel 101) reading 0 V, pressure 1 (channel 23) reading 2.5 V.
  ASSERT_TRUE(load_packets({aux_packet({}, 11, 3000), hk_packet(2),
                            aux_packet({{0, 2001, 101, 0}, {0, 2002, 23, 0x2000}}, 12, 3001)}));
  auto* summary = show<Summary>(ViewKind::Summary);
  summary->List2_DblClick(1);  // the second science entry, the second auxiliary packet
  auto* view = shown<Auxiliary_form>(ViewKind::Auxiliary);
  ASSERT_NE(view, nullptr);
  EXPECT_EQ(view->current_aux_number(), 2);
  EXPECT_EQ(view->scroll_bar()->maximum(), 2);
  EXPECT_EQ(view->label_text("Sequence Control"), "12");
  EXPECT_FALSE(view->picture()->drawing().empty());

  view->scroll_bar()->setValue(1);
  EXPECT_EQ(view->label_text("Sequence Control"), "11");
  EXPECT_EQ(window->session().Current_Science_Index, 2);  // not written back
  summary->List2_DblClick(1);  // the open view goes to the chosen packet
  EXPECT_EQ(window->view(ViewKind::Auxiliary), view);
  EXPECT_EQ(view->label_text("Sequence Control"), "12");

  window->close_view(ViewKind::Auxiliary);
  ASSERT_TRUE(load_packets({hk_packet(2, {{18, 11}, {21, 7}}, {}, 41, 5000), hk_packet(1, {}, {}, 42, 5001)}));
  view = show<Auxiliary_form>(ViewKind::Auxiliary);
  EXPECT_EQ(view->notice(), "The EGSE data file contains no auxiliary data packets");
  EXPECT_FALSE(view->scroll_bar()->isEnabled());
  EXPECT_TRUE(view->picture()->drawing().empty());

  // The housekeeping view opens on the current entry with its sensor page.
  window->session().Current_HK_Index = 1;
  auto* housekeeping = show<Housekeeping_form>(ViewKind::Housekeeping);
  const Session& session = window->session();
  EXPECT_EQ(housekeeping->picture()->drawing(),
            draw_sensor_page(session.config, decode_housekeeping(session.config, session.HK_Sensor_Data, 1)).drawing);
  EXPECT_EQ(housekeeping->header_text("Sequence Control"), "41");
  EXPECT_EQ(housekeeping->scroll_bar()->maximum(), 2);
  EXPECT_EQ(housekeeping->scroll_bar()->value(), 1);
  EXPECT_TRUE(housekeeping->more_button()->isVisibleTo(housekeeping));  // a complete packet has registers

  // The spectrum window on two complete spectra (two sub-packets, then one) with a GC spectrum between.
  constexpr int32_t kIsotope = 3, kGc = 2, kStart = 0x8000;  // flags 2: a spectrum's first sub-packet
  ASSERT_TRUE(load_packets({sub_packet(kStart + 1, kIsotope, 0x8000, 0, {0x0010, 0x0011, 0x0013}),
                            sub_packet(2, kIsotope, 0x4000, 3, {0x0100, 0x0021}), sub_packet(3, kGc, 0xC000, 0, {0x0010}),
                            sub_packet(kStart + 4, kIsotope, 0, 0, {0x0050})}));
  auto* form = show<Spectra_Form>(ViewKind::Spectra);
  QScrollBar *spectra = form->spectrum_scroll(), *sub_packets = form->sub_packet_scroll();
  EXPECT_EQ(spectra->maximum(), 3);
  // The scroll bar moved, the value, the title's start and the sub-packets (0: none shown).
  const std::tuple<QScrollBar*, int, const char*, int> steps[] = {
      {spectra, 1, "Complete", 2}, {sub_packets, 2, "Complete", 2}, {spectra, 2, "Complete", 1},
      {spectra, 3, "GC", 0},       {spectra, 1, "Complete", 2}};
  for (const auto& [scroll, value, title, sub_packet_maximum] : steps) {
    SCOPED_TRACE(value);
    scroll->setValue(value);
    EXPECT_TRUE(form->title_label()->text().startsWith(title)) << form->title_label()->text().toStdString();
    EXPECT_FALSE(form->plot()->graph().outline.empty());
    EXPECT_EQ(sub_packets->isEnabled(), sub_packet_maximum > 0);
    if (sub_packet_maximum > 0) {
      EXPECT_EQ(sub_packets->maximum(), sub_packet_maximum);
      EXPECT_EQ(sub_packets->value(), scroll == sub_packets ? value : 1);
    }
  }
  EXPECT_EQ(form->label(26)->palette().color(QPalette::WindowText), QColor(Qt::red)) << "bit 15 set";

  // An information packet the layout cannot take is a message; the window keeps what the decoder kept.
  // A frame of an acceptance report, then an event longer than 64 bytes.
  FrameWriter writer(282);
  writer.add_frame({Packet{testing::kAcceptanceId, 3, 11, 0, 500, {{14, 0x0100}, {16, 0x1234}}, {}},
                    testing::labelled(LabelCode::NormalProgressEvent, 4, 60, 501)});
  ASSERT_TRUE(load_frames(writer));
  InformationPresenter decoder;  // what the decoder keeps after the same two entries
  decoder.show(window->session(), 1);
  EXPECT_THROW(decoder.show(window->session(), 2), RuntimeError);
  window->session().Current_Information_Index = 1;
  window->show_information_entry();
  auto* information = shown<Information_Form>(ViewKind::Information);
  information->scroll_bar()->setValue(2);
  EXPECT_TRUE(one_message("Subscript out of range"));
  EXPECT_EQ(information->label(9)->text().toStdString(), decoder.labels().Label9);
  EXPECT_EQ(information->raw_dump()->drawing(), decoder.raw_dump());
  EXPECT_EQ(information->translation()->drawing(), decoder.translation_drawing());
}

}  // namespace
}  // namespace morvane
