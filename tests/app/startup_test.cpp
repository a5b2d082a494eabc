// SPDX-License-Identifier: MIT
// Start-up, the menus' captions, the command line without a display, messages on the error stream.
#include "startup.h"

#include "app_fixture.h"
#include "core/program_version.h"
#include "settings.h"
#include "thrown.h"

namespace morvane {
namespace testing {
// Runs the program after a shell command (tests/support).
ProgramRun run_program_after(const std::string& setup, const std::string& program,
                             const std::vector<std::string>& arguments, const std::string& working_folder = "");
}  // namespace testing

namespace {

TEST(WorkstationCommandLine, HelpAndVersionPrintAndEndWithoutADisplay) {
  const std::string no_display = "unset QT_QPA_PLATFORM DISPLAY WAYLAND_DISPLAY";
  const auto help = testing::run_program_after(no_display, "src/app/morvane-egse", {"--help"});
  EXPECT_EQ(help.status, 0) << help.err;
  EXPECT_PRED2(testing::contains, help.out, "--screenshots <DIR>");
  const auto version = testing::run_program_after(no_display, "src/app/morvane-egse", {"--version"});
  EXPECT_EQ(version.status, 0) << version.err;
  EXPECT_EQ(version.out, std::string("Morvane EGSE ") + kProgramVersion + "\n");
}

TEST(Startup, ConfigurationComesFirstThenTheWindowThenByteReverseAndAProblemIsNamedBeforeTheWindow) {
  QSettings().clear();
  testing::TempDir dir;
  testing::FakeDialogs dialogs;
  auto window = Main(dialogs, QString::fromStdString(sim::write_configuration(dir.path("base"))));
  EXPECT_TRUE(dialogs.messages.empty());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->session().config.Sensor_Count(), 36);
  EXPECT_TRUE(window->session().Byte_Reverse);
  EXPECT_TRUE(window->menu_item("mnuDisplayByteReverse")->isChecked());
  EXPECT_FALSE(window->session().loaded());
  window.reset();

  // A configuration problem is named before the window; the user picks the base.
  const std::string good = sim::write_configuration(dir.path("good"));
  const std::string broken = sim::write_configuration(dir.path("broken"));
  testing::write_file(broken + "/EGSE_info/Sensors.txt", "36\n\"Oven\",twelve\n");
  std::vector<bool> window_at_message;
  dialogs.on_message = [&] {
    const QWidgetList shown = QApplication::topLevelWidgets();
    window_at_message.push_back(std::ranges::any_of(shown, [](QWidget* w) { return qobject_cast<EGSE_MDI*>(w); }));
  };
  dialogs.folders.push_back(QString::fromStdString(good));

  window = Main(dialogs, QString::fromStdString(broken));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].contains("Sensors.txt") && dialogs.messages[0].contains("line 2"))
      << dialogs.messages[0].toStdString();
  EXPECT_EQ(dialogs.events, (std::vector<std::string>{"message", "folder"}));
  EXPECT_EQ(window_at_message, std::vector<bool>{false});
  EXPECT_EQ(window->session().config.Egse_Path, good);
  EXPECT_EQ(base_folder_setting(), QString::fromStdString(good));
}

using MainMenus = testing::AppTest;

// The captions keep their blanks and misspellings; Window and Help come after the legacy menus.
TEST_F(MainMenus, TheQuirkyCaptionsStayAndOnlyTheSwitchesCarryCheckMarks) {
  const std::pair<const char*, const char*> items[] = {
      {"mnuLoadFile_FM", "Load & FM file (280 bytes)"}, {"mnuDisplaySUmmary", "&Summary"},
      {"mnuDisplayByteReverse", "&Byte Reverse"}, {"mnuDisplayRealTimeDataCollection", "Real &Time Data Collection"},
      {"mnuExportScienceAuxilliary", "Science &Auxilliary"}};
  for (const auto& [name, caption] : items) {
    const QAction* item = window->menu_item(name);
    ASSERT_NE(item, nullptr) << name;
    EXPECT_EQ(item->text().toStdString(), caption) << name;
    EXPECT_EQ(item->isCheckable(), item->text().contains("Byte") || item->text().contains("Real")) << name;
  }
  std::vector<std::string> captions;
  for (const QAction* menu : window->menuBar()->actions()) captions.push_back(menu->text().toStdString());
  EXPECT_EQ(captions, (std::vector<std::string>{"&File          ", "&Display          ", "&Calibration          ",
                                                "&Test          ", "&Export           ", "&Window", "&Help"}));
}

TEST(ErrorEcho, AMessageBoxIsAlsoOneLineOnTheErrorStreamAndAWindowlessRunWritesItTheSameWay) {
  QtDialogs dialogs;
  QTimer close_box;  // the user's OK
  QObject::connect(&close_box, &QTimer::timeout, [] {
    if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) box->accept();
  });
  close_box.start(10);
  ::testing::internal::CaptureStderr();
  dialogs.message(nullptr, QStringLiteral("File not found: /data/t.qm; Error number 53"));
  dialogs.message(nullptr, QStringLiteral("No configuration was found.\n\nChoose the base folder."));
  // Each message is a line of its own (the platform may add lines of its own between them).
  const std::string written = "\n" + ::testing::internal::GetCapturedStderr();
  EXPECT_NE(written.find("\nFile not found: /data/t.qm; Error number 53\n"), std::string::npos) << written;
  EXPECT_NE(written.find("\nNo configuration was found. Choose the base folder.\n"), std::string::npos) << written;

  // A windowless run writes its messages the same way.
  ConsoleDialogs console;
  ::testing::internal::CaptureStderr();
  console.message(nullptr, QStringLiteral("Overflow: t.zeb record 3 item 20; Error number 6\n"));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "Overflow: t.zeb record 3 item 20; Error number 6\n");
}

}  // namespace
}  // namespace morvane
