// SPDX-License-Identifier: MIT
// The short form test list and the evaluation view on the simulated instrument's four tests: the
// Test menu lists them by mode, a double click evaluates one, the faulty tests fail in red exactly
// where they were made to, and the report prints or saves.
#include <algorithm>
#include <cstdio>
#include <set>
#include <string>
#include <utility>

#include <QLabel>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>

#include "app_fixture.h"
#include "functest/short_message_load.h"
#include "functest/short_test.h"
#include "functest/test_ranges.h"
#include "functest/test_report.h"
#include "short_test_list_view.h"
#include "short_test_view.h"
#include "sim/short_form_tests.h"

namespace morvane {
namespace {

using Item = std::pair<std::string, std::string>;  // sub-system, item

bool is_red(const QLabel* label) { return label->palette().color(QPalette::WindowText) == QColor(255, 0, 0); }

// The cells of each sub-system: the control names of its item names and results and the range of
// their indices.
struct Result_Cells {
  const char* sub_system;
  const char* names;
  const char* results;
  int first;
  int count;
};
constexpr Result_Cells kResultCells[] = {
    {"Sensors", "Label3", "Label7", 0, 10},          {"Valves", "Label14", "Label17", 0, 12},
    {"Injector Valves", "Label20", "Label23", 0, 3}, {"Heaters", "Label25", "Label31", 0, 6},
    {"Large Reactors", "Label25", "Label31", 6, 5},  {"Small Reactors", "Label25", "Label31", 11, 5},
    {"L-Valves", "Label25", "Label31", 16, 5},       {"Voltages and RF", "Label10", "Label33", 0, 5},
};

class ShortFormTests : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    sim::Telemetry_Options options;
    options.format = FileFormat::CSS;
    written = sim::write_telemetry(dir.path("cycle.css"), options);
    ASSERT_TRUE(window->loadFile(FileFormat::CSS, QString::fromStdString(dir.path("cycle.css"))));
  }

  // The tests written in a mode, in the order they run.
  std::vector<sim::Written_Test> written_in(std::string_view mode) const {
    std::vector<sim::Written_Test> tests;
    for (const sim::Written_Test& test : written.tests) {
      if (sim::scripted_tests()[static_cast<size_t>(test.scripted)].mode == mode) tests.push_back(test);
    }
    return tests;
  }

  ShortMessageLoad* open_list(const char* menu_item) {
    window->menuItem(menu_item)->trigger();
    return shown<ShortMessageLoad>(ViewKind::ShortTestList);
  }
  // A double click on a line of the list, as the user makes it.
  static void double_click(ShortMessageLoad* list, int row) {
    testing::double_click(list->list(), list->list()->model()->index(row, 0));
  }

  // Opens test `line` (from 1) of a mode's list by a double click; the list has closed.
  ShortTest* open_test(const char* menu_item, int line) {
    ShortMessageLoad* list = open_list(menu_item);
    EXPECT_NE(list, nullptr);
    if (!list) return nullptr;
    double_click(list, line - 1);
    EXPECT_TRUE(testing::wait_until([&] { return window->view(ViewKind::ShortTestList) == nullptr; }));
    return shown<ShortTest>(ViewKind::ShortTest);
  }

  // Every item whose result reads "Fail", checking that exactly those are red and the others
  // read "Pass".
  static std::set<Item> failing_items(const ShortTest& view) {
    std::set<Item> failing;
    for (const Result_Cells& cells : kResultCells) {
      for (int i = cells.first; i < cells.first + cells.count; ++i) {
        const QLabel* name = view.cell(cells.names, i);
        const QLabel* result = view.cell(cells.results, i);
        EXPECT_TRUE(name && result) << cells.results << ' ' << i;
        if (!name || !result) continue;
        if (result->text() == "Fail") {
          EXPECT_TRUE(is_red(result)) << name->text().toStdString();
          failing.insert({cells.sub_system, name->text().toStdString()});
        } else {
          EXPECT_EQ(result->text(), "Pass") << name->text().toStdString();
          EXPECT_FALSE(is_red(result)) << name->text().toStdString();
        }
      }
    }
    return failing;
  }

  sim::Telemetry_Summary written;
};

