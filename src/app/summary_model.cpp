// SPDX-License-Identifier: MIT
#include "summary_model.h"

#include <algorithm>

#include <QColor>

#include "core/error.h"
#include "decoders/summary_lines.h"

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

int SummaryListModel::rowCount(const QModelIndex& parent) const {
  if (parent.isValid()) return 0;
  return only_matches_ ? static_cast<int>(matches_.size()) : rows_;
}

QVariant SummaryListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  if (role != Qt::DisplayRole && role != Qt::ForegroundRole) return {};
  const int32_t i = entry_number(index.row());
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

int SummaryListModel::append_new_entries() {
  const int now = entries().size();
  if (now <= rows_) return 0;
  const int added = now - rows_;
  if (only_matches_) {
    rows_ = now;  // shown once the find bar has found them matching
    return added;
  }
  beginInsertRows(QModelIndex(), rows_, now - 1);
  rows_ = now;
  endInsertRows();
  return added;
}

int32_t SummaryListModel::entry_number(int row) const {
  return only_matches_ ? matches_[static_cast<size_t>(row)] : row + 1;
}

int SummaryListModel::row_of(int32_t entry) const {
  if (!only_matches_) return entry >= 1 && entry <= rows_ ? entry - 1 : -1;
  const auto found = std::lower_bound(matches_.begin(), matches_.end(), entry);
  return found != matches_.end() && *found == entry ? static_cast<int>(found - matches_.begin()) : -1;
}

void SummaryListModel::show_only_matches(bool only) {
  if (only == only_matches_) return;
  beginResetModel();
  only_matches_ = only;
  endResetModel();
}

void SummaryListModel::restart_matches() {
  if (!only_matches_) {
    matches_.clear();
    return;
  }
  beginResetModel();
  matches_.clear();
  endResetModel();
}

void SummaryListModel::add_matches(const std::vector<int32_t>& found) {
  if (found.empty()) return;
  if (!only_matches_) {
    matches_.insert(matches_.end(), found.begin(), found.end());
    return;
  }
  const int first = static_cast<int>(matches_.size());
  beginInsertRows(QModelIndex(), first, first + static_cast<int>(found.size()) - 1);
  matches_.insert(matches_.end(), found.begin(), found.end());
  endInsertRows();
}

}  // namespace morvane
