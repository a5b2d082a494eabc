// SPDX-License-Identifier: MIT
// The trend plot: the series of the ticked sensors, the cold-junction term, the value axes, the
// mouse, limit lines, saving the plotted range, and live follow.
#include "trend_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QWheelEvent>
#include <filesystem>

#include "../views/decoder_fixture.h"
#include "app_fixture.h"
#include "core/number_text.h"
#include "functest/sensor_limits.h"
#include "trend_chart.h"

namespace morvane {
namespace {

using testing::hk_packet;
using testing::sensor_bytes;

constexpr int kThermocouple = 1;       // Reactor 1: no limit record
constexpr int kBoardTemperature = 28;  // AD590: limit record 6

class TrendWindow : public testing::AppTest {
 protected:
  // One cycle of the simulated instrument in a QM file, and the trend window on it.
  Trend_Form* open_on_simulated_file() {
    load_simulated(FileFormat::QM, "t.qm");
    return open_window();
  }
  Trend_Form* open_window() {
    window->menuItem("mnuDisplayTrendPlot")->trigger();
    auto* form = shown<Trend_Form>(ViewKind::Trend);
    EXPECT_NE(form, nullptr);
    window->frameOf(form)->resize(1000, 640);
    testing::wait_until([&] { return form->chart()->isVisible() && form->chart()->plotArea().width() > 100; });
    return form;
  }
  static void expect_same_series(const std::vector<Trend_Series>& shown, const std::vector<Trend_Series>& expected) {
    ASSERT_EQ(shown.size(), expected.size());
    for (size_t s = 0; s < shown.size(); ++s) {
      EXPECT_EQ(shown[s].number, expected[s].number);
      EXPECT_EQ(shown[s].name, expected[s].name);
      EXPECT_EQ(shown[s].unit, expected[s].unit);
      EXPECT_EQ(shown[s].points, expected[s].points) << "sensor " << shown[s].number;
    }
  }
  static void send_mouse(QWidget* widget, QEvent::Type type, QPoint at, Qt::MouseButton button,
                         Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    const Qt::MouseButtons held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::MouseButtons(button);
    QMouseEvent event(type, at, widget->mapToGlobal(at), button, held, modifiers);
    QApplication::sendEvent(widget, &event);
  }
  static void drag(QWidget* widget, QPoint from, QPoint to, Qt::MouseButton button) {
    send_mouse(widget, QEvent::MouseButtonPress, from, button);
    send_mouse(widget, QEvent::MouseMove, (from + to) / 2, button);
    send_mouse(widget, QEvent::MouseMove, to, button);
    send_mouse(widget, QEvent::MouseButtonRelease, to, button);
  }
};

TEST_F(TrendWindow, TheTickedSensorsPlotTheirValuesOverEveryHousekeepingPacket) {
  Trend_Form* form = open_on_simulated_file();
  EXPECT_EQ(form->windowTitle(), "Trend Plot");
  EXPECT_EQ(form->sensorList()->count(), window->session().config.Sensor_Count());
  EXPECT_TRUE(form->series().empty());
  EXPECT_EQ(form->chart()->message(), "Tick the sensors to plot");

  form->setSensorChosen(kBoardTemperature, true);
  form->setSensorChosen(22, true);
  EXPECT_EQ(form->chosenSensors(), (std::vector<int>{22, kBoardTemperature}));
  const auto expected = trend_series(window->session(), {22, kBoardTemperature}, true);
  ASSERT_EQ(expected[0].points.size(), static_cast<size_t>(window->session().catalogue.HK_Count()));
  expect_same_series(form->series(), expected);

  // What is drawn: each series' lowest and highest value in every pixel column of the whole file.
  TrendChart* chart = form->chart();
  EXPECT_TRUE(chart->showsWholeFile());
  EXPECT_EQ(chart->window(), whole_time_window(expected));
  const Trend_Plot& plot = chart->plot();
  EXPECT_EQ(plot.columns, chart->plotArea().width());
  ASSERT_EQ(plot.traces.size(), 2u);
  for (size_t s = 0; s < 2; ++s) {
    const auto columns = decimate_min_max(expected[s].points, plot.window.from, plot.window.to, plot.columns);
    ASSERT_EQ(plot.traces[s].size(), columns.size());
    for (size_t c = 0; c < columns.size(); ++c) {
      EXPECT_EQ(plot.traces[s][c].column, columns[c].column);
      EXPECT_EQ(plot.traces[s][c].low, columns[c].low);
      EXPECT_EQ(plot.traces[s][c].high, columns[c].high);
    }
  }
  EXPECT_GT(plot.traces[1].size(), static_cast<size_t>(plot.columns / 4));

  form->setSensorChosen(22, false);
  expect_same_series(form->series(), trend_series(window->session(), {kBoardTemperature}, true));
  EXPECT_FALSE(chart->grab().isNull());
  EXPECT_TRUE(no_message());
}

TEST_F(TrendWindow, TheColdJunctionTermComesAndGoesWithItsBox) {
  Trend_Form* form = open_on_simulated_file();
  form->setSensorChosen(kThermocouple, true);
  form->setSensorChosen(kBoardTemperature, true);
  const auto with_term = form->series();
  expect_same_series(with_term, trend_series(window->session(), {kThermocouple, kBoardTemperature}, true));

  form->coldJunctionBox()->setChecked(false);
  expect_same_series(form->series(), trend_series(window->session(), {kThermocouple, kBoardTemperature}, false));
  EXPECT_NE(form->series()[0].points, with_term[0].points);  // the thermocouple moves
  EXPECT_EQ(form->series()[1].points, with_term[1].points);  // the board temperature does not

  form->coldJunctionBox()->setChecked(true);
  expect_same_series(form->series(), with_term);
}

TEST_F(TrendWindow, SensorsShareOneValueAxisOrHaveOneEach) {
  Trend_Form* form = open_on_simulated_file();
  for (const int sensor : {kThermocouple, kBoardTemperature, 29}) form->setSensorChosen(sensor, true);
  TrendChart* chart = form->chart();
  ASSERT_EQ(chart->plot().lanes.size(), 1u);
  EXPECT_EQ(chart->plot().lanes[0].series, (std::vector<size_t>{0, 1, 2}));

  form->separateAxesButton()->setChecked(true);
  EXPECT_TRUE(chart->separateAxes());
  ASSERT_EQ(chart->plot().lanes.size(), 3u);
  for (size_t lane = 0; lane < 3; ++lane) {
    EXPECT_EQ(chart->plot().lanes[lane].series, std::vector<size_t>{lane});
    EXPECT_FALSE(chart->plot().lanes[lane].ticks.empty());
    EXPECT_LT(chart->laneArea(lane).height(), chart->plotArea().height() / 3 + 1);
  }
  EXPECT_LE(chart->laneArea(2).bottom(), chart->plotArea().bottom());

  form->sharedAxisButton()->setChecked(true);
  EXPECT_EQ(chart->plot().lanes.size(), 1u);
}

TEST_F(TrendWindow, TheWheelZoomsADragPansARightDragZoomsToItsBandAndADoubleClickShowsTheWholeFile) {
  Trend_Form* form = open_on_simulated_file();
  form->setSensorChosen(kBoardTemperature, true);
  TrendChart* chart = form->chart();
  const Time_Window whole = chart->window();
  const QRect area = chart->plotArea();
  const QPoint middle = area.center();

  const double under_cursor = chart->timeAt(middle.x());
  QWheelEvent wheel(middle, chart->mapToGlobal(middle), {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                    false);
  QApplication::sendEvent(chart, &wheel);
  EXPECT_FALSE(chart->showsWholeFile());
  EXPECT_NEAR(chart->window().span(), whole.span() * 0.8, 1e-6 * whole.span());
  EXPECT_NEAR(chart->timeAt(middle.x()), under_cursor, 1e-6 * whole.span());

  const Time_Window zoomed = chart->window();
  drag(chart, middle, middle - QPoint(100, 0), Qt::LeftButton);  // the plot follows the mouse to the left
  const double shift = 100 * zoomed.span() / area.width();
  EXPECT_NEAR(chart->window().from, zoomed.from + shift, 1e-6 * zoomed.span());
  EXPECT_NEAR(chart->window().to, zoomed.to + shift, 1e-6 * zoomed.span());

  const double band_from = chart->timeAt(area.left() + 50);
  const double band_to = chart->timeAt(area.left() + 250);
  drag(chart, {area.left() + 250, middle.y()}, {area.left() + 50, middle.y()}, Qt::RightButton);
  EXPECT_NEAR(chart->window().from, band_from, 1e-6);
  EXPECT_NEAR(chart->window().to, band_to, 1e-6);
  EXPECT_EQ(chart->plot().window, chart->window());

  const Time_Window banded = chart->window();
  drag(chart, {area.left() + 100, middle.y()}, {area.left() + 101, middle.y()}, Qt::RightButton);
  EXPECT_EQ(chart->window(), banded);  // a band of a pixel is a slip of the hand

  send_mouse(chart, QEvent::MouseButtonDblClick, middle, Qt::LeftButton);
  EXPECT_TRUE(chart->showsWholeFile());
  EXPECT_EQ(chart->window(), whole);

  chart->zoomAbout(whole.from, 1e-12);
  EXPECT_DOUBLE_EQ(chart->window().span(), kNarrowestTimeWindow);
  form->findChild<QPushButton*>("WholeFile")->click();
  EXPECT_EQ(chart->window(), whole);
}

TEST_F(TrendWindow, LimitLinesStandWhereARecordAppliesAMissingLimitFileIsNoErrorAndABadOneIsShown) {
  Trend_Form* form = open_on_simulated_file();
  form->setSensorChosen(kThermocouple, true);
  form->setSensorChosen(kBoardTemperature, true);
  EXPECT_EQ(form->limitModeBox()->currentText(), "Cruise Phase");
  const std::string path = test_ranges_path(base, FileFormat::QM, TestMode::CruisePhase);
  const auto pair = sensor_limits(read_test_ranges(path), kBoardTemperature);
  ASSERT_TRUE(pair);
  const auto& limits = form->chart()->limits();
  ASSERT_EQ(limits.size(), 2u);
  EXPECT_FALSE(limits[0]);
  ASSERT_TRUE(limits[1]);
  EXPECT_EQ(*limits[1], (Trend_Limits{pair->min, pair->max}));
  // The lane makes room for them.
  EXPECT_LE(form->chart()->plot().lanes[0].low, pair->min);
  EXPECT_GE(form->chart()->plot().lanes[0].high, pair->max);
  EXPECT_TRUE(form->statusLabel()->text().contains("QM Cruise Phase Mode.txt"));

  form->limitModeBox()->setCurrentText("No limits");
  EXPECT_FALSE(form->chart()->limits()[1]);

  std::filesystem::remove(test_ranges_path(base, FileFormat::QM, TestMode::EAFT));
  form->limitModeBox()->setCurrentText("EAFT");
  EXPECT_FALSE(form->limitFile());
  EXPECT_FALSE(form->chart()->limits()[1]);
  EXPECT_TRUE(form->statusLabel()->text().contains("no limit file for QM EAFT"));
  EXPECT_TRUE(no_message());

  // A limit file that cannot be read draws no limits either.
  testing::write_file(test_ranges_path(base, FileFormat::QM, TestMode::EAFT), "\"Item 1\", 1, 2\r\n");
  form->limitModeBox()->setCurrentText("Cruise Phase");
  ASSERT_TRUE(form->chart()->limits()[1]);
  form->limitModeBox()->setCurrentText("EAFT");
  EXPECT_TRUE(one_message(""));
  EXPECT_TRUE(dialogs.messages[0].contains("QM EAFT Mode.txt"));
  EXPECT_FALSE(form->chart()->limits()[1]);
  expect_same_series(form->series(), trend_series(window->session(), {kThermocouple, kBoardTemperature}, true));
}

TEST_F(TrendWindow, SavesThePlotAsAPictureAndThePlottedRangeAsText) {
  Trend_Form* form = open_on_simulated_file();
  form->setSensorChosen(kBoardTemperature, true);
  form->setSensorChosen(29, true);
  TrendChart* chart = form->chart();
  const Time_Window whole = chart->window();
  chart->setWindow({whole.from + whole.span() / 4, whole.from + whole.span() / 2});

  dialogs.files.push_back(QString::fromStdString(dir.path("plot.png")));
  form->findChild<QPushButton*>("SavePicture")->click();
  const QImage picture(QString::fromStdString(dir.path("plot.png")));
  ASSERT_FALSE(picture.isNull());
  EXPECT_EQ(picture.size(), chart->grab().size());

  dialogs.files.push_back(QString::fromStdString(dir.path("values.txt")));
  form->findChild<QPushButton*>("SaveValues")->click();
  const QStringList lines = QString::fromStdString(testing::read_file(dir.path("values.txt"))).split("\r\n");
  const auto& series = form->series();
  ASSERT_GE(lines.size(), 3);
  EXPECT_EQ(lines[0].toStdString(), "Lander time\t" + series[0].name + "\t" + series[1].name);
  EXPECT_EQ(lines[1].toStdString(), "s\t" + series[0].unit + "\t" + series[1].unit);
  int row = 2;
  for (size_t p = 0; p < series[0].points.size(); ++p) {
    const int32_t time = series[0].points[p].first;
    if (time < chart->window().from || time > chart->window().to) continue;
    ASSERT_LT(row, lines.size());
    EXPECT_EQ(lines[row++].toStdString(), std::to_string(time) + "\t" + general_text(series[0].points[p].second) +
                                              "\t" + general_text(series[1].points[p].second));
  }
  EXPECT_GT(row, 10);
  EXPECT_EQ(lines[row], "");  // the last line ended, nothing after it
  EXPECT_EQ(lines.size(), row + 1);

  dialogs.files.push_back("");  // cancelled: nothing written
  form->findChild<QPushButton*>("SaveValues")->click();
  EXPECT_TRUE(no_message());
}

TEST_F(TrendWindow, GrowsDuringLiveFollowAndStartsOverOnANewFile) {
  auto frames = [](int count) {
    testing::FrameWriter writer(282);
    for (int f = 1; f <= count; ++f) {
      writer.add_frame(
          {hk_packet(1, sensor_bytes({{29, static_cast<uint8_t>(10 * f)}, {28, 150}}), {}, f, 100 + 8 * f)});
    }
    return writer;
  };
  write_log(frames(3));
  window->startCollection();
  Trend_Form* form = open_window();
  form->setSensorChosen(29, true);
  ASSERT_EQ(form->series()[0].points.size(), 3u);
  EXPECT_EQ(form->chart()->window(), (Time_Window{108, 124}));

  grow_log(frames(6));
  expect_same_series(form->series(), trend_series(window->session(), {29}, true));
  ASSERT_EQ(form->series()[0].points.size(), 6u);
  EXPECT_EQ(form->chart()->window(), (Time_Window{108, 148}));  // the whole file, still
  EXPECT_EQ(form->chart()->plot().window, form->chart()->window());

  // Zoomed in on the newest packets, the plot moves on with them.
  form->chart()->setWindow({130, 148});
  grow_log(frames(8));
  EXPECT_EQ(form->chart()->window(), (Time_Window{146, 164}));
  // Zoomed in elsewhere, it stays.
  form->chart()->setWindow({110, 120});
  grow_log(frames(9));
  EXPECT_EQ(form->chart()->window(), (Time_Window{110, 120}));
  EXPECT_EQ(form->series()[0].points.size(), 9u);

  window->stopCollection();
  ASSERT_TRUE(window->loadFile(FileFormat::CSS, QString::fromStdString(log())));
  EXPECT_EQ(window->view(ViewKind::Trend), form);  // kept, with the same sensors
  EXPECT_EQ(form->chosenSensors(), std::vector<int>{29});
  expect_same_series(form->series(), trend_series(window->session(), {29}, true));
  EXPECT_TRUE(form->chart()->showsWholeFile());
  EXPECT_TRUE(no_message());
}

TEST_F(TrendWindow, WithoutAFileItSaysSo) {
  Trend_Form* form = open_window();
  form->setSensorChosen(29, true);
  EXPECT_EQ(form->series()[0].points.size(), 0u);
  EXPECT_EQ(form->chart()->message(), "Please load an EGSE data file");
  EXPECT_FALSE(form->chart()->grab().isNull());
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