TEST_F(ShortFormTests, EachModeListsItsTestsUnderTheHeadings) {
  for (const auto& [item, mode] : {std::pair{"mnuTest_Cruise_Phase_mode", "Cruise Phase"},
                                   std::pair{"mnuTest_EAFT_mode", "EAFT"}}) {
    SCOPED_TRACE(mode);
    ShortMessageLoad* list = open_list(item);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(window->session().Test_Mode, mode);
    const std::vector<sim::Written_Test> tests = written_in(mode);
    ASSERT_EQ(tests.size(), 2u);
    ASSERT_EQ(list->list()->count(), 2);
    for (int n = 1; n <= 2; ++n) {
      const sim::Written_Test& test = tests[static_cast<size_t>(n - 1)];
      EXPECT_EQ(list->list()->item(n - 1)->text().toStdString(),
                short_test_line(n, test.sequence_count, test.lander_time));
    }
    EXPECT_EQ(list->label1(), "There were 2 Short form tests collected during this session");
    EXPECT_EQ(list->label2(), "Double click on test to view or Press 'cancel' to exit");
    EXPECT_EQ(list->findChild<QLabel*>("Label3")->text(), "Seq. Count");
    EXPECT_EQ(list->findChild<QLabel*>("Label4")->text(), "Lander time (s)");
    EXPECT_TRUE(QFontInfo(list->list()->font()).fixedPitch());
    EXPECT_EQ(list->cancelButton()->text(), "Cancel");
  }
  EXPECT_TRUE(no_message());
}

TEST_F(ShortFormTests, CancelClosesTheList) {
  ShortMessageLoad* list = open_list("mnuTest_Cruise_Phase_mode");
  ASSERT_NE(list, nullptr);
  QTest::mouseClick(list->cancelButton(), Qt::LeftButton);
  EXPECT_TRUE(testing::wait_until([&] { return window->view(ViewKind::ShortTestList) == nullptr; }));
  EXPECT_EQ(window->view(ViewKind::ShortTest), nullptr);
}

TEST_F(ShortFormTests, ADoubleClickEvaluatesTheHealthyTestAsPassingEverywhere) {
  for (const auto& [item, mode, title] : {std::tuple{"mnuTest_Cruise_Phase_mode", "Cruise Phase", "Cruise Phase Mode"},
                                          std::tuple{"mnuTest_EAFT_mode", "EAFT", "Extended AFT"}}) {
    SCOPED_TRACE(mode);
    const ShortMessageLoad* list = open_list(item);
    ASSERT_NE(list, nullptr);
    const int32_t first_test = list->tests().Test_Index[0];
    ShortTest* view = open_test(item, 1);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(window->session().Current_Science_Index, first_test);
    EXPECT_EQ(view->startLabel()->text().toStdString(), start_label_text(written_in(mode)[0].lander_time));
    EXPECT_EQ(view->modeTitle()->text(), title);
    EXPECT_TRUE(failing_items(*view).empty());
    for (int i = 0; i < 8; ++i) {
      EXPECT_EQ(view->cell("Label2", i)->text(), "Pass") << i;
    }
    EXPECT_EQ(view->overallResult()->text(), "Passed");
    EXPECT_FALSE(is_red(view->overallResult()));
    EXPECT_EQ(view->packetMessage()->text(), "All 8 Science data packets were collected.");
    EXPECT_FALSE(is_red(view->packetMessage()));
  }
  EXPECT_TRUE(no_message());
}

TEST_F(ShortFormTests, TheFaultyTestsFailInRedExactlyWhereTheyWereBroken) {
  for (const auto& [item, mode] : {std::pair{"mnuTest_Cruise_Phase_mode", "Cruise Phase"},
                                   std::pair{"mnuTest_EAFT_mode", "EAFT"}}) {
    SCOPED_TRACE(mode);
    const sim::Scripted_Test& script = sim::scripted_tests()[static_cast<size_t>(written_in(mode)[1].scripted)];
    ASSERT_FALSE(script.healthy);
    const ShortTest* view = open_test(item, 2);
    ASSERT_NE(view, nullptr);

    std::set<Item> wanted;
    for (const sim::Failing_Item& failing : script.failing_items) {
      wanted.insert({std::string(failing.sub_system), std::string(failing.item)});
    }
    EXPECT_EQ(failing_items(*view), wanted);

    std::set<std::string> failing_sub_systems;
    for (int i = 0; i < 8; ++i) {
      const QLabel* result = view->cell("Label2", i);
      EXPECT_EQ(result->text() == "Fail", is_red(result)) << i;
      if (result->text() == "Fail") failing_sub_systems.insert(view->cell("Label1", i)->text().toStdString());
    }
    EXPECT_EQ(failing_sub_systems,
              std::set<std::string>(script.failing_sub_systems.begin(), script.failing_sub_systems.end()));
    EXPECT_EQ(view->overallResult()->text(), "Fail");
    EXPECT_TRUE(is_red(view->overallResult()));
    EXPECT_EQ(view->packetMessage()->text().toStdString(), script.packet_message);
    EXPECT_TRUE(is_red(view->packetMessage()));
    EXPECT_EQ(view->cell("Label11", 4)->text(), QString::number(script.rf_frequency, 'f', 2));
  }
}

