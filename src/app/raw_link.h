// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <optional>

#include "decoders/raw_mark.h"

class QAction;

namespace morvane {

class ChildView;
class RawData;
class Workstation;

// "Show in raw frame": a decoded window sends the packet it shows to the raw view, which opens on
// the packet's frame with the packet's words marked.
inline constexpr const char* kShowInRawFrame = "Show in raw frame";

// Opens the raw view (or brings it to the front) on the mark's frame with the mark painted.
// Returns the raw view, or nullptr when there is none to show.
RawData* show_in_raw_frame(Workstation& workstation, const RawMark& mark);
// Marks in the raw view only when it is open (a sensor line chosen in the housekeeping view).
void mark_in_open_raw_view(Workstation& workstation, const RawMark& mark);

// Gives a window the "Show in raw frame" item in its context menu, also on Ctrl+R while the
// window has the focus. `shown` gives the mark of the packet the window shows, or nothing (no
// file, no packet): the item then does nothing. Returns the item.
QAction* add_show_in_raw_frame(ChildView& view, std::function<std::optional<RawMark>()> shown);

}  // namespace morvane
