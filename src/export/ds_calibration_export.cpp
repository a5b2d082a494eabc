// SPDX-License-Identifier: MIT
#include "export/ds_calibration_export.h"

#include <cmath>
#include <cstdlib>
#include <string>

#include "cells.h"
#include "core/arithmetic.h"
#include "core/conversion.h"
#include "core/number_text.h"
#include "core/sensor_id.h"
#include "decoders/auxiliary_presenter.h"
#include "decoders/hk_sensors.h"

namespace morvane {

namespace {

// Packets in file order: binary packets by position, ZEB records (position 0) by record.
bool before(int32_t frame_a, int32_t position_a, int32_t frame_b, int32_t position_b) {
  return frame_a != frame_b ? frame_a < frame_b : position_a < position_b;
}

}  // namespace

DSCalibrationIndex::DSCalibrationIndex(const Session& session) {
  const Configuration& config = session.config;
  if (config.Sensor_Count() >= kDockingStationSensor && session.HK_Sensor_Data.sensors() >= kDockingStationSensor) {
    hk_entries_ = session.catalogue.HK_Count();
  }
  if (!is_binary(session.File_Type)) return;
  const EntryList& science = session.catalogue.Science_List;
  for (int32_t i = 1; i <= science.size(); ++i) {
    const Packet_Entry& entry = science[i];
    if (entry.Label != LabelCode::AuxiliaryData) continue;
    for (const AuxReading& reading : Load_Lander_Data(session, entry)) {
      if (Get_Sensor_ID(config, reading.Channel_ID) != kDockingStationSensor) continue;
      aux_.push_back({entry.Packet_Frame, entry.Packet_Position, reading.Reading_Time, reading.Reading_Word});
    }
  }
}

void DSCalibrationIndex::for_each(const Session& session, EntryRange range,
                                    const std::function<bool(int32_t, const DSReading&)>& visit) const {
  const EntryList& hk = session.catalogue.HK_List;
  const int32_t exponent = hk_entries_ > 0 ? session.config.sensor(kDockingStationSensor).Scale_Exponent : 0;
  int32_t k = 1;  // next housekeeping entry
  size_t a = 0;   // next auxiliary reading
  for (int32_t number = 1; number <= range.to; ++number) {
    const bool from_hk = k <= hk_entries_ && (a == aux_.size() || !before(aux_[a].frame, aux_[a].position,
                                                                          hk[k].Packet_Frame, hk[k].Packet_Position));
    if (!from_hk && a == aux_.size()) return;
    if (number < range.from) {
      if (from_hk) {
        ++k;
      } else {
        ++a;
      }
      continue;
    }
    DSReading reading;
    if (from_hk) {
      const int32_t raw = hk_signed_reading(kDockingStationSensor, session.HK_Sensor_Data.at(kDockingStationSensor, k));
      reading.time = hk[k].Lander_Time;
      reading.counts = std::ldexp(static_cast<double>(raw), exponent);
      reading.voltage = hk_voltage(raw, exponent);
      ++k;
    } else {
      reading.time = aux_[a].time;
      reading.counts = signed_word(aux_[a].word);
      reading.voltage = ADC_Voltage(aux_[a].word);
      ++a;
    }
    if (!visit(number, reading)) return;
  }
}

ExportResult write_ds_calibration(const Session& session, const DSCalibrationIndex& index, const DSExport& options,
                                   LineSink& out, const ExportProgress& progress) {
  static constexpr const char* kDataLines[] = {"Data in calibrated position (mm)", "Data in sensor ADC values",
                                               "Data in sensor voltages (V)"};
  static constexpr const char* kColumnHeads[] = {"Position", "ADC value", "Voltage"};
  const auto format = static_cast<size_t>(options.format);
  out.text("Docking station calibration data acquired from " + session.File_Name);
  out.end_line(false);
  out.text(kDataLines[format]);
  out.end_line(false);
  out.end_line(false);
  out.text("Time");
  out.text(kColumnHeads[format]);
  out.end_line(true);
  out.end_line(false);

  ExportResult result;
  ProgressTicker ticker(progress, options.range.size());
  // A pattern's cell holds the value it shows, so a workbook and the text agree.
  auto fixed_cell = [&out](double value, const char* pattern) {
    const std::string text = format_pattern(value, pattern);
    out.number(std::strtod(text.c_str(), nullptr), text, pattern);
  };
  index.for_each(session, options.range, [&](int32_t, const DSReading& reading) {
    if (!ticker.at(result.rows)) {
      result.cancelled = true;
      return false;
    }
    integer_cell(out, reading.time);
    switch (options.format) {
      case DSFormat::Distance: {
        double voltage = reading.voltage, position = 0;
        std::string unit;
        Convert_Sensor(session.config, kDockingStationSensor, voltage, position, unit);
        fixed_cell(position, "0.00");
        break;
      }
      case DSFormat::ADC: out.number(reading.counts, general_text(reading.counts)); break;
      case DSFormat::Voltage: fixed_cell(reading.voltage, "0.000"); break;
    }
    out.end_line(true);
    ++result.rows;
    return true;
  });
  if (!result.cancelled) ticker.finished();
  return result;
}

}  // namespace morvane
