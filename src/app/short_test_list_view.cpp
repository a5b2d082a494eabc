// SPDX-License-Identifier: MIT
#include "short_test_list_view.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QMdiSubWindow>
#include <QPointer>
#include <QPushButton>
#include <QScrollBar>
#include <QStyle>
#include <QTimer>
#include <QVBoxLayout>

#include "core/session.h"
#include "fixed_font.h"
#include "short_test_view.h"
#include "workstation.h"

namespace morvane {

namespace {

// The list line: the test number in 6 characters, "Short form test", the sequence count ending 9
// characters later and the lander time 15 after that. Each heading stands right-aligned over its
// column, wrapped within it as the narrow captions over the list are.
struct HeadingColumn {
  const char* name;
  const char* caption;
  int start;  // first character column
  int width;  // characters
};
constexpr HeadingColumn kHeadings[] = {
    {"Label3", kTestListSequenceHeading, 21, 9},
    {"Label4", kTestListTimeHeading, 33, 12},
};
constexpr int kLineCharacters = 45;
constexpr int kVisibleLines = 12;

QWidget* make_headings(const QListWidget& list, QWidget* parent) {
  auto* headings = new QWidget(parent);
  const QFont font = fixed_pitch_font();
  const QFontMetrics metrics(font);
  const int character = metrics.horizontalAdvance(QLatin1Char('0'));
  const int offset = list.frameWidth() + list.style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, &list) + 1;
  for (const HeadingColumn& column : kHeadings) {
    auto* label = new QLabel(QString::fromUtf8(column.caption), headings);
    label->setObjectName(column.name);
    label->setFont(font);
    label->setWordWrap(true);
    label->setAlignment(Qt::AlignRight | Qt::AlignBottom);
    label->setGeometry(offset + column.start * character, 0, column.width * character, 2 * metrics.lineSpacing());
  }
  headings->setFixedHeight(2 * metrics.lineSpacing() + 2);
  return headings;
}

}  // namespace

ShortMessageLoad::ShortMessageLoad(Workstation& workstation)
    : ChildView(workstation, ViewKind::ShortTestList),
      list1_(new QListWidget(this)),
      label1_(new QLabel(this)),
      label2_(new QLabel(this)),
      command2_(new QPushButton(QString::fromUtf8(kTestListCancelCaption), this)) {
  list1_->setObjectName("List1");
  label1_->setObjectName("Label1");
  label2_->setObjectName("Label2");
  command2_->setObjectName("Command2");

  list1_->setFont(fixed_pitch_font());
  list1_->setUniformItemSizes(true);
  list1_->setSelectionMode(QAbstractItemView::SingleSelection);
  const QFontMetrics metrics(list1_->font());
  list1_->setMinimumSize(metrics.horizontalAdvance(QString(kLineCharacters + 2, QLatin1Char('0'))) +
                             list1_->verticalScrollBar()->sizeHint().width() + 2 * list1_->frameWidth(),
                         kVisibleLines * metrics.lineSpacing());

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(command2_);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(make_headings(*list1_, this));
  layout->addWidget(list1_, 1);
  layout->addWidget(label1_);
  layout->addWidget(label2_);
  layout->addLayout(buttons);

  connect(list1_, &QListWidget::itemDoubleClicked, this,
          [this](QListWidgetItem* item) { guarded([&] { List1_DblClick(list1_->row(item)); }); });
  connect(command2_, &QPushButton::clicked, this, [this] { guarded([&] { Command2_Click(); }); });
  Form_Load();
}

void ShortMessageLoad::Form_Load() {
  tests_ = find_short_tests(session());
  scanned_file_ = session().file;
  list1_->clear();
  for (const std::string& line : tests_.lines) list1_->addItem(QString::fromStdString(line));
  label1_->setText(QString::fromStdString(tests_.Label1));
  label2_->setText(QString::fromStdString(tests_.Label2));
}

void ShortMessageLoad::List1_DblClick(int row) {
  if (scanned_file_.lock() != session().file) {
    // Another file was loaded since the scan: list its tests instead, for the user to choose anew.
    Form_Load();
    return;
  }
  session().Current_Science_Index = science_index_of_line(tests_, row + 1);
  workstation().close_view(ViewKind::ShortTest);
  // An evaluation that cannot be made (no limit file, say) was reported; the list stays for
  // another choice.
  ChildView* shown = workstation().show_view(ViewKind::ShortTest);
  if (!shown) return;
  if (auto* test = qobject_cast<ShortTest*>(shown)) test->set_list_position(row + 1, tests_.Test_Count());
  close_later();
}

void ShortMessageLoad::Command2_Click() { close_later(); }

void ShortMessageLoad::close_later() {
  // The list closes once the click that asked for it is over: the widget sending it must
  // outlive its signal.
  QPointer<ShortMessageLoad> self(this);
  Workstation* station = &workstation();
  QTimer::singleShot(0, station, [self, station] {
    if (self && station->view(ViewKind::ShortTestList) == self) station->close_view(ViewKind::ShortTestList);
  });
  if (QWidget* outer = frame()) outer->hide();
}

QString ShortMessageLoad::label1() const { return label1_->text(); }

QString ShortMessageLoad::label2() const { return label2_->text(); }

}  // namespace morvane
