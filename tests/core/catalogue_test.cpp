// SPDX-License-Identifier: MIT
// Cataloguing a file's packets, and the housekeeping sensor table it fills.
#include "core/catalogue.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <vector>

#include "core/session.h"
#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane::testing {
namespace {

constexpr int kSubType = selector_offset(Selector::SubType);
constexpr int kClass = selector_offset(Selector::EventClass);
constexpr int kZebSubType = selector_item(Selector::SubType);
constexpr int kZebClass = selector_item(Selector::EventClass);

Packet hk(int sub_type, int sequence = 1, int time_low = 100) {
  return Packet{kHousekeepingId, sequence, 51, 0, time_low, {{kSubType, sub_type}}, {}};
}
Packet science(int sub_type, int flags = 0, int sequence = 1) {
  return Packet{kScienceId, flags * 16384 + sequence, 25, 0, 7, {{kSubType, sub_type}}, {}};
}
Packet event(PacketKind kind, int class_word) {
  return Packet{identifier_of(kind, FormatFamily::Frames282), 5, 11, 0, 9, {{kClass, class_word}}, {}};
}
constexpr PacketKind kEvent = PacketKind::ProgressEvent;
constexpr PacketKind kAcceptance = PacketKind::Acceptance;
constexpr PacketKind kDump = PacketKind::MemoryDump;

class Cataloguing : public ::testing::Test {
 protected:
  void SetUp() override { session.config = load_configuration(sim::write_configuration(dir.path("base"))); }
  void load(FileFormat format) {
    testing::write_bytes(dir.path("t.dat"), writer.bytes());
    load_telemetry(session, dir.path("t.dat"), format);
  }
  const Catalogue& catalogue() const { return session.catalogue; }
  TempDir dir;
  Session session;
  FrameWriter writer{282};
};

// An entry's frame, position, length, sequence count, time and segmentation flags.
auto fields(const Packet_Entry& e) {
  return std::tuple{e.Packet_Frame,   e.Packet_Position, e.Packet_Length,
                    e.Sequence_Count, e.Lander_Time,     int{e.Segment_Flags}};
}

std::vector<LabelCode> labels_of(const EntryList& list) {
  std::vector<LabelCode> labels;
  for (int32_t i = 1; i <= list.size(); ++i) labels.push_back(list[i].Label);
  return labels;
}

TEST_F(Cataloguing, EveryIdentifierAndSelectorGetsItsLabelAndCounter) {
  writer.add_frame({hk(1), hk(2), hk(5)});
  writer.add_frame({event(kEvent, 0x0100), event(kEvent, 0x0A00), event(kEvent, 0x0101), event(kAcceptance, 0x0A00),
                    event(kAcceptance, 0x0100), event(kAcceptance, 0x0200), event(kDump, 0), event(kEvent, 0x0200),
                    event(kAcceptance, 0x0300)});
  writer.add_frame({science(1), science(2), science(3, 3), science(3, 2), science(3, 1), science(9)});
  writer.add_frame({Packet{0x1234, 0, 11, 0, 0, {}, {}}});
  load(FileFormat::QM);
  using L = LabelCode;
  EXPECT_EQ(labels_of(catalogue().HK_List), (std::vector{L::Concise, L::Complete, L::HousekeepingUnknown}));
  EXPECT_EQ(labels_of(catalogue().Science_List),
            (std::vector{L::AuxiliaryData, L::GcSpectrum, L::IsotopeSpectrum, L::IsotopeSpectrum, L::IsotopeSpectrum,
                         L::ScienceUnknown}));
  EXPECT_EQ(labels_of(catalogue().Information_List),
            (std::vector{L::Empty, L::NormalProgressEvent, L::NpeMemoryChecksum, L::UnknownProgressEvent,
                         L::MemoryChecksum, L::AcceptanceSuccess, L::AcceptanceFailure, L::MemoryDump,
                         L::WarningAnomalousEvent, L::UnknownAcceptance, L::Empty, L::Empty, L::Unknown}));
  // Progress events count normal and NPE - Memory Checksum together; isotope flags 3 and 2 pass the
  // CSS/QM test of bit 2; the unknowns are a progress event, an acceptance and an identifier; frames
  // 1 to 3 end in an empty slot, frame 4 in the unknown one.
  const CatalogueCounters& n = catalogue().counters;
  EXPECT_EQ((std::vector{n.Concise_Count(), n.Complete_Count(), n.Progress_Event_Count(), n.Warning_Event_Count(),
                         n.Memory_Checksum_Count(), n.Acceptance_Success_Count(), n.Acceptance_Failure_Count(),
                         n.Memory_Dump_Count(), n.Auxiliary_Count(), n.GC_Spectrum_Count(), n.Isotope_Packet_Count(),
                         n.Isotope_Spectrum_Count(), n.Unknown_Count(), n.Empty_Count()}),
            (std::vector{1, 1, 2, 1, 1, 1, 1, 1, 1, 1, 3, 2, 3, 3}));
}

TEST_F(Cataloguing, TheTwoBinaryFamiliesTestDifferentIsotopeBits) {
  // Flags 2 (first of several) pass the CSS/QM test of bit 2; only flags 1 (last) pass the GRM/FM test of bit 1.
  writer.add_frame({science(3, 2)});
  load(FileFormat::CSS);
  EXPECT_EQ(catalogue().counters.Isotope_Spectrum_Count(), 1);
  writer = FrameWriter(280);
  writer.add_frame({science(3, 1)});
  load(FileFormat::FM);
  EXPECT_EQ(catalogue().counters.Isotope_Spectrum_Count(), 1);
}

TEST_F(Cataloguing, EntriesCarryTheHeaderFields) {
  const Packet p{kScienceId, 2 * 16384 + 0x1234, 25, 0x8001, 5, {{kSubType, 3}}, {}};
  writer.add_frame({hk(2, 0xC000 + 7, 0x0102), p});  // flags 3 that a housekeeping entry does not keep
  load(FileFormat::CSS);
  EXPECT_EQ(fields(catalogue().HK_List[1]), std::tuple(1, 23, 58, 7, 0x0102, 0));
  // A high time word above 32767 counts as -1.
  EXPECT_EQ(fields(catalogue().Science_List[1]), std::tuple(1, 23 + 58, 32, 0x1234, 5 - 65536, 2));
}

TEST_F(Cataloguing, AnEmptySlotEndsTheFrameAndBeyondTheFileIsEmpty) {
  writer = FrameWriter(280);
  writer.add_frame({hk(1), Packet{0, 0, 11, 0, 0, {}, {}}, hk(2)});
  writer.add_frame({});
  load(FileFormat::GRM);  // 560 bytes count as 3 frames; the third lies past the end
  EXPECT_EQ(std::tuple(session.Packet_Count, catalogue().HK_Count()), std::tuple(3, 1));
  ASSERT_EQ(labels_of(catalogue().Information_List), (std::vector(3, LabelCode::Empty)));
  const int positions[] = {23 + 58, 280 + 23, 2 * 280 + 23};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(fields(catalogue().Information_List[i]), std::tuple(i, positions[i - 1], -1, -1, -1, 0)) << i;
  }
}

