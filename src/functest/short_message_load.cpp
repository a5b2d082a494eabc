// SPDX-License-Identifier: MIT
#include "functest/short_message_load.h"

#include <algorithm>

#include "core/error.h"
#include "core/number_text.h"
#include "functest/short_test_data.h"

namespace morvane {

bool Is_Test(const Session& session, TestMode mode, int32_t k) {
  const EntryList& science = session.catalogue.Science_List;
  const Packet_Entry& entry = science.at(k);
  const int32_t s = entry.Sequence_Count;
  bool is_test = true;

  // Every packet of the test's eight sequence counts among the next entries must be auxiliary;
  // the look-ahead ends at the first entry beyond them.
  const int32_t last = std::min(k + 7, science.size());
  for (int32_t j = k; j <= last; ++j) {
    const Packet_Entry& next = science[j];
    if (next.Sequence_Count > s + 7) break;
    if (next.Label != LabelCode::AuxiliaryData) {
      is_test = false;
      break;
    }
  }

  const TelemetryFile& file = session.telemetry();
  const auto word = [&](int offset) { return file.packet_word(entry, offset, session.Byte_Reverse); };
  if (word(18) != kReadingsPerPacket) is_test = false;
  if (word(24) != first_reading_identifier(mode)) is_test = false;
  if (word(80) != 64) is_test = false;
  if (word(232) != 0) is_test = false;
  if (word(248) != 144) is_test = false;
  return is_test;
}

std::string short_test_line(int32_t n, int32_t sequence_count, int32_t lander_time) {
  return left_in(n, 6) + "Short form test" + right_in(sequence_count, 9) + right_in(lander_time, 15);
}

std::string short_test_count_label(int32_t test_count) {
  if (test_count == 0) return "There were no Short form tests collected during this session";
  if (test_count == 1) return "There was 1 Short form test collected during this session";
  return "There were " + std::to_string(test_count) + " Short form tests collected during this session";
}

std::string short_test_hint_label(int32_t test_count) {
  return test_count == 0 ? "Press 'cancel' to exit" : "Double click on test to view or Press 'cancel' to exit";
}

ShortTestList find_short_tests(const Session& session) {
  return find_short_tests(session, parse_test_mode(session.Test_Mode));
}

ShortTestList find_short_tests(const Session& session, TestMode mode) {
  ShortTestList list;
  if (session.loaded()) {
    const EntryList& science = session.catalogue.Science_List;
    for (int32_t k = 1; k <= science.size(); ++k) {
      if (!Is_Test(session, mode, k)) continue;
      list.Test_Index.push_back(k);
      list.lines.push_back(short_test_line(list.Test_Count(), science[k].Sequence_Count, science[k].Lander_Time));
    }
  }
  list.Label1 = short_test_count_label(list.Test_Count());
  list.Label2 = short_test_hint_label(list.Test_Count());
  return list;
}

int32_t science_index_of_line(const ShortTestList& list, int32_t line) {
  if (line < 1 || line > list.Test_Count()) {
    raise(ErrorNumber::SubscriptOutOfRange,
          "test " + std::to_string(line) + " of a list of " + std::to_string(list.Test_Count()));
  }
  return list.Test_Index[static_cast<size_t>(line - 1)];
}

}  // namespace morvane
