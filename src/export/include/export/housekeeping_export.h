// SPDX-License-Identifier: MIT
#pragma once

#include <vector>

#include "core/session.h"
#include "export/export_progress.h"
#include "export/export_range.h"
#include "export/line_sink.h"

namespace morvane {

// The housekeeping dialog's data formats, in the order of its options.
enum class HKFormat { Raw, Calibrated, Calibrated_AD590 };

// Line 1 of a housekeeping export: "Housekeeping - Raw data", "Housekeeping - Calibrated Data
// (no AD590 correction)" or "Housekeeping - Calibrated Data (with AD590 correction)".
const char* hk_export_title(HKFormat format);

struct HKExport {
  EntryRange range;
  HKFormat format = HKFormat::Raw;
  std::vector<bool> sensors;  // sensor s has a column when sensors[s - 1]; missing ones have none
};

// Writes the housekeeping export of entries range.from..range.to: the title, the heading lines
// (line 2 the sensor names, line 3 their units, each under "HK number" and "Lander time" /
// "     " and "seconds"), an empty line, then one row per packet: the entry number, its lander
// time and the ticked sensors' columns, each cell followed by the delimiter. "Raw Data" writes
// the sensor byte (0..255); the calibrated formats the value the housekeeping view computes,
// in its shortest general text, the thermocouple channels (1-21, 27) of the AD590 format
// corrected by 100 x the packet's cold-junction term. As the view does, the calibrated formats
// leave in each ticked sensor's record the raw reading, voltage, value and unit it wrote last
// (the last exported packet's), however the export ends. A conversion that fails, or a sensor the table lacks, ends the export
// with its RuntimeError after the rows before it.
ExportResult write_housekeeping(Session& session, const HKExport& options, LineSink& out,
                                 const ExportProgress& progress = {});

}  // namespace morvane
