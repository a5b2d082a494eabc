// SPDX-License-Identifier: MIT
#include "integrity_form.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QSpinBox>
#include <QTableView>
#include <QVBoxLayout>
#include <limits>
#include <optional>

#include "core/session.h"
#include "integrity_model.h"
#include "view_pass.h"
#include "workstation.h"

namespace morvane {

namespace {

const char* const kNoFileMessage = "Please load an EGSE data file";

constexpr FindingKind kKinds[] = {
    FindingKind::SequenceGap,       FindingKind::SequenceRepeat, FindingKind::TimeBackwards,
    FindingKind::TimeJump,          FindingKind::PastFrameEnd,   FindingKind::EmptyFrame,
    FindingKind::UnknownIdentifier, FindingKind::PartialFrame,   FindingKind::PastEndOfFile,
    FindingKind::Restart,
};
static_assert(std::size(kKinds) == kFindingKinds);

bool same_entry(const Finding& a, const Finding& b) {
  return a.kind == b.kind && a.list == b.list && a.index == b.index && a.text == b.text;
}

}  // namespace

IntegrityForm::IntegrityForm(Workstation& workstation) : ChildView(workstation, ViewKind::Integrity) {
  model_ = new IntegrityModel(this);
  table_ = new QTableView(this);
  table_->setObjectName("FindingList");
  table_->setModel(model_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::SingleSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setWordWrap(false);
  table_->verticalHeader()->hide();
  // Rows of one height lay out without being measured, however many there are.
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 6);
  table_->horizontalHeader()->setStretchLastSection(true);
  const int character = table_->fontMetrics().horizontalAdvance(QLatin1Char('0'));
  table_->setColumnWidth(IntegrityModel::KindColumn, 19 * character);
  table_->setColumnWidth(IntegrityModel::ListColumn, 13 * character);
  table_->setColumnWidth(IntegrityModel::EntryColumn, 9 * character);
  table_->setMinimumWidth(100 * character);
  table_->setMinimumHeight(16 * table_->verticalHeader()->defaultSectionSize());
  connect(table_, &QTableView::doubleClicked, this, [this](const QModelIndex& index) {
    if (index.isValid()) open_finding(index.row());
  });

  summary_ = new QLabel(this);
  summary_->setObjectName("SummaryLabel");
  auto* table_side = new QVBoxLayout;
  table_side->addWidget(summary_);
  table_side->addWidget(table_, 1);
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(make_count_panel());
  layout->addLayout(table_side, 1);
  guarded([&] { check(); });
}

QWidget* IntegrityForm::make_count_panel() {
  auto* panel = new QWidget(this);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setVerticalSpacing(2);
  int row = 0;
  grid->addWidget(new QLabel(tr("Time jump above"), panel), row, 0);
  time_jump_ = new QSpinBox(panel);
  time_jump_->setObjectName("TimeJump");
  time_jump_->setRange(1, std::numeric_limits<int>::max());
  time_jump_->setValue(IntegrityOptions{}.time_jump_seconds);
  time_jump_->setSuffix(QStringLiteral(" s"));
  time_jump_->setKeyboardTracking(false);  // checked once the number is typed, not at each digit
  time_jump_->setToolTip(tr("A step in housekeeping lander time longer than this is reported"));
  grid->addWidget(time_jump_, row++, 1);
  connect(time_jump_, &QSpinBox::valueChanged, this, [this] { guarded([&] { check(); }); });
  grid->setRowMinimumHeight(row++, 8);
  for (const FindingKind kind : kKinds) {
    grid->addWidget(new QLabel(finding_kind_title(kind), panel), row, 0);
    auto* count = new QLabel(panel);
    count->setObjectName(QString::fromUtf8(finding_kind_name(kind).data()));
    count->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    grid->addWidget(count, row++, 1);
    counts_[static_cast<size_t>(kind)] = count;
  }
  grid->setRowStretch(row, 1);
  return panel;
}

void IntegrityForm::check() {
  // On a worker thread: a big file takes seconds. A cancel leaves the findings and the threshold
  // they were found with.
  IntegrityOptions options;
  options.time_jump_seconds = time_jump_->value();
  IntegrityReport report;
  bool finished = false;
  try {
    finished = run_view_pass(*this, tr("Checking the file"), [&](const ProgressFunction& progress) {
      options.progress = progress;
      report = check_integrity(session(), options);
    });
  } catch (...) {
    show_threshold();
    throw;
  }
  if (!finished) {
    show_threshold();
    return;
  }
  checked_threshold_ = options.time_jump_seconds;
  // The list stays where the user had it: the same scroll position and the same finding chosen.
  const int scrolled = table_->verticalScrollBar()->value();
  std::optional<Finding> chosen;
  if (const QModelIndex current = table_->currentIndex(); current.isValid()) chosen = model_->finding(current.row());
  model_->set_report(std::move(report));
  if (chosen) {
    for (int row = 0; row < model_->rowCount(); ++row) {
      if (same_entry(model_->finding(row), *chosen)) {
        table_->setCurrentIndex(model_->index(row, 0));
        break;
      }
    }
  }
  table_->verticalScrollBar()->setValue(scrolled);
  show_counts();
}

void IntegrityForm::show_threshold() {
  const QSignalBlocker quiet(time_jump_);
  time_jump_->setValue(checked_threshold_);
}

void IntegrityForm::show_counts() {
  const IntegrityReport& report = model_->report();
  int64_t total = 0;
  for (const FindingKind kind : kKinds) {
    const int64_t count = report.counts[static_cast<size_t>(kind)];
    counts_[static_cast<size_t>(kind)]->setText(QString::number(count));
    total += count;
  }
  if (!session().loaded()) {
    summary_->setText(QString::fromUtf8(kNoFileMessage));
  } else if (total == 0) {
    summary_->setText(tr("No findings: every sequence count, time and frame is as expected"));
  } else if (report.truncated) {
    summary_->setText(tr("%1 findings; the first %2 are listed").arg(total).arg(report.findings.size()));
  } else {
    summary_->setText(total == 1 ? tr("1 finding") : tr("%1 findings").arg(total));
  }
}

QString IntegrityForm::count_text(FindingKind kind) const { return counts_[static_cast<size_t>(kind)]->text(); }

void IntegrityForm::update_realtime() {
  guarded([&] { check(); });
}

void IntegrityForm::session_reloaded() {
  table_->setCurrentIndex({});
  table_->scrollToTop();
  guarded([&] { check(); });
}

void IntegrityForm::open_finding(int row) {
  guarded([&] {
    if (row < 0 || row >= model_->rowCount()) return;
    const Finding finding = model_->finding(row);
    Session& s = session();
    const Catalogue& c = s.catalogue;
    switch (finding.list) {
      case CatalogueList::HK:
        if (finding.index < 1 || finding.index > c.HK_Count()) return;
        s.Current_HK_Index = finding.index;
        workstation().show_entry(ViewKind::Housekeeping);
        break;
      case CatalogueList::Science:
        if (finding.index < 1 || finding.index > c.Science_Count()) return;
        s.Current_Science_Index = finding.index;
        switch (c.Science_List[finding.index].Label) {
          case LabelCode::AuxiliaryData:
            workstation().show_entry(ViewKind::Auxiliary);
            break;
          case LabelCode::GcSpectrum:
          case LabelCode::IsotopeSpectrum:
            workstation().show_entry(ViewKind::Spectra);
            break;
          default:
            break;  // other science packets have no window
        }
        break;
      case CatalogueList::Information:
        if (finding.index < 1 || finding.index > c.Information_Count()) return;
        s.Current_Information_Index = finding.index;
        workstation().show_entry(ViewKind::Information);
        break;
    }
  });
}

}  // namespace morvane
