// SPDX-License-Identifier: MIT
#include "startup.h"

#include <QAction>

#include "app_fixture.h"
#include "core/configuration.h"
#include "settings.h"

namespace morvane {
namespace {

using testing::FakeDialogs;

bool main_window_exists() {
  for (QWidget* widget : QApplication::topLevelWidgets()) {
    if (qobject_cast<EGSE_MDI*>(widget)) return true;
  }
  return false;
}

class Startup : public ::testing::Test {
 protected:
  void SetUp() override { QSettings().clear(); }
  void TearDown() override { QSettings().clear(); }
  testing::TempDir dir;
  FakeDialogs dialogs;
};

TEST_F(Startup, ConfigurationComesFirstThenTheWindowThenByteReverse) {
  const std::string base = sim::write_configuration(dir.path("base"));
  const auto window = Main(dialogs, QString::fromStdString(base));
  EXPECT_TRUE(dialogs.messages.empty());
  EXPECT_TRUE(window->isVisible());
  EXPECT_EQ(window->windowTitle(), "Morvane EGSE");
  EXPECT_EQ(window->session().config.Sensor_Count(), 36);
  EXPECT_TRUE(window->session().Byte_Reverse);
  EXPECT_TRUE(window->menuItem("mnuDisplayByteReverse")->isChecked());
  EXPECT_FALSE(window->session().loaded());
  EXPECT_FALSE(window->isCollecting());
}

TEST_F(Startup, AConfigurationProblemIsNamedBeforeTheWindowAndTheUserPicksTheBase) {
  const std::string good = sim::write_configuration(dir.path("good"));
  const std::string broken = sim::write_configuration(dir.path("broken"));
  testing::write_file(broken + "/EGSE_info/Sensors.txt", "36\n\"Oven\",twelve\n");
  std::vector<bool> window_at_message;
  dialogs.on_message = [&] { window_at_message.push_back(main_window_exists()); };
  dialogs.folders.push_back(QString::fromStdString(good));

  const auto window = Main(dialogs, QString::fromStdString(broken));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].contains("Sensors.txt")) << dialogs.messages[0].toStdString();
  EXPECT_TRUE(dialogs.messages[0].contains("line 2")) << dialogs.messages[0].toStdString();
  EXPECT_EQ(dialogs.events, (std::vector<std::string>{"message", "folder"}));
  EXPECT_EQ(window_at_message, std::vector<bool>{false});
  EXPECT_EQ(window->session().config.Egse_Path, good);
  EXPECT_EQ(base_folder_setting(), QString::fromStdString(good));
}

TEST_F(Startup, ARememberedBaseServesWhenThereIsNoPointerFile) {
  const std::string good = sim::write_configuration(dir.path("good"));
  set_base_folder_setting(QString::fromStdString(good));
  testing::write_file(dir.path("elsewhere/readme.txt"), "no pointer file here");
  const auto window = Main(dialogs, QString::fromStdString(dir.path("elsewhere")));
  EXPECT_TRUE(dialogs.messages.empty());
  EXPECT_EQ(window->session().config.Sensor_Count(), 36);
}

TEST_F(Startup, WithoutAnyConfigurationTheProgramRunsWithEmptyTables) {
  testing::write_file(dir.path("empty/readme.txt"), "");
  const auto window = Main(dialogs, QString::fromStdString(dir.path("empty")));
  ASSERT_EQ(dialogs.messages.size(), 1u);
  EXPECT_TRUE(dialogs.messages[0].contains("Morvane_Files.txt")) << dialogs.messages[0].toStdString();
  EXPECT_TRUE(dialogs.messages[0].contains("; Error number 53")) << dialogs.messages[0].toStdString();
  EXPECT_EQ(window->session().config.Sensor_Count(), 0);
  EXPECT_TRUE(window->isVisible());
  EXPECT_TRUE(base_folder_setting().isEmpty());
}

}  // namespace
}  // namespace morvane
