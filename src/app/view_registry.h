// SPDX-License-Identifier: MIT
#pragma once

namespace morvane {

class EGSE_MDI;

// Registers every window of the program with the main window. A new window is one more line
// in view_registry.cpp: its kind and a factory that creates it.
void register_standard_views(EGSE_MDI& mdi);

}  // namespace morvane
