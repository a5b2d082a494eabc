// SPDX-License-Identifier: MIT
#include "core/session.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "sim/config_writer.h"
#include "test_files.h"
#include "thrown.h"

namespace morvane {
namespace {

using testing::FrameWriter;
using testing::Packet;
using testing::TempDir;

constexpr int32_t kHousekeeping = identifier_of(PacketKind::Housekeeping, FormatFamily::Frames282);
constexpr int32_t kScience = identifier_of(PacketKind::Science, FormatFamily::Frames282);
constexpr int kSubType = selector_offset(Selector::SubType);
constexpr int kClass = selector_offset(Selector::EventClass);
constexpr int kZebSubType = selector_item(Selector::SubType);
constexpr int kZebClass = selector_item(Selector::EventClass);
constexpr int32_t zeb(PacketKind kind) { return identifier_of(kind, FormatFamily::Zeb); }

Packet hk(int sub_type, int sequence = 1, int time_low = 100) {
  Packet p{kHousekeeping, sequence, 51, 0, time_low, {{kSubType, sub_type}}, {}};
  return p;
}
Packet science(int sub_type, int flags = 0, int sequence = 1) {
  return Packet{kScience, flags * 16384 + sequence, 25, 0, 7, {{kSubType, sub_type}}, {}};
}
Packet event(PacketKind kind, int class_word) {
  return Packet{identifier_of(kind, FormatFamily::Frames282), 5, 11, 0, 9, {{kClass, class_word}}, {}};
}
constexpr PacketKind kEvent = PacketKind::ProgressEvent;
constexpr PacketKind kAcceptance = PacketKind::Acceptance;
constexpr PacketKind kDump = PacketKind::MemoryDump;

struct Fixture {
  TempDir dir;
  Session session;
  Fixture() { session.config = load_configuration(sim::write_configuration(dir.path("base"))); }
  void load(FrameWriter& writer, FileFormat format) {
    testing::write_bytes(dir.path("t.dat"), writer.bytes());
    load_telemetry(session, dir.path("t.dat"), format);
  }
  const Catalogue& catalogue() const { return session.catalogue; }
};

std::vector<LabelCode> labels_of(const EntryList& list) {
  std::vector<LabelCode> labels;
  for (int32_t i = 1; i <= list.size(); ++i) labels.push_back(list[i].Label);
  return labels;
}

TEST(Catalogue, EveryIdentifierAndSelectorGetsItsLabelAndCounter) {
  Fixture f;
  FrameWriter writer(282);
  writer.add_frame({hk(1), hk(2), hk(5)});
  writer.add_frame({event(kEvent, 0x0100), event(kEvent, 0x0A00), event(kEvent, 0x0101), event(kAcceptance, 0x0A00),
                    event(kAcceptance, 0x0100), event(kAcceptance, 0x0200), event(kDump, 0), event(kEvent, 0x0200),
                    event(kAcceptance, 0x0300)});
  writer.add_frame({science(1), science(2), science(3, 3), science(3, 2), science(3, 1), science(9)});
  writer.add_frame({Packet{0x1234, 0, 11, 0, 0, {}, {}}});
  f.load(writer, FileFormat::QM);
  using L = LabelCode;
  EXPECT_EQ(labels_of(f.catalogue().HK_List), (std::vector{L::Concise, L::Complete, L::HousekeepingUnknown}));
  EXPECT_EQ(labels_of(f.catalogue().Science_List),
            (std::vector{L::AuxiliaryData, L::GcSpectrum, L::IsotopeSpectrum, L::IsotopeSpectrum, L::IsotopeSpectrum,
                         L::ScienceUnknown}));
  EXPECT_EQ(labels_of(f.catalogue().Information_List),
            (std::vector{L::Empty, L::NormalProgressEvent, L::NpeMemoryChecksum, L::UnknownProgressEvent,
                         L::MemoryChecksum, L::AcceptanceSuccess, L::AcceptanceFailure, L::MemoryDump,
                         L::WarningAnomalousEvent, L::UnknownAcceptance, L::Empty, L::Empty, L::Unknown}));
  const CatalogueCounters& n = f.catalogue().counters;
  EXPECT_EQ(n.Concise_Count(), 1);
  EXPECT_EQ(n.Complete_Count(), 1);
  EXPECT_EQ(n.Progress_Event_Count(), 2);  // normal and NPE - Memory Checksum together
  EXPECT_EQ(n.Warning_Event_Count(), 1);
  EXPECT_EQ(n.Memory_Checksum_Count(), 1);
  EXPECT_EQ(n.Acceptance_Success_Count(), 1);
  EXPECT_EQ(n.Acceptance_Failure_Count(), 1);
  EXPECT_EQ(n.Memory_Dump_Count(), 1);
  EXPECT_EQ(n.Auxiliary_Count(), 1);
  EXPECT_EQ(n.GC_Spectrum_Count(), 1);
  EXPECT_EQ(n.Isotope_Packet_Count(), 3);
  EXPECT_EQ(n.Isotope_Spectrum_Count(), 2);  // flags 3 and 2 pass the CSS/QM test of bit 2
  EXPECT_EQ(n.Unknown_Count(), 3);  // an unknown progress event, an unknown acceptance, an unknown identifier
  EXPECT_EQ(n.Empty_Count(), 3);  // frames 1 to 3 end in an empty slot; frame 4 in the unknown one
}

TEST(Catalogue, TheTwoBinaryFamiliesTestDifferentIsotopeBits) {
  // Flags 2 (first of several) pass the CSS/QM test of bit 2; only flags 1 (last) pass the GRM/FM test of bit 1.
  Fixture css, grm;
  FrameWriter a(282), b(280);
  a.add_frame({science(3, 2)});
  b.add_frame({science(3, 1)});
  css.load(a, FileFormat::CSS);
  grm.load(b, FileFormat::FM);
  EXPECT_EQ(css.catalogue().counters.Isotope_Spectrum_Count(), 1);
  EXPECT_EQ(grm.catalogue().counters.Isotope_Spectrum_Count(), 1);
}

TEST(Catalogue, EntriesCarryTheHeaderFields) {
  Fixture f;
  FrameWriter writer(282);
  Packet p = science(3, 2, 0x1234);
  p.time_high = 0x8001;
  p.time_low = 5;
  writer.add_frame({hk(2, 0xC000 + 7, 0x0102), p});  // flags 3 that a housekeeping entry does not keep
  f.load(writer, FileFormat::CSS);
  const Packet_Entry& h = f.catalogue().HK_List[1];
  EXPECT_EQ(h.Packet_Frame, 1);
  EXPECT_EQ(h.Packet_Position, 23);
  EXPECT_EQ(h.Packet_Length, 58);
  EXPECT_EQ(h.Sequence_Count, 7);
  EXPECT_EQ(h.Lander_Time, 0x0102);
  EXPECT_EQ(h.Segment_Flags, 0);
  const Packet_Entry& s = f.catalogue().Science_List[1];
  EXPECT_EQ(s.Packet_Position, 23 + 58);
  EXPECT_EQ(s.Sequence_Count, 0x1234);
  EXPECT_EQ(s.Segment_Flags, 2);
  EXPECT_EQ(s.Lander_Time, 5 - 65536);  // a high time word above 32767 counts as -1
}

TEST(Catalogue, AnEmptySlotEndsTheFrameAndBeyondTheFileIsEmpty) {
  Fixture f;
  FrameWriter writer(280);
  writer.add_frame({hk(1), Packet{0, 0, 11, 0, 0, {}, {}}, hk(2)});
  writer.add_frame({});
  f.load(writer, FileFormat::GRM);  // 560 bytes count as 3 frames; the third lies past the end
  EXPECT_EQ(f.session.Packet_Count, 3);
  EXPECT_EQ(f.catalogue().HK_Count(), 1);
  ASSERT_EQ(f.catalogue().Information_Count(), 3);
  for (int i = 1; i <= 3; ++i) {
    const Packet_Entry& e = f.catalogue().Information_List[i];
    EXPECT_EQ(e.Label, LabelCode::Empty);
    EXPECT_EQ(e.Packet_Frame, i);
    EXPECT_EQ(e.Packet_Length, -1);
    EXPECT_EQ(e.Sequence_Count, -1);
    EXPECT_EQ(e.Lander_Time, -1);
  }
  EXPECT_EQ(f.catalogue().Information_List[3].Packet_Position, 2 * 280 + 23);
}

TEST(Catalogue, ALongFirstPacketEndsTheFrame) {
  Fixture f;
  FrameWriter writer(282);
  writer.add_frame({Packet{kHousekeeping, 1, 300, 0, 0, {{kSubType, 2}}, {}}});
  writer.add_frame({hk(1)});
  f.load(writer, FileFormat::CSS);
  EXPECT_EQ(f.catalogue().HK_Count(), 2);  // the second HK is frame 2's own, not read inside frame 1
  EXPECT_EQ(f.catalogue().HK_List[2].Packet_Frame, 2);
  EXPECT_EQ(f.catalogue().Information_Count(), 1);  // frame 2's trailing empty slot
}

TEST(Catalogue, MemoryChecksumsAccumulateOverLoads) {
  Fixture f;
  FrameWriter writer(282);
  writer.add_frame({event(kAcceptance, 0x0A00)});
  f.load(writer, FileFormat::CSS);
  f.load(writer, FileFormat::CSS);
  EXPECT_EQ(f.catalogue().counters.Memory_Checksum_Count(), 2);
  EXPECT_EQ(f.catalogue().Information_Count(), 2);  // the checksum report and the empty slot
}

TEST(Catalogue, ManyFramesOnSeveralThreadsKeepFrameOrder) {
  Fixture f;
  FrameWriter writer(282);
  const int frames = 50000;
  for (int i = 0; i < frames; ++i) writer.add_frame({hk(1 + i % 2, i % 16384), science(1, 0, i % 16384)});
  f.load(writer, FileFormat::CSS);
  ASSERT_EQ(f.catalogue().HK_Count(), frames);
  for (int i = 1; i <= frames; i += 997) {
    EXPECT_EQ(f.catalogue().HK_List[i].Packet_Frame, i);
    EXPECT_EQ(f.catalogue().Science_List[i].Sequence_Count, (i - 1) % 16384);
  }
  EXPECT_EQ(f.catalogue().counters.Concise_Count(), frames / 2);
  EXPECT_EQ(f.catalogue().counters.Empty_Count(), frames);
}

TEST(Catalogue, GrowingFileIsExtendedFromThePreviousPass) {
  Fixture f;
  FrameWriter writer(282);
  writer.add_frame({hk(1)});
  f.load(writer, FileFormat::CSS);
  EXPECT_FALSE(extend_catalogue(f.session));
  writer.add_frame({hk(2), event(kAcceptance, 0x0A00)});
  std::vector<uint8_t> partial = writer.bytes();
  partial.resize(282 + 40);  // the second frame caught half-written
  testing::write_bytes(f.dir.path("t.dat"), partial);
  ASSERT_TRUE(extend_catalogue(f.session));
  EXPECT_EQ(f.session.Packet_Count, 2);
  EXPECT_EQ(f.catalogue().HK_Count(), 2);
  EXPECT_EQ(f.catalogue().counters.Memory_Checksum_Count(), 0);  // not yet written when read
  EXPECT_EQ(f.session.HK_Sensor_Data.entries(), 2);
  Save_Catalogue_Counts(f.session);
  EXPECT_EQ(f.catalogue().Previous_HK_Count, 2);
  testing::write_bytes(f.dir.path("t.dat"), writer.bytes());
  EXPECT_FALSE(extend_catalogue(f.session));  // a frame once catalogued is not read again
  testing::write_bytes(f.dir.path("t.dat"), {});
  EXPECT_FALSE(extend_catalogue(f.session));  // a shrunk file is ignored
  EXPECT_EQ(f.catalogue().HK_Count(), 2);
}

TEST(CatalogueZeb, RecordsClassifyByTheirItems) {
  Fixture f;
  using testing::zeb_record;
  const std::string text = testing::zeb_text({
      zeb_record({{5, zeb(PacketKind::Housekeeping)}, {6, 3}, {7, 12}, {8, 51}, {9, 3000}, {kZebSubType, 2},
                  {9 + 11, 0x1700}}),
      zeb_record({{5, zeb(PacketKind::Science)}, {6, 1}, {7, 13}, {kZebSubType, 3}}),
      zeb_record({{5, zeb(PacketKind::ProgressEvent)}, {7, 21}, {8, 11}, {kZebClass, 1}}),
      zeb_record({{5, zeb(PacketKind::Acceptance)}, {kZebClass, 10}}),  // class 10 does not exist here
      zeb_record({{5, 0}, {7, 5}, {8, 11}, {9, 9}}),
      zeb_record({{5, 77}}),
  });
  testing::write_file(f.dir.path("z.txt"), text);
  load_telemetry(f.session, f.dir.path("z.txt"), FileFormat::ZEB);
  const Catalogue& c = f.catalogue();
  ASSERT_EQ(c.HK_Count(), 1);
  EXPECT_EQ(c.HK_List[1].Label, LabelCode::Complete);
  EXPECT_EQ(c.HK_List[1].Packet_Frame, 1);
  EXPECT_EQ(c.HK_List[1].Packet_Position, 0);
  EXPECT_EQ(c.HK_List[1].Sequence_Count, 12);
  EXPECT_EQ(c.HK_List[1].Packet_Length, 51);
  EXPECT_EQ(c.HK_List[1].Lander_Time, 3000);
  EXPECT_EQ(c.HK_List[1].Segment_Flags, 0);  // only science entries keep the flags
  EXPECT_EQ(f.session.HK_Sensor_Data.at(1, 1), 0x17);  // byte 22: high byte of item 20
  EXPECT_THROW(f.session.HK_Sensor_Data.at(37, 1), RuntimeError);  // the table has 36 sensors
  EXPECT_EQ(c.counters.Isotope_Spectrum_Count(), 1);
  EXPECT_EQ(c.Information_List[1].Label, LabelCode::NormalProgressEvent);
  EXPECT_EQ(c.Information_List[1].Packet_Length, 11);  // as it stands, where a binary length adds 7
  EXPECT_EQ(c.Information_List[1].Sequence_Count, 21);
  EXPECT_EQ(c.Information_List[2].Label, LabelCode::UnknownAcceptance);
  EXPECT_EQ(c.Information_List[3].Label, LabelCode::Empty);
  EXPECT_EQ(c.Information_List[3].Sequence_Count, -1);  // a slot has no header, whatever the items hold
  EXPECT_EQ(c.Information_List[3].Packet_Length, -1);
  EXPECT_EQ(c.Information_List[3].Lander_Time, -1);
  EXPECT_EQ(c.Information_List[4].Label, LabelCode::Unknown);
  EXPECT_EQ(c.Information_List[4].Packet_Frame, 6);
}

TEST(CatalogueZeb, AnIncompleteLastRecordEndsTheLoadKeepingTheRecordsBefore) {
  Fixture f;
  std::string text = testing::zeb_text({testing::zeb_record({{5, zeb(PacketKind::Housekeeping)}, {kZebSubType, 1}})});
  text += "1, " + std::to_string(zeb(PacketKind::Housekeeping)) + ", 3\r\n";
  testing::write_file(f.dir.path("z.txt"), text);
  const testing::Thrown past = testing::thrown([&] { load_telemetry(f.session, f.dir.path("z.txt"), FileFormat::ZEB); });
  EXPECT_EQ(past.number, 62);
  EXPECT_EQ(past.message.rfind("Input past end of file", 0), 0u) << past.message;
  EXPECT_EQ(f.session.Packet_Count, 2);
  EXPECT_EQ(f.catalogue().HK_Count(), 1);
  EXPECT_EQ(f.session.HK_Sensor_Data.entries(), 1);
  EXPECT_EQ(f.catalogue().Previous_HK_Count, 1);
}

TEST(Catalogue, AnEmptyFileBuildsNoCatalogue) {
  Fixture f;
  FrameWriter writer(282);
  f.load(writer, FileFormat::CSS);
  EXPECT_EQ(f.session.Packet_Count, 0);
  EXPECT_EQ(f.catalogue().Information_Count(), 0);
  testing::write_file(f.dir.path("z.txt"), "");
  load_telemetry(f.session, f.dir.path("z.txt"), FileFormat::ZEB);
  EXPECT_EQ(f.session.Packet_Count, -1);
}

TEST(Catalogue, AFailedOpenChangesNothing) {
  Fixture f;
  FrameWriter writer(282);
  writer.add_frame({hk(1)});
  f.load(writer, FileFormat::CSS);
  EXPECT_THROW(load_telemetry(f.session, f.dir.path("missing.dat"), FileFormat::QM), RuntimeError);
  EXPECT_EQ(f.session.File_Name, f.dir.path("t.dat"));
  EXPECT_EQ(f.catalogue().HK_Count(), 1);
}

TEST(CatalogueLimits, AFileTooLargeFor32BitPositionsIsRefusedNamingTheLargestSize) {
  testing::TempDir dir;
  const std::string path = dir.path("huge.css");
  testing::write_file(path, "");
  std::filesystem::resize_file(path, largest_supported_size(FileFormat::CSS) + 1);  // sparse: no disk used
  Session session;
  const testing::Thrown overflow = testing::thrown([&] { load_telemetry(session, path, FileFormat::CSS); });
  EXPECT_EQ(overflow.number, 6);
  EXPECT_PRED2(testing::contains, overflow.message, "2147483580 bytes");
  EXPECT_EQ(session.catalogue.Information_Count(), 0);
}

}  // namespace
}  // namespace morvane
