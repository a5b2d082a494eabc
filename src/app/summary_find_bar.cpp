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

struct Field_Face {
  const char* name;
  const char* placeholder;
  int characters;  // the widest number the field is made for
};
constexpr Field_Face kFieldFaces[] = {
    {"FindSequenceFrom", "from", 6}, {"FindSequenceTo", "to", 6},   {"FindTimeFrom", "from", 11},
    {"FindTimeTo", "to", 11},        {"FindFrameFrom", "from", 10}, {"FindFrameTo", "to", 10},
};

// The type choice offers the labels of the list as it stands when it opens.
class Label_Choice : public QComboBox {
 public:
  Label_Choice(std::function<void()> before_popup, QWidget* parent)
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

Summary_Find_Bar::Summary_Find_Bar(SummaryListModel& model, QListView& list, QWidget* parent)
    : QWidget(parent),
      model_(model),
      list_(list),
      label_choice_(new Label_Choice([this] { refreshLabels(); }, this)),
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
    connect(field, &QLineEdit::textChanged, this, &Summary_Find_Bar::conditionsChanged);
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

  connect(label_choice_, &QComboBox::currentIndexChanged, this, &Summary_Find_Bar::conditionsChanged);
  connect(only_matches_, &QCheckBox::toggled, this, &Summary_Find_Bar::applyOnlyMatches);
  connect(next_, &QPushButton::clicked, this, &Summary_Find_Bar::findNext);
  connect(clear_, &QPushButton::clicked, this, &Summary_Find_Bar::clear);
  connect(slice_timer_, &QTimer::timeout, this, &Summary_Find_Bar::runSlice);
}

Summary_Filter Summary_Find_Bar::filter() const {
  Summary_Filter filter;
  const int label = label_choice_->currentData().toInt();
  if (label != kAllTypes) filter.labels.insert(static_cast<LabelCode>(label));
  filter.sequence = {whole_number(field(Field::SequenceFrom)), whole_number(field(Field::SequenceTo))};
  filter.lander_time = {whole_number(field(Field::TimeFrom)), whole_number(field(Field::TimeTo))};
  filter.frame = {whole_number(field(Field::FrameFrom)), whole_number(field(Field::FrameTo))};
  return filter;
}

void Summary_Find_Bar::refreshLabels() {
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

void Summary_Find_Bar::conditionsChanged() {
  filter_ = filter();
  active_ = !filter_.empty();
  tested_ = 0;
  find_waiting_ = false;
  slice_timer_->stop();
  model_.restartMatches();
  applyOnlyMatches();
  // The first slice runs at once: a short list is done before the next event.
  if (active_) runSlice();
  showCount();
}

void Summary_Find_Bar::applyOnlyMatches() {
  const bool only = active_ && only_matches_->isChecked();
  if (only != model_.showsOnlyMatches()) {
    const int32_t kept = selectedEntry();
    model_.showOnlyMatches(only);
    if (kept > 0) selectEntry(kept);
  }
  showCount();
}

void Summary_Find_Bar::runSlice() {
  slice_timer_->stop();
  if (!active_) return;
  QElapsedTimer clock;
  clock.start();
  std::vector<int32_t> found;
  const int32_t known = model_.entryCount();
  while (tested_ < known) {
    const int32_t last = tested_ + std::min(slice_block_, known - tested_);
    filter_entries(model_.entries(), filter_, tested_ + 1, last, found);
    tested_ = last;
    if (clock.elapsed() >= slice_milliseconds_) break;
  }
  model_.addMatches(found);
  if (tested_ < known) slice_timer_->start();
  resolvePendingFind();
  showCount();
}

void Summary_Find_Bar::entriesAppended() {
  if (active_ && !slice_timer_->isActive()) {
    runSlice();
  } else {
    showCount();
  }
}

void Summary_Find_Bar::setSlice(int32_t block_entries, int milliseconds) {
  slice_block_ = std::max(block_entries, 1);
  slice_milliseconds_ = std::max(milliseconds, 0);
}

bool Summary_Find_Bar::searching() const { return active_ && tested_ < model_.entryCount(); }

QString Summary_Find_Bar::countText() const {
  if (!active_) return {};
  const QString count = tr("%1 of %2").arg(model_.matches().size()).arg(model_.entryCount());
  return searching() ? count + QStringLiteral("...") : count;
}

void Summary_Find_Bar::showCount() { count_->setText(countText()); }

void Summary_Find_Bar::findNext() {
  if (!active_) return;
  const int32_t after = selectedEntry();
  const int32_t next = next_match(model_.matches(), after);
  // While the search goes on, a match after the selection may still be to come.
  if (next > after || (!searching() && next > 0)) return selectEntry(next);
  if (searching()) {
    find_waiting_ = true;
    find_after_ = after;
  }
}

void Summary_Find_Bar::resolvePendingFind() {
  if (!find_waiting_) return;
  const int32_t next = next_match(model_.matches(), find_after_);
  if (next <= find_after_ && searching()) return;
  find_waiting_ = false;
  if (next > 0) selectEntry(next);
}

void Summary_Find_Bar::clear() {
  {
    QSignalBlocker quiet_choice(label_choice_);
    label_choice_->setCurrentIndex(0);
    for (QLineEdit* field : fields_) {
      QSignalBlocker quiet(field);
      field->clear();
    }
  }
  conditionsChanged();
}

void Summary_Find_Bar::selectEntry(int32_t entry) {
  const int row = model_.rowOf(entry);
  if (row < 0) return;
  const QModelIndex index = model_.index(row);
  list_.setCurrentIndex(index);
  list_.scrollTo(index, QAbstractItemView::PositionAtCenter);
}

int32_t Summary_Find_Bar::selectedEntry() const {
  const QModelIndex current = list_.currentIndex();
  return current.isValid() ? model_.entryNumber(current.row()) : 0;
}

void Summary_Find_Bar::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    findNext();
    event->accept();
    return;
  }
  QWidget::keyPressEvent(event);
}

}  // namespace morvane
