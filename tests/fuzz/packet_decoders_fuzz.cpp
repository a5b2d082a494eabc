// SPDX-License-Identifier: MIT
// A choice byte, a pick byte and any bytes as a telemetry file, then one decoder the pick byte
// chooses on what the catalogue found in it (the first, the last and a picked entry of its list):
// the housekeeping pages, auxiliary tables, information translations and memory tables, spectra
// and their graph, raw and concise frames, or the functional-test list and an evaluation.
#include <algorithm>
#include <vector>

#include "functest/short_message_load.h"
#include "fuzz_support.h"
#include "decoders/auxiliary_presenter.h"
#include "decoders/concise_frame.h"
#include "decoders/housekeeping_presenter.h"
#include "decoders/information_presenter.h"
#include "decoders/raw_frame.h"
#include "decoders/spectrum_presenter.h"

using namespace morvane;

namespace {

// The entries of a list of count that an input decodes: the first, one the input picks and the
// last. A whole page of every entry would cost tens of milliseconds an input; which entry is
// drawn matters less to the fuzzer than how many inputs it tries.
std::vector<int32_t> entries_to_decode(int32_t count, uint8_t pick) {
  std::vector<int32_t> entries;
  for (const int32_t k : {1, 1 + pick % std::max(count, 1), count}) {
    if (k >= 1 && k <= count && std::find(entries.begin(), entries.end(), k) == entries.end()) entries.push_back(k);
  }
  return entries;
}

void decode_housekeeping(Session& session, uint8_t pick) {
  HousekeepingPresenter state;
  for (const int32_t k : entries_to_decode(session.catalogue.HK_Count(), pick)) {
    fuzz::expect_only_runtime_errors([&] {
      state.VScroll1_Change(session, k);
      state.Command1_Click(session);
    });
  }
}

void decode_auxiliary(Session& session, uint8_t pick) {
  AuxiliaryPresenter state;
  fuzz::expect_only_runtime_errors([&] {
    const AuxOpening opening = state.Form_Load(session);
    for (const int32_t k : entries_to_decode(opening.scroll_maximum, pick)) {
      fuzz::expect_only_runtime_errors([&] { state.VScroll1_Change(session, k); });
    }
  });
}

void decode_information(Session& session, uint8_t pick) {
  InformationPresenter view;
  for (const int32_t k : entries_to_decode(session.catalogue.Information_Count(), pick)) {
    fuzz::expect_only_runtime_errors([&] {
      view.show(session, k);
      view.translation_drawing();
    });
  }
}

void decode_spectra(Session& session, uint8_t pick) {
  SpectrumPresenter view;
  fuzz::expect_only_runtime_errors([&] {
    view.open(session);
    for (const int32_t s : entries_to_decode(view.scroll_maximum(), pick)) {
      fuzz::expect_only_runtime_errors([&] {
        view.show_spectrum(session, s);
        for (int k = 1; k <= 10; ++k) fuzz::expect_only_runtime_errors([&] { view.show_sub_packet(session, k); });
        for (SpectrumButton button : kSpectrumButtons) view.press(button);
        view.graph();
      });
    }
  });
}

void decode_frames(Session& session, uint8_t pick) {
  for (const int32_t f : entries_to_decode(session.Packet_Count, pick)) {
    fuzz::expect_only_runtime_errors([&] { Display_Raw_Frame(session, f); });
    fuzz::expect_only_runtime_errors([&] { Show_Lander_Packet(session, f); });
  }
}

void evaluate_tests(Session& session, uint8_t pick) {
  session.Test_Mode = pick & 1 ? "EAFT" : "Cruise Phase";
  fuzz::expect_only_runtime_errors([&] {
    const ShortTestList list = find_short_tests(session);
    if (list.Test_Count() == 0) return;
    session.Current_Science_Index = science_index_of_line(list, 1 + pick / 2 % list.Test_Count());
    fuzz::evaluate_current_test(session);
  });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 2) return 0;
  const uint8_t choice = data[0];
  const uint8_t pick = data[1];  // which decoder, and which entries it decodes
  const FileFormat formats[] = {FileFormat::CSS, FileFormat::GRM, FileFormat::ZEB};
  const FileFormat format = formats[(choice >> 1) % 3];
  Session& session = fuzz::configured_session();
  session.Byte_Reverse = (choice & 1) != 0;
  fuzz::load_input(session, data + 2, size - 2, format);
  if (!session.loaded()) return 0;
  // One decoder an input keeps each input to a millisecond or so.
  const uint8_t entries = pick / 6;
  switch (pick % 6) {
    case 0: decode_housekeeping(session, entries); break;
    case 1: decode_auxiliary(session, entries); break;
    case 2: decode_information(session, entries); break;
    case 3: decode_spectra(session, entries); break;
    case 4: decode_frames(session, entries); break;
    default: evaluate_tests(session, entries); break;
  }
  return 0;
}
