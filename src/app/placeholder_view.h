// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>

#include "child_view.h"

namespace morvane {

// Stands in for an entry window that is not part of the program yet: it says which entry the
// summary chose, so that the way into the packet views works before every view exists.
class PlaceholderView : public ChildView {
  Q_OBJECT

 public:
  PlaceholderView(Workstation& workstation, ViewKind kind);
  void show_current_entry() override;
  QString text() const { return label_->text(); }

 private:
  QLabel* label_;
};

}  // namespace morvane
