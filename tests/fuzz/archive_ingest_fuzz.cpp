// SPDX-License-Identifier: MIT
// A choice byte, a pick byte and any bytes as a telemetry file, ingested into a campaign archive
// in an in-memory SQLite database as the type and byte order picked, then read back through every
// query: the files, the tests of both modes, the trend of a sensor or two, the events and an
// item's history.
#include <array>
#include <memory>
#include <string>

#include "archive/archive.h"
#include "fuzz_support.h"

using namespace morvane;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  fuzz::Choices choices(data, size);
  const uint8_t choice = choices.byte();
  const uint8_t pick = choices.byte();
  const std::array<FileFormat, 5> formats = {FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM,
                                             FileFormat::ZEB};
  archive::IngestOptions options;
  options.type = formats[(choice >> 1) % formats.size()];
  options.byte_reverse = (choice & 1) != 0;
  // The ingest reads files by name: the input is an anonymous in-memory file, and the database a
  // fresh in-memory one, so no input sees what an earlier one left.
  const std::string path = fuzz::memory_file(choices.rest(), choices.rest_size());
  const Configuration& config = fuzz::configured_session().config;
  fuzz::expect_only_runtime_errors([&] {
    const std::unique_ptr<archive::Archive> campaign = archive::open_archive(":memory:");
    campaign->ingest({path}, config, options);
    campaign->files();
    campaign->tests({"cruise", false, {}});
    campaign->tests({"eaft", (pick & 1) != 0, {}});
    archive::TrendQuery trend;
    trend.sensors = {1 + (pick >> 1) % 40};
    if (pick & 0x40) trend.sensors.push_back(1 + pick % 7);
    trend.cold_junction = (pick & 0x80) != 0;
    campaign->trend(trend);
    campaign->events({pick & 2 ? "" : "e", {}, {}});
    campaign->item_history(pick & 4 ? "eaft" : "cruise", "Overall");
  });
  return 0;
}
