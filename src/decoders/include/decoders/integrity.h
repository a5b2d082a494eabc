// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/packet_kinds.h"
#include "core/session.h"

namespace morvane {

// What can be wrong with the data of a file, as an engineer asks of it.
enum class FindingKind : uint8_t {
  SequenceGap,        // sequence counts of a packet kind skip (14-bit, wrapping at 16384)
  SequenceRepeat,     // a sequence count comes twice in a row
  TimeBackwards,      // a packet is older than the one before it of its kind
  TimeJump,           // housekeeping, sent at a steady rate, jumps further than the threshold
  PastFrameEnd,       // a packet runs past the end of the frame it starts in
  EmptyFrame,         // a frame (ZEB: record) holds no packet at all
  UnknownIdentifier,  // a slot whose identifier no table knows: corruption
  PartialFrame,       // the file ends inside a frame (ZEB: record)
  PastEndOfFile,      // GRM/FM frames counted in 256-byte units that lie past the end
  Restart,            // a sequence count starts again from 0: the instrument was switched on anew
};
inline constexpr int kFindingKinds = 10;

// "sequence_gap", "sequence_repeat", "time_backwards", "time_jump", "past_frame_end",
// "empty_frame", "unknown_identifier", "partial_frame", "past_end_of_file", "restart".
std::string_view finding_kind_name(FindingKind kind);

// "hk", "science", "information".
std::string_view catalogue_list_name(CatalogueList list);

// One finding: the catalogue entry it concerns (1-based in its list) and what was found.
struct Finding {
  FindingKind kind = FindingKind::SequenceGap;
  CatalogueList list = CatalogueList::HK;
  int32_t index = 0;
  std::string text;
};

struct IntegrityOptions {
  int32_t time_jump_seconds = 600;  // a step in lander time longer than this is reported
  size_t max_findings = 100000;     // beyond this the report says it was cut short
  ProgressFunction progress;        // told now and then of the entries checked; may throw to stop
};

struct IntegrityReport {
  std::vector<Finding> findings;  // in catalogue order within each check
  std::array<int64_t, kFindingKinds> counts{};  // of every kind, also those beyond max_findings
  bool truncated = false;
};

// Checks the loaded file's catalogue: per packet kind (housekeeping, science, progress events,
// acceptance reports, memory dumps) the sequence counts and times going back; the housekeeping
// packets' steps in time (the other kinds come when something happens, so long pauses are
// normal for them); packets running past their frame; empty frames and unknown identifiers;
// the end of the file. Reads the file only through thread-safe reads, so it may run on a worker
// thread while the windows read the same session.
IntegrityReport check_integrity(const Session& session, const IntegrityOptions& options = {});

}  // namespace morvane
