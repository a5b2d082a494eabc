// SPDX-License-Identifier: MIT
#include "child_view.h"

#include "error_trap.h"
#include "main_window.h"

namespace morvane {

ChildView::ChildView(EGSE_MDI& mdi, ViewKind kind, QWidget* parent) : QWidget(parent), mdi_(mdi), kind_(kind) {
  setObjectName(view_name(kind));
  setWindowTitle(view_title(kind));
}

Session& ChildView::session() const { return mdi_.session(); }

bool ChildView::guarded(const std::function<void()>& work) { return run_trapped(mdi_.dialogs(), this, work); }

}  // namespace morvane
