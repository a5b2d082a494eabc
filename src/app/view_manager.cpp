// SPDX-License-Identifier: MIT
#include "view_manager.h"

#include <QMdiArea>
#include <QMdiSubWindow>

#include "child_view.h"
#include "error_trap.h"
#include "placeholder_view.h"
#include "workstation.h"

namespace morvane {

namespace {

// The views a load or a byte-order switch rebuilds, and a collection pass updates, in order.
constexpr ViewKind kReloadedViews[] = {ViewKind::RawData, ViewKind::Summary, ViewKind::Concise,
                                       ViewKind::Housekeeping};
// The windows that follow the file without being rebuilt (they keep the user's choices): told
// after the views above.
constexpr ViewKind kFollowingViews[] = {ViewKind::Trend, ViewKind::Integrity};

}  // namespace

ViewManager::ViewManager(Workstation& workstation, QMdiArea& area, QObject* parent)
    : QObject(parent), workstation_(workstation), area_(area) {
  setObjectName("ViewManager");
  connect(&workstation, &Workstation::calibration_changed, this, [this](CalibrationTable table) {
    // A window may report an error as it draws: the housekeeping view's comes first, as ever.
    // Each window is looked up when its turn comes, since one may close while another draws.
    for (const ViewKind kind : kAllViewKinds) {
      if (ChildView* open = view(kind)) open->calibration_changed(table);
    }
  });
}

void ViewManager::register_view(ViewKind kind, ViewFactory factory) {
  factories_[kind] = std::move(factory);
  emit registered(kind);
}

ChildView* ViewManager::view(ViewKind kind) const {
  const auto found = open_.find(kind);
  return found == open_.end() ? nullptr : found->second.data();
}

QMdiSubWindow* ViewManager::frame_of(const QWidget* view) {
  return view ? qobject_cast<QMdiSubWindow*>(view->parentWidget()) : nullptr;
}

ViewManager::ViewFactory ViewManager::factory_for(ViewKind kind) const {
  const auto found = factories_.find(kind);
  if (found != factories_.end()) return found->second;
  if (is_entry_view(kind)) return [kind](Workstation& w) { return new PlaceholderView(w, kind); };
  return {};
}

ChildView* ViewManager::create_view(ViewKind kind) {
  const ViewFactory factory = factory_for(kind);
  if (!factory) return nullptr;
  ChildView* child = nullptr;
  if (!run_trapped(workstation_.dialogs(), area_.window(), [&] { child = factory(workstation_); }) || !child) {
    return nullptr;
  }
  QMdiSubWindow* frame = area_.addSubWindow(child);
  frame->setAttribute(Qt::WA_DeleteOnClose);
  frame->setObjectName(QString::fromUtf8(view_name(kind)) + QStringLiteral("_frame"));
  open_[kind] = child;
  frame->show();
  return child;
}

void ViewManager::close_view(ViewKind kind) {
  ChildView* open = view(kind);
  open_.erase(kind);
  if (!open) return;
  QWidget* outer = frame_of(open) ? static_cast<QWidget*>(frame_of(open)) : open;
  area_.removeSubWindow(outer);
  delete outer;
}

ChildView* ViewManager::show_view(ViewKind kind) {
  if (ChildView* open = view(kind)) {
    QMdiSubWindow* frame = frame_of(open);
    if (frame->isMinimized()) frame->showNormal();
    frame->show();
    area_.setActiveSubWindow(frame);
    frame->raise();
    return open;
  }
  return create_view(kind);
}

void ViewManager::show_entry(ViewKind kind) {
  if (ChildView* shown = show_view(kind)) shown->show_current_entry();
}

void ViewManager::Reload_Open_Views() {
  for (const ViewKind kind : kReloadedViews) {
    ChildView* open = view(kind);
    if (!open) continue;
    const QRect geometry = frame_of(open)->geometry();
    close_view(kind);
    if (ChildView* again = create_view(kind)) frame_of(again)->setGeometry(geometry);
  }
  for (const ViewKind kind : kFollowingViews) {
    if (ChildView* open = view(kind)) open->session_reloaded();
  }
}

void ViewManager::Update_Open_Views() {
  for (const ViewKind kind : kReloadedViews) {
    if (ChildView* open = view(kind)) open->update_realtime();
  }
  for (const ViewKind kind : kFollowingViews) {
    if (ChildView* open = view(kind)) open->update_realtime();
  }
}

}  // namespace morvane