TEST_F(ShortFormTests, EveryTabShowsEveryCellOfTheEvaluation) {
  ShortTest* view = open_test("mnuTest_EAFT_mode", 2);
  ASSERT_NE(view, nullptr);
  QStringList tabs;
  for (int t = 0; t < view->tabs()->count(); ++t) tabs << view->tabs()->tabText(t);
  EXPECT_EQ(tabs, (QStringList{"Sensors", "Valves", "Injector V", "Heaters", "L-Reactors", "S-Reactors", "L-Valves",
                               "Summary"}));
  const Short_Test_Evaluation& test = view->evaluation();
  // Each column of cells shows one field of the evaluation's rows, from its first row.
  auto expect_column = [&](const char* name, const auto& rows, auto text_of) {
    for (size_t i = 0; i < rows.size(); ++i) {
      EXPECT_EQ(view->cell(name, static_cast<int>(i))->text().toStdString(), text_of(rows[i])) << name << ' ' << i;
    }
  };
  ASSERT_EQ(test.sensors.size(), 10u);
  expect_column("Label3", test.sensors, [](const Sensor_Row& r) { return r.name; });
  expect_column("Label4", test.sensors, [](const Sensor_Row& r) { return r.initial.text; });
  expect_column("Label5", test.sensors, [](const Sensor_Row& r) { return r.final.text; });
  expect_column("Label6", test.sensors, [](const Sensor_Row& r) { return r.unit; });
  EXPECT_EQ(view->cell("Label6", 0)->text(), "bar");
  ASSERT_EQ(test.valves.size(), 12u);
  expect_column("Label15", test.valves, [](const Item_Row& r) { return r.rise_28v.text; });
  expect_column("Label16", test.valves, [](const Item_Row& r) { return r.rise_5v.text; });
  expect_column("Label20", test.injector_valves, [](const Item_Row& r) { return r.name; });
  expect_column("Label21", test.injector_valves, [](const Item_Row& r) { return r.rise_28v.text; });
  EXPECT_EQ(view->cell("Label20", 2)->text(), "Injector 3");
  std::vector<Item_Row> heated = test.heaters;
  for (const auto* rows : {&test.large_reactors, &test.small_reactors, &test.l_valves}) {
    heated.insert(heated.end(), rows->begin(), rows->end());
  }
  ASSERT_EQ(heated.size(), 21u);
  expect_column("Label25", heated, [](const Item_Row& r) { return r.name; });
  expect_column("Label26", heated, [](const Item_Row& r) { return r.rise_28v.text; });
  expect_column("Label27", heated, [](const Item_Row& r) { return r.rise_5v.text; });
  expect_column("Label28", heated, [](const Item_Row& r) { return r.initial.text; });
  expect_column("Label29", heated, [](const Item_Row& r) { return r.final.text; });
  expect_column("Label30", heated, [](const Item_Row& r) { return r.increase.text; });
  for (int i = 6; i < 16; ++i) {
    EXPECT_EQ(view->cell("Label26", i)->text(), "n.m.") << i;  // reactor currents are not measured
    EXPECT_EQ(view->cell("Label27", i)->text(), "n.m.") << i;
  }
  EXPECT_EQ(view->cell("Label25", 16)->text(), "L-Valve 1");
  expect_column("Label10", test.rails, [](const Rail_Row& r) { return r.name; });
  expect_column("Label11", test.rails, [](const Rail_Row& r) { return r.value.text; });
  expect_column("Label13", test.rails, [](const Rail_Row& r) { return r.unit; });
  EXPECT_EQ(view->cell("Label13", 4)->text(), "kHz");
  bool has_overall_caption = false;
  for (const QLabel* label : view->findChildren<QLabel*>()) has_overall_caption |= label->text() == "Test Result   -  ";
  EXPECT_TRUE(has_overall_caption);
}

TEST_F(ShortFormTests, ADoubleClickReplacesTheOpenEvaluation) {
  const QPointer<ShortTest> first = open_test("mnuTest_Cruise_Phase_mode", 1);
  ASSERT_FALSE(first.isNull());
  ShortTest* second = open_test("mnuTest_Cruise_Phase_mode", 2);
  ASSERT_NE(second, nullptr);
  EXPECT_TRUE(first.isNull());
  EXPECT_EQ(second->startLabel()->text().toStdString(),
            start_label_text(written_in("Cruise Phase")[1].lander_time));
  int evaluations = 0;
  for (const QMdiSubWindow* frame : window->mdiArea()->subWindowList()) {
    evaluations += frame->widget() && frame->widget()->objectName() == "ShortTest";
  }
  EXPECT_EQ(evaluations, 1);
}