TEST_F(Cataloguing, ALongFirstPacketEndsTheFrame) {
  writer.add_frame({Packet{kHousekeepingId, 1, 300, 0, 0, {{kSubType, 2}}, {}}});
  writer.add_frame({hk(1)});
  load(FileFormat::CSS);
  // The second HK is frame 2's own, not read inside frame 1; the one slot is frame 2's trailing empty one.
  EXPECT_EQ(std::tuple(catalogue().HK_Count(), catalogue().HK_List[2].Packet_Frame, catalogue().Information_Count()),
            std::tuple(2, 2, 1));
}

TEST_F(Cataloguing, MemoryChecksumsAccumulateOverLoads) {
  writer.add_frame({event(kAcceptance, 0x0A00)});
  load(FileFormat::CSS);
  load(FileFormat::CSS);
  // The count goes on; the list holds this load's checksum report and empty slot.
  EXPECT_EQ(std::tuple(catalogue().counters.Memory_Checksum_Count(), catalogue().Information_Count()), std::tuple(2, 2));
}

TEST_F(Cataloguing, ManyFramesOnSeveralThreadsKeepFrameOrder) {
  const int frames = 50000;
  for (int i = 0; i < frames; ++i) writer.add_frame({hk(1 + i % 2, i % 16384), science(1, 0, i % 16384)});
  load(FileFormat::CSS);
  ASSERT_EQ(catalogue().HK_Count(), frames);
  for (int i = 1; i <= frames; i += 997) {
    EXPECT_EQ(catalogue().HK_List[i].Packet_Frame, i);
    EXPECT_EQ(catalogue().Science_List[i].Sequence_Count, (i - 1) % 16384);
  }
  EXPECT_EQ(std::tuple(catalogue().counters.Concise_Count(), catalogue().counters.Empty_Count()),
            std::tuple(frames / 2, frames));
}

