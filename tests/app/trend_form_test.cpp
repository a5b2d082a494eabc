// SPDX-License-Identifier: MIT
// The trend plot: the series of the ticked sensors, saving, a bad limit file, and live follow.
#include "trend_form.h"

#include "../decoders/decoder_fixture.h"
#include "app_fixture.h"
#include "functest/sensor_limits.h"
#include "trend_chart.h"
#include "view_pass.h"

namespace morvane {
namespace {

using testing::hk_packet, testing::sensor_bytes;

constexpr int kBoardTemperature = 28;  // AD590: limit record 6

// Series and plots are compared by what they hold: number, name, unit and points; columns.
using SeriesValues = std::vector<std::tuple<int, std::string, std::string, std::vector<std::pair<int32_t, double>>>>;
SeriesValues values_of(const std::vector<TrendSeries>& series) {
  SeriesValues values;
  for (const TrendSeries& s : series) values.emplace_back(s.number, s.name, s.unit, s.points());
  return values;
}
std::vector<std::tuple<size_t, int, double, double>> columns_of(const TrendPlot& plot) {
  std::vector<std::tuple<size_t, int, double, double>> columns;
  for (size_t s = 0; s < plot.traces.size(); ++s)
    for (const ColumnExtent& c : plot.traces[s]) columns.emplace_back(s, c.column, c.low, c.high);
  return columns;
}

class TrendWindow : public testing::AppTest {
 protected:
  // One cycle of the simulated instrument in a QM file, and the trend window on it.
  TrendForm* open_on_simulated_file() {
    load_simulated(FileFormat::QM, "t.qm");
    return open_window();
  }
  TrendForm* open_window() {
    window->menu_item("mnuDisplayTrendPlot")->trigger();
    auto* form = shown<TrendForm>(ViewKind::Trend);
    EXPECT_NE(form, nullptr);
    window->frame_of(form)->resize(1000, 640);
    testing::wait_until([&] { return form->chart()->isVisible() && form->chart()->plot_area().width() > 100; });
    return form;
  }
  SeriesValues expected(std::vector<int> sensors, bool cold_junction = true) const {
    return values_of(trend_series(window->session(), sensors, cold_junction));
  }
};

TEST_F(TrendWindow, TheTickedSensorsPlotOnAWorkerThreadAsAtOnceUnlessCancelledSaveAndTakeTheirLimits) {
  TrendForm* form = open_on_simulated_file();
  form->set_sensor_chosen(kBoardTemperature, true);
  form->set_sensor_chosen(22, true);
  EXPECT_EQ(form->chosen_sensors(), (std::vector<int>{22, kBoardTemperature}));
  ASSERT_EQ(values_of(form->series()), expected({22, kBoardTemperature}));
  TrendChart* chart = form->chart();
  EXPECT_TRUE(chart->shows_whole_file());
  EXPECT_EQ(chart->window(), whole_time_window(form->series()));
  EXPECT_EQ(chart->plot().columns, chart->plot_area().width());
  EXPECT_EQ(chart->plot().traces.size(), 2u);

  form->set_sensor_chosen(22, false);
  EXPECT_EQ(values_of(form->series()), expected({kBoardTemperature}));

  // A cancelled reading leaves the series, the ticks and the cold junction box.
  cancel_view_passes_for_testing(true);
  form->set_sensor_chosen(1, true);
  form->cold_junction_box()->setChecked(false);
  cancel_view_passes_for_testing(false);
  EXPECT_EQ(form->chosen_sensors(), (std::vector<int>{kBoardTemperature}));
  EXPECT_TRUE(form->cold_junction_box()->isChecked());
  EXPECT_EQ(values_of(form->series()), expected({kBoardTemperature}));
  EXPECT_EQ(form->chart()->plot().traces.size(), 1u);
  EXPECT_TRUE(form->isEnabled());
  // Not cancelled, the same choice makes its series.
  form->cold_junction_box()->setChecked(false);
  EXPECT_EQ(values_of(form->series()), expected({kBoardTemperature}, false));

  // The plot saved as a picture, the plotted range as text.
  dialogs.files = {QString::fromStdString(dir.path("plot.png")), QString::fromStdString(dir.path("values.txt"))};
  form->findChild<QPushButton*>("SavePicture")->click();
  EXPECT_EQ(QImage(QString::fromStdString(dir.path("plot.png"))).size(), form->chart()->grab().size());
  form->findChild<QPushButton*>("SaveValues")->click();
  const std::string values = testing::read_file(dir.path("values.txt"));
  EXPECT_EQ(values.substr(0, values.find('\r')), "Lander time\t" + form->series()[0].name);

  // A limit file that cannot be read is shown and draws no limits.
  ASSERT_TRUE(form->chart()->limits()[0]);  // cruise phase's
  testing::write_file(test_ranges_path(base, FileFormat::QM, TestMode::EAFT), "\"Item 1\", 1, 2\r\n");
  form->limit_mode_box()->setCurrentText("EAFT");
  EXPECT_TRUE(one_message("", "QM EAFT Mode.txt"));
  EXPECT_FALSE(form->chart()->limits()[0]);

  // A plot made on a worker thread equals the plot made at once.
  chart->set_plot_inline_below(0);  // every plot on the worker thread
  form->set_sensor_chosen(kBoardTemperature, true);
  form->set_sensor_chosen(22, true);
  const TimeWindow whole = chart->window();
  // A plot stopped by a newer window is dropped: what arrives is the newer window's.
  chart->repaint();
  chart->set_window({whole.from, whole.from + whole.span() / 3});
  chart->repaint();
  testing::wait_until([&] { return !chart->plotting(); });
  const TrendPlot background = chart->plot();
  EXPECT_EQ(background.window, chart->window());

  chart->set_plot_inline_below(TrendChart::kPlotInlineBelow);
  chart->set_window(chart->window());  // made again, here
  EXPECT_EQ(background.time_ticks, chart->plot().time_ticks);
  EXPECT_EQ(background.traces.size(), 2u);
  EXPECT_EQ(columns_of(background), columns_of(chart->plot()));
  ASSERT_EQ(background.lanes.size(), chart->plot().lanes.size());
  EXPECT_EQ(background.lanes[0].ticks, chart->plot().lanes[0].ticks);

  // Closed while a plot is in the making, the window goes with its series.
  chart->set_plot_inline_below(0);
  chart->show_whole_file();
  chart->repaint();
  window->close_view(ViewKind::Trend);
  EXPECT_EQ(dialogs.messages.size(), 1u);  // the limit file's
}

TEST_F(TrendWindow, GrowsDuringLiveFollowAndStartsOverOnANewFile) {
  auto frames = [](int count) {
    testing::FrameWriter writer(282);
    for (int f = 1; f <= count; ++f)
      writer.add_frame({hk_packet(1, sensor_bytes({{29, uint8_t(10 * f)}, {28, 150}}), {}, f, 100 + 8 * f)});
    return writer;
  };
  write_log(frames(3));
  window->start_collection();
  TrendForm* form = open_window();
  form->set_sensor_chosen(29, true);
  ASSERT_EQ(form->series()[0].size(), 3u);
  EXPECT_EQ(form->chart()->window(), (TimeWindow{108, 124}));

  grow_log(frames(6));
  EXPECT_EQ(values_of(form->series()), expected({29}));
  EXPECT_EQ(form->chart()->window(), (TimeWindow{108, 148}));  // the whole file, still
  EXPECT_EQ(form->chart()->plot().window, form->chart()->window());

  // Zoomed in on the newest packets, the plot moves on with them.
  form->chart()->set_window({130, 148});
  grow_log(frames(8));
  EXPECT_EQ(form->chart()->window(), (TimeWindow{146, 164}));
  // Zoomed in elsewhere, it stays.
  form->chart()->set_window({110, 120});
  grow_log(frames(9));
  EXPECT_EQ(form->chart()->window(), (TimeWindow{110, 120}));
  EXPECT_EQ(form->series()[0].size(), 9u);

  window->stop_collection();
  ASSERT_TRUE(window->load_file(FileFormat::CSS, QString::fromStdString(log())));
  EXPECT_EQ(window->view(ViewKind::Trend), form);  // kept, with the same sensors
  EXPECT_EQ(values_of(form->series()), expected({29}));
  EXPECT_TRUE(form->chart()->shows_whole_file());
  EXPECT_TRUE(no_message());
}

}  // namespace
}  // namespace morvane
