// SPDX-License-Identifier: MIT
#include "ad590_dialog.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "calibration/pressure_calibration.h"
#include "core/session.h"
#include "workstation.h"

namespace morvane {

namespace {

// Where the dialog appears in the main window, in twips.
constexpr int kDialogLeft = 2400;
constexpr int kDialogTop = 1200;

}  // namespace

AD590Dialog::AD590Dialog(Workstation& workstation)
    : ChildView(workstation, ViewKind::AD590),
      setting_(session().config),
      text1_(new QLineEdit(QString::fromStdString(setting_.text()), this)),
      command1_(new QPushButton(QString::fromUtf8(kAcceptButton), this)),
      command2_(new QPushButton(QString::fromUtf8(kCancelButton), this)) {
  setWindowTitle(QString::fromUtf8(kAD590Caption));
  text1_->setObjectName("Text1");
  command1_->setObjectName("Command1");
  command2_->setObjectName("Command2");
  auto* label1 = new QLabel(QString::fromUtf8(kAD590Label), this);
  auto* label2 = new QLabel(QString::fromUtf8(kAD590Explanation), this);
  label1->setObjectName("Label1");
  label2->setObjectName("Label2");
  text1_->setMaximumWidth(text1_->fontMetrics().horizontalAdvance(QString(12, QChar('0'))));
  command1_->setDefault(true);

  auto* layout = new QGridLayout(this);
  layout->addWidget(label1, 0, 0);
  layout->addWidget(text1_, 0, 1);
  layout->addWidget(label2, 1, 0, 1, 2);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(command1_);
  buttons->addWidget(command2_);
  layout->addLayout(buttons, 2, 0, 1, 2);

  connect(command1_, &QPushButton::clicked, this, &AD590Dialog::Command1_Click);
  connect(command2_, &QPushButton::clicked, this, &AD590Dialog::Command2_Click);
  connect(text1_, &QLineEdit::returnPressed, this, &AD590Dialog::Command1_Click);
}

void AD590Dialog::showEvent(QShowEvent* event) {
  ChildView::showEvent(event);
  if (placed_) return;
  placed_ = true;
  place_at(kDialogLeft, kDialogTop);
}

void AD590Dialog::Command1_Click() {
  guarded([&] {
    if (!setting_.Command1_Click(session().config, text1_->text().toStdString())) return;
    // The auxiliary view shows the new correction at once rather than at its next scroll.
    workstation().announce_calibration_change(CalibrationTable::AD590);
  });
  close_frame();
}

void AD590Dialog::Command2_Click() { close_frame(); }

}  // namespace morvane
