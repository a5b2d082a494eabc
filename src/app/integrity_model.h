// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractTableModel>

#include "decoders/integrity.h"

namespace morvane {

// The findings of an integrity check as a table: kind, list, entry and text. The texts of a row
// are made when the view asks for them, so a hundred thousand findings cost nothing until shown.
class IntegrityModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { KindColumn, ListColumn, EntryColumn, TextColumn, ColumnCount };

  explicit IntegrityModel(QObject* parent = nullptr);

  // Shows another report's findings.
  void set_report(IntegrityReport report);
  const IntegrityReport& report() const { return report_; }
  const Finding& finding(int row) const { return report_.findings[static_cast<size_t>(row)]; }

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  int columnCount(const QModelIndex& parent = QModelIndex()) const override;
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

 private:
  IntegrityReport report_;
};

// What a user calls a kind of finding ("Sequence gap", "Unknown identifier", ...) and a list
// ("Housekeeping", "Science", "Information", as the summary's tabs are named).
QString finding_kind_title(FindingKind kind);
QString catalogue_list_title(CatalogueList list);

}  // namespace morvane
