// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

#include "core/catalogue.h"
#include "core/telemetry_file.h"

namespace morvane {

inline constexpr int kMaxSubPackets = 10;
inline constexpr int kLastBin = 1024;

// The sub-packets of one spectrum: Science_List indices of sub-packets 1..10 ([0]..[9]), 0 where
// there is none. A GC spectrum has one.
using SpectrumColumn = std::array<int32_t, kMaxSubPackets>;

// The spectra of a file: columns 1..C are the complete (isotope) spectra, C+1..C+G the GC
// spectra, C and G being the catalogue's counts of whole isotope spectra and GC packets.
struct Spectrum_Table {
  int32_t complete_count = 0;  // C
  int32_t gc_count = 0;        // G
  std::vector<SpectrumColumn> columns;

  int32_t spectrum_count() const { return complete_count + gc_count; }
  bool is_complete(int32_t s) const { return s <= complete_count; }
  // Spectrum s (1-based); outside 1..C+G is "Subscript out of range".
  const SpectrumColumn& column(int32_t s) const;
  // The non-empty cells of spectrum s.
  int sub_packet_count(int32_t s) const;
};

// Groups Science_List into spectra in one pass. An isotope entry with flag bit value 2 starts a
// complete spectrum; the isotope entries without it that follow are its further sub-packets,
// entries of other kinds between them are skipped, and a GC entry or the next start ends it.
// Each GC entry is a spectrum of its own. More than 10 sub-packets, or more complete spectra
// than the catalogue counted, is "Subscript out of range".
Spectrum_Table build_spectrum_table(const Catalogue& catalogue);

// A bin word: a 12-bit mantissa (bits 15..4) times 2 to the power of the exponent in bits 3..0.
// 0x0013 gives 8 counts, 0xFFFF 4095 x 32768.
double decode_bin(int32_t word);

using Spectrum_Bins = std::array<double, kLastBin + 1>;  // bins 0..1024, counts

// Which sub-packets feed the bins: the spectrum view stops before the tenth (counted, never
// assembled; kept so), the export reads them all.
enum class SubPackets { AllButTenth, All };

// Bins of a spectrum as assembled so far.
struct AssembledSpectrum {
  Spectrum_Bins bins{};
  int32_t bin_count = 0;  // bins read, whatever numbers they went to
  std::bitset<kLastBin + 1> written;  // the bins this assembly wrote
};

// Assembles complete spectrum column into spectrum: bin_count and written start afresh, and each
// sub-packet at P writes its N bins (word at P + 30) from bin F (word at P + 28), decoded from
// the words at P + 32 + 2j. Bins no sub-packet writes keep their values. Sub-packet 1 is always
// read, even when its cell is empty ("Subscript out of range"); a bin beyond 1024 is "Subscript
// out of range" with the bins before it written and counted.
void assemble_spectrum(const TelemetryFile& file, const EntryList& science, const SpectrumColumn& column,
                       bool byte_reverse, SubPackets which, AssembledSpectrum& spectrum);

}  // namespace morvane
