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

class Campaign_Event_Model;
class Campaign_File_Model;
class Campaign_Test_Model;
class Campaign_Trend_Panel;
class Dialogs;

// The Campaign window: a campaign archive's files, the history of its short form tests, the
// trend of chosen sensors across its files and a search of its events. The archive is opened,
// read and added to on a worker thread behind a progress dialog, so a slow or unreachable server
// never holds the window; every failure is a message. A double click (or Enter) on a file loads
// it in the workstation with its type and byte order; on a test it also opens that test's
// evaluation; on an event, the information view of that entry.
class Campaign_Window : public ChildView {
  Q_OBJECT

 public:
  explicit Campaign_Window(Workstation& workstation);
  ~Campaign_Window() override;

  // Opens the archive (a SQLite file, created when missing, or a postgresql:// URL), shows its
  // files and tests and remembers it. False when it could not be opened: the message was shown
  // and the window keeps what it showed.
  bool openArchive(const QString& path_or_url);
  bool isOpen() const { return archive_ != nullptr; }
  // The archive as the user named it.
  QString location() const { return location_; }
  // Reads the files and tests again.
  void refresh();

  // Asks for the type and the files, then adds them (ingestFiles).
  void addFiles();
  // Adds the files, read as type in the workstation's byte order, on a worker thread with a
  // progress dialog whose Cancel stops after what was committed; then shows the archive anew.
  // Files that failed are one message. Returns the report (empty when the ingest did not run).
  archive::Ingest_Report ingestFiles(const QStringList& paths, FileFormat type);

  // Lists the events whose label or translation holds the search text (every event for none).
  void searchEvents();

  // What a double click or Enter on a row of the tables does (rows of the sorted views).
  void openFileRow(int row);
  void openTestRow(int row);
  void openEventRow(int row);

  QTabWidget* tabs() const { return tabs_; }
  QTableView* filesTable() const { return files_view_; }
  QTableView* testsTable() const { return tests_view_; }
  QTableView* eventsTable() const { return events_view_; }
  QLineEdit* searchField() const { return search_; }
  QCheckBox* failedOnlyBox() const { return failed_only_; }
  Campaign_Trend_Panel* trendPanel() const { return trend_; }
  QLabel* statusLabel() const { return status_; }
  const Campaign_File_Model& fileModel() const { return *file_model_; }
  const Campaign_Test_Model& testModel() const { return *test_model_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* makeFilesTab();
  QWidget* makeTestsTab();
  QWidget* makeEventsTab();
  QTableView* makeTable(QSortFilterProxyModel* proxy, const std::function<void(int)>& open);
  // Runs work on a worker thread behind a progress dialog; a failure is shown. False when it
  // failed, was cancelled or another archive operation is running.
  bool offThread(const QString& label, const std::function<void()>& work);
  void show(std::vector<archive::File_Record> files, std::vector<archive::Test_Record> tests);
  // Loads an archived file in the workstation, unless it is the file loaded (same path, type
  // and byte order). False when the load did not happen (the message was shown).
  bool loadInWorkstation(int64_t file_id);
  QString shownLocation() const;

  std::shared_ptr<archive::Archive> archive_;
  QString location_;
  bool busy_ = false;
  std::map<QObject*, std::function<void(int)>> openers_;  // each table's double click, for Enter

  Campaign_File_Model* file_model_;
  Campaign_Test_Model* test_model_;
  Campaign_Event_Model* event_model_;
  QSortFilterProxyModel* file_proxy_;
  QSortFilterProxyModel* test_proxy_;
  QSortFilterProxyModel* event_proxy_;
  QTabWidget* tabs_ = nullptr;
  QTableView* files_view_ = nullptr;
  QTableView* tests_view_ = nullptr;
  QTableView* events_view_ = nullptr;
  QLineEdit* search_ = nullptr;
  QCheckBox* failed_only_ = nullptr;
  Campaign_Trend_Panel* trend_ = nullptr;
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
