// SPDX-License-Identifier: MIT
#include "raw_link.h"

#include <QAction>

#include "child_view.h"
#include "error_trap.h"
#include "raw_view.h"
#include "workstation.h"

namespace morvane {

RawData* show_in_raw_frame(Workstation& workstation, const RawMark& mark) {
  auto* raw = qobject_cast<RawData*>(workstation.show_view(ViewKind::RawData));
  if (raw) raw->show_mark(mark);
  return raw;
}

void mark_in_open_raw_view(Workstation& workstation, const RawMark& mark) {
  if (auto* raw = qobject_cast<RawData*>(workstation.view(ViewKind::RawData))) raw->show_mark(mark);
}

QAction* add_show_in_raw_frame(ChildView& view, std::function<std::optional<RawMark>()> shown) {
  auto* action = new QAction(QString::fromUtf8(kShowInRawFrame), &view);
  action->setObjectName("actShowInRawFrame");
  action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(action, &QAction::triggered, &view, [&view, shown = std::move(shown)] {
    Workstation& workstation = view.workstation();
    run_trapped(workstation.dialogs(), &view, [&] {
      if (const std::optional<RawMark> mark = shown()) show_in_raw_frame(workstation, *mark);
    });
  });
  view.addAction(action);
  view.setContextMenuPolicy(Qt::ActionsContextMenu);
  return action;
}

}  // namespace morvane
