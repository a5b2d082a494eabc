// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

#include <QWidget>

#include "view_kind.h"

class QMdiSubWindow;

namespace morvane {

class Workstation;
struct Session;
enum class CalibrationTable;

// The base of every child window of the main window. A view reads the session whenever it
// draws and keeps no packet bytes of its own; the view manager creates it through the factory
// registered for its kind, destroys and recreates it after a load or a byte-order switch, and
// calls the hooks below. What a window asks of the program goes through its Workstation.
class ChildView : public QWidget {
  Q_OBJECT

 public:
  ChildView(Workstation& workstation, ViewKind kind, QWidget* parent = nullptr);

  ViewKind kind() const { return kind_; }
  Workstation& workstation() const { return workstation_; }
  Session& session() const;
  // The child frame around the window (its position in the main window), or nullptr while the
  // window stands alone.
  QMdiSubWindow* frame() const;
  // Puts the window's frame at a position in twips from the top left of the window area.
  void place_at(int left_twips, int top_twips);
  // Closes the window (its frame, if it has one) once control is back in the event loop, so
  // that a button may close the window it sits in.
  void close_frame();

  // Real-time collection added frames to the catalogue: show them (the newest frame, the new
  // entries). Called in a fixed order for the raw, summary, concise and housekeeping views,
  // then the trend and integrity windows.
  virtual void update_realtime() {}
  // The summary made an entry of this view's kind current (a double click): show it.
  virtual void show_current_entry() {}
  // A load or a byte-order switch replaced the session's file. The raw, summary, concise and
  // housekeeping views are rebuilt instead; the windows the view manager keeps are told here.
  virtual void session_reloaded() {}
  // A calibration dialog changed a table the conversions read: a window that converts with it
  // draws again. Called for the open windows in the order of their kinds.
  virtual void calibration_changed(CalibrationTable /*table*/) {}

 protected:
  // Runs an event handler's work; a failure is shown in a message box and the view carries on.
  bool guarded(const std::function<void()>& work);

 private:
  Workstation& workstation_;
  ViewKind kind_;
};

}  // namespace morvane
