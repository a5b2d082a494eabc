// SPDX-License-Identifier: MIT
#include "sensor_checklist.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QVBoxLayout>

#include "core/configuration.h"
#include "functest/sensor_limits.h"

namespace morvane {

QListWidget* make_sensor_checklist(const Configuration& config, QWidget* parent) {
  auto* list = new QListWidget(parent);
  list->setObjectName("SensorList");
  for (int s = 1; s <= config.Sensor_Count(); ++s) {
    auto* item = new QListWidgetItem(
        QStringLiteral("%1  %2").arg(s, 2).arg(QString::fromStdString(config.sensor(s).Sensor_Name)), list);
    item->setData(Qt::UserRole, s);
    item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsUserCheckable);
    item->setCheckState(Qt::Unchecked);
  }
  list->setMinimumWidth(190);
  return list;
}

QComboBox* add_limit_mode_row(QVBoxLayout& column, QWidget* panel, int mode_index) {
  auto* row = new QHBoxLayout;
  row->addWidget(new QLabel(QObject::tr("Limits"), panel));
  auto* mode = new QComboBox(panel);
  mode->setObjectName("LimitMode");
  mode->addItems({QObject::tr("No limits"), QStringLiteral("Cruise Phase"), QStringLiteral("EAFT")});
  mode->setCurrentIndex(mode_index);
  row->addWidget(mode, 1);
  column.addLayout(row);
  return mode;
}

std::vector<int> checked_sensors(const QListWidget& list) {
  std::vector<int> chosen;
  for (int row = 0; row < list.count(); ++row) {
    const QListWidgetItem* item = list.item(row);
    if (item->checkState() == Qt::Checked) chosen.push_back(item->data(Qt::UserRole).toInt());
  }
  return chosen;
}

void check_sensor(QListWidget& list, int sensor, bool checked) {
  for (int row = 0; row < list.count(); ++row) {
    QListWidgetItem* item = list.item(row);
    if (item->data(Qt::UserRole).toInt() == sensor) item->setCheckState(checked ? Qt::Checked : Qt::Unchecked);
  }
}

std::vector<std::optional<TrendLimits>> series_limits(const std::vector<TrendSeries>& series,
                                                       const std::optional<TestRanges>& ranges) {
  std::vector<std::optional<TrendLimits>> limits;
  for (const TrendSeries& one : series) {
    std::optional<LimitPair> pair;
    if (ranges) pair = sensor_limits(*ranges, one.number);
    limits.push_back(pair ? std::optional<TrendLimits>(TrendLimits{pair->min, pair->max}) : std::nullopt);
  }
  return limits;
}

}  // namespace morvane
