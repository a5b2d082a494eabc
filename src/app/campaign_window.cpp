// SPDX-License-Identifier: MIT
#include "campaign_window.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSortFilterProxyModel>
#include <QTabWidget>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <atomic>
#include <map>

#include "background_pass.h"
#include "campaign_models.h"
#include "campaign_trend_panel.h"
#include "core/error.h"
#include "core/session.h"
#include "dialogs.h"
#include "functest/short_message_load.h"
#include "settings.h"
#include "short_test_view.h"
#include "workstation.h"

namespace morvane {

namespace {

// The file types offered for an ingest, in the order of the File menu's load items.
constexpr FileFormat kTypes[] = {FileFormat::CSS, FileFormat::GRM, FileFormat::FM, FileFormat::QM, FileFormat::ZEB};
const char* const kTypeCaptions[] = {"&CSS (282 bytes)", "&GRM (280 bytes)", "&FM (280 bytes)", "&QM (282 bytes)",
                                     "&ZEB format"};
const char* const kArchiveFilter = "Campaign archives (*.sqlite);;All files (*)";
// Progress steps of one file of an ingest.
constexpr int64_t kStepsPerFile = 1000;

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// The tests of an archive as the window keeps them: each with its failed items only (a campaign of
// a thousand files holds near a million items, nearly all passed).
std::vector<archive::TestRecord> tests_with_failed_items(archive::Archive& archive) {
  std::vector<archive::TestRecord> tests = archive.tests();
  for (archive::TestRecord& test : tests) {
    std::erase_if(test.items, [](const archive::TestItem& item) { return !item.failed; });
    test.items.shrink_to_fit();
  }
  return tests;
}

std::vector<std::string> std_strings(const QStringList& texts) {
  std::vector<std::string> strings;
  for (const QString& text : texts) strings.push_back(text.toStdString());
  return strings;
}

}  // namespace

CampaignWindow::CampaignWindow(Workstation& workstation)
    : ChildView(workstation, ViewKind::Campaign),
      file_model_(new CampaignFileModel(this)),
      test_model_(new CampaignTestModel(this)),
      event_model_(new CampaignEventModel(this)),
      file_proxy_(new QSortFilterProxyModel(this)),
      test_proxy_(new QSortFilterProxyModel(this)),
      event_proxy_(new QSortFilterProxyModel(this)) {
  file_proxy_->setSourceModel(file_model_);
  test_proxy_->setSourceModel(test_model_);
  event_proxy_->setSourceModel(event_model_);

  status_ = new QLabel(tr("No archive is open: File > Open Archive..."), this);
  status_->setObjectName("ArchiveStatus");
  status_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* add = new QPushButton(tr("Add Files..."), this);
  add->setObjectName("AddFiles");
  auto* refresh_button = new QPushButton(tr("Refresh"), this);
  refresh_button->setObjectName("Refresh");
  connect(add, &QPushButton::clicked, this, [this] { guarded([&] { add_files(); }); });
  connect(refresh_button, &QPushButton::clicked, this, [this] { refresh(); });
  auto* top = new QHBoxLayout;
  top->addWidget(status_, 1);
  top->addWidget(add);
  top->addWidget(refresh_button);

  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("CampaignTabs");
  tabs_->addTab(make_files_tab(), tr("Files"));
  tabs_->addTab(make_tests_tab(), tr("Tests"));
  trend_ = new CampaignTrendPanel(
      session().config,
      [this](const archive::TrendQuery& query) -> std::optional<std::vector<archive::SensorTrend>> {
        std::vector<archive::SensorTrend> trends;
        if (!archive_ || !off_thread(tr("Reading the trend from %1").arg(shown_location()),
                                    [&] { trends = archive_->trend(query); })) {
          return std::nullopt;
        }
        return trends;
      },
      [this](const std::function<void()>& work) { return guarded(work); }, this);
  tabs_->addTab(trend_, tr("Trend"));
  tabs_->addTab(make_events_tab(), tr("Events"));

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(tabs_, 1);
  resize(900, 520);

  // A window restored at start-up shows the archive last opened, once the main window is up.
  QTimer::singleShot(0, this, [this] {
    if (!archive_ && !archive_setting().isEmpty()) open_archive(archive_setting());
  });
}

CampaignWindow::~CampaignWindow() = default;

QTableView* CampaignWindow::make_table(QSortFilterProxyModel* proxy, const std::function<void(int)>& open) {
  auto* view = new QTableView(this);
  proxy->setSortRole(kSortRole);
  view->setModel(proxy);
  view->setSortingEnabled(true);
  view->sortByColumn(0, Qt::AscendingOrder);
  view->setSelectionBehavior(QAbstractItemView::SelectRows);
  view->setSelectionMode(QAbstractItemView::SingleSelection);
  view->setEditTriggers(QAbstractItemView::NoEditTriggers);
  view->setAlternatingRowColors(true);
  view->setWordWrap(false);  // one line a row; the tool tip holds the rest
  view->verticalHeader()->hide();
  view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  view->horizontalHeader()->setStretchLastSection(true);
  connect(view, &QTableView::doubleClicked, this,
          [this, open](const QModelIndex& index) { guarded([&] { open(index.row()); }); });
  // Enter opens the current row as a double click does.
  view->installEventFilter(this);
  openers_[view] = open;
  return view;
}

bool CampaignWindow::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto found = openers_.find(watched);
    if (found != openers_.end() && (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter)) {
      const QModelIndex current = static_cast<QTableView*>(watched)->currentIndex();
      if (current.isValid()) guarded([&] { found->second(current.row()); });
      return true;
    }
  }
  return ChildView::eventFilter(watched, event);
}

