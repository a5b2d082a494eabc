// SPDX-License-Identifier: MIT
#include "summary_find_bar.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <optional>

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include "summary_model.h"

namespace morvane {

namespace {

// A slice tests entries in blocks until it has run this long, then lets the events in.
constexpr int32_t kSliceBlock = 1 << 16;
constexpr int kSliceMilliseconds = 15;

constexpr int kAllTypes = -1;  // the type choice's "All types"

struct FieldFace {
  const char* name;
  const char* placeholder;
  int characters;  // the widest number the field is made for
};
constexpr FieldFace kFieldFaces[] = {
    {"FindSequenceFrom", "from", 6}, {"FindSequenceTo", "to", 6},   {"FindTimeFrom", "from", 11},
    {"FindTimeTo", "to", 11},        {"FindFrameFrom", "from", 10}, {"FindFrameTo", "to", 10},
};

// The type choice offers the labels of the list as it stands when it opens.
class LabelChoice : public QComboBox {
 public:
  LabelChoice(std::function<void()> before_popup, QWidget* parent)
      : QComboBox(parent), before_popup_(std::move(before_popup)) {}
  void showPopup() override {
    before_popup_();
    QComboBox::showPopup();
  }

 private:
  std::function<void()> before_popup_;
};

std::optional<int64_t> whole_number(const QLineEdit* field) {
  bool ok = false;
  const qlonglong value = field->text().trimmed().toLongLong(&ok);
  return ok ? std::optional<int64_t>(value) : std::nullopt;
}

}  // namespace

SummaryFindBar::SummaryFindBar(SummaryListModel& model, QListView& list, QWidget* parent)
    : QWidget(parent),
      model_(model),
      list_(list),
      label_choice_(new LabelChoice([this] { refresh_labels(); }, this)),
      only_matches_(new QCheckBox(tr("Only matches"), this)),
      next_(new QPushButton(tr("Next"), this)),
      clear_(new QPushButton(tr("Clear"), this)),
      count_(new QLabel(this)),
      slice_timer_(new QTimer(this)),
      slice_block_(kSliceBlock),
      slice_milliseconds_(kSliceMilliseconds) {
  setObjectName("FindBar");
  label_choice_->setObjectName("FindType");
  label_choice_->addItem(tr("All types"), kAllTypes);
  label_choice_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  only_matches_->setObjectName("FindOnlyMatches");
  only_matches_->setToolTip(tr("Hide the lines that do not match"));
  next_->setObjectName("FindNext");
  next_->setToolTip(tr("Select the next matching line (Enter)"));
  clear_->setObjectName("FindClear");
  count_->setObjectName("FindCount");
  slice_timer_->setSingleShot(true);
  slice_timer_->setInterval(0);

  const QFontMetrics metrics(font());
  for (size_t i = 0; i < fields_.size(); ++i) {
    auto* field = new QLineEdit(this);
    field->setObjectName(kFieldFaces[i].name);
    field->setPlaceholderText(tr(kFieldFaces[i].placeholder));
    field->setValidator(
        new QIntValidator(std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max(), field));
    field->setFixedWidth(metrics.horizontalAdvance(QString(kFieldFaces[i].characters + 2, QLatin1Char('0'))));
    fields_[i] = field;
    connect(field, &QLineEdit::textChanged, this, &SummaryFindBar::conditions_changed);
  }

  auto range = [&](QHBoxLayout* row, const QString& caption, Field from, Field to) {
    row->addWidget(new QLabel(caption, this));
    row->addWidget(field(from));
    row->addWidget(field(to));
    row->addSpacing(8);
  };
  auto* conditions = new QHBoxLayout;
  conditions->addWidget(new QLabel(tr("Type"), this));
  conditions->addWidget(label_choice_);
  conditions->addSpacing(8);
  range(conditions, tr("Sequence"), Field::SequenceFrom, Field::SequenceTo);
  conditions->addStretch(1);
  auto* actions = new QHBoxLayout;
  range(actions, tr("Lander time"), Field::TimeFrom, Field::TimeTo);
  range(actions, tr("Frame"), Field::FrameFrom, Field::FrameTo);
  actions->addStretch(1);
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(only_matches_);
  buttons->addWidget(next_);
  buttons->addWidget(clear_);
  buttons->addSpacing(8);
  buttons->addWidget(count_, 1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(2);
  layout->addLayout(conditions);
  layout->addLayout(actions);
  layout->addLayout(buttons);

  connect(label_choice_, &QComboBox::currentIndexChanged, this, &SummaryFindBar::conditions_changed);
  connect(only_matches_, &QCheckBox::toggled, this, &SummaryFindBar::apply_only_matches);
  connect(next_, &QPushButton::clicked, this, &SummaryFindBar::find_next);
  connect(clear_, &QPushButton::clicked, this, &SummaryFindBar::clear);
  connect(slice_timer_, &QTimer::timeout, this, &SummaryFindBar::run_slice);
}

SummaryFilter SummaryFindBar::filter() const {
  SummaryFilter filter;
  const int label = label_choice_->currentData().toInt();
  if (label != kAllTypes) filter.labels.insert(static_cast<LabelCode>(label));
  filter.sequence = {whole_number(field(Field::SequenceFrom)), whole_number(field(Field::SequenceTo))};
  filter.lander_time = {whole_number(field(Field::TimeFrom)), whole_number(field(Field::TimeTo))};
  filter.frame = {whole_number(field(Field::FrameFrom)), whole_number(field(Field::FrameTo))};
  return filter;
}

void SummaryFindBar::refresh_labels() {
  const int chosen = label_choice_->currentData().toInt();
  QSignalBlocker quiet(label_choice_);
  label_choice_->clear();
  label_choice_->addItem(tr("All types"), kAllTypes);
  for (const LabelCode label : labels_in(model_.entries())) {
    label_choice_->addItem(
        QString::fromUtf8(label_text(label).data(), static_cast<qsizetype>(label_text(label).size())).trimmed(),
        static_cast<int>(label));
  }
  label_choice_->setCurrentIndex(std::max(label_choice_->findData(chosen), 0));
}

void SummaryFindBar::conditions_changed() {
  filter_ = filter();
  active_ = !filter_.empty();
  tested_ = 0;
  find_waiting_ = false;
  slice_timer_->stop();
  model_.restart_matches();
  apply_only_matches();
  // The first slice runs at once: a short list is done before the next event.
  if (active_) run_slice();
  show_count();
}

void SummaryFindBar::apply_only_matches() {
  const bool only = active_ && only_matches_->isChecked();
  if (only != model_.shows_only_matches()) {
    const int32_t kept = selected_entry();
    model_.show_only_matches(only);
    if (kept > 0) select_entry(kept);
  }
  show_count();
}

void SummaryFindBar::run_slice() {
  slice_timer_->stop();
  if (!active_) return;
  QElapsedTimer clock;
  clock.start();
  std::vector<int32_t> found;
  const int32_t known = model_.entry_count();
  while (tested_ < known) {
    const int32_t last = tested_ + std::min(slice_block_, known - tested_);
    filter_entries(model_.entries(), filter_, tested_ + 1, last, found);
    tested_ = last;
    if (clock.elapsed() >= slice_milliseconds_) break;
  }
  model_.add_matches(found);
  if (tested_ < known) slice_timer_->start();
  resolve_pending_find();
  show_count();
}

void SummaryFindBar::entries_appended() {
  if (active_ && !slice_timer_->isActive()) {
    run_slice();
  } else {
    show_count();
  }
}

void SummaryFindBar::set_slice(int32_t block_entries, int milliseconds) {
  slice_block_ = std::max(block_entries, 1);
  slice_milliseconds_ = std::max(milliseconds, 0);
}

bool SummaryFindBar::searching() const { return active_ && tested_ < model_.entry_count(); }

QString SummaryFindBar::count_text() const {
  if (!active_) return {};
  const QString count = tr("%1 of %2").arg(model_.matches().size()).arg(model_.entry_count());
  return searching() ? count + QStringLiteral("...") : count;
}

void SummaryFindBar::show_count() { count_->setText(count_text()); }

void SummaryFindBar::find_next() {
  if (!active_) return;
  const int32_t after = selected_entry();
  const int32_t next = next_match(model_.matches(), after);
  // While the search goes on, a match after the selection may still be to come.
  if (next > after || (!searching() && next > 0)) return select_entry(next);
  if (searching()) {
    find_waiting_ = true;
    find_after_ = after;
  }
}

void SummaryFindBar::resolve_pending_find() {
  if (!find_waiting_) return;
  const int32_t next = next_match(model_.matches(), find_after_);
  if (next <= find_after_ && searching()) return;
  find_waiting_ = false;
  if (next > 0) select_entry(next);
}

void SummaryFindBar::clear() {
  {
    QSignalBlocker quiet_choice(label_choice_);
    label_choice_->setCurrentIndex(0);
    for (QLineEdit* field : fields_) {
      QSignalBlocker quiet(field);
      field->clear();
    }
  }
  conditions_changed();
}

void SummaryFindBar::select_entry(int32_t entry) {
  const int row = model_.row_of(entry);
  if (row < 0) return;
  const QModelIndex index = model_.index(row);
  list_.setCurrentIndex(index);
  list_.scrollTo(index, QAbstractItemView::PositionAtCenter);
}

int32_t SummaryFindBar::selected_entry() const {
  const QModelIndex current = list_.currentIndex();
  return current.isValid() ? model_.entry_number(current.row()) : 0;
}

void SummaryFindBar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    find_next();
    event->accept();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace morvane
