// SPDX-License-Identifier: MIT
#include "integrity_model.h"

namespace morvane {

QString finding_kind_title(FindingKind kind) {
  switch (kind) {
    case FindingKind::SequenceGap:
      return QStringLiteral("Sequence gap");
    case FindingKind::SequenceRepeat:
      return QStringLiteral("Sequence repeat");
    case FindingKind::TimeBackwards:
      return QStringLiteral("Time going back");
    case FindingKind::TimeJump:
      return QStringLiteral("Time jump");
    case FindingKind::PastFrameEnd:
      return QStringLiteral("Past frame end");
    case FindingKind::EmptyFrame:
      return QStringLiteral("Empty frame");
    case FindingKind::UnknownIdentifier:
      return QStringLiteral("Unknown identifier");
    case FindingKind::PartialFrame:
      return QStringLiteral("Partial frame");
    case FindingKind::PastEndOfFile:
      return QStringLiteral("Past end of file");
    case FindingKind::Restart:
      return QStringLiteral("Restart");
  }
  return {};
}

QString catalogue_list_title(CatalogueList list) {
  switch (list) {
    case CatalogueList::HK:
      return QStringLiteral("Housekeeping");
    case CatalogueList::Science:
      return QStringLiteral("Science");
    case CatalogueList::Information:
      return QStringLiteral("Information");
  }
  return {};
}

IntegrityModel::IntegrityModel(QObject* parent) : QAbstractTableModel(parent) {}

void IntegrityModel::set_report(IntegrityReport report) {
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
