// SPDX-License-Identifier: MIT
// The spectrum window: stepping through spectra and sub-packets, the six buttons, the graph, a
// file without spectra and the summary's double click.
#include "spectra_form.h"

#include <QLabel>
#include <QMdiArea>
#include <QPushButton>
#include <QRegularExpression>
#include <QScrollBar>

#include "app_fixture.h"
#include "spectrum_plot.h"
#include "summary_view.h"

namespace morvane {
namespace {

// A spectrum sub-packet: header words at bytes 18..31, then its bin words.
testing::Packet sub_packet(int32_t sequence_word, int32_t sub_type, int32_t flags, std::array<int32_t, 4> header,
                           int32_t first_bin, const std::vector<int32_t>& bin_words) {
  testing::Packet packet{0x0F3C, sequence_word, 25 + 2 * static_cast<int32_t>(bin_words.size()), 0, 2000, {}, {}};
  packet.words = {{16, sub_type}, {18, flags}, {28, first_bin}, {30, static_cast<int32_t>(bin_words.size())}};
  for (int i = 0; i < 4; ++i) packet.words[20 + 2 * i] = header[static_cast<size_t>(i)];
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
    testing::FrameWriter writer(282);
    writer.add_frame({sub_packet(kStart + 1, kIsotope, 0x8000, {11, 12, 13, 14}, 0, {0x0010, 0x0011, 0x0013})});
    writer.add_frame({sub_packet(2, kIsotope, 0x4000, {21, 22, 23, 24}, 3, {0x0100, 0x0021})});
    writer.add_frame({sub_packet(3, kGc, 0xC000, {31, 32, 33, 34}, 0, {0x0010})});
    writer.add_frame({sub_packet(kStart + 4, kIsotope, 0, {41, 42, 43, 44}, 0, {0x0050})});
    EXPECT_TRUE(window->loadFile(FileFormat::CSS, write_frames("spectra.css", writer)));
    return static_cast<Spectra_Form*>(window->showView(ViewKind::Spectra));
  }
  static QString text(QLabel* label) { return label ? label->text() : QStringLiteral("<none>"); }
  std::string first_message() const { return dialogs.messages.empty() ? "" : dialogs.messages[0].toStdString(); }
  static QColor colour(QLabel* label) { return label->palette().color(QPalette::WindowText); }
  // The header labels in the window's order: First bin .. DEU Termination.
  static QStringList header(const Spectra_Form* form) {
    QStringList values;
    for (const int n : {24, 25, 28, 29, 30, 31, 26, 27}) values << text(form->label(n));
    return values;
  }
};

TEST_F(SpectraWindow, SteppingThroughSpectraAndSubPacketsShowsTheirHeaders) {
  Spectra_Form* form = open_three_spectra();
  EXPECT_EQ(form->windowTitle(), "Spectrum display");
  EXPECT_EQ(text(form->label(3)), "2");
  EXPECT_EQ(text(form->label(4)), "1");
  EXPECT_EQ(text(form->label(5)), "");
  QScrollBar* spectra = form->spectrumScroll();
  QScrollBar* sub_packets = form->subPacketScroll();
  EXPECT_TRUE(spectra->isEnabled());
  EXPECT_EQ(spectra->maximum(), 3);

  EXPECT_EQ(text(form->titleLabel()), "Complete spectrum number 1");
  EXPECT_EQ(text(form->label(14)), "Sub-packet 1 viewed of 2");
  EXPECT_FALSE(form->label(14)->isHidden());
  EXPECT_FALSE(sub_packets->isHidden());
  EXPECT_EQ(sub_packets->maximum(), 2);
  EXPECT_EQ(header(form), (QStringList{"0", "3", "11", "12", "13", "14", "YES", "No"}));
  EXPECT_EQ(colour(form->label(26)), QColor(Qt::red));
  EXPECT_EQ(colour(form->label(27)), QColor(Qt::black));
  // Bins 0..4 from both sub-packets: 1, 2, 8, then 16 and 2 x 2.
  EXPECT_EQ(form->decoder().bin_count(), 5);
  EXPECT_EQ(form->plot()->graph().outline.size(), 10u);

  sub_packets->setValue(2);
  EXPECT_EQ(text(form->label(14)), "Sub-packet 2 viewed of 2");
  EXPECT_EQ(header(form), (QStringList{"3", "2", "21", "22", "23", "24", "No", "YES"}));
  EXPECT_EQ(colour(form->label(26)), QColor(Qt::black));
  EXPECT_EQ(colour(form->label(27)), QColor(Qt::red));

  spectra->setValue(2);
  EXPECT_EQ(text(form->titleLabel()), "Complete spectrum number 2");
  EXPECT_EQ(text(form->label(14)), "Sub-packet 1 viewed of 1");
  EXPECT_EQ(sub_packets->value(), 1) << "the scroll bar follows the sub-packet on view";
  EXPECT_EQ(sub_packets->maximum(), 1);
  EXPECT_EQ(header(form).mid(0, 3), (QStringList{"0", "1", "41"}));
  const Spectrum_Graph complete = form->plot()->graph();
  EXPECT_EQ(complete.outline.size(), 2u);

  spectra->setValue(3);
  EXPECT_EQ(text(form->titleLabel()), "GC spectrum number 1");
  EXPECT_TRUE(form->label(14)->isHidden());
  EXPECT_TRUE(sub_packets->isHidden());
  EXPECT_FALSE(sub_packets->isEnabled());
  EXPECT_EQ(header(form), (QStringList{"0", "1", "31", "32", "33", "34", "YES", "YES"}));
  EXPECT_EQ(form->plot()->graph().outline, complete.outline) << "a GC spectrum keeps the bins before it";

  spectra->setValue(1);
  EXPECT_FALSE(sub_packets->isHidden());
  EXPECT_EQ(text(form->label(14)), "Sub-packet 1 viewed of 2");
  EXPECT_TRUE(dialogs.messages.empty()) << first_message();
}

TEST_F(SpectraWindow, TheButtonsZoomPanAndScaleWithinTheirLimits) {
  Spectra_Form* form = open_three_spectra();
  auto enabled = [&] {
    std::vector<bool> states;
    for (const Spectrum_Button b : kSpectrumButtons) states.push_back(form->button(b)->isEnabled());
    return states;
  };
  auto axis = [&] {
    return QStringList{text(form->label(20)), text(form->label(21)), text(form->label(22)), text(form->label(23))};
  };
  // The whole range, scaled to the highest count (16): zoom out and both pans are disabled.
  EXPECT_EQ(axis(), (QStringList{"1024", "20", "0", "1024"}));
  EXPECT_EQ(enabled(), (std::vector<bool>{false, true, true, true, false, false}));
  for (const Spectrum_Button b : kSpectrumButtons) {
    EXPECT_TRUE(form->button(b)->toolTip().size() > 0);
    EXPECT_FALSE(form->button(b)->text().contains(QRegularExpression("[A-Za-z]"))) << "arrows, no words";
  }

  form->button(Spectrum_Button::ZoomIn)->click();
  EXPECT_EQ(axis(), (QStringList{"512", "20", "0", "512"}));
  EXPECT_EQ(enabled(), (std::vector<bool>{true, true, true, true, false, true}));
  EXPECT_DOUBLE_EQ(form->plot()->graph().width, 513 * 2);

  form->button(Spectrum_Button::PanRight)->click();
  EXPECT_EQ(axis(), (QStringList{"512", "20", "64", "576"}));
  EXPECT_TRUE(form->button(Spectrum_Button::PanLeft)->isEnabled());
  form->button(Spectrum_Button::PanLeft)->click();
  EXPECT_EQ(axis(), (QStringList{"512", "20", "0", "512"}));

  form->button(Spectrum_Button::ScaleDown)->click();
  EXPECT_EQ(axis()[1], "10");
  EXPECT_FALSE(form->button(Spectrum_Button::ScaleDown)->isEnabled());
  form->button(Spectrum_Button::ScaleUp)->click();
  form->button(Spectrum_Button::ScaleUp)->click();
  EXPECT_EQ(axis()[1], "40");
  EXPECT_EQ(form->plot()->graph().y_ticks.back().label, "40");

  for (int i = 0; i < 4; ++i) form->button(Spectrum_Button::ZoomIn)->click();
  EXPECT_EQ(axis(), (QStringList{"32", "40", "0", "32"}));
  EXPECT_FALSE(form->button(Spectrum_Button::ZoomIn)->isEnabled());
  for (int i = 0; i < 5; ++i) form->button(Spectrum_Button::ZoomOut)->click();
  EXPECT_EQ(axis(), (QStringList{"1024", "40", "0", "1024"}));
  EXPECT_EQ(enabled(), (std::vector<bool>{false, true, true, true, false, false}));
  // The axis stays as the buttons left it when the spectrum changes.
  form->spectrumScroll()->setValue(2);
  EXPECT_EQ(axis()[1], "40");
}

TEST_F(SpectraWindow, AllBinsOfASpectrumAreOneOutlineAcrossThePlot) {
  // Nine sub-packets of 114 and 113 bins: bins 0..1024.
  testing::FrameWriter writer(282);
  int32_t first = 0;
  for (int k = 0; k < 9; ++k) {
    const int bins = k < 8 ? 114 : 113;
    std::vector<int32_t> words;
    for (int j = 0; j < bins; ++j) words.push_back(((first + j) % 50) << 4);
    writer.add_frame({sub_packet(k == 0 ? kStart : k, kIsotope, 0, {0, 0, 0, 0}, first, words)});
    first += bins;
  }
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("full.css", writer)));
  auto* form = static_cast<Spectra_Form*>(window->showView(ViewKind::Spectra));
  EXPECT_EQ(form->decoder().bin_count(), 1025);
  SpectrumPlot* plot = form->plot();
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
  EXPECT_EQ(text(form->label(21)), "100") << "the smallest scale that holds 49 counts";
  EXPECT_TRUE(dialogs.messages.empty()) << first_message();
}

