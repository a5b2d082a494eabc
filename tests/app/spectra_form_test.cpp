// SPDX-License-Identifier: MIT
// The spectrum window: stepping through spectra and sub-packets, the six buttons, the graph, a
// file without spectra and another load.
#include "spectra_form.h"

#include <QLabel>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>

#include "app_fixture.h"
#include "spectrum_plot.h"

namespace morvane {
namespace {

// A spectrum sub-packet: header words at bytes 18..31, then its bin words.
testing::Packet sub_packet(int32_t sequence_word, int32_t sub_type, int32_t flags, int32_t first_bin,
                           const std::vector<int32_t>& bin_words) {
  testing::Packet packet{0x0F3C, sequence_word, 25 + 2 * static_cast<int32_t>(bin_words.size()), 0, 2000, {}, {}};
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
  // The window shows what its decoder holds: the title, the header, the axis and the graph.
  static void expect_shows(const Spectra_Form* form, const Spectrum_View& decoder) {
    EXPECT_EQ(text(form->titleLabel()).toStdString(), decoder.title());
    EXPECT_EQ(form->label(14)->isHidden(), !decoder.sub_packet_shown());
    EXPECT_EQ(form->subPacketScroll()->isHidden(), !decoder.sub_packet_shown());
    if (decoder.sub_packet_shown()) {
      EXPECT_EQ(text(form->label(14)).toStdString(), decoder.sub_packet_text());
    }
    const std::vector<Header_Row> rows = decoder.header_rows();
    const int numbers[] = {24, 25, 28, 29, 30, 31, 26, 27};
    for (size_t i = 0; i < rows.size(); ++i) {
      QLabel* label = form->label(numbers[i]);
      EXPECT_EQ(text(label).toStdString(), rows[i].value.text) << rows[i].heading;
      const Colour& c = rows[i].value.colour;
      EXPECT_EQ(colour(label), QColor(c.red, c.green, c.blue)) << rows[i].heading;
    }
    const Spectrum_Axis& axis = decoder.axis();
    EXPECT_EQ(text(form->label(20)).toStdString(), axis.range_text());
    EXPECT_EQ(text(form->label(21)).toStdString(), axis.scale_text());
    EXPECT_EQ(text(form->label(22)).toStdString(), axis.start_text());
    EXPECT_EQ(text(form->label(23)).toStdString(), axis.end_text());
    for (const Spectrum_Button b : kSpectrumButtons) EXPECT_EQ(form->button(b)->isEnabled(), decoder.enabled(b));
    const Spectrum_Graph drawn = form->plot()->graph();
    const Spectrum_Graph expected = decoder.graph();
    EXPECT_EQ(drawn.width, expected.width);
    EXPECT_EQ(drawn.x_ticks, expected.x_ticks);
    EXPECT_EQ(drawn.y_ticks, expected.y_ticks);
    EXPECT_EQ(drawn.outline, expected.outline);
  }
};

TEST_F(SpectraWindow, SteppingThroughSpectraAndSubPacketsShowsEachOne) {
  Spectra_Form* form = open_three_spectra();
  EXPECT_EQ(form->windowTitle(), "Spectrum display");
  EXPECT_EQ(text(form->label(3)), "2");
  EXPECT_EQ(text(form->label(4)), "1");
  EXPECT_EQ(text(form->label(5)), "");
  QScrollBar* spectra = form->spectrumScroll();
  QScrollBar* sub_packets = form->subPacketScroll();
  EXPECT_TRUE(spectra->isEnabled());
  EXPECT_EQ(spectra->maximum(), 3);
  Spectrum_View decoder;  // driven as the window should drive it
  decoder.open(window->session());

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
    if (step.scroll == spectra) {
      decoder.show_spectrum(window->session(), step.value);
    } else {
      decoder.show_sub_packet(window->session(), step.value);
    }
    EXPECT_EQ(text(form->titleLabel()), step.title);
    expect_shows(form, decoder);
    if (step.sub_packet_maximum == 0) {
      EXPECT_FALSE(sub_packets->isEnabled());
    } else {
      EXPECT_EQ(sub_packets->maximum(), step.sub_packet_maximum);
      EXPECT_EQ(sub_packets->value(), decoder.current_sub_packet()) << "the scroll bar follows the sub-packet on view";
    }
  }
  EXPECT_EQ(colour(form->label(26)), QColor(Qt::red)) << "bit 15 set";
  EXPECT_TRUE(no_message());
}

TEST_F(SpectraWindow, TheButtonsZoomPanAndScaleWithinTheirLimits) {
  Spectra_Form* form = open_three_spectra();
  Spectrum_View decoder;
  decoder.open(window->session());
  expect_shows(form, decoder);
  for (const Spectrum_Button b : kSpectrumButtons) {
    EXPECT_FALSE(form->button(b)->toolTip().isEmpty());
    EXPECT_FALSE(form->button(b)->text().contains(QRegularExpression("[A-Za-z]"))) << "arrows, no words";
  }
  using enum Spectrum_Button;
  for (const Spectrum_Button b : {ZoomIn, PanRight, PanLeft, ScaleDown, ScaleDown, ScaleUp, ScaleUp, ZoomIn, ZoomIn,
                                  ZoomIn, ZoomIn, ZoomIn, ZoomOut, ZoomOut, ZoomOut, ZoomOut, ZoomOut, ZoomOut}) {
    const bool enabled = form->button(b)->isEnabled();
    EXPECT_EQ(enabled, decoder.enabled(b));
    form->button(b)->click();
    if (enabled) decoder.press(b);
    expect_shows(form, decoder);
  }
  // The axis stays as the buttons left it when the spectrum changes.
  form->spectrumScroll()->setValue(2);
  decoder.show_spectrum(window->session(), 2);
  expect_shows(form, decoder);
}

TEST_F(SpectraWindow, AllBinsOfASpectrumAreOneOutlineAcrossThePlot) {
  // Nine sub-packets of 114 and 113 bins: bins 0..1024.
  std::vector<testing::Packet> packets;
  int32_t first = 0;
  for (int k = 0; k < 9; ++k) {
    const int bins = k < 8 ? 114 : 113;
    std::vector<int32_t> words;
    for (int j = 0; j < bins; ++j) words.push_back(((first + j) % 50) << 4);
    packets.push_back(sub_packet(k == 0 ? kStart : k, kIsotope, 0, first, words));
    first += bins;
  }
  ASSERT_TRUE(load_packets(packets, "full.css"));
  SpectrumPlot* plot = show<Spectra_Form>(ViewKind::Spectra)->plot();
  plot->resize(700, 300);
  const QPolygonF outline = plot->outlinePixels();
  ASSERT_EQ(outline.size(), 2050);
  const QRectF area = plot->plotArea();
  EXPECT_DOUBLE_EQ(outline.first().x(), area.left());
  EXPECT_DOUBLE_EQ(outline.last().x(), area.left() + area.width());
  for (const QPointF& point : outline) {
    EXPECT_GE(point.y(), area.top());
    EXPECT_LE(point.y(), area.top() + area.height());
  }
  EXPECT_TRUE(no_message());
}

TEST_F(SpectraWindow, AfterAnotherLoadTheNextStepStartsAgainOnTheNewFileOrSaysItHasNoSpectra) {
  Spectra_Form* form = open_three_spectra();
  form->spectrumScroll()->setValue(3);
  ASSERT_TRUE(load_frames(testing::three_frames()));
  ASSERT_EQ(window->view(ViewKind::Spectra), form) << "a load does not rebuild the window";
  EXPECT_EQ(text(form->titleLabel()), "GC spectrum number 1");
  form->spectrumScroll()->setValue(1);
  EXPECT_EQ(text(form->label(3)), "1");
  EXPECT_EQ(text(form->label(4)), "1");
  EXPECT_EQ(form->spectrumScroll()->maximum(), 2);
  EXPECT_EQ(text(form->titleLabel()), "Complete spectrum number 1");

  ASSERT_TRUE(load_packets({testing::Packet{0x0F3C, 0xC000, 25, 0, 1, {{16, 1}}, {}}}, "aux.css"));
  window->showSpectraEntry();
  EXPECT_EQ(text(form->label(3)), "0");
  EXPECT_EQ(text(form->label(5)), "No Spectra Acquired");
  EXPECT_EQ(colour(form->label(5)), QColor(Qt::red));
  EXPECT_FALSE(form->spectrumScroll()->isEnabled());
  EXPECT_TRUE(form->subPacketScroll()->isHidden());
  EXPECT_EQ(text(form->titleLabel()), "");
  EXPECT_TRUE(form->plot()->graph().outline.empty());
  EXPECT_FALSE(form->plot()->graph().x_ticks.empty()) << "the axes are drawn, empty";
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
