// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include <QWidget>

#include "decoders/summary_filter.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListView;
class QPushButton;
class QTimer;

namespace morvane {

class SummaryListModel;

// Find and filter under one summary list. The bar's conditions (a type among the labels of the
// list, and ranges of sequence count, lander time and frame, from and to included; a field left
// empty leaves its end open) must all hold for an entry to match. The matches are found a
// slice at a time between events, so a list of millions of lines stays live while they are
// looked for, and the count beside them says how many of the list's entries match.
//
// Find and filter share the conditions. Enter (or "Next") finds: it selects the next matching
// line after the selected one, going round to the first, and hides nothing. "Only matches"
// filters: the list shows the matching lines alone, and Enter then steps through them. Clear
// empties the conditions, and the list shows every line again. During live follow the entries
// that arrive are tested as they come.
class SummaryFindBar : public QWidget {
  Q_OBJECT

 public:
  enum class Field { SequenceFrom, SequenceTo, TimeFrom, TimeTo, FrameFrom, FrameTo };

  SummaryFindBar(SummaryListModel& model, QListView& list, QWidget* parent = nullptr);

  // The conditions as the fields give them; a field that holds no whole number is left out.
  SummaryFilter filter() const;
  // Enter: selects the next match after the selected line (from the top when none is), at once
  // when it has been found, otherwise as soon as it is. Nothing when there are no conditions.
  void find_next();
  // Empties every condition.
  void clear();
  // The model took in entries that live follow added: they are tested too.
  void entries_appended();
  // The labels the type choice offers: those in the list now (refreshed as the choice opens).
  void refresh_labels();

  // Whether matches are still being looked for.
  bool searching() const;
  // "N of M" (M the entries of the list), "..." after it while searching; "" without conditions.
  QString count_text() const;

  // How much a slice tests: blocks of this many entries until it has run this long (the
  // defaults keep a window live over millions of entries; tests make the slices small).
  void set_slice(int32_t block_entries, int milliseconds);

  QComboBox* label_choice() const { return label_choice_; }
  QLineEdit* field(Field which) const { return fields_[static_cast<size_t>(which)]; }
  QCheckBox* only_matches() const { return only_matches_; }
  QPushButton* next_button() const { return next_; }
  QPushButton* clear_button() const { return clear_; }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  // The conditions changed: the matches are looked for afresh.
  void conditions_changed();
  // Shows every line or the matches alone, keeping the selected entry selected.
  void apply_only_matches();
  // Tests the next slice of entries, for a moment at most, and comes back for more.
  void run_slice();
  void show_count();
  // Carries out a find that waited for its match.
  void resolve_pending_find();
  void select_entry(int32_t entry);
  int32_t selected_entry() const;

  SummaryListModel& model_;
  QListView& list_;
  QComboBox* label_choice_;
  std::array<QLineEdit*, 6> fields_{};
  QCheckBox* only_matches_;
  QPushButton* next_;
  QPushButton* clear_;
  QLabel* count_;
  QTimer* slice_timer_;

  SummaryFilter filter_;
  bool active_ = false;  // there are conditions
  int32_t tested_ = 0;   // entries 1..tested_ have been tested
  bool find_waiting_ = false;
  int32_t find_after_ = 0;  // the entry a waiting find goes on from
  int32_t slice_block_;
  int slice_milliseconds_;
};

}  // namespace morvane
