// SPDX-License-Identifier: MIT
// The general tests dialog: a sensor number and a voltage typed by hand, converted as the views
// convert their readings.
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

// What a sensor number and a voltage may be, and what they convert to, are the test form's and the
// conversions' own tests; here, that the button converts what was typed and shows a refusal.
TEST_F(GeneralTests, TheButtonConvertsAsTheViewsDoAndABadSensorNumberIsAMessageThatChangesNothing) {
  TestForm* form = open_form();
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
  EXPECT_TRUE(no_message());

  const QString shown = form->value_field()->text();
  convert(form, "40000", "1");
  EXPECT_TRUE(one_message("Overflow"));
  EXPECT_EQ(form->value_field()->text(), shown);
  EXPECT_NE(window->view(ViewKind::GeneralTests), nullptr);
}

}  // namespace
}  // namespace morvane
