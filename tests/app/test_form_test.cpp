// SPDX-License-Identifier: MIT
// The general tests dialog: a sensor number and a voltage typed by hand, converted as the views
// convert their readings.
#include <string>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "app_fixture.h"
#include "core/conversion.h"
#include "core/number_text.h"
#include "short_test_form_view.h"

namespace morvane {
namespace {

class GeneralTests : public testing::AppTest {
 protected:
  TestForm* open_form() {
    window->menu_item("mnuGeneraltests")->trigger();
    return shown<TestForm>(ViewKind::GeneralTests);
  }
  static void convert(TestForm* form, const QString& sensor, const QString& voltage) {
    form->sensor_field()->setText(sensor);
    form->voltage_field()->setText(voltage);
    QTest::mouseClick(form->convert_button(), Qt::LeftButton);
  }
};

TEST_F(GeneralTests, OpensWithSensorZeroAndTheButtonConvertsAsTheViewsDo) {
  TestForm* form = open_form();
  ASSERT_NE(form, nullptr);
  EXPECT_EQ(form->windowTitle(), "Test Form");
  EXPECT_EQ(form->sensor_field()->text(), "0");
  EXPECT_EQ(form->voltage_field()->text(), "0");
  EXPECT_EQ(form->convert_button()->text(), "Command1");
  EXPECT_TRUE(form->value_field()->text().isEmpty());

  struct Case {
    const char* sensor;
    const char* voltage;
    int number;
  };
  // A pressure gauge, blanks around the number, and a sensor the table does not know.
  for (const Case& c : {Case{"22", "3.5", 22}, Case{" 28 ", "-1.25", 28}, Case{"999", "1", 999}}) {
    SCOPED_TRACE(std::string(c.sensor) + " at " + c.voltage);
    convert(open_form(), c.sensor, c.voltage);
    double voltage = std::stod(c.voltage);
    double value = 0;
    std::string unit;
    Convert_Sensor(window->session().config, c.number, voltage, value, unit);
    EXPECT_EQ(form->value_field()->text().toStdString(), general_text(value));
    EXPECT_EQ(form->unit_field()->text().toStdString(), unit);
    if (c.number == 999) {
      EXPECT_EQ(form->value_field()->text(), "0");
      EXPECT_EQ(form->unit_field()->text(), "");
    }
  }
  EXPECT_TRUE(no_message());
}

TEST_F(GeneralTests, ABadSensorNumberIsAMessageAndChangesNothing) {
  TestForm* form = open_form();
  convert(form, "28", "2.98");
  const QString value = form->value_field()->text();
  const std::pair<const char*, const char*> bad[] = {
      {"abc", "Type mismatch"}, {"1.5", "Type mismatch"}, {"40000", "Overflow"}, {"", "Type mismatch"}};
  for (const auto& [text, description] : bad) {
    dialogs.messages.clear();
    convert(form, text, "1");
    EXPECT_TRUE(one_message(description)) << text;
    EXPECT_EQ(form->value_field()->text(), value) << text;
  }
  EXPECT_NE(window->view(ViewKind::GeneralTests), nullptr);
}

}  // namespace
}  // namespace morvane