TEST_F(Cataloguing, GrowingFileIsExtendedFromThePreviousPass) {
  writer.add_frame({hk(1)});
  load(FileFormat::CSS);
  EXPECT_FALSE(extend_catalogue(session));
  writer.add_frame({hk(2), event(kAcceptance, 0x0A00)});
  std::vector<uint8_t> partial = writer.bytes();
  partial.resize(282 + 40);  // the second frame caught half-written
  testing::write_bytes(dir.path("t.dat"), partial);
  ASSERT_TRUE(extend_catalogue(session));
  // The checksum report was not yet written when read.
  EXPECT_EQ(std::tuple(session.Packet_Count, catalogue().HK_Count(), catalogue().counters.Memory_Checksum_Count(),
                       session.HK_Sensor_Data.entries()),
            std::tuple(2, 2, 0, 2));
  Save_Catalogue_Counts(session);
  EXPECT_EQ(catalogue().Previous_HK_Count, 2);
  // A frame once catalogued is not read again; a shrunk file is ignored.
  for (const auto& bytes : {writer.bytes(), std::vector<uint8_t>{}}) {
    testing::write_bytes(dir.path("t.dat"), bytes);
    EXPECT_FALSE(extend_catalogue(session));
  }
  EXPECT_EQ(catalogue().HK_Count(), 2);
}

TEST_F(Cataloguing, ZebRecordsClassifyByTheirItems) {
  using testing::zeb_record;
  const std::string text = testing::zeb_text({
      zeb_record({{5, zeb_id(PacketKind::Housekeeping)}, {6, 3}, {7, 12}, {8, 51}, {9, 3000}, {kZebSubType, 2},
                  {9 + 11, 0x1700}}),
      zeb_record({{5, zeb_id(PacketKind::Science)}, {6, 1}, {7, 13}, {kZebSubType, 3}}),
      zeb_record({{5, zeb_id(PacketKind::ProgressEvent)}, {7, 21}, {8, 11}, {kZebClass, 1}}),
      zeb_record({{5, zeb_id(PacketKind::Acceptance)}, {kZebClass, 10}}),  // class 10 does not exist here
      zeb_record({{5, 0}, {7, 5}, {8, 11}, {9, 9}}),
      zeb_record({{5, 77}}),
  });
  testing::write_file(dir.path("z.txt"), text);
  load_telemetry(session, dir.path("z.txt"), FileFormat::ZEB);
  const Catalogue& c = catalogue();
  ASSERT_EQ(labels_of(c.HK_List), std::vector{LabelCode::Complete});
  EXPECT_EQ(fields(c.HK_List[1]), std::tuple(1, 0, 51, 12, 3000, 0));  // only science entries keep the flags
  EXPECT_EQ(session.HK_Sensor_Data.at(1, 1), 0x17);  // byte 22: high byte of item 20
  EXPECT_THROW(session.HK_Sensor_Data.at(37, 1), RuntimeError);  // the table has 36 sensors
  EXPECT_EQ(c.counters.Isotope_Spectrum_Count(), 1);
  EXPECT_EQ(labels_of(c.Information_List), (std::vector{LabelCode::NormalProgressEvent, LabelCode::UnknownAcceptance,
                                                       LabelCode::Empty, LabelCode::Unknown}));
  // A length as it stands, where a binary length adds 7; a slot has no header, whatever the items hold.
  EXPECT_EQ(fields(c.Information_List[1]), std::tuple(3, 0, 11, 21, 0, 0));
  EXPECT_EQ(fields(c.Information_List[3]), std::tuple(5, 0, -1, -1, -1, 0));
  EXPECT_EQ(c.Information_List[4].Packet_Frame, 6);
}

TEST_F(Cataloguing, ZebAnIncompleteLastRecordEndsTheLoadKeepingTheRecordsBefore) {
  std::string text = testing::zeb_text({testing::zeb_record({{5, zeb_id(PacketKind::Housekeeping)}, {kZebSubType, 1}})});
  text += "1, " + std::to_string(zeb_id(PacketKind::Housekeeping)) + ", 3\r\n";
  testing::write_file(dir.path("z.txt"), text);
  const testing::Thrown past = testing::thrown([&] { load_telemetry(session, dir.path("z.txt"), FileFormat::ZEB); });
  EXPECT_EQ(past.number, 62);
  EXPECT_EQ(past.message.rfind("Input past end of file", 0), 0u) << past.message;
  EXPECT_EQ(std::tuple(session.Packet_Count, catalogue().HK_Count(), session.HK_Sensor_Data.entries(),
                       catalogue().Previous_HK_Count),
            std::tuple(2, 1, 1, 1));
}

TEST_F(Cataloguing, AnEmptyFileBuildsNoCatalogue) {
  load(FileFormat::CSS);
  EXPECT_EQ(std::tuple(session.Packet_Count, catalogue().Information_Count()), std::tuple(0, 0));
  testing::write_file(dir.path("z.txt"), "");
  load_telemetry(session, dir.path("z.txt"), FileFormat::ZEB);
  EXPECT_EQ(session.Packet_Count, -1);
}

