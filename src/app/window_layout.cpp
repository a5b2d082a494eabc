// SPDX-License-Identifier: MIT
#include "window_layout.h"

#include <optional>
#include <vector>

#include <QCoreApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSettings>

#include "main_window.h"

namespace morvane {

namespace {

constexpr const char* kGeometryKey = "layout/main_window";
constexpr const char* kViewsKey = "layout/views";
constexpr const char* kNameKey = "name";
constexpr const char* kPlaceKey = "geometry";
constexpr const char* kMaximizedKey = "maximized";

std::optional<ViewKind> kind_named(const QString& name) {
  for (const ViewKind kind : kAllViewKinds) {
    if (name == QString::fromUtf8(view_name(kind))) return kind;
  }
  return std::nullopt;
}

}  // namespace

bool is_restored_at_start(ViewKind kind) {
  switch (kind) {
    case ViewKind::AD590:
    case ViewKind::PressureCalibration:
    case ViewKind::ShortTestList:
    case ViewKind::ShortTest:
    case ViewKind::GeneralTests:
    case ViewKind::ExportHousekeeping:
    case ViewKind::ExportAuxiliary:
    case ViewKind::ExportSpectra:
    case ViewKind::ExportDockingStationCalibration: return false;
    default: return true;
  }
}

void save_window_layout(EGSE_MDI& window) {
  QSettings settings;
  settings.setValue(kGeometryKey, window.saveGeometry());
  settings.remove(kViewsKey);
  settings.beginWriteArray(kViewsKey);
  int written = 0;
  // Bottom first, so that restoring them in order leaves the same window on top.
  for (QMdiSubWindow* frame : window.mdi_area()->subWindowList(QMdiArea::StackingOrder)) {
    for (const ViewKind kind : kAllViewKinds) {
      if (window.frame_of(window.view(kind)) != frame || !is_restored_at_start(kind)) continue;
      settings.setArrayIndex(written++);
      settings.setValue(kNameKey, QString::fromUtf8(view_name(kind)));
      settings.setValue(kPlaceKey, frame->isMaximized() ? frame->normalGeometry() : frame->geometry());
      settings.setValue(kMaximizedKey, frame->isMaximized());
    }
  }
  settings.endArray();
}

void restore_window_layout(EGSE_MDI& window) {
  QSettings settings;
  if (settings.contains(kGeometryKey)) window.restoreGeometry(settings.value(kGeometryKey).toByteArray());
  const int count = settings.beginReadArray(kViewsKey);
  struct Place {
    ViewKind kind;
    QRect geometry;
    bool maximized;
  };
  std::vector<Place> places;
  for (int i = 0; i < count; ++i) {
    settings.setArrayIndex(i);
    const std::optional<ViewKind> kind = kind_named(settings.value(kNameKey).toString());
    if (kind && is_restored_at_start(*kind)) {
      places.push_back({*kind, settings.value(kPlaceKey).toRect(), settings.value(kMaximizedKey).toBool()});
    }
  }
  settings.endArray();
  for (const Place& place : places) {
    if (!window.is_registered(place.kind)) continue;  // a window this version does not have
    QMdiSubWindow* frame = window.frame_of(window.show_view(place.kind));
    if (!frame) continue;
    if (place.geometry.isValid()) frame->setGeometry(place.geometry);
    if (place.maximized) frame->showMaximized();
  }
}

void keep_window_layout_on_quit(EGSE_MDI& window) {
  QObject::connect(qApp, &QCoreApplication::aboutToQuit, &window, [&window] { save_window_layout(window); });
}

}  // namespace morvane
