// SPDX-License-Identifier: MIT
#include "functest/short_test_mode.h"

#include "core/error.h"

namespace morvane {

TestMode parse_test_mode(std::string_view text) {
  if (text == "Cruise Phase") return TestMode::CruisePhase;
  if (text == "EAFT") return TestMode::EAFT;
  raise(ErrorNumber::InvalidProcedureCall,
        "test mode \"" + std::string(text) + "\" is neither \"Cruise Phase\" nor \"EAFT\"");
}

std::string_view test_mode_text(TestMode mode) { return mode == TestMode::EAFT ? "EAFT" : "Cruise Phase"; }

int first_reading_identifier(TestMode mode) { return mode == TestMode::EAFT ? 24 : 23; }

int final_offset(TestMode mode) { return mode == TestMode::EAFT ? 206 : 218; }

}  // namespace morvane
