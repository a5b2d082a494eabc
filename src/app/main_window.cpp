// SPDX-License-Identifier: MIT
#include "main_window.h"

#include <QCloseEvent>
#include <QApplication>
#include <QFileInfo>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QTimer>

#include "background_pass.h"
#include "campaign_window.h"
#include "core/windows_path.h"
#include "dialogs.h"
#include "error_trap.h"
#include "file_drop.h"
#include "help_menu.h"
#include "live_follow.h"
#include "export/export_dialog.h"
#include "placeholder_view.h"
#include "recent_files.h"
#include "settings.h"
#include "status_line.h"
#include "twips.h"
#include "view_keys.h"
#include "view_registry.h"
#include "window_menu.h"

namespace morvane {

namespace {

constexpr int kCollectionIntervalMilliseconds = 500;

// The views a load or a byte-order switch rebuilds, and a collection pass updates, in order.
constexpr ViewKind kReloadedViews[] = {ViewKind::RawData, ViewKind::Summary, ViewKind::Concise,
                                       ViewKind::Housekeeping};
// The windows that follow the file without being rebuilt (they keep the user's choices): told
// after the views above.
constexpr ViewKind kFollowingViews[] = {ViewKind::Trend, ViewKind::Integrity};

// Where the export dialogs appear, in twips.
constexpr int kExportLeft = 4000;
constexpr int kExportTop = 1000;

}  // namespace

QString loaded_caption(FileFormat type, const QString& file_name) {
  return QStringLiteral("Morvane EGSE  --- ") + QString::fromUtf8(format_tag(type).data()) +
         QStringLiteral("         File loaded - ") + file_name;
}

QString collecting_caption(const QString& file_name) {
  return QStringLiteral("Morvane EGSE             File loaded - ") + file_name;
}

EGSE_MDI::EGSE_MDI(Configuration configuration, Dialogs& dialogs, QWidget* parent)
    : QMainWindow(parent), dialogs_(dialogs), mdi_(new QMdiArea(this)), timer_(new QTimer(this)) {
  session_.config = std::move(configuration);
  setObjectName("EGSE_MDI");
  setWindowTitle(kProgramCaption);
  mdi_->setObjectName("MDIClient");
  setCentralWidget(mdi_);
  timer_->setObjectName("Timer1");
  timer_->setInterval(kCollectionIntervalMilliseconds);
  connect(timer_, &QTimer::timeout, this, &EGSE_MDI::Timer1_Timer);
  createMenus();
  new Live_Follow(*this);
  new Recent_Files_Menu(*this);
  new File_Drop(*this);
  new Window_Menu(*this);
  new Help_Menu(*this);
  new Status_Line(*this);
  // One for the whole program, however many main windows (the tests make several).
  if (!qApp->findChild<View_Keys*>()) new View_Keys(qApp);
  register_standard_views(*this);
  resize(1100, 760);
}

EGSE_MDI::~EGSE_MDI() {
  timer_->stop();
  // The child windows go before the session they read.
  delete mdi_;
}

QAction* EGSE_MDI::menuItem(const QString& name) const { return findChild<QAction*>(name); }

// --- Menus -------------------------------------------------------------------------------

QAction* EGSE_MDI::addItem(QMenu* menu, const char* name, const char* caption, const std::function<void()>& handler,
                           std::optional<ViewKind> needs) {
  QAction* action = menu->addAction(QString::fromUtf8(caption));
  action->setObjectName(name);
  connect(action, &QAction::triggered, this, [this, handler] { guarded(handler); });
  if (needs) action_views_[action] = *needs;
  return action;
}

void EGSE_MDI::createMenus() {
  auto menu = [this](const char* name, const char* caption) {
    QMenu* m = menuBar()->addMenu(QString::fromUtf8(caption));
    m->setObjectName(name);
    m->menuAction()->setObjectName(name);
    return m;
  };
  auto separator = [](QMenu* m, const char* name) { m->addSeparator()->setObjectName(name); };

  QMenu* file = menu("mnuFile", "&File          ");
  addItem(file, "mnuFileLoad_CSS", "Load &CSS file (282 bytes)", [this] { Open_EGSE_File(FileFormat::CSS); });
  addItem(file, "mnuLoadFile_GRM", "Load &GRM file (280 bytes)", [this] { Open_EGSE_File(FileFormat::GRM); });
  addItem(file, "mnuLoadFile_FM", "Load & FM file (280 bytes)", [this] { Open_EGSE_File(FileFormat::FM); });
  addItem(file, "mnuLoadFile_QM", "Load &QM file (282 bytes)", [this] { Open_EGSE_File(FileFormat::QM); });
  addItem(file, "mnuLoadFile_ZebFormat", "Load File (&ZEB format)", [this] { Open_EGSE_File(FileFormat::ZEB); });
  separator(file, "mnuSeparatorArchive");
  addItem(file, "mnuFileOpenArchive", "Open &Archive...", [this] { open_campaign_archive(*this); }, ViewKind::Campaign);
  addItem(file, "mnuFileAddToArchive", "Add Files to Archi&ve...", [this] { add_files_to_campaign_archive(*this); },
          ViewKind::Campaign);
  separator(file, "mnuSeparartor1");
  addItem(file, "mnuExit", "E&xit", [] { QCoreApplication::exit(0); });

  QMenu* display = menu("mnuDisplay", "&Display          ");
  addItem(display, "mnuDisplayConciseData", "&Concise Data", [this] { showView(ViewKind::Concise); },
          ViewKind::Concise);
  addItem(display, "mnuDisplayRawData", "&Raw Data", [this] { showView(ViewKind::RawData); },
          ViewKind::RawData);
  addItem(display, "mnuDisplaySUmmary", "&Summary", [this] { showView(ViewKind::Summary); },
          ViewKind::Summary);
  addItem(display, "mnuDisplayTrendPlot", "Trend &Plot...", [this] { showView(ViewKind::Trend); }, ViewKind::Trend);
  addItem(display, "mnuDisplayDataIntegrity", "Data &Integrity", [this] { showView(ViewKind::Integrity); },
          ViewKind::Integrity);
  separator(display, "mnuSeparator2");
  addItem(display, "mnuDisplayByteReverse", "&Byte Reverse", [this] { mnuDisplayByteReverse_Click(); })
      ->setCheckable(true);
  addItem(display, "mnuDisplayRealTimeDataCollection", "Real &Time Data Collection",
          [this] { mnuDisplayRealTimeDataCollection_Click(); })
      ->setCheckable(true);
  addItem(display, "mnuDisplayRealTimeLogFile", "Real Time &Log File...", [this] { chooseLogFile(); });

  QMenu* calibration = menu("mnuCalibration", "&Calibration          ");
  addItem(calibration, "mnuAuxAD590Temp", "&Aux AD590 Temp", [this] { showView(ViewKind::AD590); },
          ViewKind::AD590);
  addItem(calibration, "mnuCalibrate_Pressure_Sensors", "&Pressure Sensors",
          [this] { showView(ViewKind::PressureCalibration); }, ViewKind::PressureCalibration);

  QMenu* test = menu("mnuTest", "&Test          ");
  addItem(test, "mnuTest_Cruise_Phase_mode", "&Cruise Phase Mode", [this] { mnuTest_Cruise_Phase_mode_Click(); },
          ViewKind::ShortTestList);
  addItem(test, "mnuTest_EAFT_mode", "&EAFT", [this] { mnuTest_EAFT_mode_Click(); },
          ViewKind::ShortTestList);
  addItem(test, "mnuGeneraltests", "&General Tests", [this] { showView(ViewKind::GeneralTests); },
          ViewKind::GeneralTests);

  QMenu* exports = menu("mnuExport", "&Export           ");
  addItem(exports, "mnuExportHousekeeping", "&Housekeeping", [this] { mnuExportHousekeeping_Click(); },
          ViewKind::ExportHousekeeping);
  addItem(exports, "mnuExportScienceAuxilliary", "Science &Auxilliary", [this] { mnuExportScienceAuxilliary_Click(); },
          ViewKind::ExportAuxiliary);
  addItem(exports, "mnuExportScienceSpectra", "Science &Spectra", [this] { mnuExportScienceSpectra_Click(); },
          ViewKind::ExportSpectra);
  addItem(exports, "mnuExportDockingStationCalibration", "&Docking Station Calibration",
          [this] { mnuExportDockingStationCalibration_Click(); },
          ViewKind::ExportDockingStationCalibration);
  updateMenuAvailability();
}

void EGSE_MDI::updateMenuAvailability() {
  for (const auto& [action, kind] : action_views_) action->setEnabled(isRegistered(kind));
}

bool EGSE_MDI::guarded(const std::function<void()>& work) { return run_trapped(dialogs_, this, work); }

// --- Child windows -----------------------------------------------------------------------

void EGSE_MDI::registerView(ViewKind kind, ViewFactory factory) {
  factories_[kind] = std::move(factory);
  updateMenuAvailability();
}

ChildView* EGSE_MDI::view(ViewKind kind) const {
  const auto found = open_.find(kind);
  return found == open_.end() ? nullptr : found->second.data();
}

QMdiSubWindow* EGSE_MDI::frameOf(const QWidget* view) const {
  return view ? qobject_cast<QMdiSubWindow*>(view->parentWidget()) : nullptr;
}

EGSE_MDI::ViewFactory EGSE_MDI::factoryFor(ViewKind kind) const {
  const auto found = factories_.find(kind);
  if (found != factories_.end()) return found->second;
  if (is_entry_view(kind)) return [kind](EGSE_MDI& mdi) { return new PlaceholderView(mdi, kind); };
  return {};
}

ChildView* EGSE_MDI::createView(ViewKind kind) {
  const ViewFactory factory = factoryFor(kind);
  if (!factory) return nullptr;
  ChildView* child = nullptr;
  if (!guarded([&] { child = factory(*this); }) || !child) return nullptr;
  QMdiSubWindow* frame = mdi_->addSubWindow(child);
  frame->setAttribute(Qt::WA_DeleteOnClose);
  frame->setObjectName(QString::fromUtf8(view_name(kind)) + QStringLiteral("_frame"));
  open_[kind] = child;
  frame->show();
  return child;
}

void EGSE_MDI::destroyView(ViewKind kind) {
  ChildView* open = view(kind);
  open_.erase(kind);
  if (!open) return;
  QWidget* outer = frameOf(open) ? static_cast<QWidget*>(frameOf(open)) : open;
  mdi_->removeSubWindow(outer);
  delete outer;
}

ChildView* EGSE_MDI::showView(ViewKind kind) {
  if (ChildView* open = view(kind)) {
    QMdiSubWindow* frame = frameOf(open);
    if (frame->isMinimized()) frame->showNormal();
    frame->show();
    mdi_->setActiveSubWindow(frame);
    frame->raise();
    return open;
  }
  return createView(kind);
}

void EGSE_MDI::closeView(ViewKind kind) { destroyView(kind); }

void EGSE_MDI::placeView(ChildView* view, int left_twips, int top_twips) {
  if (QMdiSubWindow* frame = frameOf(view)) frame->move(twips_to_pixels(left_twips, top_twips, *this));
}

void EGSE_MDI::showEntryView(ViewKind kind) {
  if (ChildView* shown = showView(kind)) shown->showCurrentEntry();
}

void EGSE_MDI::Reload_Open_Views() {
  for (const ViewKind kind : kReloadedViews) {
    ChildView* open = view(kind);
    if (!open) continue;
    const QRect geometry = frameOf(open)->geometry();
    destroyView(kind);
    if (ChildView* again = createView(kind)) frameOf(again)->setGeometry(geometry);
  }
  for (const ViewKind kind : kFollowingViews) {
    if (ChildView* open = view(kind)) open->sessionReloaded();
  }
}

void EGSE_MDI::Update_Open_Views() {
  for (const ViewKind kind : kReloadedViews) {
    if (ChildView* open = view(kind)) open->updateRealtime();
  }
  for (const ViewKind kind : kFollowingViews) {
    if (ChildView* open = view(kind)) open->updateRealtime();
  }
}

// --- Files -------------------------------------------------------------------------------

bool EGSE_MDI::Open_EGSE_File(FileFormat type) {
  const QString tag = QString::fromUtf8(format_tag(type).data());
  const QString path = dialogs_.openFileName(this, tr("Open %1 file").arg(tag), last_folder_setting(),
                                             tr("All files (*);;%1 files (*.%2)").arg(tag, tag.toLower()));
  if (path.isEmpty()) return false;  // cancelled: nothing changes
  set_last_folder_setting(QFileInfo(path).absolutePath());
  return loadFile(type, path);
}

bool EGSE_MDI::loadFile(FileFormat type, const QString& path) {
  if (!loadSession(type, path, {})) return false;
  setWindowTitle(loaded_caption(type, path));
  stopCollection();
  emit fileLoaded(type, path);
  return true;
}

bool EGSE_MDI::loadSession(FileFormat type, const QString& path, const QString& caption) {
  // The load fills a fresh session on a worker thread while the views go on reading the old
  // one; only a finished load replaces it.
  Session loaded;
  loaded.config = session_.config;
  loaded.Byte_Reverse = session_.Byte_Reverse;
  loaded.Test_Mode = session_.Test_Mode;
  loaded.catalogue.counters[Counter::MemoryChecksum] = session_.catalogue.counters.Memory_Checksum_Count();

  const bool timer_was_running = timer_->isActive();
  timer_->stop();
  loading_ = true;
  menuBar()->setEnabled(false);
  std::exception_ptr failure;
  bool finished = true;
  try {
    finished = run_with_progress(this, tr("Loading %1").arg(path), [&](const ProgressFunction& progress) {
      load_telemetry(loaded, path.toStdString(), type, progress);
    });
  } catch (...) {
    failure = std::current_exception();
  }
  loading_ = false;
  menuBar()->setEnabled(true);

  auto show_failure = [&] {
    if (failure) guarded([&] { std::rethrow_exception(failure); });
  };
  // A cancelled load, or a file that could not be opened, leaves everything as it was.
  if (!finished || (failure && !loaded.file)) {
    if (timer_was_running) timer_->start();
    show_failure();
    return false;
  }
  session_ = std::move(loaded);
  if (!caption.isEmpty()) setWindowTitle(caption);
  Reload_Open_Views();
  // An error that cut the catalogue short is shown once the entries before it are in place.
  show_failure();
  return true;
}

// --- Byte order --------------------------------------------------------------------------

void EGSE_MDI::setByteReverse(bool on) {
  session_.Byte_Reverse = on;
  menuItem("mnuDisplayByteReverse")->setChecked(on);
}

void EGSE_MDI::mnuDisplayByteReverse_Click() {
  session_.Byte_Reverse = !session_.Byte_Reverse;
  menuItem("mnuDisplayByteReverse")->setChecked(session_.Byte_Reverse);
  // The catalogue keeps the positions found under the old order; only the views decode anew.
  Reload_Open_Views();
}

// --- Real-time collection ----------------------------------------------------------------

bool EGSE_MDI::isCollecting() const { return collecting_; }

void EGSE_MDI::mnuDisplayRealTimeDataCollection_Click() {
  if (isCollecting()) {
    stopCollection();
  } else {
    startCollection();
  }
}

void EGSE_MDI::startCollection() {
  const QString path = QString::fromStdString(resolve_windows_path(logFile().toStdString()));
  const bool started = loadSession(FileFormat::CSS, path, collecting_caption(path));
  collecting_ = started || collecting_;
  if (started) findChild<Live_Follow*>()->follow();
  if (started) timer_->start();
  menuItem("mnuDisplayRealTimeDataCollection")->setChecked(collecting_);
}

void EGSE_MDI::stopCollection() {
  timer_->stop();
  collecting_ = false;
  menuItem("mnuDisplayRealTimeDataCollection")->setChecked(false);
}

void EGSE_MDI::Timer1_Timer() {
  if (in_tick_ || loading_) return;
  in_tick_ = true;
  try {
    // A log replaced or deleted since the last pass is not extended: collection starts again, or waits.
    if (!findChild<Live_Follow*>()->logChanged() && extend_catalogue(session_)) {
      Update_Open_Views();
      Save_Catalogue_Counts(session_);
    }
  } catch (const std::exception& error) {
    // A failing pass would fail again on every tick: collection stops before the message.
    stopCollection();
    dialogs_.message(this, error_text(error));
  }
  in_tick_ = false;
}

QString EGSE_MDI::logFile() const { return log_file_setting(); }

void EGSE_MDI::setLogFile(const QString& path) { set_log_file_setting(path); }

void EGSE_MDI::chooseLogFile() {
  const QString current = QString::fromStdString(resolve_windows_path(logFile().toStdString()));
  const QString path = dialogs_.openFileName(this, tr("Log file to follow"), QFileInfo(current).absolutePath(),
                                             tr("All files (*)"));
  if (!path.isEmpty()) setLogFile(path);
}

// --- Guarded menu handlers ---------------------------------------------------------------

void EGSE_MDI::showExport(ViewKind kind, Export_Kind export_kind) {
  if (const auto refused = export_guard(session_, export_kind)) {
    dialogs_.message(this, QString::fromStdString(*refused));
    return;
  }
  if (ChildView* shown = showView(kind)) placeView(shown, kExportLeft, kExportTop);
}

void EGSE_MDI::mnuExportHousekeeping_Click() { showExport(ViewKind::ExportHousekeeping, Export_Kind::Housekeeping); }

void EGSE_MDI::mnuExportScienceAuxilliary_Click() { showExport(ViewKind::ExportAuxiliary, Export_Kind::Auxiliary); }

void EGSE_MDI::mnuExportDockingStationCalibration_Click() {
  showExport(ViewKind::ExportDockingStationCalibration, Export_Kind::DS_Calibration);
}

void EGSE_MDI::mnuExportScienceSpectra_Click() { showExport(ViewKind::ExportSpectra, Export_Kind::Spectra); }

void EGSE_MDI::mnuTest_Cruise_Phase_mode_Click() { showShortTestList("Cruise Phase"); }

void EGSE_MDI::mnuTest_EAFT_mode_Click() { showShortTestList("EAFT"); }

void EGSE_MDI::showShortTestList(const char* mode) {
  session_.Test_Mode = mode;
  // A list already open was made for its mode and the catalogue of its time: it is made anew.
  closeView(ViewKind::ShortTestList);
  showView(ViewKind::ShortTestList);
}

void EGSE_MDI::closeEvent(QCloseEvent* event) {
  if (loading_) {
    event->ignore();  // the load's own Cancel ends it first
    return;
  }
  timer_->stop();
  QMainWindow::closeEvent(event);
}

}  // namespace morvane
