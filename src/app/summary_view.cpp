// SPDX-License-Identifier: MIT
#include "summary_view.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QAction>
#include <QComboBox>
#include <QListView>
#include <QScrollBar>
#include <QShortcut>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>

#include "fixed_font.h"
#include "raw_link.h"
#include "spectra_form.h"
#include "summary_find_bar.h"
#include "decoders/format_check.h"
#include "decoders/summary_lines.h"
#include "workstation.h"

namespace morvane {

namespace {

// Captions on the view that carry no count of their own.
constexpr const char* kStaticCaptions[] = {"Sequence count from", "Lander Time (s)"};

// Where the headings stand over each list: the first character column and the width, in
// characters, of the type, sequence count, lander time and frame columns of its lines.
struct HeadingColumns {
  int start[4];
  int width[4];
};
constexpr HeadingColumns kHeadingColumns[] = {
    {{8, 18, 28, 39}, {10, 10, 11, 9}},  // housekeeping
    {{8, 26, 35, 46}, {18, 9, 11, 9}},   // science
    {{8, 33, 41, 50}, {25, 8, 9, 9}},    // information
};
// kSummaryHeadings in the order of those columns: "Type", "Sequence      Count", "Lander Time (s)", "Lander pkt".
constexpr int kHeadingOrder[] = {1, 2, 3, 0};

// The headings above a list, each over its column and wrapped within its width as the narrow
// captions of the list's columns are.
QWidget* make_headings(const HeadingColumns& columns, const QListView& list, QWidget* parent) {
  auto* headings = new QWidget(parent);
  const QFont font = fixed_pitch_font();
  const QFontMetrics metrics(font);
  const int character = metrics.horizontalAdvance(QLatin1Char('0'));
  const int offset = list.frameWidth() + list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &list) + 1;
  for (int c = 0; c < 4; ++c) {
    auto* label = new QLabel(QString::fromUtf8(kSummaryHeadings[kHeadingOrder[c]]), headings);
    label->setFont(font);
    label->setWordWrap(true);
    label->setAlignment((c == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignBottom);
    label->setGeometry(offset + columns.start[c] * character, 0, columns.width[c] * character, 2 * metrics.lineSpacing());
  }
  headings->setFixedHeight(2 * metrics.lineSpacing() + 2);
  return headings;
}

constexpr int kLayoutBatch = 1 << 16;

// Wide enough for the longest line: the information line and an isotope line's marks.
constexpr int kListCharacters = 62;

bool at_end(const QListView* list) {
  const QScrollBar* bar = list->verticalScrollBar();
  return bar->value() == bar->maximum();
}

}  // namespace

Summary::Summary(Workstation& workstation) : ChildView(workstation, ViewKind::Summary) {
  const Session& s = session();
  file_label_ = new QLabel(QString::fromStdString(s.File_Name), this);
  file_label_->setObjectName("FileNameLabel");
  file_label_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("SSTab1");
  tabs_->addTab(make_list_tab(0, SummaryListModel::List::Housekeeping), "Housekeeping");
  tabs_->addTab(make_list_tab(1, SummaryListModel::List::Science), "Science");
  tabs_->addTab(make_list_tab(2, SummaryListModel::List::Information), "Information");

  auto* body = new QHBoxLayout;
  body->addWidget(make_count_panel());
  body->addWidget(tabs_, 1);
  // A doubt about the format chosen, in red under the file name (hidden when there is none).
  format_warning_ = new QLabel(this);
  format_warning_->setObjectName("FormatWarning");
  format_warning_->setStyleSheet(QStringLiteral("color: rgb(255, 0, 0)"));
  format_warning_->setWordWrap(true);
  const auto warning = format_warning(s);
  format_warning_->setText(warning ? tr("Warning: %1").arg(QString::fromStdString(*warning)) : QString());
  format_warning_->setVisible(warning.has_value());

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(file_label_);
  layout->addWidget(format_warning_);
  layout->addLayout(body, 1);
  Enter_Label_Information();

  // Ctrl+F goes to the find bar of the list on view.
  auto* find = new QShortcut(QKeySequence::Find, this,
                             [this] { find_bar(tabs_->currentIndex())->label_choice()->setFocus(); });
  find->setContext(Qt::WidgetWithChildrenShortcut);
  QAction* raw_frame = add_show_in_raw_frame(*this, [this]() -> std::optional<RawMark> {
    const int tab = tabs_->currentIndex();
    const QModelIndex line = list(tab)->currentIndex();
    if (!session().loaded() || !line.isValid()) return {};
    return packet_mark(session().File_Type, model(tab)->entry(line.row()));
  });
  // The science list's own context menu: the raw frame, and the spectrum of the line clicked
  // (a double click opens the spectrum window as it was).
  auto* show_spectrum = new QAction(tr("Show this spectrum"), this);
  show_spectrum->setObjectName("actShowThisSpectrum");
  connect(show_spectrum, &QAction::triggered, this, [this] {
    const QModelIndex line = list(1)->currentIndex();
    if (line.isValid()) show_this_spectrum(models_[1]->entry_number(line.row()));
  });
  list(1)->addAction(raw_frame);
  list(1)->addAction(show_spectrum);
  list(1)->setContextMenuPolicy(Qt::ActionsContextMenu);
}

void Summary::show_this_spectrum(int32_t science_index) {
  guarded([&] {
    const LabelCode label = session().catalogue.Science_List.at(science_index).Label;
    if (label != LabelCode::GcSpectrum && label != LabelCode::IsotopeSpectrum) return;
    session().Current_Science_Index = science_index;
    if (auto* spectra = qobject_cast<Spectra_Form*>(workstation().show_view(ViewKind::Spectra))) {
      spectra->show_spectrum_of(science_index);
    }
  });
}

QWidget* Summary::make_list_tab(int tab, SummaryListModel::List which) {
  auto* page = new QWidget;
  auto* list = new QListView(page);
  list->setObjectName(QStringLiteral("List%1").arg(tab + 1));
  list->setFont(fixed_pitch_font());
  // Every line has the same height, so a list of millions lays out without measuring them, and
  // in batches between events: the first lines show at once, the rest follow while the window
  // stays responsive.
  list->setUniformItemSizes(true);
  list->setLayoutMode(QListView::Batched);
  list->setBatchSize(kLayoutBatch);
  list->setEditTriggers(QAbstractItemView::NoEditTriggers);
  // Several lines may be chosen to copy them (Ctrl+C); a double click opens the one clicked.
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  // The lines are made from the catalogue when shown; with no file there are none.
  auto* model = new SummaryListModel(session(), which, list);
  list->setModel(model);
  connect(list, &QListView::doubleClicked, this, [this, tab](const QModelIndex& index) {
    if (!index.isValid()) return;
    // A filtered list's row is not its line: the entry number says which line it is.
    const int line = models_[static_cast<size_t>(tab)]->entry_number(index.row()) - 1;
    if (tab == 0) List1_DblClick(line);
    if (tab == 1) List2_DblClick(line);
    if (tab == 2) List3_DblClick(line);
  });
  list->setMinimumWidth(QFontMetrics(list->font()).horizontalAdvance(QString(kListCharacters, QLatin1Char('0'))) +
                       list->verticalScrollBar()->sizeHint().width() + 2 * list->frameWidth());
  lists_[static_cast<size_t>(tab)] = list;
  models_[static_cast<size_t>(tab)] = model;
  auto* find_bar = new SummaryFindBar(*model, *list, page);
  find_bars_[static_cast<size_t>(tab)] = find_bar;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(make_headings(kHeadingColumns[tab], *list, page));
  layout->addWidget(list, 1);
  layout->addWidget(find_bar);
  return page;
}

QWidget* Summary::make_count_panel() {
  auto* panel = new QWidget;
  auto* grid = new QGridLayout(panel);
  grid->setVerticalSpacing(2);
  int row = 0;
  for (const SummaryCount& count : summary_counts(session())) {
    auto* caption = new QLabel(QString::fromStdString(count.caption), panel);
    if (count.key.empty()) {
      grid->addWidget(caption, row++, 0, 1, 2);
      continue;
    }
    auto* value = new QLabel(panel);
    value->setObjectName(QString::fromStdString(count.key));
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setMinimumWidth(80);
    grid->addWidget(caption, row, 0);
    grid->addWidget(value, row++, 1);
    count_labels_[count.key] = value;
  }
  for (const char* text : kStaticCaptions) grid->addWidget(new QLabel(QString::fromUtf8(text), panel), row++, 0, 1, 2);
  grid->setRowStretch(row, 1);
  return panel;
}

void Summary::Enter_Label_Information() {
  for (const SummaryCount& count : summary_counts(session())) {
    const auto found = count_labels_.find(count.key);
    if (found != count_labels_.end()) found->second->setText(QString::fromStdString(count.value));
  }
}

QString Summary::count_text(const std::string& key) const {
  const auto found = count_labels_.find(key);
  return found == count_labels_.end() ? QString() : found->second->text();
}

QString Summary::format_warning_text() const { return format_warning_->text(); }

void Summary::update_realtime() {
  guarded([&] {
    for (size_t tab = 0; tab < models_.size(); ++tab) {
      const bool follow = at_end(lists_[tab]);
      const int added = models_[tab]->append_new_entries();
      if (added > 0) find_bars_[tab]->entries_appended();  // the new entries are tested at once
      if (added > 0 && follow) lists_[tab]->scrollToBottom();
    }
    Enter_Label_Information();
  });
}

void Summary::List1_DblClick(int row) {
  guarded([&] {
    session().Current_HK_Index = row + 1;
    workstation().show_entry(ViewKind::Housekeeping);
  });
}

void Summary::List2_DblClick(int row) {
  guarded([&] {
    session().Current_Science_Index = row + 1;
    switch (session().catalogue.Science_List.at(row + 1).Label) {
      case LabelCode::AuxiliaryData: workstation().show_entry(ViewKind::Auxiliary); break;
      case LabelCode::GcSpectrum:
      case LabelCode::IsotopeSpectrum: workstation().show_entry(ViewKind::Spectra); break;
      default: break;  // other science packets have no view
    }
  });
}

void Summary::List3_DblClick(int row) {
  guarded([&] {
    session().Current_Information_Index = row + 1;
    workstation().show_entry(ViewKind::Information);
  });
}

}  // namespace morvane
