// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/session.h"
#include "decoders/drawing.h"
#include "decoders/spectrum_axis.h"
#include "decoders/spectrum_graph.h"
#include "decoders/spectrum_table.h"

namespace morvane {

// Fixed texts of the spectrum window.
inline constexpr const char* kSpectraCaption = "Spectrum display";
inline constexpr const char* kCompleteCountCaption = "Number of complete spectra   =";  // beside Label3
inline constexpr const char* kGcCountCaption = "Number of GC spectra   =";              // beside Label4
inline constexpr const char* kNoSpectraText = "No Spectra Acquired";                    // Label5, red
// The axis settings: "X-Axis Range" (Label20), "Y-Axis Scale maximum" (Label21), and under
// "X-Axis position" the "Minimum" (Label22) and "Maximum" (Label23).
inline constexpr const char* kXRangeCaption = "X-Axis Range";
inline constexpr const char* kYScaleCaption = "Y-Axis Scale maximum";
inline constexpr const char* kXPositionCaption = "X-Axis position";
inline constexpr const char* kMinimumCaption = "Minimum";
inline constexpr const char* kMaximumCaption = "Maximum";

// A text of the window with its colour.
struct ColouredText {
  std::string text;
  Colour colour = kBlack;
  bool operator==(const ColouredText&) const = default;
};

// The header of the sub-packet on view, words at packet bytes 18..31.
struct SpectrumHeader {
  int32_t flags = 0;        // bytes 18-19: bit 15 and bit 14 are shown
  int32_t words[4] = {};    // bytes 20-27: Label28..Label31
  int32_t first_bin = 0;    // bytes 28-29: Label24
  int32_t number_bins = 0;  // bytes 30-31: Label25

  // Label26 (bit 15) and Label27 (bit 14): "YES" in red when set, "No" in black when clear.
  ColouredText bit15() const;
  ColouredText bit14() const;
};
SpectrumHeader read_spectrum_header(const TelemetryFile& file, const Packet_Entry& entry, bool byte_reverse);

// One heading of the header panel with its value, in the window's order.
struct HeaderRow {
  std::string heading;
  ColouredText value;
};

// What the spectrum window shows and keeps: the spectrum table, the spectrum and sub-packet on
// view, the bins, the header labels and the axis. The window owns one and paints it; morvane-cli
// drives a fresh one the same way. Reads go through the session's file at each step.
class SpectrumPresenter {
 public:
  // Form_Load: groups the spectra and shows spectrum 1 on the whole range (bins 0..1024, zoom 1)
  // with the smallest Y scale that holds its highest visible count. No spectra leaves the
  // "No Spectra Acquired" state. A RuntimeError from the grouping leaves that state too.
  void open(const Session& session);
  // HScroll1_Change: spectrum s (1..C+G). A GC spectrum keeps the bins the last complete one left.
  void show_spectrum(const Session& session, int32_t s);
  // HScroll2_Change: the header of sub-packet k (1..sub_packet_count()) of the complete spectrum.
  void show_sub_packet(const Session& session, int k);
  // Command1..Command6; a disabled button changes nothing. Returns whether it was enabled.
  bool press(SpectrumButton button) { return axis_.press(button); }

  const Spectrum_Table& table() const { return table_; }
  bool has_spectra() const { return table_.spectrum_count() > 0; }
  // Label3, Label4; Label5 is kNoSpectraText in red when !has_spectra(), HScroll1 then disabled.
  std::string complete_count_text() const { return std::to_string(table_.complete_count); }
  std::string gc_count_text() const { return std::to_string(table_.gc_count); }
  int32_t scroll_maximum() const { return table_.spectrum_count(); }

  int32_t spectrum() const { return spectrum_; }  // 0 before the first is shown
  // "Complete spectrum number s" or "GC spectrum number g"; "" before the first is shown.
  const std::string& title() const { return title_; }
  bool is_complete() const { return is_complete_; }
  int sub_packet_count() const { return sub_packet_count_; }
  int current_sub_packet() const { return current_sub_packet_; }
  // Label14 and HScroll2 are shown for a complete spectrum only.
  bool sub_packet_shown() const { return spectrum_ > 0 && is_complete_; }
  // "Sub-packet k viewed of n", "" when hidden.
  std::string sub_packet_text() const;

  const Spectrum_Bins& bins() const { return spectrum_bins_.bins; }
  int32_t bin_count() const { return spectrum_bins_.bin_count; }
  // The header of the sub-packet on view; none before the first spectrum is shown.
  const std::optional<SpectrumHeader>& header() const { return header_; }
  // The Science_List entry of that header: the sub-packet on view, or the GC packet; 0 before.
  int32_t science_index() const { return science_index_; }
  // The eight headings beside the header labels with their values, in the window's order:
  // First bin, Number bins, First DEU, Number DEU's, First Overflow, Number RICA Overflows,
  // Possible data loss (bit 15), DEU Termination (bit 14). Values are "" with no header.
  std::vector<HeaderRow> header_rows() const;

  const SpectrumAxis& axis() const { return axis_; }
  bool enabled(SpectrumButton button) const { return axis_.enabled(button); }
  SpectrumGraph graph() const { return spectrum_graph(spectrum_bins_.bins, spectrum_bins_.bin_count, axis_); }

 private:
  void get_spectrum_data(const Session& session, int32_t s);
  void display_spectrum_information(const Session& session, int32_t science_index);

  Spectrum_Table table_;
  int32_t spectrum_ = 0;
  std::string title_;
  bool is_complete_ = false;
  int sub_packet_count_ = 0;
  int current_sub_packet_ = 1;
  AssembledSpectrum spectrum_bins_;
  std::optional<SpectrumHeader> header_;
  int32_t science_index_ = 0;
  SpectrumAxis axis_;
};

}  // namespace morvane
