// SPDX-License-Identifier: MIT
#include "export/housekeeping_export.h"

#include <array>
#include <memory>
#include <string>

#include "cells.h"
#include "core/conversion.h"
#include "core/error.h"
#include "core/number_text.h"
#include "decoders/hk_decode.h"

namespace morvane {

namespace {

constexpr int kBoardSensor = 28;  // the cold junction's temperature

// A sensor byte as the calibrated formats write it.
struct Calibrated {
  bool ready = false;
  SensorValue value;  // its voltage as the conversion left it (a pressure channel's overwritten)
  std::string text;
};

// One ticked sensor's column. A calibrated value depends only on the byte (and, for a corrected
// thermocouple, on the packet's board-temperature byte), so each byte is converted and written
// as text once per export rather than once per packet: the text of a million rows costs what
// their copying costs.
struct Column {
  int sensor = 0;
  bool corrected = false;  // a thermocouple channel of the AD590 format
  std::array<Calibrated, 256> by_byte;
  // The cell this column wrote last. Its slot is converted again only just before it is
  // written again, so it holds what was written.
  const Calibrated* last = nullptr;
};

class HousekeepingWriter {
 public:
  HousekeepingWriter(const Session& session, const HKExport& options) : session_(session), options_(options) {
    const int count = session.config.Sensor_Count();
    for (int s = 1; s <= count && s <= static_cast<int>(options.sensors.size()); ++s) {
      if (!options.sensors[static_cast<size_t>(s - 1)]) continue;
      columns_.push_back(std::make_unique<Column>());
      columns_.back()->sensor = s;
      columns_.back()->corrected = options.format == HKFormat::Calibrated_AD590 && is_thermocouple(s);
    }
  }

  void headings(LineSink& out) {
    const Configuration& config = session_.config;
    out.text(hk_export_title(options_.format));
    out.end_line(false);
    out.text("HK number");
    out.text("Lander time");
    for (const auto& column : columns_) out.text(config.sensor(column->sensor).Sensor_Name);
    out.end_line(true);
    out.text("     ");
    out.text("seconds");
    for (const auto& column : columns_) out.text(config.sensor(column->sensor).Sensor_Unit);
    out.end_line(true);
    out.end_line(false);
  }

  void row(LineSink& out, int32_t k) {
    const Packet_Entry& entry = session_.catalogue.HK_List.at(k);
    const HKSensorTable& bytes = session_.HK_Sensor_Data;
    if (options_.format == HKFormat::Calibrated_AD590) board_byte(bytes.at(kBoardSensor, k));

    integer_cell(out, k);
    integer_cell(out, entry.Lander_Time);
    for (const auto& column : columns_) {
      const uint8_t byte = bytes.at(column->sensor, k);
      if (options_.format == HKFormat::Raw) {
        out.number(byte, kByteTexts[byte]);
        continue;
      }
      const Calibrated& c = calibrated(*column, byte);
      column->last = &c;
      out.number(c.value.value, c.text);
    }
    out.end_line(true);
  }

  // Each calibrated column's last written value, into its sensor's record.
  void keep_last_written(Configuration& config) const {
    for (const auto& column : columns_) {
      if (column->last) keep_in_sensor_records(config, column->sensor, column->last->value);
    }
  }

 private:
  // The cold-junction term of a packet whose board temperature byte is this; a new byte makes
  // the corrected columns' texts stale.
  void board_byte(uint8_t byte) {
    if (byte == board_byte_) return;
    board_byte_ = byte;
    cold_junction_term_ = board_cold_junction_term(session_.config, byte);
    for (auto& column : columns_) {
      if (!column->corrected) continue;
      for (Calibrated& c : column->by_byte) c.ready = false;
    }
  }

  const Calibrated& calibrated(Column& column, uint8_t byte) {
    Calibrated& c = column.by_byte[byte];
    if (c.ready) return c;
    c.value = hk_byte_value(session_.config, column.sensor, byte, column.corrected ? cold_junction_term_ : 0);
    c.text = general_text(c.value.value);
    c.ready = true;
    return c;
  }

  static const std::array<std::string, 256> kByteTexts;

  const Session& session_;
  const HKExport& options_;
  std::vector<std::unique_ptr<Column>> columns_;
  int board_byte_ = -1;
  double cold_junction_term_ = 0;
};

const std::array<std::string, 256> HousekeepingWriter::kByteTexts = [] {
  std::array<std::string, 256> texts;
  for (size_t b = 0; b < texts.size(); ++b) texts[b] = std::to_string(b);
  return texts;
}();

}  // namespace

const char* hk_export_title(HKFormat format) {
  switch (format) {
    case HKFormat::Raw: return "Housekeeping - Raw data";
    case HKFormat::Calibrated: return "Housekeeping - Calibrated Data (no AD590 correction)";
    case HKFormat::Calibrated_AD590: return "Housekeeping - Calibrated Data (with AD590 correction)";
  }
  return "";
}

ExportResult write_housekeeping(Session& session, const HKExport& options, LineSink& out,
                                 const ExportProgress& progress) {
  HousekeepingWriter writer(session, options);
  writer.headings(out);
  ExportResult result;
  ProgressTicker ticker(progress, options.range.size());
  try {
    for (int32_t k = options.range.from; k <= options.range.to; ++k) {
      if (!ticker.at(result.rows)) {
        result.cancelled = true;
        break;
      }
      writer.row(out, k);
      ++result.rows;
    }
  } catch (...) {
    writer.keep_last_written(session.config);
    throw;
  }
  // However the export ends, the records hold what it wrote last, as they did when it wrote
  // into them cell by cell.
  writer.keep_last_written(session.config);
  if (!result.cancelled) ticker.finished();
  return result;
}

}  // namespace morvane
