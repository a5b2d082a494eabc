// SPDX-License-Identifier: MIT
// Any bytes as a telemetry file, then every decoder on what the catalogue found in it: the
// housekeeping pages, auxiliary tables, information translations and memory tables, spectra
// and their graph, raw and concise frames, the functional-test list and evaluation.
#include <algorithm>

#include "functest/short_message_load.h"
#include "functest/short_test.h"
#include "fuzz_support.h"
#include "views/auxiliary_view.h"
#include "views/concise_frame.h"
#include "views/housekeeping_view.h"
#include "views/information_view.h"
#include "views/raw_frame.h"
#include "views/spectrum_view.h"

using namespace morvane;

namespace {

constexpr int32_t kEntriesEach = 48;  // enough to reach every decoder, few enough to stay fast

void decode_housekeeping(Session& session) {
  HousekeepingState state;
  for (int32_t k = 1; k <= std::min(session.catalogue.HK_Count(), kEntriesEach); ++k) {
    fuzz::expect_only_runtime_errors([&] {
      state.VScroll1_Change(session, k);
      state.Command1_Click(session);
    });
  }
}

void decode_auxiliary(Session& session) {
  AuxiliaryState state;
  fuzz::expect_only_runtime_errors([&] {
    const Aux_Opening opening = state.Form_Load(session);
    for (int32_t k = 1; k <= std::min(opening.scroll_maximum, kEntriesEach); ++k) {
      fuzz::expect_only_runtime_errors([&] { state.VScroll1_Change(session, k); });
    }
  });
}

void decode_information(Session& session) {
  Information_View view;
  for (int32_t k = 1; k <= std::min(session.catalogue.Information_Count(), kEntriesEach); ++k) {
    fuzz::expect_only_runtime_errors([&] {
      view.show(session, k);
      view.translation_drawing();
    });
  }
}

void decode_spectra(Session& session) {
  Spectrum_View view;
  fuzz::expect_only_runtime_errors([&] {
    view.open(session);
    for (int32_t s = 1; s <= std::min(view.scroll_maximum(), 12); ++s) {
      fuzz::expect_only_runtime_errors([&] {
        view.show_spectrum(session, s);
        for (int k = 1; k <= 10; ++k) fuzz::expect_only_runtime_errors([&] { view.show_sub_packet(session, k); });
        for (Spectrum_Button button : kSpectrumButtons) view.press(button);
        view.graph();
      });
    }
  });
}

void decode_frames(Session& session) {
  for (int32_t f = 1; f <= std::min(session.Packet_Count, 8); ++f) {
    fuzz::expect_only_runtime_errors([&] { Display_Raw_Frame(session, f); });
    fuzz::expect_only_runtime_errors([&] { Show_Lander_Packet(session, f); });
  }
}

void evaluate_tests(Session& session) {
  for (const char* mode : {"Cruise Phase", "EAFT"}) {
    session.Test_Mode = mode;
    fuzz::expect_only_runtime_errors([&] {
      const Short_Test_List list = find_short_tests(session);
      for (int32_t line = 1; line <= std::min(list.Test_Count(), 4); ++line) {
        session.Current_Science_Index = science_index_of_line(list, line);
        fuzz::expect_only_runtime_errors([&] { open_short_test(session); });
      }
    });
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  if (size < 1) return 0;
  const uint8_t choice = data[0];
  const FileFormat formats[] = {FileFormat::CSS, FileFormat::GRM, FileFormat::ZEB};
  const FileFormat format = formats[(choice >> 1) % 3];
  const std::string path = fuzz::write_input(data + 1, size - 1, "packets.dat");
  Session& session = fuzz::configured_session();
  session.Byte_Reverse = (choice & 1) != 0;
  fuzz::expect_only_runtime_errors([&] { load_telemetry(session, path, format); });
  if (!session.loaded()) return 0;
  decode_housekeeping(session);
  decode_auxiliary(session);
  decode_information(session);
  decode_spectra(session);
  decode_frames(session);
  evaluate_tests(session);
  return 0;
}
