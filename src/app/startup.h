// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

#include <QString>

#include "core/configuration.h"

namespace morvane {

class Dialogs;
class EGSE_MDI;

// The configuration the program starts with: the base folder named by Morvane_Files.txt in the
// working folder (or, when that file is not there, the base folder the user picked before), and
// its tables. A problem is shown in a message naming the file and line; the user may then pick
// the base folder, which is remembered. Returns empty tables when none could be read.
Configuration read_startup_configuration(const QString& working_folder, Dialogs& dialogs);

// Main: reads the configuration, shows the main window, switches Byte_Reverse on with its
// check mark, in that order. working_folder empty means the current folder. With
// remember_layout the window layout of the last run is restored, and kept again as the program
// ends.
std::unique_ptr<EGSE_MDI> Main(Dialogs& dialogs, const QString& working_folder = {}, bool remember_layout = false);

}  // namespace morvane
