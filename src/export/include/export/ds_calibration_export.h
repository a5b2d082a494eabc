// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "core/session.h"
#include "export/export_progress.h"
#include "export/export_range.h"
#include "export/line_sink.h"

namespace morvane {

// The docking station's position sensor.
inline constexpr int kDockingStationSensor = 29;

// One docking-station calibration entry: a reading of the position sensor.
struct DSReading {
  int32_t time = 0;    // lander time, seconds
  double counts = 0;   // the reading on the 16-bit ADC scale (signed counts)
  double voltage = 0;  // counts x 10 / 32768
};

// The docking-station calibration entries of a loaded file, in file order: every reading of
// sensor 29 the file carries. Each housekeeping packet carries one, its sensor byte (unsigned)
// worth 2^n counts by the sensor's scale exponent, timed by the packet's lander time; each
// auxiliary reading whose channel ID names sensor 29 is one more, its own word and time. Both
// land on the same ADC scale, so a calibration run shows the housekeeping trend and the finer
// auxiliary readings side by side, in the order they were sent.
class DSCalibrationIndex {
 public:
  // Finds the entries: the auxiliary packets' readings are read once (ZEB records carry none);
  // the housekeeping entries come from the catalogue when the sensor table has sensor 29. An
  // auxiliary packet of more than 29 readings is the view's RuntimeError.
  explicit DSCalibrationIndex(const Session& session);

  int32_t count() const { return hk_entries_ + static_cast<int32_t>(aux_.size()); }

  // Calls visit for entries range.from..range.to in order; visit returns false to stop.
  void for_each(const Session& session, EntryRange range,
                const std::function<bool(int32_t number, const DSReading& reading)>& visit) const;

 private:
  struct AuxPlace {
    int32_t frame = 0;  // the packet's frame and position order it among the housekeeping packets
    int32_t position = 0;
    int32_t time = 0;
    int32_t word = 0;
  };
  std::vector<AuxPlace> aux_;
  int32_t hk_entries_ = 0;
};

// The docking-station dialog's data formats, in the order of its options.
enum class DSFormat { Distance, ADC, Voltage };

struct DSExport {
  EntryRange range;
  DSFormat format = DSFormat::Distance;
};

// Writes the docking-station calibration export: "Docking station calibration data acquired
// from " and the file name, "Data in calibrated position (mm)" / "Data in sensor ADC values" /
// "Data in sensor voltages (V)", an empty line, the heading "Time" and "Position" / "ADC value" /
// "Voltage", an empty line, then one row per entry: its time and its position (the sensor
// conversion of its voltage, "0.00"), ADC counts or voltage ("0.000"), each cell followed by the
// delimiter.
ExportResult write_ds_calibration(const Session& session, const DSCalibrationIndex& index, const DSExport& options,
                                   LineSink& out, const ExportProgress& progress = {});

}  // namespace morvane
