// SPDX-License-Identifier: MIT
#include "raw_link.h"

#include <QAction>

#include "child_view.h"
#include "error_trap.h"
#include "raw_view.h"
#include "workstation.h"

namespace morvane {

RawData* show_in_raw_frame(Workstation& workstation, const Raw_Mark& mark) {
  auto* raw = qobject_cast<RawData*>(workstation.showView(ViewKind::RawData));
  if (raw) raw->showMark(mark);
  return raw;
}

void mark_in_open_raw_view(Workstation& workstation, const Raw_Mark& mark) {
  if (auto* raw = qobject_cast<RawData*>(workstation.view(ViewKind::RawData))) raw->showMark(mark);
}

QAction* add_show_in_raw_frame(ChildView& view, std::function<std::optional<Raw_Mark>()> shown) {
  auto* action = new QAction(QString::fromUtf8(kShowInRawFrame), &view);
  action->setObjectName("actShowInRawFrame");
  action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  QObject::connect(action, &QAction::triggered, &view, [&view, shown = std::move(shown)] {
    Workstation& workstation = view.workstation();
    run_trapped(workstation.dialogs(), &view, [&] {
      if (const std::optional<Raw_Mark> mark = shown()) show_in_raw_frame(workstation, *mark);
    });
  });
  view.addAction(action);
  view.setContextMenuPolicy(Qt::ActionsContextMenu);
  return action;
}

}  // namespace morvane