QWidget* CampaignWindow::make_files_tab() {
  files_view_ = make_table(file_proxy_, [this](int row) { open_file_row(row); });
  files_view_->setObjectName("FilesTable");
  return files_view_;
}

QWidget* CampaignWindow::make_tests_tab() {
  auto* page = new QWidget(this);
  tests_view_ = make_table(test_proxy_, [this](int row) { open_test_row(row); });
  tests_view_->setObjectName("TestsTable");
  failed_only_ = new QCheckBox(tr("Only tests that did not pass"), page);
  failed_only_->setObjectName("FailedOnly");
  test_proxy_->setFilterKeyColumn(CampaignTestModel::Verdict);
  connect(failed_only_, &QCheckBox::toggled, this, [this](bool only) {
    test_proxy_->setFilterRegularExpression(only ? QRegularExpression(QStringLiteral("^(?!Passed$)"))
                                                 : QRegularExpression());
  });
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(failed_only_);
  layout->addWidget(tests_view_, 1);
  return page;
}

QWidget* CampaignWindow::make_events_tab() {
  auto* page = new QWidget(this);
  search_ = new QLineEdit(page);
  search_->setObjectName("EventSearch");
  search_->setPlaceholderText(tr("Text in the label or the translation (empty: every event)"));
  auto* find = new QPushButton(tr("Search"), page);
  find->setObjectName("SearchEvents");
  connect(search_, &QLineEdit::returnPressed, this, [this] { search_events(); });
  connect(find, &QPushButton::clicked, this, [this] { search_events(); });
  events_view_ = make_table(event_proxy_, [this](int row) { open_event_row(row); });
  events_view_->setObjectName("EventsTable");
  auto* row = new QHBoxLayout;
  row->addWidget(search_, 1);
  row->addWidget(find);
  auto* layout = new QVBoxLayout(page);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(row);
  layout->addWidget(events_view_, 1);
  return page;
}

// --- Archive operations off the window's thread ----------------------------------------------

bool CampaignWindow::off_thread(const QString& label, const std::function<void()>& work) {
  if (busy_) return false;  // one archive operation at a time on the window's connection
  busy_ = true;
  bool finished = false;
  guarded([&] { finished = run_with_progress(this, label, [&](const ProgressFunction&) { work(); }); });
  busy_ = false;
  return finished;
}

bool CampaignWindow::open_archive(const QString& path_or_url) {
  std::shared_ptr<archive::Archive> opened;
  std::vector<archive::FileRecord> files;
  std::vector<archive::TestRecord> tests;
  const std::string where = path_or_url.toStdString();
  if (!off_thread(tr("Opening the archive %1").arg(path_or_url), [&] {
        opened = archive::open_archive(where);
        files = opened->files();
        tests = tests_with_failed_items(*opened);
      })) {
    return false;
  }
  archive_ = std::move(opened);
  location_ = path_or_url;
  set_archive_setting(path_or_url);
  setWindowTitle(tr("Campaign - %1").arg(shown_location()));
  event_model_->set_events({});
  show(std::move(files), std::move(tests));
  return true;
}

void CampaignWindow::refresh() {
  if (!archive_) return;
  std::vector<archive::FileRecord> files;
  std::vector<archive::TestRecord> tests;
  if (off_thread(tr("Reading the archive %1").arg(shown_location()), [&] {
        files = archive_->files();
        tests = tests_with_failed_items(*archive_);
      })) {
    show(std::move(files), std::move(tests));
  }
}

