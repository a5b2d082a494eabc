// SPDX-License-Identifier: MIT
#include "summary_model.h"

#include <QColor>

#include "core/error.h"
#include "views/summary_lines.h"

namespace morvane {

SummaryListModel::SummaryListModel(const Session& session, List list, QObject* parent)
    : QAbstractListModel(parent), session_(session), list_(list), rows_(entries().size()) {}

const EntryList& SummaryListModel::entries() const {
  const Catalogue& catalogue = session_.catalogue;
  switch (list_) {
    case List::Housekeeping: return catalogue.HK_List;
    case List::Science: return catalogue.Science_List;
    case List::Information: return catalogue.Information_List;
  }
  return catalogue.HK_List;
}

int SummaryListModel::rowCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : rows_; }

QVariant SummaryListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_) return {};
  if (role != Qt::DisplayRole && role != Qt::ForegroundRole) return {};
  const int32_t i = index.row() + 1;
  try {
    const QString line = QString::fromStdString(line_text(i));
    return role == Qt::DisplayRole ? QVariant(line) : QVariant();
  } catch (const RuntimeError& error) {
    // A number wider than its column: this line cannot be written, the others can.
    if (role == Qt::ForegroundRole) return QColor(Qt::red);
    return QString::number(i) + QStringLiteral("  ") + QString::fromStdString(error.message());
  }
}

std::string SummaryListModel::line_text(int32_t i) const {
  const Packet_Entry& e = entries()[i];
  switch (list_) {
    case List::Housekeeping: return hk_list_line(i, e);
    case List::Science: return science_list_line(i, e);
    case List::Information: return information_list_line(i, e);
  }
  return {};
}

int SummaryListModel::appendNewEntries() {
  const int now = entries().size();
  if (now <= rows_) return 0;
  beginInsertRows(QModelIndex(), rows_, now - 1);
  const int added = now - rows_;
  rows_ = now;
  endInsertRows();
  return added;
}

}  // namespace morvane
