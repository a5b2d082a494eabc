// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "child_view.h"
#include "decoders/integrity.h"

class QLabel;
class QSpinBox;
class QTableView;

namespace morvane {

class IntegrityModel;

// What may be wrong with the loaded file's data: the findings of the integrity check in a table
// (kind, list, entry, text), the count of each kind, and the lander-time step beyond which
// housekeeping counts as jumping. Checked again after a load and on every live-follow pass. A
// double click opens the finding's entry in its window, as a summary double click does.
class IntegrityForm : public ChildView {
  Q_OBJECT

 public:
  explicit IntegrityForm(Workstation& workstation);

  void update_realtime() override;
  void session_reloaded() override;

  // Checks the file again with the threshold shown, on a worker thread with progress. A cancel
  // or a failure leaves the findings shown, and the threshold they were found with.
  void check();
  // The double click: makes the finding's entry current and opens its window. Housekeeping
  // entries go to the housekeeping view, auxiliary packets to the auxiliary view, spectra to
  // the spectrum view, information entries to the information view; other science packets have
  // no window.
  void open_finding(int row);

  IntegrityModel* model() const { return model_; }
  QTableView* table() const { return table_; }
  QSpinBox* time_jump_field() const { return time_jump_; }
  // The count shown beside a kind.
  QString count_text(FindingKind kind) const;

 private:
  QWidget* make_count_panel();
  void show_counts();
  void show_threshold();

  IntegrityModel* model_ = nullptr;
  QTableView* table_ = nullptr;
  QSpinBox* time_jump_ = nullptr;
  std::array<QLabel*, kFindingKinds> counts_{};
  QLabel* summary_ = nullptr;
  int checked_threshold_ = IntegrityOptions{}.time_jump_seconds;  // of the findings shown
};

}  // namespace morvane
