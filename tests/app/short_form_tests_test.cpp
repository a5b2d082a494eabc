// SPDX-License-Identifier: MIT
// The Test menu's windows: short form tests (the second of each mode faulty) and the general tests.
#include <cstdio>

#include "app_fixture.h"
#include "core/conversion.h"
#include "core/number_text.h"
#include "functest/short_message_load.h"
#include "functest/short_test_ranges.h"
#include "functest/short_test_report.h"
#include "short_test_form_view.h"
#include "short_test_list_view.h"
#include "short_test_view.h"
#include "sim/short_form_tests.h"

namespace morvane {
namespace {

bool is_red(const QLabel* label) { return label->palette().color(QPalette::WindowText) == QColor(255, 0, 0); }

class ShortFormTests : public testing::AppTest {
 protected:
  void SetUp() override {
    AppTest::SetUp();
    sim::TelemetryOptions options;
    options.format = FileFormat::CSS;
    written = sim::write_telemetry(dir.path("cycle.css"), options);
    ASSERT_TRUE(window->load_file(FileFormat::CSS, QString::fromStdString(dir.path("cycle.css"))));
  }

  // The tests written in a mode, in the order they run.
  std::vector<sim::WrittenTest> written_in(std::string_view mode) const {
    std::vector<sim::WrittenTest> tests;
    for (const sim::WrittenTest& test : written.tests)
      if (sim::scripted_tests()[static_cast<size_t>(test.scripted)].mode == mode) tests.push_back(test);
    return tests;
  }

  sim::TelemetrySummary written;
};

TEST_F(ShortFormTests, EachModeListsItsTestsInAFixedPitchFontAndAMissingLimitFileIsAMessageThatKeepsIt) {
  for (const auto& [item, mode] : {std::pair{"mnuTest_Cruise_Phase_mode", "Cruise Phase"},
                                   std::pair{"mnuTest_EAFT_mode", "EAFT"}}) {
    SCOPED_TRACE(mode);
    window->menu_item(item)->trigger();
    ShortMessageLoad* list = shown<ShortMessageLoad>(ViewKind::ShortTestList);
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(window->session().Test_Mode, mode);
    ASSERT_EQ(list->list()->count(), 2);
    const sim::WrittenTest second = written_in(mode)[1];
    EXPECT_EQ(list->list()->item(1)->text().toStdString(),
              short_test_line(2, second.sequence_count, second.lander_time));
    EXPECT_EQ(list->label1(), "There were 2 Short form tests collected during this session");
    EXPECT_TRUE(QFontInfo(list->list()->font()).fixedPitch());
  }

  const std::string limits = test_ranges_path(window->session().config.Egse_Path, FileFormat::CSS, TestMode::EAFT);
  ASSERT_EQ(std::remove(limits.c_str()), 0) << limits;
  window->menu_item("mnuTest_EAFT_mode")->trigger();
  ShortMessageLoad* list = shown<ShortMessageLoad>(ViewKind::ShortTestList);
  ASSERT_NE(list, nullptr);
  testing::double_click(list->list(), list->list()->model()->index(0, 0));
  EXPECT_TRUE(one_message("File not found", "CSS EAFT Mode.txt"));
  EXPECT_EQ(window->view(ViewKind::ShortTest), nullptr);
  QApplication::processEvents();
  EXPECT_EQ(window->view(ViewKind::ShortTestList), list);
}

// Which items fail is the evaluation's business; the view shows each failure in red.
TEST_F(ShortFormTests, ADoubleClickedFaultyTestShowsItsFailuresInRedAndItsReportSavesOrPrints) {
  window->menu_item("mnuTest_EAFT_mode")->trigger();
  ShortMessageLoad* list = shown<ShortMessageLoad>(ViewKind::ShortTestList);
  ASSERT_NE(list, nullptr);
  testing::double_click(list->list(), list->list()->model()->index(1, 0));
  EXPECT_TRUE(testing::wait_until([&] { return window->view(ViewKind::ShortTestList) == nullptr; }));
  ShortTest* view = shown<ShortTest>(ViewKind::ShortTest);
  ASSERT_NE(view, nullptr);
  int failures = 0;
  for (int i = 0; i < 8; ++i) {
    const QLabel* result = view->cell("Label2", i);
    EXPECT_EQ(result->text() == "Fail", is_red(result)) << i;
    failures += result->text() == "Fail";
  }
  EXPECT_GT(failures, 0);
  EXPECT_EQ(view->overall_result()->text(), "Fail");
  EXPECT_TRUE(is_red(view->overall_result()));
  const sim::ScriptedTest& script = sim::scripted_tests()[static_cast<size_t>(written_in("EAFT")[1].scripted)];
  EXPECT_EQ(view->packet_message()->text().toStdString(), script.packet_message);
  EXPECT_TRUE(is_red(view->packet_message()));

  const TestReport report = view->report();
  const std::string html = test_report_html(report);
  EXPECT_NE(html.find("2 of 2"), std::string::npos);  // its line in the list
  EXPECT_NE(html.find("class=\"fail\">Fail"), std::string::npos);

  const auto saved = [&](const char* name) {
    dialogs.files.push_back(QString::fromStdString(dir.path(name)));
    QTest::mouseClick(view->save_button(), Qt::LeftButton);
    return testing::read_file(dir.path(name));
  };
  EXPECT_EQ(saved("report.html"), html);
  EXPECT_EQ(saved("report.txt"), test_report_text(report));
  EXPECT_EQ(saved("report.pdf").rfind("%PDF-", 0), 0u);
  dialogs.printers = {QString::fromStdString(dir.path("printed.pdf")), ""};  // the second print is cancelled
  QTest::mouseClick(view->print_button(), Qt::LeftButton);
  QTest::mouseClick(view->print_button(), Qt::LeftButton);
  EXPECT_EQ(testing::read_file(dir.path("printed.pdf")).rfind("%PDF-", 0), 0u);

  dialogs.files.push_back(QString::fromStdString(dir.path("no such folder/report.txt")));
  QTest::mouseClick(view->save_button(), Qt::LeftButton);
  EXPECT_TRUE(one_message("Path not found"));
}

using GeneralTests = testing::AppTest;

void convert(TestForm* form, const QString& sensor, const QString& voltage) {
  form->sensor_field()->setText(sensor);
  form->voltage_field()->setText(voltage);
  QTest::mouseClick(form->convert_button(), Qt::LeftButton);
}

// What may be typed and what it converts to are the form's and conversions' own tests' business.
TEST_F(GeneralTests, TheButtonConvertsAsTheViewsDoAndABadSensorNumberIsAMessageThatChangesNothing) {
  window->menu_item("mnuGeneraltests")->trigger();
  TestForm* form = shown<TestForm>(ViewKind::GeneralTests);
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->sensor_field()->text(), "0");
  convert(form, " 28 ", "-1.25");
  double voltage = -1.25, value = 0;
  std::string unit;
  Convert_Sensor(window->session().config, 28, voltage, value, unit);
  EXPECT_EQ(form->value_field()->text().toStdString(), general_text(value));
  EXPECT_EQ(form->unit_field()->text().toStdString(), unit);
  convert(form, "999", "1");  // a sensor the table does not know: 0, and no unit left from before
  EXPECT_EQ(form->value_field()->text(), "0");
  EXPECT_EQ(form->unit_field()->text(), "");

  convert(form, "40000", "1");
  EXPECT_TRUE(one_message("Overflow"));
  EXPECT_EQ(form->value_field()->text(), "0");
  EXPECT_NE(window->view(ViewKind::GeneralTests), nullptr);
}

}  // namespace
}  // namespace morvane
