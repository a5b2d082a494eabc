// SPDX-License-Identifier: MIT
#include "raw_link.h"

#include <QAction>

#include "child_view.h"
#include "main_window.h"
#include "raw_view.h"

namespace morvane {

RawData* show_in_raw_frame(EGSE_MDI& mdi, const Raw_Mark& mark) {
  auto* raw = qobject_cast<RawData*>(mdi.showView(ViewKind::RawData));
  if (raw) raw->showMark(mark);
  return raw;
}

void mark_in_open_raw_view(EGSE_MDI& mdi, const Raw_Mark& mark) {
  if (auto* raw = qobject_cast<RawData*>(mdi.view(ViewKind::RawData))) raw->showMark(mark);
}

QAction* add_show_in_raw_frame(ChildView& view, std::function<std::optional<Raw_Mark>()> shown) {
  auto* action = new QAction(QString::fromUtf8(kShowInRawFrame), &view);
  action->setObjectName("actShowInRawFrame");
  action->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
  action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
  EGSE_MDI& mdi = view.mdi();
  QObject::connect(action, &QAction::triggered, &view, [&mdi, shown = std::move(shown)] {
    mdi.guarded([&] {
      if (const std::optional<Raw_Mark> mark = shown()) show_in_raw_frame(mdi, *mark);
    });
  });
  view.addAction(action);
  view.setContextMenuPolicy(Qt::ActionsContextMenu);
  return action;
}

}  // namespace morvane
