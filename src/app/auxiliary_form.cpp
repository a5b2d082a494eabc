// SPDX-License-Identifier: MIT
#include "auxiliary_form.h"

#include <QGridLayout>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "core/session.h"
#include "dialogs.h"
#include "drawing_view.h"
#include "error_trap.h"
#include "form_widgets.h"
#include "raw_link.h"
#include "workstation.h"

namespace morvane {

namespace {

// The table's widest column heading ends near 7300 twips; 29 readings reach 6600 down.
constexpr int kSurfaceWidth = 7500;
constexpr int kSurfaceHeight = 220 * kMaxAuxReadings + 500;
constexpr int kPagePackets = 10;

QLabel* caption(QWidget* parent, const char* text) { return new QLabel(QString::fromUtf8(text), parent); }

}  // namespace

Auxiliary_form::Auxiliary_form(Workstation& workstation)
    : ChildView(workstation, ViewKind::Auxiliary),
      notice_(new QLabel(this)),
      aux_number_(value_label(this, "Label_Aux_Number")),
      sequence_(value_label(this, "Label_Sequence")),
      lander_time_(value_label(this, "Label_Lander_Time")),
      packet_count_(value_label(this, "Label_Packet_Count")),
      ad590_(value_label(this, "Label_AD590")),
      channel_count_(value_label(this, "Label_Channel_Count")),
      scroll_(new QScrollBar(Qt::Vertical, this)),
      picture_(new DrawingView(this)) {
  setWindowTitle(QString::fromUtf8(kAuxiliaryCaption));
  notice_->setObjectName("Notice");
  scroll_->setObjectName("VScroll1");
  picture_->setObjectName("Picture1");
  picture_->setFont(page_font(picture_->font()));
  picture_->set_surface_twips(kSurfaceWidth, kSurfaceHeight);
  picture_->setMinimumSize(picture_->sizeHint());
  notice_->setAlignment(Qt::AlignCenter);
  notice_->setMinimumSize(picture_->sizeHint());
  notice_->setVisible(false);

  auto* header = new QGridLayout;
  header->addWidget(caption(this, kAuxiliaryLabelCaptions[0]), 0, 0);
  header->addWidget(aux_number_, 0, 1);
  header->addWidget(caption(this, kAuxiliaryLabelCaptions[1]), 0, 2);
  header->addWidget(sequence_, 0, 3);
  header->addWidget(caption(this, kAuxiliaryLabelCaptions[2]), 0, 4);
  header->addWidget(lander_time_, 0, 5);
  header->addWidget(caption(this, kAuxiliaryStaticTexts[1]), 1, 0);
  header->addWidget(packet_count_, 1, 1);
  header->addWidget(caption(this, kAuxiliaryStaticTexts[2]), 1, 2, 1, 3);
  header->addWidget(ad590_, 1, 5);
  header->addWidget(caption(this, kAuxiliaryStaticTexts[0]), 2, 0);
  header->addWidget(channel_count_, 2, 1);
  header->setColumnStretch(1, 1);
  header->setColumnStretch(3, 1);
  header->setColumnStretch(5, 1);

  auto* layout = new QGridLayout(this);
  layout->addLayout(header, 0, 0, 1, 2);
  layout->addWidget(picture_, 1, 0);
  layout->addWidget(notice_, 1, 0);
  layout->addWidget(scroll_, 1, 1);
  layout->addWidget(caption(this, kAuxiliaryStaticTexts[3]), 2, 0, 1, 2);
  layout->setRowStretch(1, 1);

  connect(scroll_, &QScrollBar::valueChanged, this, &Auxiliary_form::VScroll1_Change);
  add_show_in_raw_frame(*this, [this]() -> std::optional<RawMark> {
    const auto number = static_cast<size_t>(state_.Current_Aux_Number);
    if (file_replaced() || notice_->isVisibleTo(this) || number < 1 || number > state_.Aux_Index.size()) return {};
    return packet_mark(session().File_Type, session().catalogue.Science_List.at(state_.Aux_Index[number - 1]));
  });
  open();
}

bool Auxiliary_form::file_replaced() const { return file_.lock() != session().file; }

void Auxiliary_form::open() {
  file_ = session().file;
  // Where the original view failed to open, this one says why.
  if (!session().loaded()) return show_notice(kNoFileNotice);
  if (session().catalogue.counters.Auxiliary_Count() < 1) return show_notice(kNoAuxiliaryNotice);
  guarded([&] {
    const AuxOpening opening = state_.Form_Load(session());
    packet_count_->setText(QString::fromStdString(opening.packet_count));
    ad590_->setText(QString::fromStdString(opening.ad590_text));
    {
      const QSignalBlocker quiet(scroll_);
      scroll_->setEnabled(true);
      scroll_->setRange(1, opening.scroll_maximum);
      scroll_->setPageStep(kPagePackets);
      scroll_->setValue(opening.scroll_value);
    }
    notice_->setVisible(false);
    picture_->setVisible(true);
    show_packet();
  });
}

void Auxiliary_form::show_notice(const char* text) {
  state_ = AuxiliaryPresenter{};
  for (QLabel* label : {aux_number_, sequence_, lander_time_, packet_count_, channel_count_}) label->clear();
  ad590_->setText(QString::fromStdString(ad590_temperature_text(session().config)));
  scroll_->setEnabled(false);
  picture_->clear();
  picture_->setVisible(false);
  notice_->setText(QString::fromUtf8(text));
  notice_->setVisible(true);
}

void Auxiliary_form::show_packet() {
  const bool shown = guarded([&] {
    const AuxPage page = state_.Update_Auxiliary_Packet_Info(session());
    picture_->set_drawing(page.table.drawing);
    aux_number_->setText(QString::fromStdString(page.aux_number));
    sequence_->setText(QString::fromStdString(page.sequence));
    lander_time_->setText(QString::fromStdString(page.lander_time));
    channel_count_->setText(QString::fromStdString(page.channel_count));
    // A reading of no sensor ends the table: the rows before it are shown, the error told.
    if (page.table.error) workstation().dialogs().message(this, error_text(*page.table.error));
  });
  if (!shown) {
    // The packet could not be read: nothing of it is shown but its number.
    picture_->clear();
    for (QLabel* label : {sequence_, lander_time_, channel_count_}) label->clear();
    aux_number_->setText(QString::number(state_.Current_Aux_Number));
  }
}

void Auxiliary_form::VScroll1_Change(int value) {
  if (file_replaced()) {
    // Another file was loaded since the view opened: it starts over on that file.
    state_ = AuxiliaryPresenter{};
    return open();
  }
  state_.Current_Aux_Number = value;
  show_packet();
}

void Auxiliary_form::show_current_entry() {
  if (file_replaced()) {
    state_ = AuxiliaryPresenter{};
  } else if (shows(session().Current_Science_Index)) {
    return;  // the view has just opened on it
  }
  open();
}

bool Auxiliary_form::shows(int32_t science_index) const {
  const auto number = static_cast<size_t>(state_.Current_Aux_Number);
  return number >= 1 && number <= state_.Aux_Index.size() && state_.Aux_Index[number - 1] == science_index;
}

void Auxiliary_form::calibration_changed(CalibrationTable /*table*/) {
  if (file_replaced() || state_.Aux_Index.empty()) return show_current_entry();
  ad590_->setText(QString::fromStdString(ad590_temperature_text(session().config)));
  show_packet();
}

QString Auxiliary_form::label_text(const std::string& caption) const {
  const std::pair<const char*, const QLabel*> labels[] = {
      {kAuxiliaryLabelCaptions[0], aux_number_},  {kAuxiliaryLabelCaptions[1], sequence_},
      {kAuxiliaryLabelCaptions[2], lander_time_}, {kAuxiliaryStaticTexts[1], packet_count_},
      {kAuxiliaryStaticTexts[2], ad590_},         {kAuxiliaryStaticTexts[0], channel_count_}};
  for (const auto& [text, label] : labels) {
    if (caption == text) return label->text();
  }
  return {};
}

QString Auxiliary_form::notice() const { return notice_->isVisibleTo(this) ? notice_->text() : QString(); }

void Auxiliary_form::wheelEvent(QWheelEvent* event) {
  const int steps = event->angleDelta().y() / 120;
  if (steps != 0 && scroll_->isEnabled()) scroll_->setValue(scroll_->value() - steps);
  event->accept();
}

}  // namespace morvane
