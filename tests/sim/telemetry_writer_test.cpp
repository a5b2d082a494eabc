// SPDX-License-Identifier: MIT
// What the simulator writes, read back through the core: every label, the counts it promises,
// the frames and sizes asked for, both byte orders, and spectra whose bins come back as written.
#include "sim/telemetry_writer.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>

#include "core/session.h"
#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane {
namespace {

// A base folder and one telemetry file of the simulated instrument, loaded through the core as
// the File menu loads it.
struct SimulatedFile {
  testing::TempDir dir;
  Session session;
  sim::TelemetrySummary written;

  explicit SimulatedFile(sim::TelemetryOptions options) {
    session.config = load_configuration(sim::write_configuration(dir.path("base")));
    session.Byte_Reverse = options.byte_reverse || options.format == FileFormat::ZEB;
    written = sim::write_telemetry(dir.path("t.dat"), options);
    load_telemetry(session, dir.path("t.dat"), options.format);
  }
  explicit SimulatedFile(FileFormat format) : SimulatedFile(sim::TelemetryOptions{.format = format}) {}
  const Catalogue& catalogue() const { return session.catalogue; }
  int32_t word(const Packet_Entry& entry, int offset) const {
    return session.telemetry().packet_word(entry, offset, session.Byte_Reverse);
  }
};

// Catalogue entries of each label, over the three lists.
std::array<int64_t, kLabelCount> label_counts(const Catalogue& catalogue) {
  std::array<int64_t, kLabelCount> counts{};
  for (const EntryList* list : {&catalogue.HK_List, &catalogue.Science_List, &catalogue.Information_List}) {
    for (int32_t i = 1; i <= list->size(); ++i) ++counts[static_cast<size_t>((*list)[i].Label)];
  }
  return counts;
}

class EveryFormat : public ::testing::TestWithParam<FileFormat> {};

TEST_P(EveryFormat, OneCycleHoldsEveryLabelTheCatalogueKnowsInTheCountsWritten) {
  const FileFormat format = GetParam();
  SimulatedFile file(format);
  const auto found = label_counts(file.catalogue());
  // GRM and FM files count their frames in 256-byte units: the frames past the end read as zeros.
  const int64_t phantom_frames = file.session.Packet_Count - file.written.frames;
  EXPECT_EQ(phantom_frames, has_280_byte_frames(format)
                                ? rounded_frame_count(file.written.frames * 280 / 256.0) - file.written.frames
                                : 0);
  for (int l = 0; l < kLabelCount; ++l) {
    const auto label = static_cast<LabelCode>(l);
    const int64_t expected = file.written.count(label) + (label == LabelCode::Empty ? phantom_frames : 0);
    EXPECT_EQ(found[static_cast<size_t>(l)], expected) << '"' << label_text(label) << '"';
    // ZEB records have no event class 10, so the two memory checksum labels cannot occur there.
    const bool possible =
        format != FileFormat::ZEB || (label != LabelCode::NpeMemoryChecksum && label != LabelCode::MemoryChecksum);
    EXPECT_GE(found[static_cast<size_t>(l)], possible ? 1 : 0) << '"' << label_text(label) << '"';
  }
  const CatalogueCounters& n = file.catalogue().counters;
  EXPECT_EQ(n.Complete_Count(), file.written.count(LabelCode::Complete));
  EXPECT_EQ(n.Auxiliary_Count(), file.written.count(LabelCode::AuxiliaryData));
  EXPECT_EQ(n.Isotope_Packet_Count(), file.written.count(LabelCode::IsotopeSpectrum));
  // Every spectrum has one first and one last sub-packet, whichever bit the format family tests.
  EXPECT_EQ(file.written.spectrum_starts, 5);
  EXPECT_EQ(file.written.spectrum_ends, 5);
  EXPECT_EQ(n.Isotope_Spectrum_Count(), 5);
  EXPECT_EQ(file.written.tests.size(), 4u);
}

TEST_P(EveryFormat, SpectraComeBackAsWritten) {
  const FileFormat format = GetParam();
  SimulatedFile file(format);
  const EntryList& science = file.catalogue().Science_List;
  ASSERT_EQ(file.written.spectra.size(), 5u);
  for (const sim::WrittenSpectrum& spectrum : file.written.spectra) {
    int32_t first = 0;
    for (int32_t i = 1; i <= science.size(); ++i) {
      if (science[i].Label == LabelCode::IsotopeSpectrum && science[i].Sequence_Count == spectrum.sequence_count &&
          science[i].Packet_Frame == spectrum.frame) {
        first = i;
      }
    }
    ASSERT_GT(first, 0) << "spectrum at frame " << spectrum.frame;
    std::vector<uint16_t> bins;
    int expected_bin = spectrum.first_bin;
    int32_t i = first;
    for (int k = 0; k < spectrum.sub_packets; ++k, ++i) {
      // Auxiliary packets may come between sub-packets; a chromatogram never does.
      while (i <= science.size() && science[i].Label == LabelCode::AuxiliaryData) ++i;
      ASSERT_LE(i, science.size());
      const Packet_Entry& e = science[i];
      ASSERT_EQ(e.Label, LabelCode::IsotopeSpectrum);
      const int flags = spectrum.sub_packets == 1 ? 3 : k == 0 ? 2 : k == spectrum.sub_packets - 1 ? 1 : 0;
      EXPECT_EQ(e.Segment_Flags, flags) << "sub-packet " << k + 1;
      EXPECT_EQ(file.word(e, 28), expected_bin);
      const int count = file.word(e, 30);
      // The catalogue keeps a ZEB record's length field as it stands, a binary packet's whole length.
      EXPECT_EQ(e.Packet_Length, (format == FileFormat::ZEB ? 25 : 32) + 2 * count);
      for (int j = 0; j < count; ++j) bins.push_back(static_cast<uint16_t>(file.word(e, 32 + 2 * j)));
      expected_bin += count;
    }
    EXPECT_EQ(bins, spectrum.bin_words);
    EXPECT_LE(expected_bin, 1025);
  }
  // The longest spectrum has ten sub-packets and reaches bin 1024.
  EXPECT_EQ(file.written.spectra[3].sub_packets, 10);
  EXPECT_EQ(file.written.spectra[3].first_bin + static_cast<int>(file.written.spectra[3].bin_words.size()), 1025);
}

// The catalogue pass copies the sensor bytes of each housekeeping packet as it goes: they must be
// the bytes the file's reader gives for the same packet, in both byte orders.
TEST_P(EveryFormat, TheSensorTableHoldsEachHousekeepingPacketsBytes) {
  for (const bool byte_reverse : {true, false}) {
    if (!byte_reverse && GetParam() == FileFormat::ZEB) continue;  // no byte order in a text file
    SimulatedFile file({.format = GetParam(), .byte_reverse = byte_reverse});
    const EntryList& hk = file.catalogue().HK_List;
    const auto& sensors = file.session.config.Sensor_Table;
    ASSERT_FALSE(sensors.empty());
    ASSERT_EQ(file.session.HK_Sensor_Data.entries(), hk.size());
    for (int32_t i = 1; i <= hk.size(); ++i) {
      for (size_t j = 0; j < sensors.size(); ++j) {
        ASSERT_EQ(file.session.HK_Sensor_Data.at(static_cast<int>(j) + 1, i),
                  file.session.telemetry().packet_byte(hk[i], sensors[j].Byte_Offset, file.session.Byte_Reverse))
            << "packet " << i << " sensor " << j + 1;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Formats, EveryFormat,
                         ::testing::Values(FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM,
                                           FileFormat::ZEB),
                         [](const auto& info) { return std::string(format_tag(info.param)); });

TEST(SimulatedTelemetry, EveryPacketLiesInsideItsFrameAndInformationPacketsInSixtyFourBytes) {
  for (FileFormat format : {FileFormat::QM, FileFormat::FM}) {
    SimulatedFile file(format);
    const int64_t stride = frame_stride(format);
    for (const EntryList* list :
         {&file.catalogue().HK_List, &file.catalogue().Science_List, &file.catalogue().Information_List}) {
      for (int32_t i = 1; i <= list->size(); ++i) {
        const Packet_Entry& e = (*list)[i];
        if (e.Packet_Length < 0 || e.Packet_Frame > file.written.frames) continue;  // slots
        const int64_t start = e.Packet_Position - 1 - (e.Packet_Frame - 1) * stride;
        ASSERT_GE(start, 22);
        ASSERT_LE(start, 249);
        ASSERT_LE(start + e.Packet_Length, stride) << "frame " << e.Packet_Frame;
        ASSERT_LE(e.Packet_Length, list == &file.catalogue().Information_List ? 64 : stride);
      }
    }
  }
}

TEST(SimulatedTelemetry, ByteReverseOffWritesEveryWordHighByteFirstAndASizeWholeFramesOrRecordsUpToIt) {
  testing::TempDir dir;
  sim::write_telemetry(dir.path("low"), {.format = FileFormat::FM, .frames = 200});
  sim::write_telemetry(dir.path("high"), {.format = FileFormat::FM, .frames = 200, .byte_reverse = false});
  std::string low = testing::read_file(dir.path("low"));
  const std::string high = testing::read_file(dir.path("high"));
  ASSERT_EQ(low.size(), high.size());
  for (size_t i = 0; i + 1 < low.size(); i += 2) std::swap(low[i], low[i + 1]);
  EXPECT_EQ(low, high);

  const SimulatedFile file({.format = FileFormat::FM, .byte_reverse = false});  // read with Byte Reverse off
  EXPECT_EQ(file.catalogue().counters.Unknown_Count(), file.written.count(LabelCode::Unknown) +
                                                         file.written.count(LabelCode::UnknownProgressEvent) +
                                                         file.written.count(LabelCode::UnknownAcceptance));
  EXPECT_EQ(file.catalogue().HK_List[1].Lander_Time, 61200000);

  // A size gives whole frames or records up to it.
  sim::TelemetryOptions options{.format = FileFormat::CSS, .size = 100000};
  auto written = sim::write_telemetry(dir.path("t.css"), options);
  EXPECT_EQ(written.frames, 100000 / 282);
  EXPECT_EQ(std::filesystem::file_size(dir.path("t.css")), written.frames * 282);
  options.format = FileFormat::GRM;
  written = sim::write_telemetry(dir.path("t.grm"), options);
  EXPECT_EQ(std::filesystem::file_size(dir.path("t.grm")), (100000 / 280) * 280);
  options.format = FileFormat::ZEB;
  written = sim::write_telemetry(dir.path("t.zeb"), options);
  const auto size = std::filesystem::file_size(dir.path("t.zeb"));
  EXPECT_GE(size, 100000u);
  EXPECT_LT(size, 101000u);  // one record more at most
  EXPECT_EQ(written.bytes, size);
}

}  // namespace
}  // namespace morvane
