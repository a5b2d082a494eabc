// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "child_view.h"
#include "views/integrity.h"

class QLabel;
class QSpinBox;
class QTableView;

namespace morvane {

class IntegrityModel;

// What may be wrong with the loaded file's data: the findings of the integrity check in a table
// (kind, list, entry, text), the count of each kind, and the lander-time step beyond which
// housekeeping counts as jumping. Checked again after a load and on every live-follow pass. A
// double click opens the finding's entry in its window, as a summary double click does.
class Integrity_Form : public ChildView {
  Q_OBJECT

 public:
  explicit Integrity_Form(Workstation& workstation);

  void updateRealtime() override;
  void sessionReloaded() override;

  // Checks the file again with the threshold shown, on a worker thread with progress. A cancel
  // or a failure leaves the findings shown, and the threshold they were found with.
  void check();
  // The double click: makes the finding's entry current and opens its window. Housekeeping
  // entries go to the housekeeping view, auxiliary packets to the auxiliary view, spectra to
  // the spectrum view, information entries to the information view; other science packets have
  // no window.
  void openFinding(int row);

  IntegrityModel* model() const { return model_; }
  QTableView* table() const { return table_; }
  QSpinBox* timeJumpField() const { return time_jump_; }
  // The count shown beside a kind.
  QString countText(Finding_Kind kind) const;

 private:
  QWidget* makeCountPanel();
  void showCounts();
  void showThreshold();

  IntegrityModel* model_ = nullptr;
  QTableView* table_ = nullptr;
  QSpinBox* time_jump_ = nullptr;
  std::array<QLabel*, kFindingKinds> counts_{};
  QLabel* summary_ = nullptr;
  int checked_threshold_ = Integrity_Options{}.time_jump_seconds;  // of the findings shown
};

}  // namespace morvane
