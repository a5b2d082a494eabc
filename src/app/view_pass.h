// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QString>

#include "core/session.h"

namespace morvane {

class ChildView;

// Long work of a child window (trend series, an integrity check) on a worker thread while the
// windows go on painting. Until it ends the window is disabled under a busy cursor, the menus are
// off and collection waits, so nothing changes the catalogue the work reads; a progress dialog
// with Cancel appears once the work has lasted a moment. The work may read the session's
// catalogue, its housekeeping bytes and the file, but not the configuration, whose sensor records
// the housekeeping view writes as it draws. Returns false when the user cancelled (the work's
// results are then dropped); an exception of the work is thrown again here.
bool run_view_pass(ChildView& view, const QString& label, const std::function<void(const ProgressFunction&)>& pass);

// For tests of what a cancel leaves: while set, every view pass ends as if the user cancelled
// it before it began.
void cancel_view_passes_for_testing(bool cancel);

}  // namespace morvane
