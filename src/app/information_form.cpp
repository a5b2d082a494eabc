// SPDX-License-Identifier: MIT
#include "information_form.h"

#include <utility>

#include <QHBoxLayout>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <QWheelEvent>

#include "core/session.h"
#include "drawing_view.h"
#include "fixed_font.h"
#include "raw_link.h"

namespace morvane {

namespace {

// The raw dump holds eight words a row; a ZEB record's 136 items take seventeen rows.
constexpr int kDumpWidth = 6200;
constexpr int kDumpRowHeight = 250;
constexpr int kDumpMargin = 60;
int dump_height(FileFormat type) {
  const int last_item = type == FileFormat::ZEB ? kZebItemsPerRecord : InformationWords::kWordTexts;
  return dump_grid_position(last_item, type != FileFormat::ZEB).y + kDumpRowHeight + kDumpMargin;
}

// The translation area holds the longest line and a dump table's three rows below y = 600.
constexpr int kTranslationWidth = 8600;
constexpr int kTranslationHeight = 6 * kTranslationRowHeight + 100;
// Its rows are 200 twips (10 points) apart: the text is set a little smaller so they never touch.
constexpr int kTranslationPointSize = 8;

constexpr int kPageEntries = 10;

QLabel* named_label(const char* name, const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(name);
  return label;
}

}  // namespace

Information_Form::Information_Form(Workstation& workstation)
    : ChildView(workstation, ViewKind::Information),
      label2_(named_label("Label2", {}, this)),
      label3_(named_label("Label3", {}, this)),
      label5_(named_label("Label5", {}, this)),
      label7_(named_label("Label7", {}, this)),
      label9_(named_label("Label9", {}, this)),
      picture1_(new DrawingView(this)),
      picture2_(new DrawingView(this)),
      scroll_(new QScrollBar(Qt::Vertical, this)) {
  setWindowTitle(QString::fromUtf8(kInformationCaption));
  picture1_->setObjectName("Picture1");
  picture1_->setFont(fixed_pitch_font());
  fit_dump_to_format();
  picture2_->setObjectName("Picture2");
  QFont translation_font = font();
  translation_font.setPointSize(kTranslationPointSize);
  picture2_->setFont(translation_font);
  picture2_->set_surface_twips(kTranslationWidth, kTranslationHeight);
  picture2_->setMinimumSize(picture2_->sizeHint());
  scroll_->setObjectName("VScroll1");
  label5_->setFont(fixed_pitch_font());  // the type label's blanks are part of it

  auto* title_row = new QHBoxLayout;
  title_row->addWidget(named_label("Label1", QString::fromUtf8(kRawDataHeading), this));
  title_row->addStretch(1);
  title_row->addWidget(label2_);
  title_row->addSpacing(24);
  title_row->addWidget(label3_);

  auto* header_row = new QHBoxLayout;
  auto add_pair = [&](const char* name, const char* heading, QLabel* value) {
    header_row->addWidget(named_label(name, QString::fromUtf8(heading), this));
    header_row->addWidget(value);
    header_row->addSpacing(24);
  };
  add_pair("Label4", kPacketTypeHeading, label5_);
  add_pair("Label6", kSequenceHeading, label7_);
  add_pair("Label8", kLanderTimeHeading, label9_);
  header_row->addStretch(1);

  auto* content = new QVBoxLayout;
  content->addLayout(title_row);
  content->addWidget(picture1_);
  content->addLayout(header_row);
  content->addWidget(picture2_, 1);

  auto* layout = new QHBoxLayout(this);
  layout->addLayout(content, 1);
  layout->addWidget(scroll_);

  // Form_Load: the scroll bar takes the list; a list with entries shows the current one.
  const int32_t count = session().catalogue.Information_Count();
  scroll_->setRange(1, InformationPresenter::scroll_maximum(session()));
  scroll_->setPageStep(kPageEntries);
  connect(scroll_, &QScrollBar::valueChanged, this, &Information_Form::VScroll1_Change);
  add_show_in_raw_frame(*this, [this]() -> std::optional<RawMark> {
    // The window outlives a load: its entry belongs to the file it was read from.
    const Session& s = session();
    if (shown_file_.expired() || shown_file_.lock() != s.file) return {};
    const Packet_Entry& entry = s.catalogue.Information_List.at(scroll_->value());
    return packet_mark(s.File_Type, entry);
  });
  if (count >= 1) {
    Update();
    shown_on_load_ = true;
  }
}

void Information_Form::Update() {
  // The summary opens the window, which shows the current entry, and then asks for it: it is
  // not read (nor its error shown) a second time.
  const bool just_shown = std::exchange(shown_on_load_, false);
  if (just_shown && scroll_->value() == session().Current_Information_Index) return;
  {
    const QSignalBlocker quiet(scroll_);
    scroll_->setRange(1, InformationPresenter::scroll_maximum(session()));
    scroll_->setValue(session().Current_Information_Index);
  }
  VScroll1_Change(scroll_->value());
}

void Information_Form::VScroll1_Change(int value) {
  shown_on_load_ = false;
  if (session().catalogue.Information_Count() < 1) return;  // nothing to show
  guarded([&] { view_.show(session(), value); });
  shown_file_ = session().file;
  show_decoded();
}

void Information_Form::show_decoded() {
  const InformationLabels& labels = view_.labels();
  label2_->setText(QString::fromStdString(labels.Label2));
  label3_->setText(QString::fromStdString(labels.Label3));
  label5_->setText(QString::fromStdString(labels.Label5));
  label7_->setText(QString::fromStdString(labels.Label7));
  label9_->setText(QString::fromStdString(labels.Label9));
  fit_dump_to_format();
  picture1_->set_drawing(view_.raw_dump());
  picture2_->set_drawing(view_.translation_drawing());
}

void Information_Form::fit_dump_to_format() {
  // The window outlives a load (it is not rebuilt), so a ZEB file may follow a binary one.
  picture1_->set_surface_twips(kDumpWidth, dump_height(session().File_Type));
  picture1_->setMinimumSize(picture1_->sizeHint());
}

QLabel* Information_Form::label(int number) const {
  switch (number) {
    case 2:
      return label2_;
    case 3:
      return label3_;
    case 5:
      return label5_;
    case 7:
      return label7_;
    case 9:
      return label9_;
    default:
      return findChild<QLabel*>(QStringLiteral("Label%1").arg(number));
  }
}

void Information_Form::wheelEvent(QWheelEvent* event) {
  const int steps = event->angleDelta().y() / 120;
  if (steps != 0) scroll_->setValue(scroll_->value() - steps);
  event->accept();
}

}  // namespace morvane
