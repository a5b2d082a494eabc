// SPDX-License-Identifier: MIT
#include "concise_view.h"

#include <algorithm>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>

#include "core/session.h"
#include "fixed_font.h"
#include "workstation.h"

namespace morvane {

Concise_Form::Concise_Form(Workstation& workstation)
    : ChildView(workstation, ViewKind::Concise),
      frame_label_(new QLabel(this)),
      scroll_(new QScrollBar(Qt::Vertical, this)),
      command1_(new QPushButton("Pause", this)) {
  setWindowTitle("Concise Data");
  frame_label_->setObjectName("Label15");
  scroll_->setObjectName("VScroll1");
  command1_->setObjectName("Command1");

  auto* grid = new QGridLayout(this);
  grid->addWidget(new QLabel("Lander Packet Number", this), 0, 0);
  grid->addWidget(frame_label_, 0, 1);
  for (int k = 0; k < kConciseSlots; ++k) {
    auto* slot = new QLabel(this);
    slot->setObjectName(QStringLiteral("Label16_%1").arg(k));
    slot->setFont(fixed_pitch_font());
    slot->setMinimumWidth(slot->fontMetrics().horizontalAdvance(QString(26, QChar('0'))));
    grid->addWidget(new QLabel(tr("Packet %1").arg(k + 1), this), k + 1, 0);
    grid->addWidget(slot, k + 1, 1);
    slots_[static_cast<size_t>(k)] = slot;
  }
  grid->addWidget(scroll_, 0, 2, kConciseSlots + 1, 1);
  grid->addWidget(command1_, kConciseSlots + 1, 0, 1, 3, Qt::AlignHCenter);
  grid->setColumnStretch(1, 1);

  set_frame_range(std::max<int32_t>(session().Packet_Count, 1));
  scroll_->setValue(1);
  connect(scroll_, &QScrollBar::valueChanged, this, [this](int value) { Show_Lander_Packet(value); });
  connect(command1_, &QPushButton::clicked, this, &Concise_Form::Command1_Click);
  Show_Lander_Packet(1);
}

void Concise_Form::set_frame_range(int32_t last) {
  const QSignalBlocker quiet(scroll_);
  scroll_->setRange(1, std::max<int32_t>(last, 1));
  scroll_->setPageStep(10);
}

void Concise_Form::Show_Lander_Packet(int32_t frame) {
  // With no file there is no frame to walk: the slots stay empty.
  if (!session().loaded()) {
    for (QLabel* slot : slots_) slot->clear();
    frame_label_->setText(QString::number(frame));
    return;
  }
  // A frame the file does not hold is reported, and the slots keep what they showed.
  guarded([&] {
    const ConciseSlots texts = morvane::Show_Lander_Packet(session(), frame);
    for (size_t k = 0; k < texts.size(); ++k) slots_[k]->setText(QString::fromStdString(texts[k]));
    frame_label_->setText(QString::number(frame));
  });
}

void Concise_Form::update_realtime() {
  const int32_t newest = std::max<int32_t>(session().Packet_Count, 1);
  set_frame_range(newest);
  {
    const QSignalBlocker quiet(scroll_);
    scroll_->setValue(newest);
  }
  Show_Lander_Packet(newest);
}

void Concise_Form::Command1_Click() {
  // The button pauses and resumes the passes even when collection is off, as it always did.
  const bool pause = workstation().collection_ticking();
  workstation().set_collection_ticking(!pause);
  command1_->setText(pause ? "Continue" : "Pause");
}

QString Concise_Form::slot_text(int k) const { return slots_[static_cast<size_t>(k)]->text(); }

QString Concise_Form::frame_text() const { return frame_label_->text(); }

}  // namespace morvane
