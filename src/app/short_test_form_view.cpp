// SPDX-License-Identifier: MIT
#include "short_test_form_view.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "core/session.h"
#include "functest/short_test_form.h"

namespace morvane {

TestForm::TestForm(Workstation& workstation)
    : ChildView(workstation, ViewKind::GeneralTests),
      text1_(new QLineEdit(this)),
      text2_(new QLineEdit(this)),
      text4_(new QLineEdit(this)),
      text5_(new QLineEdit(this)),
      command1_(new QPushButton(QString::fromUtf8(kTestFormButton), this)) {
  setWindowTitle(QString::fromUtf8(kTestFormCaption));
  text1_->setObjectName("Text1");
  text2_->setObjectName("Text2");
  text4_->setObjectName("Text4");
  text5_->setObjectName("Text5");
  command1_->setObjectName("Command1");
  // The results are for reading (and copying), not for typing.
  text4_->setReadOnly(true);
  text5_->setReadOnly(true);
  const int field_width = text1_->fontMetrics().horizontalAdvance(QString(14, QLatin1Char('0')));
  for (QLineEdit* field : {text1_, text2_, text4_}) field->setMinimumWidth(field_width);
  text5_->setMinimumWidth(field_width / 2);

  auto* grid = new QGridLayout(this);
  grid->addWidget(new QLabel(QString::fromUtf8(kSensorFieldLabel), this), 0, 0);
  grid->addWidget(text1_, 0, 1);
  grid->addWidget(new QLabel(QString::fromUtf8(kVoltageFieldLabel), this), 1, 0);
  grid->addWidget(text2_, 1, 1);
  grid->addWidget(new QLabel(QString::fromUtf8(kResultFieldLabel), this), 2, 0);
  grid->addWidget(text4_, 2, 1);
  grid->addWidget(text5_, 2, 2);
  grid->addWidget(command1_, 3, 1, Qt::AlignLeft);
  grid->setColumnStretch(1, 1);

  connect(command1_, &QPushButton::clicked, this, [this] { guarded([&] { Command1_Click(); }); });
  // Enter in either field converts, as the button does.
  connect(text1_, &QLineEdit::returnPressed, command1_, &QPushButton::click);
  connect(text2_, &QLineEdit::returnPressed, command1_, &QPushButton::click);
  Form_Load();
}

void TestForm::Form_Load() {
  const TestFormFields fields = test_form_fields(kept_voltage_);
  text1_->setText(QString::fromStdString(fields.sensor));
  text2_->setText(QString::fromStdString(fields.voltage));
}

void TestForm::Command1_Click() {
  const TestFormResult result =
      convert_test_form(session().config, text1_->text().toStdString(), text2_->text().toStdString());
  text4_->setText(QString::fromStdString(result.value_text));
  text5_->setText(QString::fromStdString(result.unit));
}

}  // namespace morvane