TEST_F(ShortFormTests, AMissingLimitFileIsAMessageAndTheListStays) {
  const std::string limits = test_ranges_path(window->session().config.Egse_Path, FileFormat::CSS, TestMode::EAFT);
  ASSERT_EQ(std::remove(limits.c_str()), 0) << limits;
  ShortMessageLoad* list = open_list("mnuTest_EAFT_mode");
  ASSERT_NE(list, nullptr);
  double_click(list, 0);
  EXPECT_TRUE(one_message("File not found"));
  EXPECT_TRUE(dialogs.messages[0].contains("CSS EAFT Mode.txt")) << dialogs.messages[0].toStdString();
  EXPECT_EQ(window->view(ViewKind::ShortTest), nullptr);
  QApplication::processEvents();
  EXPECT_EQ(window->view(ViewKind::ShortTestList), list);
}

TEST_F(ShortFormTests, AnUnknownModeIsAMessageNotAWindow) {
  window->session().Test_Mode = "Descent";
  EXPECT_EQ(window->showView(ViewKind::ShortTestList), nullptr);
  window->session().Current_Science_Index = 1;
  EXPECT_EQ(window->showView(ViewKind::ShortTest), nullptr);
  ASSERT_EQ(dialogs.messages.size(), 2u);
  for (const QString& message : dialogs.messages) {
    EXPECT_TRUE(message.startsWith("Invalid procedure call or argument")) << message.toStdString();
  }
}

TEST_F(ShortFormTests, TheListOfAFileWithoutTestsSaysSoAndIsMadeAnewBeforeItOpensATest) {
  ShortMessageLoad* list = open_list("mnuTest_Cruise_Phase_mode");
  ASSERT_NE(list, nullptr);
  ASSERT_TRUE(load_frames(testing::three_frames(), "other.css"));
  double_click(list, 0);
  EXPECT_EQ(window->view(ViewKind::ShortTest), nullptr);
  EXPECT_EQ(list->list()->count(), 0);
  EXPECT_EQ(list->label1(), "There were no Short form tests collected during this session");
  window->closeView(ViewKind::ShortTestList);
  list = open_list("mnuTest_EAFT_mode");
  EXPECT_EQ(list->list()->count(), 0);
  EXPECT_EQ(list->label2(), "Press 'cancel' to exit");
  EXPECT_TRUE(no_message());
}

TEST_F(ShortFormTests, TheReportSavesAsPdfHtmlOrTextAndPrintsOnThePrinterChosen) {
  ShortTest* view = open_test("mnuTest_Cruise_Phase_mode", 2);
  ASSERT_NE(view, nullptr);
  const Test_Report report = view->report();
  const std::string html = test_report_html(report);
  EXPECT_NE(html.find("2 of 2"), std::string::npos);  // its line in the list
  EXPECT_NE(html.find("class=\"fail\">Fail"), std::string::npos);

  const auto saved = [&](const char* name) {
    const QString file = QString::fromStdString(dir.path(name));
    dialogs.files.push_back(file);
    QTest::mouseClick(view->saveButton(), Qt::LeftButton);
    return testing::read_file(file.toStdString());
  };
  EXPECT_EQ(saved("report.html"), html);
  EXPECT_EQ(saved("report.txt"), test_report_text(report));
  EXPECT_EQ(saved("report.pdf").rfind("%PDF-", 0), 0u);
  dialogs.files.push_back("");  // cancelled: nothing is written
  QTest::mouseClick(view->saveButton(), Qt::LeftButton);
  const QString printed = QString::fromStdString(dir.path("printed.pdf"));
  dialogs.printers = {printed, ""};  // the second print is cancelled
  QTest::mouseClick(view->printButton(), Qt::LeftButton);
  QTest::mouseClick(view->printButton(), Qt::LeftButton);
  EXPECT_EQ(testing::read_file(printed.toStdString()).rfind("%PDF-", 0), 0u);
  EXPECT_EQ(dialogs.count("print"), 2);
  EXPECT_TRUE(no_message());

  dialogs.files.push_back(QString::fromStdString(dir.path("no such folder/report.txt")));
  QTest::mouseClick(view->saveButton(), Qt::LeftButton);
  EXPECT_TRUE(one_message("Path not found"));
}

}  // namespace
}  // namespace morvane
