// SPDX-License-Identifier: MIT
// The Campaign window on an archive of two simulated files (what it holds is the archive's tests').
#include "campaign_window.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include "app_fixture.h"
#include "archive/archive.h"
#include "campaign_models.h"
#include "campaign_trend_panel.h"
#include "functest/short_message_load.h"
#include "settings.h"
#include "short_test_view.h"

namespace morvane {
namespace {

constexpr int kBoardTemperature = 28;
constexpr int kTestsPerCycle = 4;  // two of each mode, the second of each faulty

class CampaignWindowTest : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    archive_path = QString::fromStdString(dir.path("campaign.sqlite"));
    sim::TelemetryOptions options;
    options.format = FileFormat::CSS;
    for (const char* name : {"first.css", "second.css"}) {
      sim::write_telemetry(dir.path(name), options);  // seeds 1 and 2
      files << QString::fromStdString(dir.path(name));
      ++options.seed;
    }
  }

  // The two files archived as a colleague's ingest leaves them, then File > "Open Archive...".
  CampaignWindow* open_archived() {
    archive::IngestOptions options;
    options.type = FileFormat::CSS;
    archive::open_archive(archive_path.toStdString())
        ->ingest({files[0].toStdString(), files[1].toStdString()}, window->session().config, options);
    dialogs.choices.push_back(0);
    dialogs.files.push_back(archive_path);
    window->menu_item("mnuFileOpenArchive")->trigger();
    auto* campaign = shown<CampaignWindow>(ViewKind::Campaign);
    if (campaign) window->frame_of(campaign)->resize(1000, 600);
    return campaign;
  }

  static QString cell(const QTableView* t, int row, int col) { return t->model()->index(row, col).data().toString(); }

  QString archive_path;
  QStringList files;
};

