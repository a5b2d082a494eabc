// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "core/catalogue.h"
#include "core/configuration.h"
#include "core/file_format.h"
#include "core/telemetry_file.h"

namespace morvane {

// Everything one run of the workstation knows: the configuration read at start-up, the packet
// store of the loaded file and its catalogue, and the current entry of each kind. Owned by the
// application (or a batch command) and passed to every decoder; a new load replaces the store.
struct Session {
  Configuration config;

  // The packet store.
  std::string File_Name;  // empty until a file is loaded
  FileFormat File_Type = FileFormat::CSS;
  int32_t Packet_Count = 0;
  bool Byte_Reverse = true;  // first byte low, the start-up setting
  std::shared_ptr<TelemetryFile> file;

  Catalogue catalogue;
  HKSensorTable HK_Sensor_Data;

  int32_t Current_HK_Index = 1;
  int32_t Current_Science_Index = 0;
  int32_t Current_Information_Index = 0;
  std::string Test_Mode;  // "Cruise Phase" or "EAFT"

  bool loaded() const { return !File_Name.empty() && file != nullptr; }
  // The loaded file; "Bad file name or number" when there is none.
  const TelemetryFile& telemetry() const;
};

// Called now and then by a long pass with the frames (records) done and the frames to do.
using ProgressFunction = std::function<void(int64_t done, int64_t total)>;

// Zeroes the packet count, the lists, every counter but Memory_Checksum_Count and every
// previous copy; the current housekeeping entry becomes 1, the others 0.
void Reset_Packet_Store(Session& session);

// Extend the lists from the previous pass up to Packet_Count (binary: frames after
// Previous_Packet_Count; ZEB: always from record 1).
void Catalogue_282_Byte_File(Session& session, const ProgressFunction& progress = {});
void Catalogue_280_Byte_File(Session& session, const ProgressFunction& progress = {});
void Catalogue_ZEB_File(Session& session, const ProgressFunction& progress = {});
// The classifier that fits File_Type.
void Catalogue_File(Session& session, const ProgressFunction& progress = {});

// Fills the housekeeping byte table for entries Previous_HK_Count + 1 .. HK_Count.
void Load_HK_Sensor_Data(Session& session);
// Copies the current counts into the previous copies (not Memory_Checksum_Count).
void Save_Catalogue_Counts(Session& session);

// A whole load of a telemetry file as the File menu does it, but for the views: opens the
// file, resets the store, counts the frames, catalogues them, copies the housekeeping bytes
// and saves the counts. A RuntimeError met while cataloguing (a ZEB file whose last record is
// incomplete, say) is thrown after the entries before it were kept, their housekeeping bytes
// copied and the counts saved, so the catalogue stays usable.
void load_telemetry(Session& session, const std::string& path, FileFormat format,
                    const ProgressFunction& progress = {});
// The same load of a telemetry file already opened (or held in memory): File_Name becomes its
// path, File_Type its format.
void load_telemetry(Session& session, std::shared_ptr<TelemetryFile> file, const ProgressFunction& progress = {});

// One pass of real-time collection: re-counts the frames of the loaded file and, when there
// are more than Packet_Count, catalogues only the new ones and copies their housekeeping
// bytes. Returns whether anything was added; the caller then updates its views and calls
// Save_Catalogue_Counts.
bool extend_catalogue(Session& session);

}  // namespace morvane
