// SPDX-License-Identifier: MIT
// A small campaign of the simulated instrument (one cycle in each of the five formats, with its
// configuration and limit files) and a fresh archive of the backend under test: every test of the
// suite runs once per backend.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <memory>
#include <ostream>
#include <string>

#include "archive/archive.h"
#include "core/file_format.h"
#include "core/session.h"
#include "postgres_cluster.h"
#include "sim/config_writer.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane::testing {

inline const FileFormat kAllFormats[] = {FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM,
                                         FileFormat::ZEB};

// Written once per test program and shared read-only by its tests.
struct CampaignFiles {
  TempDir dir;
  std::string base;
  Configuration config;
  std::map<FileFormat, std::string> files;  // one cycle of each format

  CampaignFiles() {
    base = sim::write_configuration(dir.path("base"));
    config = load_configuration(base);
    for (const FileFormat format : kAllFormats) {
      files[format] = dir.path("cycle." + std::string(format_tag(format)));
      sim::write_telemetry(files[format], {.format = format});
    }
  }
  // The file loaded as the single-file commands load it.
  Session session(FileFormat format) const {
    Session opened;
    opened.config = config;
    load_telemetry(opened, files.at(format), format);
    return opened;
  }
};

inline const CampaignFiles& campaign() {
  static const CampaignFiles files;
  return files;
}

struct ArchiveBackend {
  std::string name;  // a test-name suffix: letters and digits only
  // The name (path or URL) of a new, empty archive for one test, whose scratch folder is dir.
  std::function<std::string(const TempDir& dir)> fresh_archive;
};

inline void PrintTo(const ArchiveBackend& backend, std::ostream* out) { *out << backend.name; }

// SQLite, and a new database of the run's one PostgreSQL cluster, made when the first such test starts.
inline std::vector<ArchiveBackend> archive_backends() {
  return {{"SQLite", [](const TempDir& dir) { return dir.path("campaign.sqlite"); }},
          {"PostgreSQL", [](const TempDir&) { return test_postgres_cluster().create_database(); }}};
}

class ArchiveTest : public ::testing::TestWithParam<ArchiveBackend> {
 protected:
  void SetUp() override { location = GetParam().fresh_archive(dir); }
  std::unique_ptr<archive::Archive> open() const { return archive::open_archive(location); }
  // Ingests paths of one format with the campaign's configuration.
  archive::IngestReport ingest(const std::vector<std::string>& paths, FileFormat type,
                                bool byte_reverse = true) const {
    return open()->ingest(paths, campaign().config, {.type = type, .byte_reverse = byte_reverse});
  }
  // Ingests the campaign's file of each format given.
  void ingest_each(const std::vector<FileFormat>& formats) const {
    for (const FileFormat format : formats) ASSERT_EQ(ingest({campaign().files.at(format)}, format).added.size(), 1u);
  }
  void ingest_all() const { ingest_each({std::begin(kAllFormats), std::end(kAllFormats)}); }

  TempDir dir;
  std::string location;
};

inline std::string backend_name(const ::testing::TestParamInfo<ArchiveBackend>& info) { return info.param.name; }

}  // namespace morvane::testing