TEST_F(CampaignWindowTest, TheMenuOpensTheArchiveWhoseTablesSearchTrendAndDoubleClicksCoverEveryFileAndTest) {
  CampaignWindow* campaign = open_archived();
  ASSERT_NE(campaign, nullptr);
  EXPECT_EQ(archive_setting(), archive_path);

  QTableView* table = campaign->files_table();
  ASSERT_EQ(table->model()->rowCount(), 2);
  for (int row = 0; row < 2; ++row) {
    EXPECT_EQ(cell(table, row, CampaignFileModel::Path), files[row]);
    EXPECT_EQ(cell(table, row, CampaignFileModel::ByteReverse), "on");
    EXPECT_EQ(cell(table, row, CampaignFileModel::Tests), QString::number(kTestsPerCycle));
  }

  // One row per test; the faulty ones (the second of each mode) fail with their items in red.
  QTableView* tests = campaign->tests_table();
  ASSERT_EQ(tests->model()->rowCount(), 2 * kTestsPerCycle);
  for (int row = 0; row < tests->model()->rowCount(); ++row) {
    const bool faulty = cell(tests, row, CampaignTestModel::Number) == "2";
    EXPECT_EQ(cell(tests, row, CampaignTestModel::Verdict), faulty ? "Fail" : "Passed") << row;
    if (!faulty) continue;
    EXPECT_EQ(tests->model()->index(row, CampaignTestModel::Verdict).data(Qt::ForegroundRole).value<QBrush>().color(),
              QColor(255, 0, 0));
    const QStringList items = cell(tests, row, CampaignTestModel::FailedItems).split(QStringLiteral(", "));
    const bool cruise = cell(tests, row, CampaignTestModel::Mode) == "Cruise Phase";
    EXPECT_TRUE(!cruise || items.contains("V 7")) << items.join('/').toStdString();  // its lost packet had V 7..V 11
    EXPECT_FALSE(items.contains("Valves"));  // the summary's sub-system rows are left out
  }
  // Numbers sort as numbers.
  tests->sortByColumn(CampaignTestModel::LanderTime, Qt::DescendingOrder);
  for (int row = 1; row < tests->model()->rowCount(); ++row) {
    EXPECT_GE(cell(tests, row - 1, CampaignTestModel::LanderTime).toLongLong(),
              cell(tests, row, CampaignTestModel::LanderTime).toLongLong());
  }
  campaign->failed_only_box()->setChecked(true);
  EXPECT_EQ(tests->model()->rowCount(), 4);

  campaign->search_field()->clear();
  campaign->search_events();  // every event
  const QTableView* events = campaign->events_table();
  ASSERT_GT(events->model()->rowCount(), 0);
  const QString word = cell(events, 0, CampaignEventModel::Lines).section(QLatin1Char(' '), 0, 0);
  campaign->search_field()->setText(word);
  QTest::keyClick(campaign->search_field(), Qt::Key_Return);
  ASSERT_GT(events->model()->rowCount(), 0);
  for (int row = 0; row < events->model()->rowCount(); ++row) {
    const QString text = cell(events, row, CampaignEventModel::Lines) + cell(events, row, CampaignEventModel::Label);
    EXPECT_TRUE(text.contains(word, Qt::CaseInsensitive)) << text.toStdString();
  }

  // The trend crosses the files, with their boundaries and the sensor's limits.
  CampaignTrendPanel* trend = campaign->trend_panel();
  campaign->tabs()->setCurrentWidget(trend);
  QApplication::processEvents();
  trend->set_sensor_chosen(kBoardTemperature, true);
  ASSERT_EQ(trend->series().size(), 1u);
  const std::vector<int64_t>& of_file = trend->point_files().front();
  for (const archive::FileRecord& record : campaign->file_model().files())
    EXPECT_EQ(std::count(of_file.begin(), of_file.end(), record.file_id), record.hk_count);
  EXPECT_EQ(trend->chart()->boundaries().size(), 2u);
  ASSERT_EQ(trend->chart()->limits().size(), 1u);
  EXPECT_TRUE(trend->chart()->limits()[0].has_value());  // the board temperature has limits in cruise mode

  // A double click on a file loads it with its type and byte order; on a test, opens its evaluation.
  campaign->tabs()->setCurrentWidget(table->parentWidget());
  QApplication::processEvents();
  window->set_byte_reverse(false);  // archived read low byte first: the load switches back
  table->sortByColumn(CampaignFileModel::Id, Qt::DescendingOrder);
  testing::double_click(table, table->model()->index(0, CampaignFileModel::Name));
  EXPECT_EQ(window->session().File_Name, files[1].toStdString());
  EXPECT_EQ(window->session().File_Type, FileFormat::CSS);
  EXPECT_TRUE(window->menu_item("mnuDisplayByteReverse")->isChecked());
  // Enter on the current row does the same.
  table->setCurrentIndex(table->model()->index(1, 0));
  QTest::keyClick(table, Qt::Key_Return);
  EXPECT_EQ(window->session().File_Name, files[0].toStdString());

  campaign->tabs()->setCurrentWidget(campaign->tests_table()->parentWidget());
  QApplication::processEvents();
  tests->sortByColumn(CampaignTestModel::File, Qt::DescendingOrder);
  int row = 0;  // the faulty EAFT test
  while (row < tests->model()->rowCount() &&
         cell(tests, row, CampaignTestModel::Mode) + cell(tests, row, CampaignTestModel::Number) != "EAFT2") ++row;
  ASSERT_LT(row, tests->model()->rowCount());
  testing::double_click(tests, tests->model()->index(row, CampaignTestModel::Verdict));
  EXPECT_EQ(window->session().File_Name, files[1].toStdString());
  EXPECT_EQ(window->session().Test_Mode, "EAFT");
  auto* evaluation = shown<ShortTest>(ViewKind::ShortTest);
  ASSERT_NE(evaluation, nullptr);
  EXPECT_EQ(window->session().Current_Science_Index, science_index_of_line(find_short_tests(window->session()), 2));
  EXPECT_EQ(evaluation->overall_result()->text(), "Fail");
  EXPECT_NE(window->view(ViewKind::Campaign), nullptr);  // the window stays across the loads

  // A loopback port that takes the connection and says nothing: the open waits on a worker thread.
  const int silent = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  ASSERT_EQ(::bind(silent, reinterpret_cast<sockaddr*>(&address), length), 0);
  ASSERT_EQ(::listen(silent, 4), 0);
  ASSERT_EQ(::getsockname(silent, reinterpret_cast<sockaddr*>(&address), &length), 0);
  int ticks = 0;
  QTimer clock;
  QObject::connect(&clock, &QTimer::timeout, [&] { ++ticks; });
  clock.start(50);
  dialogs.choices.push_back(2);
  dialogs.texts.push_back(QStringLiteral("postgresql://morvane@127.0.0.1:%1/campaign?connect_timeout=1")
                              .arg(ntohs(address.sin_port)));
  window->menu_item("mnuFileOpenArchive")->trigger();
  ::close(silent);
  ASSERT_EQ(dialogs.messages.size(), 1u);  // the loads before showed none
  // Built without PostgreSQL the answer is immediate; with it, the window went on serving events.
  EXPECT_TRUE(dialogs.messages[0].contains("not built") || ticks > 5) << dialogs.messages[0].toStdString();
  EXPECT_EQ(campaign->location(), archive_path);
  EXPECT_EQ(archive_setting(), archive_path);
  EXPECT_EQ(campaign->files_table()->model()->rowCount(), 2);

  // Anything but a server's URL typed is a message too.
  dialogs.choices.push_back(2);
  dialogs.texts.push_back("http://example");
  window->menu_item("mnuFileOpenArchive")->trigger();
  ASSERT_EQ(dialogs.messages.size(), 2u);
  EXPECT_TRUE(dialogs.messages[1].startsWith("Bad file name")) << dialogs.messages[1].toStdString();
}

TEST_F(CampaignWindowTest, AddingFilesAsksTheTypeUsesTheByteOrderAndKeepsTheArchive) {
  // A new archive, then the two files and a damaged one through the menu.
  dialogs.choices = {1, 0};  // a new SQLite file; the files are CSS
  dialogs.files = {archive_path, files[0]};
  window->menu_item("mnuFileAddToArchive")->trigger();
  auto* campaign = shown<CampaignWindow>(ViewKind::Campaign);
  ASSERT_NE(campaign, nullptr);
  window->set_byte_reverse(false);
  const archive::IngestReport report =
      campaign->ingest_files({files[1], QString::fromStdString(dir.path("missing.css"))}, FileFormat::CSS);
  EXPECT_EQ(report.added.size(), 1u);
  EXPECT_TRUE(one_message("Device I/O error: 1 of the files could not be added"));
  ASSERT_EQ(campaign->files_table()->model()->rowCount(), 2);
  EXPECT_EQ(campaign->file_model().file(1).byte_reverse, false);
}

}  // namespace
}  // namespace morvane
