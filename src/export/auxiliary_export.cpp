// SPDX-License-Identifier: MIT
#include "export/auxiliary_export.h"

#include "cells.h"
#include "core/number_text.h"
#include "core/sensor_id.h"
#include "decoders/auxiliary_presenter.h"

namespace morvane {

namespace {

void voltage_cell(LineSink& out, double volts) { out.number(volts, general_text(volts)); }

}  // namespace

std::string aux_export_title(AuxFormat format, std::string_view ad590_text) {
  switch (format) {
    case AuxFormat::ADC: return "Auxiliary data - ADC values";
    case AuxFormat::Voltage: return "Auxiliary data - Sensor voltages (V)";
    case AuxFormat::Calibrated: return "Auxiliary data - Calibrated Data (no AD590 correction)";
    case AuxFormat::Calibrated_AD590:
      return "Auxiliary data - Calibrated Data (with AD590 correction at " + std::string(ad590_text) + " oC)";
  }
  return "";
}

ExportResult write_auxiliary(const Session& session, const AuxExport& options, LineSink& out,
                              const ExportProgress& progress) {
  // The view's table, converted with the export's own AD590 setting (none but for the AD590
  // format); the session's setting is left as it is.
  Configuration config = session.config;
  config.AD590_EMF = options.format == AuxFormat::Calibrated_AD590 ? options.ad590_emf : 0;
  const bool calibrated = options.format == AuxFormat::Calibrated || options.format == AuxFormat::Calibrated_AD590;

  out.text(aux_export_title(options.format, ad590_temperature_text(config)));
  out.end_line(false);
  out.text("Science number");
  out.text("Lander time(s)");
  out.text("Chan. ID");
  out.text("Component");
  switch (options.format) {
    case AuxFormat::ADC: out.text("Word"); break;
    case AuxFormat::Voltage: out.text("ADC Voltage(V)"); break;
    default: out.text("Reading"); out.text("Units");
  }
  out.end_line(true);
  out.end_line(false);

  ExportResult result;
  ProgressTicker ticker(progress, options.range.size());
  const EntryList& science = session.catalogue.Science_List;
  for (int32_t n = options.range.from; n <= options.range.to; ++n) {
    if (!ticker.at(n - options.range.from)) {
      result.cancelled = true;
      return result;
    }
    const Packet_Entry& entry = science.at(n);
    if (entry.Label != LabelCode::AuxiliaryData || !is_binary(session.File_Type)) continue;
    int i = 0;
    for (const AuxReading& reading : Load_Lander_Data(session, entry)) {
      ++i;
      integer_cell(out, n);
      integer_cell(out, reading.Reading_Time);
      integer_cell(out, reading.Channel_ID);
      const int sensor = Get_Sensor_ID(config, reading.Channel_ID);
      if (sensor < 1 || sensor > config.Sensor_Count()) {
        // A channel no sensor has (the switching slots of a short form test are channel 0):
        // its word and voltage, but no name and no conversion.
        out.empty();
        if (options.format == AuxFormat::ADC) integer_cell(out, reading.Reading_Word);
        if (options.format == AuxFormat::Voltage) voltage_cell(out, ADC_Voltage(reading.Reading_Word));
        if (calibrated) {
          out.empty();
          out.empty();
        }
      } else {
        const AuxRow row = aux_row(config, reading, i);
        out.text(row.name);
        switch (options.format) {
          case AuxFormat::ADC: integer_cell(out, row.word); break;
          case AuxFormat::Voltage: voltage_cell(out, row.adc_voltage); break;
          default: out.number(row.value, general_text(row.value)); out.text(row.unit);
        }
      }
      out.end_line(true);
      ++result.rows;
    }
  }
  ticker.finished();
  return result;
}

}  // namespace morvane
