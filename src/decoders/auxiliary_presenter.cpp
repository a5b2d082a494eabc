// SPDX-License-Identifier: MIT
#include "decoders/auxiliary_presenter.h"

#include "core/arithmetic.h"
#include "core/conversion.h"
#include "core/error.h"
#include "core/number_text.h"
#include "core/sensor_id.h"

namespace morvane {

double ADC_Voltage(int32_t word) { return adc_volts(word); }

std::vector<int32_t> build_aux_index(const Catalogue& catalogue) {
  std::vector<int32_t> index;
  index.reserve(static_cast<size_t>(catalogue.counters.Auxiliary_Count()));
  for (int32_t i = 1; i <= catalogue.Science_Count(); ++i) {
    if (catalogue.Science_List[i].Label == LabelCode::AuxiliaryData) index.push_back(i);
  }
  return index;
}

std::vector<AuxReading> Load_Lander_Data(const Session& session, const Packet_Entry& entry) {
  const TelemetryFile& file = session.telemetry();
  auto word = [&](int k) { return file.packet_word(entry, k, session.Byte_Reverse); };
  const int16_t count = checked_int16(word(18));
  std::vector<AuxReading> readings;
  for (int i = 1; i <= count; ++i) {
    if (i > kMaxAuxReadings) {
      raise(ErrorNumber::SubscriptOutOfRange,
            "the auxiliary packet holds " + std::to_string(count) + " readings, at most 29 fit");
    }
    int32_t high = word(12 + 8 * i);
    if (high > 32767) high = -1;  // keeps the product inside 32 bits: such a time is low - 65536
    AuxReading reading;
    reading.Reading_Time = high * 65536 + word(14 + 8 * i);
    reading.Channel_ID = word(16 + 8 * i);
    reading.Reading_Word = word(18 + 8 * i);
    readings.push_back(reading);
  }
  return readings;
}

std::string ad590_temperature_text(const Configuration& config) {
  return format_pattern(config.NType.NType_Lookup(config.AD590_EMF), "0.00");
}

AuxRow aux_row(const Configuration& config, const AuxReading& reading, int i) {
  AuxRow row;
  row.sensor = Get_Sensor_ID(config, reading.Channel_ID);
  if (row.sensor < 1 || row.sensor > config.Sensor_Count()) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "reading " + std::to_string(i) + ": channel ID " + std::to_string(reading.Channel_ID) + " names no sensor");
  }
  const SensorRecord& record = config.sensor(row.sensor);
  row.name = record.Sensor_Name;
  row.channel_id = reading.Channel_ID;
  row.word = reading.Reading_Word;
  row.time = reading.Reading_Time;
  row.adc_voltage = ADC_Voltage(reading.Reading_Word);
  row.adc_voltage_text = format_pattern(row.adc_voltage, "0.00000");

  // The thermocouple channels' cold junction is the AD590's: microvolts to volts, times the gain of 100.
  double voltage = row.adc_voltage;
  if (is_thermocouple(row.sensor)) voltage += config.AD590_EMF / 10000;
  row.unit = record.Sensor_Unit;
  Convert_Sensor(config, row.sensor, voltage, row.value, row.unit);
  row.value_text = format_pattern(row.value, "0.00");
  return row;
}

AuxTable draw_aux_table(const Configuration& config, const std::vector<AuxReading>& readings) {
  AuxTable table;
  auto put = [&](std::string text, int x, int y, Anchor anchor = Anchor::Left) {
    table.drawing.push_back(PlacedText{std::move(text), x, y, kBlack, anchor});
  };
  static constexpr int kHeadingX[] = {0, 1500, 2300, 2900, 4400, 5300, 6000};
  for (size_t h = 0; h < std::size(kAuxiliaryHeadings); ++h) put(kAuxiliaryHeadings[h], kHeadingX[h], 50);

  int i = 0;
  for (const AuxReading& reading : readings) {
    const int y = 220 * ++i + 200;
    AuxRow row;
    try {
      row = aux_row(config, reading, i);
    } catch (const RuntimeError& error) {
      table.error = error;  // the rows before it stay
      break;
    }
    put(row.name, 0, y);
    put(std::to_string(row.channel_id), 4800, y, Anchor::Right);
    put(std::to_string(row.word), 5700, y, Anchor::Right);
    put(std::to_string(row.time), 3500, y, Anchor::Right);
    put(row.adc_voltage_text, 6900, y, Anchor::Right);
    put(row.value_text, 2100, y, Anchor::Right);
    if (row.unit == "oC") {
      put("o", 2300, y - 50);  // the degree sign, raised
      put("C", 2385, y);
    } else {
      put(row.unit, 2300, y);
    }
    table.rows.push_back(std::move(row));
  }
  return table;
}

AuxOpening AuxiliaryPresenter::Form_Load(const Session& session) {
  Aux_Index = build_aux_index(session.catalogue);
  if (Aux_Index.empty()) {
    raise(ErrorNumber::SubscriptOutOfRange, "the loaded file holds no auxiliary data packets");
  }
  for (size_t k = 0; k < Aux_Index.size(); ++k) {
    if (Aux_Index[k] == session.Current_Science_Index) Current_Aux_Number = static_cast<int32_t>(k + 1);
  }
  AuxOpening opening;
  opening.packet_count = std::to_string(session.catalogue.counters.Auxiliary_Count());
  opening.scroll_maximum = session.catalogue.counters.Auxiliary_Count();
  opening.scroll_value = Current_Aux_Number;
  opening.ad590_text = ad590_temperature_text(session.config);
  return opening;
}

AuxPage AuxiliaryPresenter::VScroll1_Change(const Session& session, int32_t value) {
  Current_Aux_Number = value;
  return Update_Auxiliary_Packet_Info(session);
}

AuxPage AuxiliaryPresenter::Update_Auxiliary_Packet_Info(const Session& session) {
  if (Current_Aux_Number < 1 || Current_Aux_Number > static_cast<int32_t>(Aux_Index.size())) {
    raise(ErrorNumber::SubscriptOutOfRange, "auxiliary packet " + std::to_string(Current_Aux_Number) + " of " +
                                                std::to_string(Aux_Index.size()));
  }
  const Packet_Entry& entry = session.catalogue.Science_List.at(Aux_Index[static_cast<size_t>(Current_Aux_Number - 1)]);
  // ZEB records carry no readings (Load_ZEB_Data does nothing): the previous ones stay.
  if (is_binary(session.File_Type)) readings = Load_Lander_Data(session, entry);

  AuxPage page;
  page.table = draw_aux_table(session.config, readings);
  page.aux_number = std::to_string(Current_Aux_Number);
  page.sequence = std::to_string(entry.Sequence_Count);
  page.lander_time = std::to_string(entry.Lander_Time);
  page.channel_count = std::to_string(Channel_Count());
  return page;
}

}  // namespace morvane