TEST_F(SpectraWindow, AFileWithoutSpectraSaysSoInRed) {
  testing::FrameWriter writer(282);
  writer.add_frame({testing::Packet{0x0F3C, 0xC000, 25, 0, 1, {{16, 1}}, {}}});
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("aux.css", writer)));
  auto* form = static_cast<Spectra_Form*>(window->showView(ViewKind::Spectra));
  EXPECT_EQ(text(form->label(3)), "0");
  EXPECT_EQ(text(form->label(4)), "0");
  EXPECT_EQ(text(form->label(5)), "No Spectra Acquired");
  EXPECT_EQ(colour(form->label(5)), QColor(Qt::red));
  EXPECT_FALSE(form->spectrumScroll()->isEnabled());
  EXPECT_TRUE(form->subPacketScroll()->isHidden());
  EXPECT_EQ(text(form->titleLabel()), "");
  // The axes are drawn, empty.
  EXPECT_TRUE(form->plot()->graph().outline.empty());
  EXPECT_EQ(form->plot()->graph().x_ticks.size(), 9u);
  EXPECT_EQ(form->plot()->graph().x_title, "Bin number");
  EXPECT_TRUE(dialogs.messages.empty());
}

TEST_F(SpectraWindow, AfterAnotherLoadTheNextStepStartsAgainOnTheNewFile) {
  Spectra_Form* form = open_three_spectra();
  form->spectrumScroll()->setValue(3);
  testing::FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  ASSERT_EQ(window->view(ViewKind::Spectra), form) << "a load does not rebuild the window";
  EXPECT_EQ(text(form->titleLabel()), "GC spectrum number 1");

  form->spectrumScroll()->setValue(1);
  EXPECT_EQ(text(form->label(3)), "1");
  EXPECT_EQ(text(form->label(4)), "1");
  EXPECT_EQ(form->spectrumScroll()->maximum(), 2);
  EXPECT_EQ(text(form->titleLabel()), "Complete spectrum number 1");
  EXPECT_EQ(text(form->label(14)), "Sub-packet 1 viewed of 1");

  testing::FrameWriter aux(282);
  aux.add_frame({testing::Packet{0x0F3C, 0xC000, 25, 0, 1, {{16, 1}}, {}}});
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("aux.css", aux)));
  window->showSpectraEntry();
  EXPECT_EQ(text(form->label(5)), "No Spectra Acquired");
  EXPECT_FALSE(form->spectrumScroll()->isEnabled());
  EXPECT_TRUE(dialogs.messages.empty()) << first_message();
}

TEST_F(SpectraWindow, ASummaryDoubleClickOnASpectrumBringsTheWindowToTheFront) {
  testing::FrameWriter writer = testing::three_frames();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, write_frames("t.css", writer)));
  auto* summary = static_cast<Summary*>(window->showView(ViewKind::Summary));
  summary->List2_DblClick(2);  // the GC spectrum
  ChildView* form = window->view(ViewKind::Spectra);
  ASSERT_NE(dynamic_cast<Spectra_Form*>(form), nullptr);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(form));

  window->showView(ViewKind::Summary);
  EXPECT_NE(window->mdiArea()->activeSubWindow(), window->frameOf(form));
  summary->List2_DblClick(1);  // the isotope spectrum
  EXPECT_EQ(window->view(ViewKind::Spectra), form);
  EXPECT_EQ(window->mdiArea()->activeSubWindow(), window->frameOf(form));
  EXPECT_EQ(window->session().Current_Science_Index, 2);
}

}  // namespace
}  // namespace morvane
