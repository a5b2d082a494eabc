// SPDX-License-Identifier: MIT
#include "trend_form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImage>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QBuffer>
#include <QFile>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <map>

#include "core/error.h"
#include "core/safe_file.h"
#include "core/session.h"
#include "dialogs.h"
#include "export/export_output.h"
#include "export/trend_export.h"
#include "functest/sensor_limits.h"
#include "sensor_checklist.h"
#include "trend_chart.h"
#include "view_pass.h"
#include "workstation.h"

namespace morvane {

namespace {

constexpr int kNoLimits = 0;  // the limit box's first item; then the two test modes
const char* const kNoFileMessage = "Please load an EGSE data file";
const char* const kNoHousekeepingMessage = "The EGSE data file contains no housekeeping packets";
const char* const kNoSensorMessage = "Tick the sensors to plot";

QString text_of(const std::string& text) { return QString::fromStdString(text); }

// The time texts of the status line: whole seconds where the window is wide.
QString seconds_text(double seconds, double span) {
  return QString::number(seconds, 'f', span >= 100 ? 0 : (span >= 10 ? 1 : 2));
}

}  // namespace

TrendForm::TrendForm(Workstation& workstation) : ChildView(workstation, ViewKind::Trend) {
  chart_ = new TrendChart(this);
  status_ = new QLabel(this);
  status_->setObjectName("StatusLabel");
  status_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  auto* plot_side = new QVBoxLayout;
  plot_side->addWidget(chart_, 1);
  plot_side->addWidget(status_);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(make_controls());
  layout->addLayout(plot_side, 1);

  connect(chart_, &TrendChart::window_changed, this, [this] { show_status(); });
  // A limit file that cannot be read is shown and leaves the plot without limits.
  guarded([&] { read_limit_file(); });
  guarded([&] { remake_series(); });
  chart_->show_whole_file();
  show_status();
}

// The chart may be plotting the series on a worker thread: it stops before they go.
TrendForm::~TrendForm() { chart_->stop_plotting(); }

QWidget* TrendForm::make_controls() {
  auto* panel = new QWidget(this);
  auto* column = new QVBoxLayout(panel);
  column->setContentsMargins(0, 0, 0, 0);

  column->addWidget(new QLabel(tr("Sensors"), panel));
  sensors_ = make_sensor_checklist(session().config, panel);
  column->addWidget(sensors_, 1);
  connect(sensors_, &QListWidget::itemChanged, this, [this] { guarded([&] { remake_series(); }); });

  cold_junction_ = new QCheckBox(tr("Cold-junction term"), panel);
  cold_junction_->setObjectName("ColdJunction");
  cold_junction_->setToolTip(
      tr("Add the cold-junction term to the thermocouple channels, as the housekeeping page does"));
  cold_junction_->setChecked(true);
  column->addWidget(cold_junction_);
  connect(cold_junction_, &QCheckBox::toggled, this, [this] { guarded([&] { remake_series(true); }); });

  auto* axes = new QGroupBox(tr("Value axes"), panel);
  auto* axes_layout = new QVBoxLayout(axes);
  shared_axis_ = new QRadioButton(tr("Shared"), axes);
  shared_axis_->setObjectName("SharedAxis");
  separate_axes_ = new QRadioButton(tr("One per sensor"), axes);
  separate_axes_->setObjectName("SeparateAxes");
  shared_axis_->setChecked(true);
  axes_layout->addWidget(shared_axis_);
  axes_layout->addWidget(separate_axes_);
  column->addWidget(axes);
  connect(separate_axes_, &QRadioButton::toggled, chart_, &TrendChart::set_separate_axes);

  limit_mode_ = add_limit_mode_row(*column, panel, session().Test_Mode == "EAFT" ? 2 : 1);
  connect(limit_mode_, &QComboBox::currentIndexChanged, this, [this] {
    guarded([&] { read_limit_file(); });
    plot_series();
  });

  whole_file_ = new QPushButton(tr("Whole File"), panel);
  whole_file_->setObjectName("WholeFile");
  whole_file_->setToolTip(tr("Show every packet again (or double-click the plot)"));
  save_picture_ = new QPushButton(tr("Save Picture..."), panel);
  save_picture_->setObjectName("SavePicture");
  save_text_ = new QPushButton(tr("Save Values..."), panel);
  save_text_->setObjectName("SaveValues");
  for (QPushButton* button : {whole_file_, save_picture_, save_text_}) column->addWidget(button);
  connect(whole_file_, &QPushButton::clicked, chart_, &TrendChart::show_whole_file);
  connect(save_picture_, &QPushButton::clicked, this, [this] { guarded([&] { save_picture(); }); });
  connect(save_text_, &QPushButton::clicked, this, [this] { guarded([&] { save_text(); }); });

  auto* hint = new QLabel(tr("Wheel: zoom\nDrag: pan\nRight drag: zoom to a band\nDouble click: whole file"), panel);
  hint->setEnabled(false);
  column->addWidget(hint);
  return panel;
}

std::vector<int> TrendForm::chosen_sensors() const { return checked_sensors(*sensors_); }

void TrendForm::set_sensor_chosen(int sensor, bool chosen) { check_sensor(*sensors_, sensor, chosen); }

bool TrendForm::cold_junction_chosen() const { return cold_junction_->isChecked(); }

void TrendForm::remake_series(bool anew) {
  // Series already plotted are kept; only the newly ticked sensors are read, on a worker thread
  // (a million packets a sensor take a moment). All of them then hold the same packets.
  const std::vector<int> wanted = chosen_sensors();
  auto plotted = [&](int sensor) {
    return !anew &&
           std::any_of(series_.begin(), series_.end(), [&](const TrendSeries& s) { return s.number == sensor; });
  };
  std::vector<int> missing;
  for (const int sensor : wanted) {
    if (!plotted(sensor)) missing.push_back(sensor);
  }
  std::vector<TrendSeries> added;
  if (!missing.empty()) {
    const Configuration config = session().config;  // the worker's own tables
    const bool cold_junction = cold_junction_chosen();
    bool made = false;
    try {
      made = run_view_pass(*this, tr("Reading the sensors"), [&](const ProgressFunction& progress) {
        added = trend_series(session(), missing, cold_junction,
                             {anew ? nullptr : &series_, &config, progress});
      });
    } catch (...) {
      show_chosen_series(anew);
      throw;
    }
    if (!made) {  // cancelled: the window stays as it was
      show_chosen_series(anew);
      return;
    }
  }
  chart_->stop_plotting();
  std::vector<TrendSeries> kept;
  if (!anew) {
    for (TrendSeries& one : series_) {
      if (std::find(wanted.begin(), wanted.end(), one.number) != wanted.end()) kept.push_back(std::move(one));
    }
  }
  extend_trend_series(session(), kept, cold_junction_chosen());
  std::map<int, TrendSeries> by_number;
  for (TrendSeries& one : kept) by_number.emplace(one.number, std::move(one));
  for (TrendSeries& one : added) by_number.emplace(one.number, std::move(one));
  series_.clear();
  for (const int sensor : wanted) series_.push_back(std::move(by_number.at(sensor)));
  plot_series();
}

void TrendForm::show_chosen_series(bool anew) {
  // The ticks and the cold-junction box go back to what the series plotted were made with.
  const QSignalBlocker quiet_list(sensors_);
  for (int row = 0; row < sensors_->count(); ++row) {
    QListWidgetItem* item = sensors_->item(row);
    const int sensor = item->data(Qt::UserRole).toInt();
    const bool shown =
        std::any_of(series_.begin(), series_.end(), [&](const TrendSeries& s) { return s.number == sensor; });
    item->setCheckState(shown ? Qt::Checked : Qt::Unchecked);
  }
  if (anew && !series_.empty()) {
    const QSignalBlocker quiet_box(cold_junction_);
    cold_junction_->setChecked(!cold_junction_->isChecked());
  }
}

void TrendForm::read_limit_file() {
  ranges_.reset();
  const int mode = limit_mode_->currentIndex();
  if (mode == kNoLimits || !session().loaded()) return;
  ranges_ = read_test_ranges_if_present(session().config.Egse_Path, session().File_Type,
                                        mode == 1 ? TestMode::CruisePhase : TestMode::EAFT);
}

void TrendForm::plot_series() {
  std::vector<std::optional<TrendLimits>> limits = series_limits(series_, ranges_);
  if (!session().loaded()) {
    chart_->set_message(QString::fromUtf8(kNoFileMessage));
  } else if (session().catalogue.HK_Count() == 0) {
    chart_->set_message(QString::fromUtf8(kNoHousekeepingMessage));
  } else {
    chart_->set_message(QString::fromUtf8(kNoSensorMessage));
  }
  chart_->set_series(&series_, std::move(limits));
}

void TrendForm::show_status() {
  const int32_t packets = session().catalogue.HK_Count();
  QString text = packets == 1 ? tr("1 housekeeping packet") : tr("%1 housekeeping packets").arg(packets);
  if (!series_.empty() && packets > 0) {
    const TimeWindow window = chart_->window();
    text += tr("; lander time %1 s to %2 s shown")
                .arg(seconds_text(window.from, window.span()), seconds_text(window.to, window.span()));
  }
  if (limit_mode_->currentIndex() != kNoLimits && session().loaded()) {
    text += ranges_ ? tr("; limits from %1").arg(QFileInfo(text_of(ranges_->path)).fileName())
                    : tr("; no limit file for %1 %2")
                          .arg(QString::fromUtf8(format_tag(session().File_Type).data()), limit_mode_->currentText());
  }
  status_->setText(text);
}

void TrendForm::update_realtime() {
  guarded([&] {
    chart_->stop_plotting();
    extend_trend_series(session(), series_, cold_junction_chosen());
    plot_series();
  });
}

void TrendForm::session_reloaded() {
  chart_->stop_plotting();
  series_.clear();  // of the old file
  guarded([&] { read_limit_file(); });
  guarded([&] { remake_series(true); });
  chart_->show_whole_file();
}

QString TrendForm::suggested_file(const QString& ending) const {
  const QFileInfo telemetry(text_of(session().File_Name));
  if (session().File_Name.empty()) return tr("trend") + ending;
  return telemetry.absoluteDir().filePath(telemetry.completeBaseName() + tr(" trend") + ending);
}

void TrendForm::save_picture() {
  const QString path = workstation().dialogs().save_file_name(this, tr("Save the trend plot as a picture"),
                                                    suggested_file(QStringLiteral(".png")), tr("PNG image (*.png)"));
  if (path.isEmpty()) return;  // cancelled
  chart_->plot();  // the whole plot, should it still be in the making
  const QImage picture = chart_->grab().toImage();
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  if (!picture.save(&buffer, "PNG")) {
    morvane::raise(ErrorNumber::DeviceIoError, "the picture " + path.toStdString() + " (cannot make the PNG image)");
  }
  // Replaces the chosen file only once the whole picture is on the disk; a link is followed.
  replace_file(QFile::encodeName(path).toStdString(), std::string_view(content.constData(), size_t(content.size())),
               {}, PartialContent::Nothing);
}

void TrendForm::save_text() {
  const QString path = workstation().dialogs().save_file_name(
      this, tr("Save the plotted values"), suggested_file(QStringLiteral(".txt")),
      tr("Text, tab-delimited (*.txt);;Comma-separated values (*.csv);;Excel workbook (*.xlsx)"));
  if (path.isEmpty()) return;  // cancelled
  const std::string name = path.toStdString();
  const char delimiter = path.endsWith(QStringLiteral(".csv"), Qt::CaseInsensitive) ? ',' : '\t';
  const auto output = open_export_output(name, export_file_type(name), delimiter, "Trend");
  const TimeWindow window = chart_->window();
  try {
    write_trend_table(series_, window.from, window.to, *output);
    output->finish();
  } catch (...) {
    output->abandon();
  }
}

}  // namespace morvane
