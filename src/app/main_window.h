// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>

#include <QMainWindow>

#include "child_view.h"
#include "core/session.h"
#include "live_follow.h"
#include "view_kind.h"
#include "view_manager.h"

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QTimer;

namespace morvane {

class Dialogs;
class Workstation;
enum class ExportKind;

// The main window: it owns the session, the menus and the file loads, and wires the rest: the
// child windows live in its ViewManager, real-time collection in its LiveFollow, and the windows
// reach all of it through a Workstation (main_workstation.h), never through this class.
//
// Plugging a window in: give it a ViewKind, derive it from ChildView, and register its factory
// in register_standard_views() (view_registry.cpp). Its menu items then become enabled.
class EGSE_MDI : public QMainWindow {
  Q_OBJECT

 public:
  EGSE_MDI(Configuration configuration, Dialogs& dialogs, QWidget* parent = nullptr);
  ~EGSE_MDI() override;

  Session& session() { return session_; }
  const Session& session() const { return session_; }
  Dialogs& dialogs() const { return dialogs_; }
  QMdiArea* mdi_area() const { return mdi_; }
  // What the child windows are given.
  Workstation& workstation() const { return *workstation_; }
  ViewManager& views() const { return *views_; }
  LiveFollow& live_follow() const { return *follow_; }
  // A menu item by its name ("mnuLoadFile_QM", "mnuDisplayByteReverse", ...).
  QAction* menu_item(const QString& name) const;

  // --- Child windows (the view manager's) ------------------------------------------------
  void register_view(ViewKind kind, ViewManager::ViewFactory factory) { views_->register_view(kind, std::move(factory)); }
  bool is_registered(ViewKind kind) const { return views_->is_registered(kind); }
  ChildView* view(ViewKind kind) const { return views_->view(kind); }
  ChildView* show_view(ViewKind kind) { return views_->show_view(kind); }
  void close_view(ViewKind kind) { views_->close_view(kind); }
  QMdiSubWindow* frame_of(const QWidget* view) const { return ViewManager::frame_of(view); }
  void show_information_entry() { views_->show_entry(ViewKind::Information); }
  void Reload_Open_Views() { views_->Reload_Open_Views(); }

  // --- Files -----------------------------------------------------------------------------
  // Asks for a file of the given format and loads it. A cancelled dialog changes nothing.
  // Returns whether a file was loaded.
  bool Open_EGSE_File(FileFormat type);
  // Loads a file as Open_EGSE_File does once the file is chosen: the caption, the catalogue
  // (on a worker thread, with progress), the open views rebuilt, collection stopped. A file
  // that cannot be opened, or a load the user cancels, changes nothing. Returns whether the
  // file was loaded (also when an error cut its catalogue short; the error was shown).
  bool load_file(FileFormat type, const QString& path);

  // --- Byte order ------------------------------------------------------------------------
  // Sets Byte_Reverse and its check mark (start-up); the views are not rebuilt.
  void set_byte_reverse(bool on);
  // The menu item: switches the byte order and rebuilds the open views.
  void mnuDisplayByteReverse_Click();

  // --- Real-time collection (LiveFollow's) ----------------------------------------------
  bool is_collecting() const { return follow_->collecting(); }
  void start_collection() { follow_->start(); }
  void stop_collection() { follow_->stop(); }
  void Timer1_Timer() { follow_->Timer1_Timer(); }
  QTimer* collection_timer() const { return follow_->timer(); }
  void set_log_file(const QString& path) { follow_->set_log_file(path); }

  // --- Menu handlers with guards ---------------------------------------------------------
  void mnuExportHousekeeping_Click();
  void mnuExportScienceAuxilliary_Click();
  void mnuExportScienceSpectra_Click();
  void mnuExportDockingStationCalibration_Click();
  void mnuTest_Cruise_Phase_mode_Click();
  void mnuTest_EAFT_mode_Click();

  // Runs an event handler's work; a failure is shown in a message box.
  bool guarded(const std::function<void()>& work);

 signals:
  // load_file loaded a file (from the File menu, a drop, the recent files or the command line).
  void file_loaded(morvane::FileFormat type, const QString& path);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void create_menus();
  QAction* addItem(QMenu* menu, const char* name, const char* caption, const std::function<void()>& handler,
                   std::optional<ViewKind> needs = std::nullopt);
  void update_menu_availability();
  // The export menu items: the guard's message, or the dialog at its place.
  void show_export(ViewKind kind, ExportKind export_kind);
  // Sets Test_Mode and shows the short form test list made in it.
  void show_short_test_list(const char* mode);
  // Loads path into a fresh session on a worker thread and puts it in place. Returns false
  // when nothing changed (cancelled, or the file could not be opened).
  bool load_session(FileFormat type, const QString& path, const QString& caption_prefix);

  Session session_;
  Dialogs& dialogs_;
  QMdiArea* mdi_;
  std::unique_ptr<Workstation> workstation_;
  ViewManager* views_;
  LiveFollow* follow_ = nullptr;
  std::map<QAction*, ViewKind> action_views_;
  bool loading_ = false;
};

// The main caption after a load and while collecting.
QString loaded_caption(FileFormat type, const QString& file_name);
QString collecting_caption(const QString& file_name);

}  // namespace morvane
