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
#include "dialogs.h"
#include "error_trap.h"
#include "file_drop.h"
#include "help_menu.h"
#include "export/export_presenter.h"
#include "main_workstation.h"
#include "recent_files.h"
#include "settings.h"
#include "status_line.h"
#include "view_keys.h"
#include "view_registry.h"
#include "window_menu.h"

namespace morvane {

namespace {

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
    : QMainWindow(parent),
      dialogs_(dialogs),
      mdi_(new QMdiArea(this)),
      workstation_(std::make_unique<MainWorkstation>(*this)),
      views_(new ViewManager(*workstation_, *mdi_, this)) {
  session_.config = std::move(configuration);
  setObjectName("EGSE_MDI");
  setWindowTitle(kProgramCaption);
  mdi_->setObjectName("MDIClient");
  setCentralWidget(mdi_);
  LiveFollow::Hooks hooks;
  hooks.load_log = [this](const QString& path) {
    return load_session(FileFormat::CSS, path, collecting_caption(path));
  };
  hooks.update_views = [this] { views_->Update_Open_Views(); };
  hooks.busy = [this] { return loading_; };
  follow_ = new LiveFollow(session_, dialogs_, *this, std::move(hooks));
  create_menus();
  connect(views_, &ViewManager::registered, this, &EGSE_MDI::update_menu_availability);
  connect(follow_, &LiveFollow::collecting_changed, this,
          [this](bool on) { menu_item("mnuDisplayRealTimeDataCollection")->setChecked(on); });
  new RecentFilesMenu(*this);
  new FileDrop(*this);
  new WindowMenu(*this);
  new HelpMenu(*this);
  new StatusLine(*this);
  // One for the whole program, however many main windows (the tests make several).
  if (!qApp->findChild<ViewKeys*>()) new ViewKeys(qApp);
  register_standard_views(*views_);
  resize(1100, 760);
}

EGSE_MDI::~EGSE_MDI() {
  follow_->timer()->stop();
  // The child windows go before the session they read and the workstation they ask.
  delete mdi_;
}

QAction* EGSE_MDI::menu_item(const QString& name) const { return findChild<QAction*>(name); }

// --- Menus -------------------------------------------------------------------------------

QAction* EGSE_MDI::addItem(QMenu* menu, const char* name, const char* caption, const std::function<void()>& handler,
                           std::optional<ViewKind> needs) {
  QAction* action = menu->addAction(QString::fromUtf8(caption));
  action->setObjectName(name);
  connect(action, &QAction::triggered, this, [this, handler] { guarded(handler); });
  if (needs) action_views_[action] = *needs;
  return action;
}

void EGSE_MDI::create_menus() {
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
  addItem(file, "mnuFileOpenArchive", "Open &Archive...", [this] { open_campaign_archive(*workstation_, this); },
          ViewKind::Campaign);
  addItem(file, "mnuFileAddToArchive", "Add Files to Archi&ve...",
          [this] { add_files_to_campaign_archive(*workstation_, this); },
          ViewKind::Campaign);
  separator(file, "mnuSeparartor1");
  addItem(file, "mnuExit", "E&xit", [] { QCoreApplication::exit(0); });

  QMenu* display = menu("mnuDisplay", "&Display          ");
  addItem(display, "mnuDisplayConciseData", "&Concise Data", [this] { views_->show_view(ViewKind::Concise); },
          ViewKind::Concise);
  addItem(display, "mnuDisplayRawData", "&Raw Data", [this] { views_->show_view(ViewKind::RawData); },
          ViewKind::RawData);
  addItem(display, "mnuDisplaySUmmary", "&Summary", [this] { views_->show_view(ViewKind::Summary); },
          ViewKind::Summary);
  addItem(display, "mnuDisplayTrendPlot", "Trend &Plot...", [this] { views_->show_view(ViewKind::Trend); },
          ViewKind::Trend);
  addItem(display, "mnuDisplayDataIntegrity", "Data &Integrity", [this] { views_->show_view(ViewKind::Integrity); },
          ViewKind::Integrity);
  separator(display, "mnuSeparator2");
  addItem(display, "mnuDisplayByteReverse", "&Byte Reverse", [this] { mnuDisplayByteReverse_Click(); })
      ->setCheckable(true);
  addItem(display, "mnuDisplayRealTimeDataCollection", "Real &Time Data Collection",
          [this] { follow_->toggle(); })
      ->setCheckable(true);
  addItem(display, "mnuDisplayRealTimeLogFile", "Real Time &Log File...", [this] { follow_->choose_log_file(); });

  QMenu* calibration = menu("mnuCalibration", "&Calibration          ");
  addItem(calibration, "mnuAuxAD590Temp", "&Aux AD590 Temp", [this] { views_->show_view(ViewKind::AD590); },
          ViewKind::AD590);
  addItem(calibration, "mnuCalibrate_Pressure_Sensors", "&Pressure Sensors",
          [this] { views_->show_view(ViewKind::PressureCalibration); }, ViewKind::PressureCalibration);

  QMenu* test = menu("mnuTest", "&Test          ");
  addItem(test, "mnuTest_Cruise_Phase_mode", "&Cruise Phase Mode", [this] { mnuTest_Cruise_Phase_mode_Click(); },
          ViewKind::ShortTestList);
  addItem(test, "mnuTest_EAFT_mode", "&EAFT", [this] { mnuTest_EAFT_mode_Click(); },
          ViewKind::ShortTestList);
  addItem(test, "mnuGeneraltests", "&General Tests", [this] { views_->show_view(ViewKind::GeneralTests); },
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
  update_menu_availability();
}

void EGSE_MDI::update_menu_availability() {
  for (const auto& [action, kind] : action_views_) action->setEnabled(views_->is_registered(kind));
}

bool EGSE_MDI::guarded(const std::function<void()>& work) { return run_trapped(dialogs_, this, work); }

// --- Files -------------------------------------------------------------------------------

bool EGSE_MDI::Open_EGSE_File(FileFormat type) {
  const QString tag = QString::fromUtf8(format_tag(type).data());
  const QString path = dialogs_.open_file_name(this, tr("Open %1 file").arg(tag), last_folder_setting(),
                                             tr("All files (*);;%1 files (*.%2)").arg(tag, tag.toLower()));
  if (path.isEmpty()) return false;  // cancelled: nothing changes
  set_last_folder_setting(QFileInfo(path).absolutePath());
  return load_file(type, path);
}

bool EGSE_MDI::load_file(FileFormat type, const QString& path) {
  if (!load_session(type, path, {})) return false;
  setWindowTitle(loaded_caption(type, path));
  follow_->stop();
  emit file_loaded(type, path);
  return true;
}

bool EGSE_MDI::load_session(FileFormat type, const QString& path, const QString& caption) {
  // The load fills a fresh session on a worker thread while the views go on reading the old
  // one; only a finished load replaces it.
  Session loaded;
  loaded.config = session_.config;
  loaded.Byte_Reverse = session_.Byte_Reverse;
  loaded.Test_Mode = session_.Test_Mode;
  loaded.catalogue.counters[Counter::MemoryChecksum] = session_.catalogue.counters.Memory_Checksum_Count();

  QTimer* timer = follow_->timer();
  const bool timer_was_running = timer->isActive();
  timer->stop();
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
    if (timer_was_running) timer->start();
    show_failure();
    return false;
  }
  session_ = std::move(loaded);
  if (!caption.isEmpty()) setWindowTitle(caption);
  views_->Reload_Open_Views();
  // An error that cut the catalogue short is shown once the entries before it are in place.
  show_failure();
  return true;
}

// --- Byte order --------------------------------------------------------------------------

void EGSE_MDI::set_byte_reverse(bool on) {
  session_.Byte_Reverse = on;
  menu_item("mnuDisplayByteReverse")->setChecked(on);
}

void EGSE_MDI::mnuDisplayByteReverse_Click() {
  session_.Byte_Reverse = !session_.Byte_Reverse;
  menu_item("mnuDisplayByteReverse")->setChecked(session_.Byte_Reverse);
  // The catalogue keeps the positions found under the old order; only the views decode anew.
  views_->Reload_Open_Views();
}

// --- Guarded menu handlers ---------------------------------------------------------------

void EGSE_MDI::show_export(ViewKind kind, ExportKind export_kind) {
  if (const auto refused = export_guard(session_, export_kind)) {
    dialogs_.message(this, QString::fromStdString(*refused));
    return;
  }
  if (ChildView* shown = views_->show_view(kind)) shown->place_at(kExportLeft, kExportTop);
}

void EGSE_MDI::mnuExportHousekeeping_Click() { show_export(ViewKind::ExportHousekeeping, ExportKind::Housekeeping); }

void EGSE_MDI::mnuExportScienceAuxilliary_Click() { show_export(ViewKind::ExportAuxiliary, ExportKind::Auxiliary); }

void EGSE_MDI::mnuExportDockingStationCalibration_Click() {
  show_export(ViewKind::ExportDockingStationCalibration, ExportKind::DS_Calibration);
}

void EGSE_MDI::mnuExportScienceSpectra_Click() { show_export(ViewKind::ExportSpectra, ExportKind::Spectra); }

void EGSE_MDI::mnuTest_Cruise_Phase_mode_Click() { show_short_test_list("Cruise Phase"); }

void EGSE_MDI::mnuTest_EAFT_mode_Click() { show_short_test_list("EAFT"); }

void EGSE_MDI::show_short_test_list(const char* mode) {
  session_.Test_Mode = mode;
  // A list already open was made for its mode and the catalogue of its time: it is made anew.
  views_->close_view(ViewKind::ShortTestList);
  views_->show_view(ViewKind::ShortTestList);
}

void EGSE_MDI::closeEvent(QCloseEvent* event) {
  if (loading_) {
    event->ignore();  // the load's own Cancel ends it first
    return;
  }
  follow_->timer()->stop();
  QMainWindow::closeEvent(event);
}

}  // namespace morvane
