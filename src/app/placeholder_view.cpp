// SPDX-License-Identifier: MIT
#include "placeholder_view.h"

#include <QVBoxLayout>

#include "core/session.h"

namespace morvane {

PlaceholderView::PlaceholderView(Workstation& workstation, ViewKind kind)
    : ChildView(workstation, kind), label_(new QLabel(this)) {
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label_);
  label_->setMargin(12);
  show_current_entry();
}

void PlaceholderView::show_current_entry() {
  const Session& s = session();
  int32_t entry = 0;
  switch (kind()) {
    case ViewKind::Housekeeping: entry = s.Current_HK_Index; break;
    case ViewKind::Information: entry = s.Current_Information_Index; break;
    default: entry = s.Current_Science_Index; break;
  }
  label_->setText(tr("The %1 window is not part of this version yet.\nEntry %2 is the current one.")
                      .arg(QString::fromUtf8(view_title(kind())))
                      .arg(entry));
}

}  // namespace morvane
