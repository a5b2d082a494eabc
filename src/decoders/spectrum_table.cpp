// SPDX-License-Identifier: MIT
#include "decoders/spectrum_table.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "core/error.h"

namespace morvane {

namespace {

bool starts_spectrum(const Packet_Entry& entry) {
  return entry.Label == LabelCode::IsotopeSpectrum && (entry.Segment_Flags & 2) != 0;
}

SpectrumColumn& column_at(Spectrum_Table& table, int64_t s) {
  if (s < 1 || s > static_cast<int64_t>(table.columns.size())) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "spectrum " + std::to_string(s) + " of " + std::to_string(table.columns.size()));
  }
  return table.columns[static_cast<size_t>(s - 1)];
}

}  // namespace

const SpectrumColumn& Spectrum_Table::column(int32_t s) const {
  return column_at(const_cast<Spectrum_Table&>(*this), s);
}

int Spectrum_Table::sub_packet_count(int32_t s) const {
  int count = 0;
  for (const int32_t cell : column(s)) count += cell != 0 ? 1 : 0;
  return count;
}

Spectrum_Table build_spectrum_table(const Catalogue& catalogue) {
  Spectrum_Table table;
  table.complete_count = catalogue.counters.Isotope_Spectrum_Count();
  table.gc_count = catalogue.counters.GC_Spectrum_Count();
  table.columns.assign(static_cast<size_t>(std::max(table.spectrum_count(), 0)), SpectrumColumn{});
  const EntryList& science = catalogue.Science_List;
  const int32_t count = science.size();
  int64_t complete = 0, gc = 0;
  for (int32_t i = 1; i <= count; ++i) {
    const Packet_Entry& entry = science[i];
    if (starts_spectrum(entry)) {
      SpectrumColumn& column = column_at(table, ++complete);
      column[0] = i;
      int k = 1;
      for (int32_t j = i + 1; j <= count; ++j) {
        const Packet_Entry& next = science[j];
        if (next.Label == LabelCode::GcSpectrum || starts_spectrum(next)) break;
        if (next.Label != LabelCode::IsotopeSpectrum) continue;
        if (++k > kMaxSubPackets) {
          raise(ErrorNumber::SubscriptOutOfRange,
                "complete spectrum " + std::to_string(complete) + " has more than 10 sub-packets");
        }
        column[static_cast<size_t>(k - 1)] = j;
      }
    } else if (entry.Label == LabelCode::GcSpectrum) {
      column_at(table, table.complete_count + ++gc)[0] = i;
    }
  }
  return table;
}

double decode_bin(int32_t word) { return std::ldexp(static_cast<double>(word / 16), word & 15); }

void assemble_spectrum(const TelemetryFile& file, const EntryList& science, const SpectrumColumn& column,
                       bool byte_reverse, SubPackets which, AssembledSpectrum& spectrum) {
  spectrum.bin_count = 0;
  spectrum.written.reset();
  const int last = which == SubPackets::All ? kMaxSubPackets : kMaxSubPackets - 1;
  for (int k = 1; k <= last; ++k) {
    const Packet_Entry& entry = science.at(column[static_cast<size_t>(k - 1)]);
    const int32_t first_bin = file.packet_word(entry, 28, byte_reverse);
    const int32_t bins = file.packet_word(entry, 30, byte_reverse);
    for (int32_t j = 0; j < bins; ++j) {
      const int32_t bin = first_bin + j;
      if (bin > kLastBin) {
        raise(ErrorNumber::SubscriptOutOfRange, "bin " + std::to_string(bin) + " (bins run 0..1024)");
      }
      spectrum.bins[static_cast<size_t>(bin)] = decode_bin(file.packet_word(entry, 32 + 2 * j, byte_reverse));
      spectrum.written.set(static_cast<size_t>(bin));
      ++spectrum.bin_count;
    }
    if (k == kMaxSubPackets || column[static_cast<size_t>(k)] == 0) break;
  }
}

}  // namespace morvane
