// SPDX-License-Identifier: MIT
#pragma once

#include "core/session.h"
#include "export/export_progress.h"
#include "export/export_range.h"
#include "export/line_sink.h"
#include "decoders/spectrum_table.h"

namespace morvane {

// The spectra dialog's data formats, in the order of its options.
enum class SpectraFormat { Raw, Excel_Graphs };

struct SpectraExport {
  EntryRange range;  // spectrum numbers: complete spectra 1..C, then the GC spectra
  SpectraFormat format = SpectraFormat::Raw;
};

// Writes the spectra export: "Spectra acquired from " and the file name, "Spectra in raw data
// format" or "Spectra in format suitable for excel graphs", an empty line, the heading "Bin No."
// and a "Spec. n" column per spectrum, an empty line, then bin rows 0..1024: the row number,
// then per spectrum the delimiter and a cell. Each complete spectrum is assembled from every
// sub-packet, the tenth included. Raw cells hold the bins table's count at the row while the row
// is not above the number of bins read (not the highest bin filled: a spectrum of 300 bins from
// bin 35 leaves rows 301.. empty and shows 0 in rows 0..34). Excel-graph cells hold the count of
// each bin some sub-packet wrote and nothing elsewhere, so a chart's line runs over the bins
// received and skips the rest. GC spectra carry no bins: their cells stay empty. The spectra are
// read before the first line is written, so a bin beyond 1024 (or a spectrum without its first
// sub-packet) ends the export with "Subscript out of range" and an empty file.
ExportResult write_spectra(const Session& session, const Spectrum_Table& table, const SpectraExport& options,
                            LineSink& out, const ExportProgress& progress = {});

}  // namespace morvane