void CampaignWindow::show(std::vector<archive::FileRecord> files, std::vector<archive::TestRecord> tests) {
  int64_t failed = 0;
  for (const archive::TestRecord& test : tests) failed += !(test.overall && *test.overall == "Passed");
  const size_t file_count = files.size();
  const size_t test_count = tests.size();
  file_model_->set_files(std::move(files));
  std::map<int64_t, QString> names;
  for (const archive::FileRecord& file : file_model_->files()) names[file.file_id] = text_of(file.name);
  test_model_->set_file_names(names);
  test_model_->set_tests(std::move(tests));
  event_model_->set_file_names(names);
  for (QTableView* view : {files_view_, tests_view_}) view->resizeColumnsToContents();
  trend_->set_files(file_model_->files());
  status_->setToolTip({});
  status_->setText(tr("%1: %2 files, %3 tests, %4 not passed")
                       .arg(shown_location())
                       .arg(file_count)
                       .arg(test_count)
                       .arg(failed));
}

QString CampaignWindow::shown_location() const {
  // A server's URL is shown without its password.
  return archive_ ? text_of(archive_->database().location()) : location_;
}

// --- Adding files ------------------------------------------------------------------------------

void CampaignWindow::add_files() {
  if (!archive_) return;
  Dialogs& dialogs = workstation().dialogs();
  QStringList captions;
  for (const char* caption : kTypeCaptions) captions << QString::fromUtf8(caption);
  int preselected = -1;
  for (size_t i = 0; i < std::size(kTypes); ++i) {
    if (session().loaded() && kTypes[i] == session().File_Type) preselected = static_cast<int>(i);
  }
  const int choice = dialogs.choose_one(this, tr("The type of the files to add to %1").arg(shown_location()), captions,
                                       preselected);
  if (choice < 0) return;
  const FileFormat type = kTypes[choice];
  const QString tag = QString::fromUtf8(format_tag(type).data());
  const QStringList paths = dialogs.open_file_names(this, tr("Add %1 files to the archive").arg(tag),
                                                  last_folder_setting(),
                                                  tr("All files (*);;%1 files (*.%2)").arg(tag, tag.toLower()));
  if (paths.isEmpty()) return;
  set_last_folder_setting(QFileInfo(paths.constFirst()).absolutePath());
  ingest_files(paths, type);
}

archive::IngestReport CampaignWindow::ingest_files(const QStringList& paths, FileFormat type) {
  archive::IngestReport report;
  if (!archive_ || busy_) return report;
  const std::vector<std::string> files = std_strings(paths);
  const Configuration config = session().config;
  archive::IngestOptions options;
  options.type = type;
  options.byte_reverse = session().Byte_Reverse;
  std::atomic<bool> cancel{false};
  busy_ = true;
  guarded([&] {
    run_with_progress(this, tr("Adding %n file(s) to %1", nullptr, int(paths.size())).arg(shown_location()),
                      [&](const ProgressFunction& progress) {
                        const auto step = [&](int number, int count, const std::string&, int64_t done, int64_t total) {
                          const int64_t within = total > 0 ? done * kStepsPerFile / total : 0;
                          try {
                            progress((number - 1) * kStepsPerFile + within, count * kStepsPerFile);
                          } catch (...) {
                            cancel = true;  // Cancel: the ingest stops after what it committed
                          }
                        };
                        report = archive_->ingest(files, config, options, step, &cancel);
                      });
  });
  busy_ = false;
  refresh();
  status_->setText(status_->text() + tr("; last added %1, skipped %2, failed %3%4")
                                         .arg(report.added.size())
                                         .arg(report.skipped.size())
                                         .arg(report.failed.size())
                                         .arg(report.cancelled ? tr(" (cancelled)") : QString()));
  QStringList skipped;
  for (const archive::SkippedFile& file : report.skipped) skipped << text_of(file.file + ": " + file.reason);
  status_->setToolTip(skipped.join(QLatin1Char('\n')));
  if (!report.failed.empty()) {
    guarded([&] {
      std::string detail = std::to_string(report.failed.size()) + " of the files could not be added to the archive";
      for (const archive::FailedFile& failed : report.failed) detail += "\n" + failed.file + ": " + failed.error;
      morvane::raise(ErrorNumber::DeviceIoError, detail);
    });
  }
  return report;
}

// --- Events --------------------------------------------------------------------------------------

void CampaignWindow::search_events() {
  if (!archive_) return;
  archive::EventQuery query;
  query.contains = search_->text().toStdString();
  std::vector<archive::EventRecord> events;
  if (off_thread(tr("Searching the events of %1").arg(shown_location()), [&] { events = archive_->events(query); })) {
    event_model_->set_events(std::move(events));
    events_view_->resizeColumnsToContents();
  }
}

// --- Double clicks -------------------------------------------------------------------------------

