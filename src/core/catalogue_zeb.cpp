// SPDX-License-Identifier: MIT
// The classifier of the ZEB text format: one packet a record, its header fields given as items.
#include <string>
#include <vector>

#include "catalogue_slot.h"
#include "core/error.h"
#include "core/session.h"

namespace morvane {

namespace {

constexpr int32_t kProgressRecords = 65536;

void classify_record(const ZebRecord& item, int32_t r, Catalogue& catalogue) {
  Packet_Entry entry;
  entry.Packet_Frame = r;
  entry.Packet_Position = 0;
  entry.Packet_Length = item[8];
  entry.Sequence_Count = item[7];
  entry.Lander_Time = item[9];
  const Classification kind = classify_packet(item[5], FormatFamily::Zeb,
                                              [&](Selector selector) { return item[selector_item(selector)]; });
  entry.Label = kind.label;
  switch (packet_kind_info(kind.kind).list) {
    case CatalogueList::HK:
      catalogue.HK_List.push_back(entry);
      break;
    case CatalogueList::Science:
      if (item[6] < INT16_MIN || item[6] > INT16_MAX) {
        raise(ErrorNumber::Overflow, "ZEB record " + std::to_string(r) + " item 6: segmentation flags " +
                                         std::to_string(item[6]) + " do not fit 16 bits");
      }
      entry.Segment_Flags = static_cast<int16_t>(item[6]);
      catalogue.Science_List.push_back(entry);
      break;
    case CatalogueList::Information:
      if (packet_kind_info(kind.kind).slot) clear_slot_header(entry);
      catalogue.Information_List.push_back(entry);
      break;
  }
  catalogue.counters.count(kind.label, item[6], FormatFamily::Zeb);
}

// While the sensor table is level with the housekeeping list, each housekeeping record's sensor
// bytes are copied from the items in hand instead of reading the record again afterwards. A byte
// that cannot be taken (an offset past the record, an item wider than 16 bits) stops the copying:
// the later reading reports it.
class SensorByteCopy {
 public:
  explicit SensorByteCopy(Session& session) : table_(session.HK_Sensor_Data) {
    const int sensors = session.config.Sensor_Count();
    if (table_.sensors() != sensors && session.catalogue.HK_Count() == 0) table_.reset(sensors);
    if (table_.sensors() != sensors || table_.entries() != session.catalogue.HK_Count()) return;
    for (const auto& sensor : session.config.Sensor_Table) {
      const int32_t k = sensor.Byte_Offset;
      if (k < 0 || k / 2 + 9 > kZebItemsPerRecord) return;
      items_.push_back(static_cast<size_t>(k / 2 + 9));
      high_.push_back(k % 2 == 0);
    }
    row_.resize(items_.size());
    active_ = true;
  }

  void copy(const ZebRecord& record) {
    if (!active_) return;
    for (size_t j = 0; j < items_.size(); ++j) {
      int32_t v = record[items_[j]];
      if (v < 0) v += 65536;
      if (v < 0 || v > 65535) {
        active_ = false;
        return;
      }
      row_[j] = static_cast<uint8_t>(high_[j] ? v / 256 : v % 256);
    }
    table_.append_rows(row_.data(), 1);
  }

 private:
  HKSensorTable& table_;
  std::vector<size_t> items_;
  std::vector<bool> high_;
  std::vector<uint8_t> row_;
  bool active_ = false;
};

}  // namespace

void Catalogue_ZEB_File(Session& session, const ProgressFunction& progress) {
  const ZebText& zeb = session.telemetry().zeb();
  SensorByteCopy sensor_bytes(session);
  // Not incremental: the ZEB classifier always starts at record 1.
  zeb.for_each_record(1, session.Packet_Count, [&](int32_t r, const ZebRecord& items) {
    const int32_t hk_before = session.catalogue.HK_Count();
    classify_record(items, r, session.catalogue);
    if (session.catalogue.HK_Count() != hk_before) sensor_bytes.copy(items);
    if (progress && r % kProgressRecords == 0) progress(r, session.Packet_Count);
  });
  if (progress) progress(session.Packet_Count, session.Packet_Count);
}

}  // namespace morvane