TEST_F(Cataloguing, AFailedOpenChangesNothing) {
  writer.add_frame({hk(1)});
  load(FileFormat::CSS);
  EXPECT_THROW(load_telemetry(session, dir.path("missing.dat"), FileFormat::QM), RuntimeError);

  EXPECT_EQ(std::tuple(session.File_Name, catalogue().HK_Count()), std::tuple(dir.path("t.dat"), 1));
}

TEST_F(Cataloguing, AFileTooLargeFor32BitPositionsIsRefusedNamingTheLargestSize) {
  const std::string path = dir.path("huge.css");
  testing::write_file(path, "");
  std::filesystem::resize_file(path, largest_supported_size(FileFormat::CSS) + 1);  // sparse: no disk used
  const testing::Thrown overflow
 = testing::thrown([&] { load_telemetry(session, path, FileFormat::CSS); });
  EXPECT_EQ(overflow.number, 6);
  EXPECT_PRED2(testing::contains, overflow.message, "2147483580 bytes");
  EXPECT_EQ(session.catalogue.Information_Count(), 0);
}

constexpr int kSensors = 3;

// Row k (1-based) holds k, k + 1 and k + 2, each modulo 251.
uint8_t byte_of(size_t entry, int sensor) { return static_cast<uint8_t>((entry + static_cast<size_t>(sensor) - 1) % 251); }

void append_entries(HKSensorTable& table, size_t first, size_t last, uint8_t add = 0) {
  std::vector<uint8_t> rows;
  for (size_t k = first; k <= last; ++k) {
    for (int s = 1; s <= kSensors; ++s) rows.push_back(static_cast<uint8_t>(byte_of(k, s) + add));
  }
  table.append_rows(rows.data(), static_cast<int32_t>(last - first + 1));
}

TEST(HousekeepingSensorTable, AColumnReadsItsSensorInPlaceAcrossChunks) {
  HKSensorTable table;
  table.reset(kSensors);
  const size_t entries = HKSensorColumn::kChunkRows + 7;  // into a second chunk
  append_entries(table, 1, entries);
  for (int sensor = 1; sensor <= kSensors; ++sensor) {
    const HKSensorColumn column = table.column(sensor, static_cast<int32_t>(entries));
    ASSERT_EQ(column.size(), entries);
    EXPECT_EQ(column.stride(), static_cast<size_t>(kSensors));
    for (const size_t p : {size_t{0}, size_t{1}, HKSensorColumn::kChunkRows - 1, HKSensorColumn::kChunkRows,
                           entries - 1}) {
      EXPECT_EQ(column[p], table.at(sensor, static_cast<int32_t>(p + 1))) << "sensor " << sensor << " element " << p;
      EXPECT_EQ(column[p], byte_of(p + 1, sensor));
    }
    // A run from a chunk's start is read with the stride.
    const uint8_t* run = column.at(HKSensorColumn::kChunkRows);
    for (size_t i = 0; i < 7; ++i) EXPECT_EQ(run[i * column.stride()], byte_of(HKSensorColumn::kChunkRows + i + 1, sensor));
  }
  EXPECT_EQ(std::tuple(table.column(2, 5).size(), table.column(9, 0).size()), std::tuple(5u, 0u));
  for (const auto& [sensor, count] : {std::pair{0, 1}, std::pair{kSensors + 1, 1}, std::pair{1, -1},
                                      std::pair{1, static_cast<int>(entries) + 1}}) {
    EXPECT_THROW(table.column(sensor, count), RuntimeError) << sensor << " " << count;
  }
}

TEST(HousekeepingSensorTable, AColumnKeepsItsBytesWhenTheTableGrowsOrIsLoadedAnew) {
  HKSensorTable table;
  table.reset(kSensors);
  append_entries(table, 1, 100);
  HKSensorColumn column = table.column(2, 100);
  append_entries(table, 101, 200);  // live follow
  EXPECT_EQ(std::tuple(column.size(), table.column(2, 200)[150]), std::tuple(100u, byte_of(151, 2)));
  table.reset(kSensors);  // a new file
  append_entries(table, 1, 100, 7);
  for (size_t p = 0; p < 100; ++p) ASSERT_EQ(column[p], byte_of(p + 1, 2)) << p;
  EXPECT_NE(table.at(2, 1), column[0]);
  column.truncate(40);
  EXPECT_EQ(column.size(), 40u);
}

}  // namespace
}  // namespace morvane::testing
