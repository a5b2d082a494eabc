// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>

#include <QString>
#include <QStringList>

#include "archive/archive.h"
#include "child_view.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTabWidget;
class QTableView;

namespace morvane {

class CampaignEventModel;
class CampaignFileModel;
class CampaignTestModel;
class CampaignTrendPanel;
class Dialogs;

// The Campaign window: a campaign archive's files, the history of its short form tests, the
// trend of chosen sensors across its files and a search of its events. The archive is opened,
// read and added to on a worker thread behind a progress dialog, so a slow or unreachable server
// never holds the window; every failure is a message. A double click (or Enter) on a file loads
// it in the workstation with its type and byte order; on a test it also opens that test's
// evaluation; on an event, the information view of that entry.
class CampaignWindow : public ChildView {
  Q_OBJECT

 public:
  explicit CampaignWindow(Workstation& workstation);
  ~CampaignWindow() override;

  // Opens the archive (a SQLite file, created when missing, or a postgresql:// URL), shows its
  // files and tests and remembers it. False when it could not be opened: the message was shown
  // and the window keeps what it showed.
  bool open_archive(const QString& path_or_url);
  bool is_open() const { return archive_ != nullptr; }
  // The archive as the user named it.
  QString location() const { return location_; }
  // Reads the files and tests again.
  void refresh();

  // Asks for the type and the files, then adds them (ingest_files).
  void add_files();
  // Adds the files, read as type in the workstation's byte order, on a worker thread with a
  // progress dialog whose Cancel stops after what was committed; then shows the archive anew.
  // Files that failed are one message. Returns the report (empty when the ingest did not run).
  archive::IngestReport ingest_files(const QStringList& paths, FileFormat type);

  // Lists the events whose label or translation holds the search text (every event for none).
  void search_events();

  // What a double click or Enter on a row of the tables does (rows of the sorted views).
  void open_file_row(int row);
  void open_test_row(int row);
  void open_event_row(int row);

  QTabWidget* tabs() const { return tabs_; }
  QTableView* files_table() const { return files_view_; }
  QTableView* tests_table() const { return tests_view_; }
  QTableView* events_table() const { return events_view_; }
  QLineEdit* search_field() const { return search_; }
  QCheckBox* failed_only_box() const { return failed_only_; }
  CampaignTrendPanel* trend_panel() const { return trend_; }
  QLabel* status_label() const { return status_; }
  const CampaignFileModel& file_model() const { return *file_model_; }
  const CampaignTestModel& test_model() const { return *test_model_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* make_files_tab();
  QWidget* make_tests_tab();
  QWidget* make_events_tab();
  QTableView* make_table(QSortFilterProxyModel* proxy, const std::function<void(int)>& open);
  // Runs work on a worker thread behind a progress dialog; a failure is shown. False when it
  // failed, was cancelled or another archive operation is running.
  bool off_thread(const QString& label, const std::function<void()>& work);
  void show(std::vector<archive::FileRecord> files, std::vector<archive::TestRecord> tests);
  // Loads an archived file in the workstation, unless it is the file loaded (same path, type
  // and byte order). False when the load did not happen (the message was shown).
  bool load_in_workstation(int64_t file_id);
  QString shown_location() const;

  std::shared_ptr<archive::Archive> archive_;
  QString location_;
  bool busy_ = false;
  std::map<QObject*, std::function<void(int)>> openers_;  // each table's double click, for Enter

  CampaignFileModel* file_model_;
  CampaignTestModel* test_model_;
  CampaignEventModel* event_model_;
  QSortFilterProxyModel* file_proxy_;
  QSortFilterProxyModel* test_proxy_;
  QSortFilterProxyModel* event_proxy_;
  QTabWidget* tabs_ = nullptr;
  QTableView* files_view_ = nullptr;
  QTableView* tests_view_ = nullptr;
  QTableView* events_view_ = nullptr;
  QLineEdit* search_ = nullptr;
  QCheckBox* failed_only_ = nullptr;
  CampaignTrendPanel* trend_ = nullptr;
  QLabel* status_ = nullptr;
};

// Asks which archive to open: an existing or a new SQLite file, or a server's URL typed in.
// Empty when the user cancelled.
QString ask_archive_location(QWidget* parent, Dialogs& dialogs);

// File > "Open Archive...": asks for the archive and shows it in the Campaign window.
void open_campaign_archive(Workstation& workstation, QWidget* parent);
// File > "Add Files to Archive...": adds files to the archive the Campaign window shows (the one
// remembered, or one asked for, when it shows none).
void add_files_to_campaign_archive(Workstation& workstation, QWidget* parent);

}  // namespace morvane
