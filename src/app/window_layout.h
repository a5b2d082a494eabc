// SPDX-License-Identifier: MIT
#pragma once

#include "view_kind.h"

namespace morvane {

class EGSE_MDI;

// The window layout between runs: the main window's place and size, and which views are open,
// each at its place, in their stacking order. The program restores it at start and keeps it as it
// ends (morvane-egse does; a window made elsewhere, as in the tests, leaves the settings alone).
// Dialogs, the test windows and the export dialogs are not brought back: they belong to a task
// of their moment. The views come back on the empty session of a start, as the menus open them.

// Whether a kind of window is brought back at start.
bool is_restored_at_start(ViewKind kind);

void save_window_layout(EGSE_MDI& window);
// Restores what save_window_layout kept; nothing when nothing was kept.
void restore_window_layout(EGSE_MDI& window);
// Saves the layout when the program ends (Exit, or the main window closed).
void keep_window_layout_on_quit(EGSE_MDI& window);

}  // namespace morvane
