// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

#include "core/file_format.h"
#include "view_kind.h"

namespace morvane {

class ChildView;
class Dialogs;
struct Session;

// The tables a calibration dialog changes, which the conversions read.
enum class CalibrationTable {
  PressureSensors,  // the pressure-sensor table (the "Calibration" dialog)
  AD590,            // AD590_EMF (the "AD590 Calibration" dialog)
};

// What a child window may ask of the program around it: the session it reads, the dialogs it
// puts questions through, the other windows, a load, and a pause of real-time collection. A
// window knows its own header, the session and this interface, never the main window; the main
// window implements it (MainWorkstation) and the tests put a small fake in its place.
class Workstation : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  // --- The file and the user -------------------------------------------------------------
  virtual Session& session() = 0;
  // Message boxes and file, print and question dialogs (the tests answer them).
  virtual Dialogs& dialogs() = 0;

  // --- Other windows ---------------------------------------------------------------------
  // The open window of a kind, or nullptr: the window's open flag.
  virtual ChildView* view(ViewKind kind) = 0;
  // Shows the window of a kind, creating it if it is not open, and brings it to the front.
  // Returns it, or nullptr when the kind is not available (or its creation failed, reported).
  virtual ChildView* show_view(ViewKind kind) = 0;
  // Closes the window of a kind if it is open.
  virtual void close_view(ViewKind kind) = 0;
  // "Open this entry": shows the window of an entry kind (housekeeping, auxiliary, spectra,
  // information) and asks it to show the current entry, which the caller has set.
  virtual void show_entry(ViewKind kind) = 0;

  // --- Loading ---------------------------------------------------------------------------
  // Loads a file as the File menu does once the file is chosen. Returns whether it was loaded.
  virtual bool load_file(FileFormat type, const QString& path) = 0;
  // Sets Byte_Reverse and its check mark; the views are not rebuilt.
  virtual void set_byte_reverse(bool on) = 0;

  // --- Real-time collection and long work ------------------------------------------------
  // Whether the collection passes are running (the concise view's Pause/Continue).
  virtual bool collection_ticking() const = 0;
  // Starts or stops the collection passes; collection itself stays on or off.
  virtual void set_collection_ticking(bool on) = 0;
  // Switches the menus off while a window's long work holds the session, and on again.
  virtual void set_menus_enabled(bool on) = 0;

  // A calibration dialog changed a table the conversions read.
  void announce_calibration_change(CalibrationTable table) { emit calibration_changed(table); }

 signals:
  // A calibration table changed: the open windows that convert with it redraw at once rather
  // than at their next scroll (the view manager tells them, in its fixed order).
  void calibration_changed(morvane::CalibrationTable table);
};

// Holds collection's passes for as long as it lives (an export, a window's long work, which read
// the catalogue the passes extend), then lets them run again if they were running.
class PausedCollection {
 public:
  explicit PausedCollection(Workstation& workstation)
      : workstation_(workstation), was_ticking_(workstation.collection_ticking()) {
    workstation_.set_collection_ticking(false);
  }
  ~PausedCollection() {
    if (was_ticking_) workstation_.set_collection_ticking(true);
  }
  PausedCollection(const PausedCollection&) = delete;
  PausedCollection& operator=(const PausedCollection&) = delete;

 private:
  Workstation& workstation_;
  bool was_ticking_;
};

}  // namespace morvane
