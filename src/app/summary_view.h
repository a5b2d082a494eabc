// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <map>
#include <string>

#include "child_view.h"
#include "summary_model.h"

class QLabel;
class QListView;
class QTabWidget;

namespace morvane {

class SummaryFindBar;

// The summary of the loaded file: every count of the catalogue, and on three tabs one line per
// housekeeping, science and information entry. A double click makes the entry current and
// opens the window that decodes it. Under each list a find bar finds and filters its lines.
class Summary : public ChildView {
  Q_OBJECT

 public:
  explicit Summary(Workstation& workstation);

  // UpDateSummaryForm: appends the lines of the entries added since the last pass and
  // refreshes the counts. A list scrolled to its end stays at its end.
  void update_realtime() override;

  // The double clicks, by 0-based line of the whole list (entry number - 1), whatever the
  // filter hides.
  void List1_DblClick(int row);
  void List2_DblClick(int row);
  void List3_DblClick(int row);
  // The science list's "Show this spectrum": the spectrum window on the spectrum that science
  // entry k (1-based) belongs to. Other entries open nothing.
  void show_this_spectrum(int32_t science_index);

  QTabWidget* tabs() const { return tabs_; }
  // The list of a tab (0 housekeeping, 1 science, 2 information) and its model.
  QListView* list(int tab) const { return lists_[static_cast<size_t>(tab)]; }
  SummaryListModel* model(int tab) const { return models_[static_cast<size_t>(tab)]; }
  SummaryFindBar* find_bar(int tab) const { return find_bars_[static_cast<size_t>(tab)]; }
  // The value shown beside a count ("12", "- N/A -"), by its key ("hk_count", ...).
  QString count_text(const std::string& key) const;
  // The warning under the file name when the file does not look like its format ("" if none).
  QString format_warning_text() const;

 private:
  void Enter_Label_Information();
  QWidget* make_count_panel();
  QWidget* make_list_tab(int tab, SummaryListModel::List list);

  QLabel* file_label_ = nullptr;
  QLabel* format_warning_ = nullptr;
  QTabWidget* tabs_ = nullptr;
  std::array<QListView*, 3> lists_{};
  std::array<SummaryListModel*, 3> models_{};
  std::array<SummaryFindBar*, 3> find_bars_{};
  std::map<std::string, QLabel*> count_labels_;
};

}  // namespace morvane
