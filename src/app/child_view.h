// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QWidget>

#include "view_kind.h"

namespace morvane {

class EGSE_MDI;
struct Session;

// The base of every child window of the main window. A view reads the session whenever it
// draws and keeps no packet bytes of its own; the main window creates it through the factory
// registered for its kind, destroys and recreates it after a load or a byte-order switch, and
// calls the hooks below.
class ChildView : public QWidget {
  Q_OBJECT

 public:
  ChildView(EGSE_MDI& mdi, ViewKind kind, QWidget* parent = nullptr);

  ViewKind kind() const { return kind_; }
  EGSE_MDI& mdi() const { return mdi_; }
  Session& session() const;

  // Real-time collection added frames to the catalogue: show them (the newest frame, the new
  // entries). Called in a fixed order for the raw, summary, concise and housekeeping views,
  // then the trend and integrity windows.
  virtual void updateRealtime() {}
  // The summary made an entry of this view's kind current (a double click): show it.
  virtual void showCurrentEntry() {}
  // A load or a byte-order switch replaced the session's file. The raw, summary, concise and
  // housekeeping views are rebuilt instead; the windows the main window keeps are told here.
  virtual void sessionReloaded() {}

 protected:
  // Runs an event handler's work; a failure is shown in a message box and the view carries on.
  bool guarded(const std::function<void()>& work);

 private:
  EGSE_MDI& mdi_;
  ViewKind kind_;
};

}  // namespace morvane
