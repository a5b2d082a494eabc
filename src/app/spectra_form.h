// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>

#include "child_view.h"
#include "decoders/spectrum_presenter.h"

class QLabel;
class QPushButton;
class QScrollBar;

namespace morvane {

class SpectrumPlot;

// Spectra_Form: the spectra of the loaded file, one at a time (HScroll1), the header of one
// sub-packet of a complete spectrum (HScroll2), and the graph of its bins with the six buttons
// that zoom and pan the X axis and step the Y scale. It shows what its decoder holds after
// each step, so a GC spectrum keeps the bins of the complete spectrum before it.
class Spectra_Form : public ChildView {
  Q_OBJECT

 public:
  explicit Spectra_Form(Workstation& workstation);

  // A summary double click on a spectrum line: the window comes to the front as it was (on a
  // file loaded since it opened, it starts again on spectrum 1).
  void show_current_entry() override;
  // The spectrum that science entry k belongs to, shown as the upper scroll bar would show it
  // (the summary's "Show this spectrum"). Returns false when k is in no spectrum.
  bool show_spectrum_of(int32_t science_index);
  // The six buttons: the decoder's step, then Update_Graph.
  void Command_Click(SpectrumButton button);

  QScrollBar* spectrum_scroll() const { return hscroll1_; }   // HScroll1
  QScrollBar* sub_packet_scroll() const { return hscroll2_; }  // HScroll2
  QPushButton* button(SpectrumButton which) const { return buttons_[static_cast<size_t>(which)]; }
  SpectrumPlot* plot() const { return plot_; }  // Picture1
  // The window's labels by number (Label3, Label14, Label20, ...); the spectrum's title is
  // title_label(). nullptr for a number the window does not have.
  QLabel* label(int number) const;
  QLabel* title_label() const { return title_; }
  const SpectrumPresenter& decoder() const { return view_; }

 private:
  // Form_Load: the spectra of the loaded file, spectrum 1 on the whole range.
  void Form_Load();
  // Whether another file was loaded since Form_Load; if so, Form_Load again.
  bool reloaded_file();
  // HScroll1_Change: spectrum s, then Update_Graph.
  void HScroll1_Change(int value);
  // HScroll2_Change: the header of sub-packet k of the complete spectrum on view.
  void HScroll2_Change(int value);
  // Display_Spectrum_Information: the title, the sub-packet line and scroll bar, the header.
  void Display_Spectrum_Information();
  // Update_Graph: the axis labels, the buttons' enabling and the graph.
  void Update_Graph();
  QWidget* make_header_panel();
  QWidget* make_axis_panel();

  SpectrumPresenter view_;
  std::weak_ptr<TelemetryFile> opened_on_;  // the file of Form_Load
  QLabel* title_;
  QLabel* label14_;
  QScrollBar* hscroll1_;
  QScrollBar* hscroll2_;
  SpectrumPlot* plot_;
  std::array<QPushButton*, 6> buttons_{};
  std::array<QLabel*, 8> header_values_{};  // in the order of SpectrumPresenter::header_rows()
};

}  // namespace morvane
