// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <optional>

#include <QMainWindow>
#include <QPointer>

#include "child_view.h"
#include "core/session.h"
#include "view_kind.h"

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QTimer;

namespace morvane {

class Dialogs;
enum class Export_Kind;

// The main window: it owns the session, the menus, the child windows and the collection timer.
//
// Plugging a window in: give it a ViewKind, derive it from ChildView, and register its factory
// in register_standard_views() (view_registry.cpp). The main window then enables its menu
// items, opens it from the menus and from summary double clicks, recreates it after a load or a
// byte-order switch (raw, summary, concise and housekeeping views), and calls its
// updateRealtime() on every collection pass that found new frames.
class EGSE_MDI : public QMainWindow {
  Q_OBJECT

 public:
  using ViewFactory = std::function<ChildView*(EGSE_MDI&)>;

  EGSE_MDI(Configuration configuration, Dialogs& dialogs, QWidget* parent = nullptr);
  ~EGSE_MDI() override;

  Session& session() { return session_; }
  const Session& session() const { return session_; }
  Dialogs& dialogs() const { return dialogs_; }
  QMdiArea* mdiArea() const { return mdi_; }
  // A menu item by its name ("mnuLoadFile_QM", "mnuDisplayByteReverse", ...).
  QAction* menuItem(const QString& name) const;

  // --- Child windows ---------------------------------------------------------------------
  // Makes a kind of window available; its menu items become enabled.
  void registerView(ViewKind kind, ViewFactory factory);
  bool isRegistered(ViewKind kind) const { return factories_.count(kind) > 0; }
  // The open window of a kind, or nullptr: the window's open flag.
  ChildView* view(ViewKind kind) const;
  // Shows the window of a kind, creating it if it is not open, and brings it to the front.
  // Returns it, or nullptr when the kind is not available.
  ChildView* showView(ViewKind kind);
  // Closes the window of a kind if it is open.
  void closeView(ViewKind kind);
  // The child frame around a window (its position in the main window).
  QMdiSubWindow* frameOf(const QWidget* view) const;
  // Puts an open window at a position in twips from the top left of the window area.
  void placeView(ChildView* view, int left_twips, int top_twips);

  // What a double click on a summary line opens once it has set the current entry: the window
  // is shown or brought to the front, then asked to show the current entry.
  void showHousekeepingEntry() { showEntryView(ViewKind::Housekeeping); }
  void showAuxiliaryEntry() { showEntryView(ViewKind::Auxiliary); }
  void showSpectraEntry() { showEntryView(ViewKind::Spectra); }
  void showInformationEntry() { showEntryView(ViewKind::Information); }

  // --- Files -----------------------------------------------------------------------------
  // Asks for a file of the given format and loads it. A cancelled dialog changes nothing.
  // Returns whether a file was loaded.
  bool Open_EGSE_File(FileFormat type);
  // Loads a file as Open_EGSE_File does once the file is chosen: the caption, the catalogue
  // (on a worker thread, with progress), the open views rebuilt, collection stopped. A file
  // that cannot be opened, or a load the user cancels, changes nothing. Returns whether the
  // file was loaded (also when an error cut its catalogue short; the error was shown).
  bool loadFile(FileFormat type, const QString& path);
  // Rebuilds the raw, summary, concise and housekeeping views, in that order, each at its place;
  // then tells the open trend and integrity windows (sessionReloaded).
  void Reload_Open_Views();
  // Asks the open raw, summary, concise and housekeeping views, in that order, then the trend
  // and integrity windows, to show what the last collection pass added.
  void Update_Open_Views();

  // --- Byte order ------------------------------------------------------------------------
  // Sets Byte_Reverse and its check mark (start-up); the views are not rebuilt.
  void setByteReverse(bool on);
  // The menu item: switches the byte order and rebuilds the open views.
  void mnuDisplayByteReverse_Click();

  // --- Real-time collection --------------------------------------------------------------
  // Starts following the log file (from its first frame) or stops; the menu item's check mark
  // tells which.
  void mnuDisplayRealTimeDataCollection_Click();
  bool isCollecting() const;
  void startCollection();
  void stopCollection();
  // One polling pass: catalogues the frames that arrived and updates the open views.
  void Timer1_Timer();
  // The collection timer (500 ms); the concise view's Pause/Continue switches it.
  QTimer* collectionTimer() const { return timer_; }
  // The log file followed, as the user gave it; it is resolved like a configuration path.
  QString logFile() const;
  void setLogFile(const QString& path);
  // Asks the user for the log file to follow.
  void chooseLogFile();

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
  // loadFile loaded a file (from the File menu, a drop, the recent files or the command line).
  void fileLoaded(morvane::FileFormat type, const QString& path);

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void createMenus();
  QAction* addItem(QMenu* menu, const char* name, const char* caption, const std::function<void()>& handler,
                   std::optional<ViewKind> needs = std::nullopt);
  void updateMenuAvailability();
  ViewFactory factoryFor(ViewKind kind) const;
  ChildView* createView(ViewKind kind);
  void destroyView(ViewKind kind);
  void showEntryView(ViewKind kind);
  // The export menu items: the guard's message, or the dialog at its place.
  void showExport(ViewKind kind, Export_Kind export_kind);
  // Sets Test_Mode and shows the short form test list made in it.
  void showShortTestList(const char* mode);
  // Loads path into a fresh session on a worker thread and puts it in place. Returns false
  // when nothing changed (cancelled, or the file could not be opened).
  bool loadSession(FileFormat type, const QString& path, const QString& caption_prefix);

  Session session_;
  Dialogs& dialogs_;
  QMdiArea* mdi_;
  QTimer* timer_;
  std::map<ViewKind, ViewFactory> factories_;
  std::map<ViewKind, QPointer<ChildView>> open_;
  std::map<QAction*, ViewKind> action_views_;
  bool collecting_ = false;  // the check mark of "Real &Time Data Collection"
  bool loading_ = false;
  bool in_tick_ = false;
};

// The main caption after a load and while collecting.
QString loaded_caption(FileFormat type, const QString& file_name);
QString collecting_caption(const QString& file_name);

}  // namespace morvane
