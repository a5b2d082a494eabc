// SPDX-License-Identifier: MIT
#pragma once

#include "core/session.h"
#include "export/export_progress.h"
#include "export/export_range.h"
#include "export/line_sink.h"

namespace morvane {

// The auxiliary dialog's data formats, in the order of its options.
enum class AuxFormat { ADC, Voltage, Calibrated, Calibrated_AD590 };

struct AuxExport {
  EntryRange range;  // science entries
  AuxFormat format = AuxFormat::ADC;
  double ad590_emf = 0;  // the AD590 temperature as its N-type voltage, microvolts (Calibrated_AD590)
};

// Line 1 of an auxiliary export: "Auxiliary data - ADC values", "Auxiliary data - Sensor
// voltages (V)", "Auxiliary data - Calibrated Data (no AD590 correction)" or "Auxiliary data -
// Calibrated Data (with AD590 correction at " + temperature + " oC)", the temperature in "0.00".
std::string aux_export_title(AuxFormat format, std::string_view ad590_text);

// Writes the auxiliary export of science entries range.from..range.to: the title, one heading
// line, an empty line, then one row per reading of each auxiliary packet in the range (other
// science entries give none): the science entry number, the reading's lander time, its channel
// ID, the sensor's name, then the word (0..65535), its voltage, or the calibrated value and its
// unit, each cell followed by the delimiter. Voltages and values are the auxiliary view's, in
// their shortest general text; Calibrated_AD590 adds ad590_emf / 10000 volts to the thermocouple
// channels (1-21, 27) before converting, Calibrated nothing. ZEB records carry no readings, so
// a ZEB file gives no rows. A reading whose channel ID names no sensor (the switching slots of a
// short form test are channel 0) has an empty component and, in the calibrated formats, empty
// value and unit cells: there is no conversion for it. A packet of more than 29 readings ends the
// export with the view's RuntimeError after the rows before it.
ExportResult write_auxiliary(const Session& session, const AuxExport& options, LineSink& out,
                              const ExportProgress& progress = {});

}  // namespace morvane
