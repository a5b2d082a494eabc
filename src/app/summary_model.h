// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include <QAbstractListModel>

#include "core/session.h"

namespace morvane {

// One list of the summary view as a model: the line of an entry is made when the view asks for
// it, so a list of millions of entries costs nothing until it is scrolled. The model shows the
// entries that were in the list when it was made or last appended to; entries the catalogue
// gains later appear with append_new_entries().
//
// Find and filter: the model keeps the entries that match the find bar's conditions, as the bar
// finds them. While it shows only those, row r is the r-th match; each line still begins with
// its entry number, and entry_number() maps a row to its entry.
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
  // The catalogue list the model shows.
  const EntryList& entries() const;
  // The catalogue entry of a row (0-based).
  const Packet_Entry& entry(int row) const { return entries()[entry_number(row)]; }
  // Inserts rows for the entries added to the catalogue since the last call. Returns how many
  // entries were added (rows only when every entry is shown).
  int append_new_entries();
  // The entries the model knows of: its rows when every entry is shown.
  int32_t entry_count() const { return rows_; }

  // The 1-based entry number of a row, and the row of an entry (-1 when it is not shown).
  int32_t entry_number(int row) const;
  int row_of(int32_t entry) const;
  // Shows only the matches (true) or every entry.
  void show_only_matches(bool only);
  bool shows_only_matches() const { return only_matches_; }
  // The matches so far, ascending entry numbers. Starting afresh forgets them; more arrive in
  // ascending order at the end.
  const std::vector<int32_t>& matches() const { return matches_; }
  void restart_matches();
  void add_matches(const std::vector<int32_t>& found);

 private:
  // The list line of entry i (1-based).
  std::string line_text(int32_t i) const;

  const Session& session_;
  List list_;
  int rows_ = 0;
  std::vector<int32_t> matches_;
  bool only_matches_ = false;
};

}  // namespace morvane
