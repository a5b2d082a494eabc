// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QString>

#include "core/session.h"

class QWidget;

namespace morvane {

// Runs a long pass (loading a file) on a worker thread while this thread keeps serving the
// windows. A progress dialog appears once the pass has lasted a moment; its Cancel makes the
// pass's next progress call end it. The pass is handed a ProgressFunction and is otherwise the
// same pass as without progress. An exception of the pass is thrown again here.
// Returns false when the user cancelled: whatever the pass built is then to be discarded.
bool run_with_progress(QWidget* parent, const QString& label,
                       const std::function<void(const ProgressFunction&)>& pass);

}  // namespace morvane
