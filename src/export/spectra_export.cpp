// SPDX-License-Identifier: MIT
#include "export/spectra_export.h"

#include <memory>
#include <string>
#include <vector>

#include "cells.h"

namespace morvane {

ExportResult write_spectra(const Session& session, const Spectrum_Table& table, const SpectraExport& options,
                            LineSink& out, const ExportProgress& progress) {
  const int32_t columns = options.range.size();
  ExportResult result;
  ProgressTicker ticker(progress, int64_t{columns} + kLastBin + 1);

  // The bins table: a column per exported spectrum, none for a GC spectrum.
  std::vector<std::unique_ptr<AssembledSpectrum>> spectra;
  spectra.reserve(static_cast<size_t>(columns));
  const TelemetryFile& file = session.telemetry();
  for (int32_t s = options.range.from; s <= options.range.to; ++s) {
    if (!ticker.at(s - options.range.from)) {
      result.cancelled = true;
      return result;
    }
    std::unique_ptr<AssembledSpectrum> spectrum;
    if (table.is_complete(s)) {
      spectrum = std::make_unique<AssembledSpectrum>();
      assemble_spectrum(file, session.catalogue.Science_List, table.column(s), session.Byte_Reverse, SubPackets::All,
                        *spectrum);
    }
    spectra.push_back(std::move(spectrum));
  }

  out.text("Spectra acquired from " + session.File_Name);
  out.end_line(false);
  out.text(options.format == SpectraFormat::Raw ? "Spectra in raw data format"
                                                 : "Spectra in format suitable for excel graphs");
  out.end_line(false);
  out.end_line(false);
  out.text("Bin No.");
  for (int32_t s = options.range.from; s <= options.range.to; ++s) out.text("Spec. " + std::to_string(s));
  out.end_line(false);
  out.end_line(false);

  for (int32_t row = 0; row <= kLastBin; ++row) {
    if (!ticker.at(int64_t{columns} + row)) {
      result.cancelled = true;
      return result;
    }
    integer_cell(out, row);
    for (const auto& spectrum : spectra) {
      const bool shown =
          spectrum && (options.format == SpectraFormat::Raw ? row <= spectrum->bin_count
                                                             : spectrum->written.test(static_cast<size_t>(row)));
      if (shown) {
        // Counts are whole numbers below 2^31 (4095 x 32768 at most).
        integer_cell(out, static_cast<int64_t>(spectrum->bins[static_cast<size_t>(row)]));
      } else {
        out.empty();
      }
    }
    out.end_line(false);
    ++result.rows;
  }
  ticker.finished();
  return result;
}

}  // namespace morvane
