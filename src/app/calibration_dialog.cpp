// SPDX-License-Identifier: MIT
#include "calibration_dialog.h"

#include <algorithm>

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "core/session.h"
#include "dialogs.h"
#include "twips.h"
#include "workstation.h"

namespace morvane {

namespace {

// The columns of the rows, in twips: sensor name, atmosphere reading, vacuum reading.
constexpr int kNameX = 0;
constexpr int kAtmosphereX = 1700;
constexpr int kVacuumX = 4300;
constexpr int kNameWidth = 1600;
constexpr int kEntryWidth = 2300;
constexpr int kRowsWidth = kVacuumX + kEntryWidth;
// The column captions take the first 300 twips; row i lies 400 twips below row i - 1.
constexpr int kFirstRowY = 300;

// Puts a widget at a place given in twips of its parent, `height` pixels high.
void place(QWidget* widget, int x, int y, int width, int height) {
  const QWidget& parent = *widget->parentWidget();
  const QPoint at = twips_to_pixels(x, y, parent);
  widget->setGeometry(at.x(), at.y(), twips_to_pixels(width, parent.logicalDpiX()), height);
}

}  // namespace

CalibrationDialog::CalibrationDialog(Workstation& workstation, WriteFunction write)
    : ChildView(workstation, ViewKind::PressureCalibration),
      editor_(std::make_unique<Calibration>(session().config, std::move(write))) {
  setWindowTitle(QString::fromUtf8(kCalibrationCaption));

  auto* group = new QGroupBox(QString::fromUtf8(kCalibrationGroupCaption), this);
  group->setObjectName("Frame1");
  auto* rows = new QWidget(group);
  const int count = static_cast<int>(editor_->rows().size());
  static constexpr int kCaptionX[] = {kNameX, kAtmosphereX, kVacuumX};
  for (size_t c = 0; c < std::size(kCalibrationColumnCaptions); ++c) {
    auto* caption = new QLabel(QString::fromUtf8(kCalibrationColumnCaptions[c]), rows);
    place(caption, kCaptionX[c], 0, kEntryWidth + 200, caption->sizeHint().height());
  }
  for (int i = 0; i < count; ++i) {
    const int y = kFirstRowY + kCalibrationRowSpacing * i;
    auto* name = new QLabel(rows);
    name->setObjectName(QStringLiteral("Label3_%1").arg(i + 1));
    auto* atmosphere = new QLineEdit(rows);
    atmosphere->setObjectName(QStringLiteral("Text2_%1").arg(i + 1));
    auto* vacuum = new QLineEdit(rows);
    vacuum->setObjectName(QStringLiteral("Text3_%1").arg(i + 1));
    // Each row is as high as an entry, within its 400 twips; the name is centred beside them.
    const int height =
        std::min(atmosphere->sizeHint().height(), twips_to_pixels(kCalibrationRowSpacing, logicalDpiY()));
    name->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    place(name, kNameX, y, kNameWidth, height);
    place(atmosphere, kAtmosphereX, y, kEntryWidth, height);
    place(vacuum, kVacuumX, y, kEntryWidth, height);
    names_.push_back(name);
    atmosphere_.push_back(atmosphere);
    vacuum_.push_back(vacuum);
  }
  const QPoint rows_size = twips_to_pixels(kRowsWidth, kFirstRowY + kCalibrationRowSpacing * count, *rows);
  rows->setFixedSize(rows_size.x(), rows_size.y());
  auto* group_layout = new QVBoxLayout(group);
  group_layout->addWidget(rows);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(group);
  auto* choices = new QGridLayout;
  struct Button {
    const char* name;
    const char* caption;
    const char* explanation;
    void (CalibrationDialog::*click)();
  };
  static constexpr Button kChoices[] = {
      {"Command3", kModifyButton, kModifyExplanation, &CalibrationDialog::Command3_Click},
      {"Command4", kResetButton, kResetExplanation, &CalibrationDialog::Command4_Click},
      {"Command1", kAcceptButton, nullptr, &CalibrationDialog::Command1_Click},
      {"Command2", kCancelButton, nullptr, &CalibrationDialog::Command2_Click},
  };
  auto* closing = new QHBoxLayout;
  closing->addStretch(1);
  int row = 0;
  for (const Button& b : kChoices) {
    auto* button = new QPushButton(QString::fromUtf8(b.caption), this);
    button->setObjectName(b.name);
    connect(button, &QPushButton::clicked, this, b.click);
    buttons_.push_back(button);
    if (b.explanation) {
      choices->addWidget(button, row, 0);
      choices->addWidget(new QLabel(QString::fromUtf8(b.explanation), this), row++, 1);
    } else {
      closing->addWidget(button);
    }
  }
  choices->setColumnStretch(1, 1);
  layout->addLayout(choices);
  layout->addLayout(closing);
  show_rows();
}

void CalibrationDialog::show_rows() {
  const std::vector<Calibration::Row>& rows = editor_->rows();
  for (size_t i = 0; i < rows.size(); ++i) {
    const Calibration::Row& row = rows[i];
    names_[i]->setText(QString::fromStdString(row.sensor_name));
    const bool editable = editor_->entries_enabled() && row.has_record;
    for (const auto& [entry, text] :
         {std::pair{atmosphere_[i], &row.atmosphere_text}, {vacuum_[i], &row.vacuum_text}}) {
      const QString shown = QString::fromStdString(*text);
      if (entry->text() != shown) entry->setText(shown);
      entry->setEnabled(editable);
    }
  }
}

void CalibrationDialog::run(const std::function<void()>& click) {
  guarded([&] {
    for (size_t i = 0; i < atmosphere_.size(); ++i) {
      editor_->set_atmosphere_text(i, atmosphere_[i]->text().toStdString());
      editor_->set_vacuum_text(i, vacuum_[i]->text().toStdString());
    }
    click();
    Dialogs& dialogs = workstation().dialogs();
    while (editor_->question() != Calibration::Question::None) {
      const QString question = QString::fromUtf8(editor_->question_text());
      const bool yes =
          editor_->question_is_yes_no() ? dialogs.ask_yes_no(this, question) : dialogs.ask_ok_cancel(this, question);
      editor_->answer(yes);
    }
  });
  show_rows();
  if (editor_->closed()) close_frame();
}

void CalibrationDialog::Command1_Click() {
  run([&] { editor_->Command1_Click(); });
}

void CalibrationDialog::Command2_Click() {
  run([&] { editor_->Command2_Click(); });
}

void CalibrationDialog::Command3_Click() {
  run([&] { editor_->Command3_Click(); });
}

void CalibrationDialog::Command4_Click() {
  run([&] { editor_->Command4_Click(); });
}

void CalibrationDialog::closeEvent(QCloseEvent* event) {
  // The window's close button cancels: the saved calibration comes back into memory.
  if (!editor_->closed()) guarded([&] { editor_->Command2_Click(); });
  // The conversions read the table: open views show what it now holds.
  workstation().announce_calibration_change(CalibrationTable::PressureSensors);
  ChildView::closeEvent(event);
}

QString CalibrationDialog::sensor_name(int row) const { return names_[static_cast<size_t>(row)]->text(); }

QPushButton* CalibrationDialog::button(const char* caption) const {
  for (QPushButton* b : buttons_) {
    if (b->text() == QString::fromUtf8(caption)) return b;
  }
  return nullptr;
}

}  // namespace morvane