bool CampaignWindow::load_in_workstation(int64_t file_id) {
  const auto& files = file_model_->files();
  const auto found = std::find_if(files.begin(), files.end(), [&](const auto& f) { return f.file_id == file_id; });
  if (found == files.end()) morvane::raise(ErrorNumber::SubscriptOutOfRange, "file " + std::to_string(file_id));
  const std::optional<FileFormat> type = parse_format_tag(found->type);
  if (!type) morvane::raise(ErrorNumber::InvalidProcedureCall, "file type " + found->type);
  const Session& s = session();
  if (s.loaded() && s.File_Name == found->path && s.File_Type == *type && s.Byte_Reverse == found->byte_reverse) {
    return true;
  }
  // The file is read the way it was archived; a load that does not happen keeps the order too.
  const bool byte_reverse = s.Byte_Reverse;
  workstation().set_byte_reverse(found->byte_reverse);
  if (workstation().load_file(*type, text_of(found->path))) return true;
  workstation().set_byte_reverse(byte_reverse);
  return false;
}

void CampaignWindow::open_file_row(int row) {
  const QModelIndex source = file_proxy_->mapToSource(file_proxy_->index(row, 0));
  if (source.isValid()) load_in_workstation(file_model_->file(source.row()).file_id);
}

void CampaignWindow::open_test_row(int row) {
  const QModelIndex source = test_proxy_->mapToSource(test_proxy_->index(row, 0));
  if (!source.isValid()) return;
  const archive::TestRecord test = test_model_->test(source.row());
  if (!load_in_workstation(test.file_id)) return;
  // The test's line in the loaded file's list for its mode, as the Test menu's list would open it.
  session().Test_Mode = test_mode_caption(test.mode).toStdString();
  const ShortTestList list = find_short_tests(session());
  session().Current_Science_Index = science_index_of_line(list, test.number);
  workstation().close_view(ViewKind::ShortTest);
  if (auto* evaluation = qobject_cast<ShortTest*>(workstation().show_view(ViewKind::ShortTest))) {
    evaluation->set_list_position(test.number, list.Test_Count());
  }
}

void CampaignWindow::open_event_row(int row) {
  const QModelIndex source = event_proxy_->mapToSource(event_proxy_->index(row, 0));
  if (!source.isValid()) return;
  const archive::EventRecord event = event_model_->event(source.row());
  if (!load_in_workstation(event.file_id)) return;
  session().Current_Information_Index = event.index;
  workstation().show_entry(ViewKind::Information);
}

// --- The File menu's items ---------------------------------------------------------------------

QString ask_archive_location(QWidget* parent, Dialogs& dialogs) {
  const QString remembered = archive_setting();
  const bool was_server = archive::is_postgres_url(remembered.toStdString());
  const QString folder =
      remembered.isEmpty() || was_server ? last_folder_setting() : QFileInfo(remembered).absoluteFilePath();
  const int choice = dialogs.choose_one(parent, CampaignWindow::tr("Open a campaign archive"),
                                       {CampaignWindow::tr("An &existing SQLite archive file"),
                                        CampaignWindow::tr("A &new SQLite archive file"),
                                        CampaignWindow::tr("A &PostgreSQL server")},
                                       was_server ? 2 : 0);
  const QString filter = CampaignWindow::tr(kArchiveFilter);
  switch (choice) {
    case 0: return dialogs.open_file_name(parent, CampaignWindow::tr("Open a campaign archive"), folder, filter);
    case 1: return dialogs.save_file_name(parent, CampaignWindow::tr("New campaign archive"), folder, filter);
    case 2: {
      const QString url =
          dialogs.ask_text(parent, CampaignWindow::tr("The server's URL (postgresql://user@host:port/database)"),
                          was_server ? remembered : QStringLiteral("postgresql://"));
      if (!url.isEmpty() && !archive::is_postgres_url(url.toStdString())) {
        morvane::raise(ErrorNumber::BadFileName, "a server's URL begins with postgresql:// or postgres://, not " +
                                            url.toStdString());
      }
      return url;
    }
    default: return {};
  }
}

void open_campaign_archive(Workstation& workstation, QWidget* parent) {
  const QString location = ask_archive_location(parent, workstation.dialogs());
  if (location.isEmpty()) return;
  if (auto* window = qobject_cast<CampaignWindow*>(workstation.show_view(ViewKind::Campaign))) {
    window->open_archive(location);
  }
}

void add_files_to_campaign_archive(Workstation& workstation, QWidget* parent) {
  auto* window = qobject_cast<CampaignWindow*>(workstation.show_view(ViewKind::Campaign));
  if (!window) return;
  if (!window->is_open()) {
    QString location = archive_setting();
    if (location.isEmpty()) location = ask_archive_location(parent, workstation.dialogs());
    if (location.isEmpty() || !window->open_archive(location)) return;
  }
  window->add_files();
}

}  // namespace morvane
