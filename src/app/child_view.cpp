// SPDX-License-Identifier: MIT
#include "child_view.h"

#include <QMdiSubWindow>

#include "error_trap.h"
#include "twips.h"
#include "workstation.h"

namespace morvane {

ChildView::ChildView(Workstation& workstation, ViewKind kind, QWidget* parent)
    : QWidget(parent), workstation_(workstation), kind_(kind) {
  setObjectName(view_name(kind));
  setWindowTitle(view_title(kind));
}

Session& ChildView::session() const { return workstation_.session(); }

QMdiSubWindow* ChildView::frame() const { return qobject_cast<QMdiSubWindow*>(parentWidget()); }

void ChildView::place_at(int left_twips, int top_twips) {
  if (QMdiSubWindow* outer = frame()) outer->move(twips_to_pixels(left_twips, top_twips, *this));
}

void ChildView::close_frame() {
  // A frame closed with WA_DeleteOnClose is deleted later (deleteLater), not under the click.
  if (QMdiSubWindow* outer = frame()) {
    outer->close();
  } else {
    close();
  }
}

bool ChildView::guarded(const std::function<void()>& work) {
  return run_trapped(workstation_.dialogs(), this, work);
}

}  // namespace morvane
