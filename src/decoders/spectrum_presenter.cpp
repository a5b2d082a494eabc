// SPDX-License-Identifier: MIT
#include "decoders/spectrum_presenter.h"

#include <algorithm>

#include "core/error.h"

namespace morvane {

namespace {

ColouredText flag_text(bool set) { return set ? ColouredText{"YES", kRed} : ColouredText{"No", kBlack}; }

}  // namespace

ColouredText SpectrumHeader::bit15() const { return flag_text((flags & 0x8000) != 0); }
ColouredText SpectrumHeader::bit14() const { return flag_text((flags & 0x4000) != 0); }

SpectrumHeader read_spectrum_header(const TelemetryFile& file, const Packet_Entry& entry, bool byte_reverse) {
  SpectrumHeader header;
  header.flags = file.packet_word(entry, 18, byte_reverse);
  for (int i = 0; i < 4; ++i) header.words[i] = file.packet_word(entry, 20 + 2 * i, byte_reverse);
  header.first_bin = file.packet_word(entry, 28, byte_reverse);
  header.number_bins = file.packet_word(entry, 30, byte_reverse);
  return header;
}

void SpectrumPresenter::open(const Session& session) {
  *this = SpectrumPresenter{};
  table_ = build_spectrum_table(session.catalogue);
  if (!has_spectra()) return;
  get_spectrum_data(session, 1);
  // The whole range, scaled to the highest count it shows.
  double highest = 0;
  const int32_t last = std::min(spectrum_bins_.bin_count - 1, kLastBin);
  for (int32_t b = 0; b <= last; ++b) highest = std::max(highest, spectrum_bins_.bins[static_cast<size_t>(b)]);
  axis_.Y_Max = fitting_scale(highest);
}

void SpectrumPresenter::show_spectrum(const Session& session, int32_t s) { get_spectrum_data(session, s); }

void SpectrumPresenter::show_sub_packet(const Session& session, int k) {
  if (!sub_packet_shown()) return;  // HScroll2 is disabled for GC spectra
  if (k < 1 || k > sub_packet_count_) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "sub-packet " + std::to_string(k) + " of " + std::to_string(sub_packet_count_));
  }
  current_sub_packet_ = k;
  display_spectrum_information(session, table_.column(spectrum_)[static_cast<size_t>(k - 1)]);
}

void SpectrumPresenter::get_spectrum_data(const Session& session, int32_t s) {
  const SpectrumColumn& column = table_.column(s);
  spectrum_ = s;
  if (!table_.is_complete(s)) {
    // No bins of its own: the graph keeps the last complete spectrum's bins and count.
    title_ = "GC spectrum number " + std::to_string(s - table_.complete_count);
    is_complete_ = false;
  } else {
    title_ = "Complete spectrum number " + std::to_string(s);
    is_complete_ = true;
    current_sub_packet_ = 1;
    sub_packet_count_ = table_.sub_packet_count(s);
    assemble_spectrum(session.telemetry(), session.catalogue.Science_List, column, session.Byte_Reverse,
                      SubPackets::AllButTenth, spectrum_bins_);
  }
  display_spectrum_information(session, column[0]);
}

void SpectrumPresenter::display_spectrum_information(const Session& session, int32_t science_index) {
  const Packet_Entry& entry = session.catalogue.Science_List.at(science_index);
  header_ = read_spectrum_header(session.telemetry(), entry, session.Byte_Reverse);
  science_index_ = science_index;
}

std::string SpectrumPresenter::sub_packet_text() const {
  if (!sub_packet_shown()) return "";
  return "Sub-packet " + std::to_string(current_sub_packet_) + " viewed of " + std::to_string(sub_packet_count_);
}

std::vector<HeaderRow> SpectrumPresenter::header_rows() const {
  auto number = [&](auto field) {
    return header_ ? ColouredText{std::to_string(field(*header_)), kBlack} : ColouredText{};
  };
  return {
      {"First bin", number([](const SpectrumHeader& h) { return h.first_bin; })},
      {"Number bins", number([](const SpectrumHeader& h) { return h.number_bins; })},
      {"First DEU", number([](const SpectrumHeader& h) { return h.words[0]; })},
      {"Number DEU's", number([](const SpectrumHeader& h) { return h.words[1]; })},
      {"First Overflow", number([](const SpectrumHeader& h) { return h.words[2]; })},
      {"Number RICA Overflows", number([](const SpectrumHeader& h) { return h.words[3]; })},
      {"Possible data loss", header_ ? header_->bit15() : ColouredText{}},
      {"DEU Termination", header_ ? header_->bit14() : ColouredText{}},
  };
}

}  // namespace morvane
