// SPDX-License-Identifier: MIT
// The spectrum window: stepping through spectra and sub-packets.
#include "spectra_form.h"

#include <QLabel>
#include <QScrollBar>

#include "app_fixture.h"
#include "spectrum_plot.h"

namespace morvane {
namespace {

// A spectrum sub-packet: header words at bytes 18..31, then its bin words.
testing::Packet sub_packet(int32_t sequence_word, int32_t sub_type, int32_t flags, int32_t first_bin,
                           const std::vector<int32_t>& bin_words) {
  const int32_t length_field = 25 + 2 * static_cast<int32_t>(bin_words.size());
  testing::Packet packet{testing::kScienceId, sequence_word, length_field, 0, 2000, {}, {}};
  packet.words = {{16, sub_type}, {18, flags}, {28, first_bin}, {30, static_cast<int32_t>(bin_words.size())}};
  for (int i = 0; i < 4; ++i) packet.words[20 + 2 * i] = 10 * sequence_word + i;
  for (size_t j = 0; j < bin_words.size(); ++j) packet.words[32 + 2 * static_cast<int>(j)] = bin_words[j];
  return packet;
}

constexpr int32_t kIsotope = 3;
constexpr int32_t kGc = 2;
constexpr int32_t kStart = 0x8000;  // segmentation flags 2: a spectrum's first sub-packet

class SpectraWindow : public testing::AppTest {
 protected:
  // Two complete spectra (two sub-packets, then one) and a GC spectrum between them.
  Spectra_Form* open_three_spectra() {
    EXPECT_TRUE(load_packets({sub_packet(kStart + 1, kIsotope, 0x8000, 0, {0x0010, 0x0011, 0x0013}),
                              sub_packet(2, kIsotope, 0x4000, 3, {0x0100, 0x0021}),
                              sub_packet(3, kGc, 0xC000, 0, {0x0010}), sub_packet(kStart + 4, kIsotope, 0, 0, {0x0050})},
                             "spectra.css"));
    return show<Spectra_Form>(ViewKind::Spectra);
  }
  static QString text(QLabel* label) { return label->text(); }
  static QColor colour(QLabel* label) { return label->palette().color(QPalette::WindowText); }
};

TEST_F(SpectraWindow, SteppingThroughSpectraAndSubPacketsShowsEachOne) {
  Spectra_Form* form = open_three_spectra();
  EXPECT_EQ(form->windowTitle(), "Spectrum display");
  EXPECT_EQ(text(form->label(3)), "2");
  EXPECT_EQ(text(form->label(4)), "1");
  EXPECT_EQ(text(form->label(5)), "");
  QScrollBar* spectra = form->spectrum_scroll();
  QScrollBar* sub_packets = form->sub_packet_scroll();
  EXPECT_TRUE(spectra->isEnabled());
  EXPECT_EQ(spectra->maximum(), 3);
  struct Step {
    QScrollBar* scroll;
    int value;
    const char* title;
    int sub_packet_maximum;  // 0: no sub-packets shown
  };
  const Step steps[] = {{spectra, 1, "Complete spectrum number 1", 2}, {sub_packets, 2, "Complete spectrum number 1", 2},
                        {spectra, 2, "Complete spectrum number 2", 1}, {spectra, 3, "GC spectrum number 1", 0},
                        {spectra, 1, "Complete spectrum number 1", 2}};
  for (const Step& step : steps) {
    SCOPED_TRACE(step.title);
    step.scroll->setValue(step.value);
    EXPECT_EQ(text(form->title_label()), step.title);
    EXPECT_FALSE(form->plot()->graph().outline.empty());
    if (step.sub_packet_maximum == 0) {
      EXPECT_FALSE(sub_packets->isEnabled());
    } else {
      EXPECT_EQ(sub_packets->maximum(), step.sub_packet_maximum);
      EXPECT_EQ(sub_packets->value(), step.scroll == sub_packets ? step.value : 1);
    }
  }
  EXPECT_EQ(colour(form->label(26)), QColor(Qt::red)) << "bit 15 set";
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
