// SPDX-License-Identifier: MIT
#include "core/session.h"

#include <algorithm>
#include <limits>

#include "core/error.h"
#include "core/system_error.h"

namespace morvane {

const TelemetryFile& Session::telemetry() const {
  if (!file) raise(ErrorNumber::BadFileName, "no telemetry file is loaded");
  return *file;
}

void Reset_Packet_Store(Session& session) {
  Catalogue& catalogue = session.catalogue;
  const int32_t memory_checksums = catalogue.counters.Memory_Checksum_Count();
  session.Packet_Count = 0;
  catalogue.HK_List.clear();
  catalogue.Science_List.clear();
  catalogue.Information_List.clear();
  catalogue.counters = {};
  catalogue.counters[Counter::MemoryChecksum] = memory_checksums;  // kept for the whole run
  catalogue.previous = {};
  catalogue.Previous_Packet_Count = 0;
  catalogue.Previous_HK_Count = 0;
  catalogue.Previous_Science_Count = 0;
  catalogue.Previous_Information_Count = 0;
  session.HK_Sensor_Data.reset(session.config.Sensor_Count());
  session.Current_HK_Index = 1;
  session.Current_Science_Index = 0;
  session.Current_Information_Index = 0;
}

void Catalogue_File(Session& session, const ProgressFunction& progress) {
  if (has_282_byte_frames(session.File_Type)) {
    Catalogue_282_Byte_File(session, progress);
  } else if (has_280_byte_frames(session.File_Type)) {
    Catalogue_280_Byte_File(session, progress);
  } else {
    Catalogue_ZEB_File(session, progress);
  }
}

namespace {

// Reads the sensor bytes of binary housekeeping packets through a window of the file, since
// consecutive packets lie close together.
void load_binary_sensor_bytes(Session& session, int32_t first, int32_t last) {
  const auto& sensors = session.config.Sensor_Table;
  std::vector<int64_t> offsets;
  for (const auto& sensor : sensors) {
    offsets.push_back(session.Byte_Reverse ? swapped_byte_offset(sensor.Byte_Offset) : sensor.Byte_Offset);
  }
  std::vector<uint8_t> row(offsets.size());
  if (offsets.empty()) {
    session.HK_Sensor_Data.append_rows(row.data(), last - first + 1);
    return;
  }
  const int64_t low = *std::min_element(offsets.begin(), offsets.end());
  const int64_t high = *std::max_element(offsets.begin(), offsets.end());
  const int64_t window_size = std::max<int64_t>(high - low + 1, 1 << 20);
  std::vector<uint8_t> window;
  int64_t window_start = std::numeric_limits<int64_t>::min();  // 1-based position of window[0]
  const TelemetryFile& file = session.telemetry();
  for (int32_t i = first; i <= last; ++i) {
    const int64_t p = session.catalogue.HK_List[i].Packet_Position;
    const int64_t need_from = p + low, need_to = p + high;
    if (need_from < window_start || need_to >= window_start + static_cast<int64_t>(window.size())) {
      window_start = need_from;
      window.resize(static_cast<size_t>(window_size));
      for (int64_t k = 0; window_start + k < 1 && k < window_size; ++k) window[static_cast<size_t>(k)] = 0;
      const int64_t from = std::max<int64_t>(window_start, 1);
      const int64_t skip = from - window_start;
      if (skip < window_size) {
        file.bytes().read(static_cast<uint64_t>(from - 1), window.data() + skip, static_cast<size_t>(window_size - skip));
      }
    }
    for (size_t j = 0; j < offsets.size(); ++j) row[j] = window[static_cast<size_t>(p + offsets[j] - window_start)];
    session.HK_Sensor_Data.append_rows(row.data(), 1);
  }
}

void load_zeb_sensor_bytes(Session& session, int32_t first, int32_t last) {
  const auto& sensors = session.config.Sensor_Table;
  const ZebText& zeb = session.telemetry().zeb();
  std::vector<uint8_t> row(sensors.size());
  for (int32_t i = first; i <= last; ++i) {
    const int32_t record = session.catalogue.HK_List[i].Packet_Frame;
    for (size_t j = 0; j < sensors.size(); ++j) row[j] = zeb.packet_byte(record, sensors[j].Byte_Offset);
    session.HK_Sensor_Data.append_rows(row.data(), 1);
  }
}

}  // namespace

void Load_HK_Sensor_Data(Session& session) {
  HKSensorTable& table = session.HK_Sensor_Data;
  if (table.sensors() != session.config.Sensor_Count()) table.reset(session.config.Sensor_Count());
  // The binary classifier copies the bytes while it holds the frames; what is left starts here.
  const int32_t first = table.entries() + 1;
  const int32_t last = session.catalogue.HK_Count();
  if (first > last || !session.file) return;
  if (is_binary(session.File_Type)) {
    load_binary_sensor_bytes(session, first, last);
  } else {
    load_zeb_sensor_bytes(session, first, last);
  }
}

void Save_Catalogue_Counts(Session& session) {
  Catalogue& catalogue = session.catalogue;
  catalogue.Previous_Packet_Count = session.Packet_Count;
  catalogue.Previous_HK_Count = catalogue.HK_Count();
  catalogue.Previous_Science_Count = catalogue.Science_Count();
  catalogue.Previous_Information_Count = catalogue.Information_Count();
  const int32_t memory_checksums = catalogue.previous.Memory_Checksum_Count();
  catalogue.previous = catalogue.counters;
  catalogue.previous[Counter::MemoryChecksum] = memory_checksums;  // no previous copy of this one
}

void load_telemetry(Session& session, const std::string& path, FileFormat format, const ProgressFunction& progress) {
  // An open failure changes nothing.
  load_telemetry(session, std::make_shared<TelemetryFile>(path, format), progress);
}

void load_telemetry(Session& session, std::shared_ptr<TelemetryFile> file, const ProgressFunction& progress) {
  session.File_Name = file->path();
  session.File_Type = file->format();
  session.file = std::move(file);
  Reset_Packet_Store(session);
  session.Packet_Count = session.file->Get_Packet_Count();
  try {
    if (session.Packet_Count > 0) Catalogue_File(session, progress);
  } catch (const RuntimeError& error) {
    // Keep what was catalogued before the failure usable, then report it.
    Load_HK_Sensor_Data(session);
    Save_Catalogue_Counts(session);
    throw naming_file(error, session.File_Name);
  }
  Load_HK_Sensor_Data(session);
  Save_Catalogue_Counts(session);
}

bool extend_catalogue(Session& session) {
  if (!session.file) return false;
  session.file->refresh();
  const int32_t count = session.file->Get_Packet_Count();
  if (count <= session.Packet_Count) return false;
  session.Packet_Count = count;
  try {
    Catalogue_File(session);
    Load_HK_Sensor_Data(session);
  } catch (const RuntimeError& error) {
    throw naming_file(error, session.File_Name);
  }
  return true;
}

}  // namespace morvane
