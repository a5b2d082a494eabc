// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>

#include <QObject>
#include <QPointer>

#include "view_kind.h"

class QMdiArea;
class QMdiSubWindow;
class QWidget;

namespace morvane {

class ChildView;
class Workstation;

// The child windows of the main window's area: which kinds exist (a factory each), which are
// open (at most one of a kind: its open flag), and their lifecycle. A load or a byte-order
// switch rebuilds the raw, summary, concise and housekeeping views in that order, each at its
// place; a collection pass updates them in the same order; the trend and integrity windows,
// which keep the user's choices, are told after them. The workstation's calibration_changed goes
// to every open window in the order of ViewKind (the housekeeping view before the auxiliary).
class ViewManager : public QObject {
  Q_OBJECT

 public:
  using ViewFactory = std::function<ChildView*(Workstation&)>;

  // The views are made for `workstation` in `area`; both outlive the manager's windows.
  ViewManager(Workstation& workstation, QMdiArea& area, QObject* parent = nullptr);

  // Makes a kind of window available (announced by registered()).
  void register_view(ViewKind kind, ViewFactory factory);
  bool is_registered(ViewKind kind) const { return factories_.count(kind) > 0; }
  // The open window of a kind, or nullptr.
  ChildView* view(ViewKind kind) const;
  // Shows the window of a kind, creating it if it is not open, and brings it to the front.
  // Returns it, or nullptr when the kind is not available or its factory failed (reported).
  ChildView* show_view(ViewKind kind);
  // Closes the window of a kind if it is open.
  void close_view(ViewKind kind);
  // Shows the window of an entry kind and asks it to show the current entry.
  void show_entry(ViewKind kind);

  // Rebuilds the open raw, summary, concise and housekeeping views, in that order, each at its
  // place; then tells the open trend and integrity windows (session_reloaded).
  void Reload_Open_Views();
  // Asks the open raw, summary, concise and housekeeping views, in that order, then the trend
  // and integrity windows, to show what the last collection pass added.
  void Update_Open_Views();

  // The child frame around a window, or nullptr.
  static QMdiSubWindow* frame_of(const QWidget* view);

 signals:
  void registered(morvane::ViewKind kind);

 private:
  ViewFactory factory_for(ViewKind kind) const;
  ChildView* create_view(ViewKind kind);

  Workstation& workstation_;
  QMdiArea& area_;
  std::map<ViewKind, ViewFactory> factories_;
  std::map<ViewKind, QPointer<ChildView>> open_;
};

}  // namespace morvane
