// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <string>

#include "core/session.h"
#include "decoders/drawing.h"
#include "decoders/information_translation.h"
#include "decoders/information_words.h"

namespace morvane {

// Fixed texts of the information packet window.
inline constexpr const char* kInformationCaption = "Information Packet";
inline constexpr const char* kRawDataHeading = "Raw Data";           // Label1, above Picture1
inline constexpr const char* kPacketTypeHeading = "Packet type  -";  // Label4, beside Label5
inline constexpr const char* kSequenceHeading = "Sequence Count";    // Label6, beside Label7
inline constexpr const char* kLanderTimeHeading = "Lander Time";     // Label8, beside Label9

// Twips between the translation lines of Picture2; the memory tables are laid out on the same
// 200-twip rows (a dump starts at y = 600, below the two title lines).
inline constexpr int kTranslationRowHeight = 200;

// The five labels of the entry on display.
struct InformationLabels {
  std::string Label2;  // "Lander Pkt  " and the frame number
  std::string Label3;  // "Information Pkt " and the entry number
  std::string Label5;  // the entry's type label, blanks included
  std::string Label7;  // sequence count
  std::string Label9;  // lander time
};

// What the information window shows and keeps between packets. The window owns one and paints
// it; morvane-cli uses a fresh one. Translations and the packet words stay from one packet to
// the next where the next one does not replace them (ZEB entries are never translated).
class InformationPresenter {
 public:
  // The scroll bar's maximum: Information_Count, or 1 for an empty list (then nothing is shown).
  static int32_t scroll_maximum(const Session& session);

  // Shows entry index of Information_List (VScroll1_Change): sets Current_Information_Index,
  // the labels, the raw dump and, for binary files, the translation. An index outside the list,
  // a packet longer than 64 bytes or a memory table beyond word 32 is a RuntimeError; what was
  // done before it stays (the labels always; the partial table, but not the lines, when a
  // memory table fails, since the lines are printed last).
  void show(Session& session, int32_t index);

  const InformationLabels& labels() const { return labels_; }
  const InformationWords& words() const { return words_; }
  // Picture1: word texts (binary) or record items (ZEB) at their grid positions, in blue.
  const Drawing& raw_dump() const { return raw_dump_; }
  // Picture2: the five lines from the top-left corner, one a row...
  const Translation& translation() const { return translation_; }
  // ...and the memory dump or checksum table below them.
  const Drawing& memory() const { return memory_; }
  // Picture2 whole: the lines on rows kTranslationRowHeight apart, then the memory table.
  Drawing translation_drawing() const;

 private:
  InformationLabels labels_;
  InformationWords words_;
  Drawing raw_dump_;
  Translation translation_{};
  Drawing memory_;
};

}  // namespace morvane
