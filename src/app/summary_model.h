// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include <QAbstractListModel>

#include "core/session.h"

namespace morvane {

// One list of the summary view as a model: the line of an entry is made when the view asks for
// it, so a list of millions of entries costs nothing until it is scrolled. The model shows the
// entries that were in the list when it was made or last appended to; entries the catalogue
// gains later appear with appendNewEntries().
class SummaryListModel : public QAbstractListModel {
  Q_OBJECT

 public:
  enum class List { Housekeeping, Science, Information };

  SummaryListModel(const Session& session, List list, QObject* parent = nullptr);

  int rowCount(const QModelIndex& parent = QModelIndex()) const override;
  // The entry's list line (DisplayRole); a line whose numbers do not fit their columns shows
  // the error instead, in red.
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;

  List list() const { return list_; }
  // The catalogue entry of a row (0-based).
  const Packet_Entry& entry(int row) const { return entries()[row + 1]; }
  // Inserts rows for the entries added to the catalogue since the last call. Returns how many.
  int appendNewEntries();

 private:
  const EntryList& entries() const;
  // The list line of entry i (1-based).
  std::string line_text(int32_t i) const;

  const Session& session_;
  List list_;
  int rows_ = 0;
};

}  // namespace morvane
