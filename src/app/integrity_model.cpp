// SPDX-License-Identifier: MIT
#include "integrity_model.h"

namespace morvane {

QString finding_kind_title(Finding_Kind kind) {
  switch (kind) {
    case Finding_Kind::SequenceGap:
      return QStringLiteral("Sequence gap");
    case Finding_Kind::SequenceRepeat:
      return QStringLiteral("Sequence repeat");
    case Finding_Kind::TimeBackwards:
      return QStringLiteral("Time going back");
    case Finding_Kind::TimeJump:
      return QStringLiteral("Time jump");
    case Finding_Kind::PastFrameEnd:
      return QStringLiteral("Past frame end");
    case Finding_Kind::EmptyFrame:
      return QStringLiteral("Empty frame");
    case Finding_Kind::UnknownIdentifier:
      return QStringLiteral("Unknown identifier");
    case Finding_Kind::PartialFrame:
      return QStringLiteral("Partial frame");
    case Finding_Kind::PastEndOfFile:
      return QStringLiteral("Past end of file");
    case Finding_Kind::Restart:
      return QStringLiteral("Restart");
  }
  return {};
}

QString catalogue_list_title(Catalogue_List list) {
  switch (list) {
    case Catalogue_List::HK:
      return QStringLiteral("Housekeeping");
    case Catalogue_List::Science:
      return QStringLiteral("Science");
    case Catalogue_List::Information:
      return QStringLiteral("Information");
  }
  return {};
}

IntegrityModel::IntegrityModel(QObject* parent) : QAbstractTableModel(parent) {}

void IntegrityModel::setReport(Integrity_Report report) {
  beginResetModel();
  report_ = std::move(report);
  endResetModel();
}

int IntegrityModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(report_.findings.size());
}

int IntegrityModel::columnCount(const QModelIndex& parent) const { return parent.isValid() ? 0 : ColumnCount; }

QVariant IntegrityModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rowCount()) return {};
  const Finding& f = finding(index.row());
  if (role == Qt::TextAlignmentRole && index.column() == EntryColumn) {
    return QVariant::fromValue(Qt::AlignRight | Qt::AlignVCenter);
  }
  if (role != Qt::DisplayRole) return {};
  switch (index.column()) {
    case KindColumn:
      return finding_kind_title(f.kind);
    case ListColumn:
      return catalogue_list_title(f.list);
    case EntryColumn:
      return f.index;
    case TextColumn:
      return QString::fromStdString(f.text);
    default:
      return {};
  }
}

QVariant IntegrityModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
    return QAbstractTableModel::headerData(section, orientation, role);
  switch (section) {
    case KindColumn:
      return QStringLiteral("Kind");
    case ListColumn:
      return QStringLiteral("List");
    case EntryColumn:
      return QStringLiteral("Entry");
    case TextColumn:
      return QStringLiteral("Text");
    default:
      return {};
  }
}

}  // namespace morvane
