// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace morvane {

class EGSE_MDI;

// Writes a PNG of every registered window, shown on the loaded file, into folder
// (<window name>.png), and one of the main window with the packet overview views open
// (morvane-egse.png). Entry windows show the first entry of their kind. Returns the files
// written.
QStringList write_screenshots(EGSE_MDI& window, const QString& folder);

}  // namespace morvane
