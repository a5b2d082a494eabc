// SPDX-License-Identifier: MIT
#pragma once

namespace morvane {

class ViewManager;

// Registers every window of the program with the view manager. A new window is one more line
// in view_registry.cpp: its kind and a factory that creates it.
void register_standard_views(ViewManager& views);

}  // namespace morvane
