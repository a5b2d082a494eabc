// SPDX-License-Identifier: MIT
#include "export_form.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressDialog>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "core/session.h"
#include "dialogs.h"
#include "export/auxiliary_export.h"
#include "export/export_output.h"
#include "settings.h"
#include "workstation.h"

namespace morvane {

namespace {

// The progress dialog shows itself once an export has lasted this long; its bar has this many steps.
constexpr int kProgressShowsAfterMilliseconds = 400;
constexpr int kProgressSteps = 1000;
// The sensor boxes of the housekeeping dialog run down this many rows, then on in the next column.
constexpr int kSensorRows = 12;

QString text_of(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

}  // namespace

ExportKind export_kind_of(ViewKind kind) {
  switch (kind) {
    case ViewKind::ExportAuxiliary: return ExportKind::Auxiliary;
    case ViewKind::ExportDockingStationCalibration: return ExportKind::DS_Calibration;
    case ViewKind::ExportSpectra: return ExportKind::Spectra;
    default: return ExportKind::Housekeeping;
  }
}

ViewKind view_kind_of(ExportKind kind) {
  switch (kind) {
    case ExportKind::Housekeeping: return ViewKind::ExportHousekeeping;
    case ExportKind::Auxiliary: return ViewKind::ExportAuxiliary;
    case ExportKind::DS_Calibration: return ViewKind::ExportDockingStationCalibration;
    case ExportKind::Spectra: return ViewKind::ExportSpectra;
  }
  return ViewKind::ExportHousekeeping;
}

ExportForm::ExportForm(Workstation& workstation, ViewKind kind)
    : ChildView(workstation, kind),
      export_kind_(export_kind_of(kind)),
      dialog_(std::make_unique<ExportPresenter>(export_kind_, session())) {
  setWindowTitle(text_of(dialog_->texts().caption));

  command1_ = new QPushButton(text_of(kExportCaption), this);
  command2_ = new QPushButton(text_of(kCancelCaption), this);
  command1_->setObjectName("Command1");
  command2_->setObjectName("Command2");
  command1_->setDefault(true);

  auto* layout = new QGridLayout(this);
  layout->addWidget(make_range_frame(), 0, 0);
  layout->addWidget(make_delimiter_frame(), 0, 1);
  layout->addWidget(make_format_frame(), 1, 0, 1, 2);
  if (export_kind_ == ExportKind::Housekeeping) layout->addWidget(make_sensor_frame(), 2, 0, 1, 2);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(command1_);
  buttons->addWidget(command2_);
  layout->addLayout(buttons, 3, 0, 1, 2);
  layout->setRowStretch(4, 1);

  connect(check2_, &QCheckBox::toggled, this, &ExportForm::Check2_Click);
  connect(formats_, &QButtonGroup::idToggled, this, [this] { update_ad590_field(); });
  connect(command1_, &QPushButton::clicked, this, &ExportForm::Command1_Click);
  connect(command2_, &QPushButton::clicked, this, &ExportForm::Command2_Click);
  for (QLineEdit* field : {text1_, text2_, ad590_}) {
    if (field) connect(field, &QLineEdit::returnPressed, command1_, &QPushButton::click);
  }
  show_dialog();
}

QWidget* ExportForm::make_range_frame() {
  auto* frame = new QGroupBox(text_of(dialog_->texts().range_frame), this);
  frame->setObjectName("Frame1");
  text1_ = new QLineEdit(frame);
  text2_ = new QLineEdit(frame);
  check2_ = new QCheckBox(text_of(kAllCaption), frame);
  text1_->setObjectName("Text1");
  text2_->setObjectName("Text2");
  check2_->setObjectName("Check2");
  const int field_width = text1_->fontMetrics().horizontalAdvance(QString(10, QLatin1Char('0')));
  for (QLineEdit* field : {text1_, text2_}) field->setMinimumWidth(field_width);
  auto* grid = new QGridLayout(frame);
  grid->addWidget(new QLabel(text_of(kFromCaption), frame), 0, 0);
  grid->addWidget(text1_, 0, 1);
  grid->addWidget(new QLabel(text_of(kToCaption), frame), 1, 0);
  grid->addWidget(text2_, 1, 1);
  grid->addWidget(check2_, 2, 1);
  return frame;
}

QWidget* ExportForm::make_delimiter_frame() {
  auto* frame = new QGroupBox(text_of(kDelimiterFrame), this);
  frame->setObjectName("Frame2");
  delimiters_ = new QButtonGroup(frame);
  auto* column = new QVBoxLayout(frame);
  for (size_t i = 0; i < kDelimiterOptions.size(); ++i) {
    auto* option = new QRadioButton(text_of(kDelimiterOptions[i].caption), frame);
    option->setObjectName(QStringLiteral("Option%1").arg(i + 1));
    delimiters_->addButton(option, static_cast<int>(i));
    column->addWidget(option);
  }
  column->addStretch(1);
  return frame;
}

QWidget* ExportForm::make_format_frame() {
  const ExportDialogTexts& texts = dialog_->texts();
  auto* frame = new QGroupBox(text_of(texts.format_frame), this);
  frame->setObjectName("Frame3");
  formats_ = new QButtonGroup(frame);
  auto* grid = new QGridLayout(frame);
  int row = 0;
  for (size_t i = 0; i < texts.formats.size(); ++i, ++row) {
    auto* option = new QRadioButton(text_of(texts.formats[i]), frame);
    option->setObjectName(QStringLiteral("Option%1").arg(i + 4));
    formats_->addButton(option, static_cast<int>(i));
    grid->addWidget(option, row, 0, 1, 2);
  }
  if (export_kind_ == ExportKind::Auxiliary) {
    ad590_ = new QLineEdit(frame);
    ad590_->setObjectName("Text3");
    ad590_->setMaximumWidth(ad590_->fontMetrics().horizontalAdvance(QString(12, QLatin1Char('0'))));
    auto* label = new QLabel(text_of(kAD590EntryCaption), frame);
    label->setBuddy(ad590_);
    grid->addWidget(label, row, 0);
    grid->addWidget(ad590_, row, 1, Qt::AlignLeft);
  }
  grid->setColumnStretch(1, 1);
  return frame;
}

QWidget* ExportForm::make_sensor_frame() {
  auto* frame = new QGroupBox(tr("Sensors"), this);
  frame->setObjectName("Frame4");
  auto* grid = new QGridLayout(frame);
  const std::vector<std::string>& captions = dialog_->sensor_captions;
  for (size_t i = 0; i < captions.size(); ++i) {
    // The box shows the sensor's column heading (an "&" as itself, not as an access key); the
    // number in its tip is the one the command line takes.
    QString caption = QString::fromStdString(captions[i]);
    auto* box = new QCheckBox(caption.replace(QLatin1Char('&'), QStringLiteral("&&")), frame);
    box->setObjectName(QStringLiteral("Check1(%1)").arg(i + 1));
    box->setToolTip(tr("Sensor %1").arg(i + 1));
    const int row = static_cast<int>(i) % kSensorRows;
    const int column = static_cast<int>(i) / kSensorRows;
    grid->addWidget(box, row, column);
    check1_.push_back(box);
  }
  return frame;
}

QRadioButton* ExportForm::delimiter_option(int index) const {
  return qobject_cast<QRadioButton*>(delimiters_->button(index));
}

QRadioButton* ExportForm::format_option(int index) const {
  return qobject_cast<QRadioButton*>(formats_->button(index));
}

int ExportForm::format_count() const { return static_cast<int>(formats_->buttons().size()); }

void ExportForm::show_dialog() {
  const ExportRange& range = dialog_->range();
  text1_->setText(QString::fromStdString(range.from_text()));
  text2_->setText(QString::fromStdString(range.to_text()));
  text1_->setEnabled(range.boxes_enabled());
  text2_->setEnabled(range.boxes_enabled());
  {
    const QSignalBlocker quiet(check2_);
    check2_->setChecked(range.all());
  }
  if (QAbstractButton* option = delimiters_->button(dialog_->delimiter)) option->setChecked(true);
  if (QAbstractButton* option = formats_->button(dialog_->format)) option->setChecked(true);
  for (size_t i = 0; i < check1_.size() && i < dialog_->sensors.size(); ++i) {
    check1_[i]->setChecked(dialog_->sensors[i]);
  }
  if (ad590_) ad590_->setText(QString::fromStdString(dialog_->ad590_text));
  update_ad590_field();
}

void ExportForm::apply_choices(ExportPresenter& dialog) const {
  ExportRange& range = dialog.range();
  range.Check2_Click(check2_->isChecked());
  if (!check2_->isChecked()) {
    range.set_from_text(text1_->text().toStdString());
    range.set_to_text(text2_->text().toStdString());
  }
  dialog.format = formats_->checkedId();
  dialog.delimiter = delimiters_->checkedId();
  for (size_t i = 0; i < check1_.size() && i < dialog.sensors.size(); ++i) dialog.sensors[i] = check1_[i]->isChecked();
  if (ad590_) dialog.ad590_text = ad590_->text().toStdString();
}

void ExportForm::update_ad590_field() {
  // The temperature counts only for the format that corrects by it.
  if (ad590_) ad590_->setEnabled(formats_->checkedId() == static_cast<int>(AuxFormat::Calibrated_AD590));
}

void ExportForm::Check2_Click() {
  ExportRange& range = dialog_->range();
  range.set_from_text(text1_->text().toStdString());
  range.set_to_text(text2_->text().toStdString());
  range.Check2_Click(check2_->isChecked());
  show_dialog();
}

void ExportForm::Command1_Click() {
  guarded([&] { export_to_file(); });
}

void ExportForm::export_to_file() {
  Dialogs& dialogs = workstation().dialogs();
  if (const auto refused = export_guard(session(), export_kind_)) {
    dialogs.message(this, QString::fromStdString(*refused));
    return;
  }
  // The entries are counted anew: since the window opened, a load may have replaced the file, a
  // byte-order switch changed its words, or collection added packets.
  auto current = std::make_unique<ExportPresenter>(export_kind_, session());
  apply_choices(*current);
  dialog_ = std::move(current);
  const ExportPresenter::Validation validation = dialog_->Command1_Click();
  if (!validation.request) {
    dialogs.message(this, QString::fromStdString(validation.message));
    show_dialog();  // the entries as reset
    return;
  }
  show_dialog();

  const QString folder = start_folder("export", QFileInfo(QString::fromStdString(session().File_Name)).absolutePath());
  // Comma-delimited text is what spreadsheets open as .csv: offered first when Comma is chosen.
  const QString delimited = tr("Delimited text (*.txt *.csv);;Excel workbook (*.xlsx);;All files (*)");
  const bool comma = kDelimiterOptions[static_cast<size_t>(dialog_->delimiter)].character == ',';
  const QString path = dialogs.save_file_name(this, windowTitle(), folder,
                                            comma ? tr("Comma-separated values (*.csv);;") + delimited : delimited);
  if (path.isEmpty()) return;  // cancelled: nothing is written
  set_folder_setting("export", QFileInfo(path).absolutePath());
  const std::string file = QFile::encodeName(path).toStdString();
  dialog_->check_fits(file, export_file_type(file), *validation.request);  // before a file is made
  const std::unique_ptr<ExportOutput> output =
      dialog_->open_output(file, export_file_type(file), *validation.request);
  if (!output) return;  // a file that cannot be created there ends the export silently
  write_with_progress(*validation.request, *output);
}

void ExportForm::write_with_progress(const ExportRequest& request, ExportOutput& output) {
  // The export runs on this thread, serving the windows at each progress report: the views read
  // the session as they paint and the housekeeping export writes its sensor records, so no other
  // thread may touch it. Collection, which extends the catalogue the export reads, waits.
  const PausedCollection paused(workstation());

  const QString shown_path = QDir::toNativeSeparators(QFile::decodeName(output.path().c_str()));
  QProgressDialog progress(tr("Exporting to %1").arg(shown_path), tr("Cancel"), 0, kProgressSteps, this);
  progress.setObjectName("ExportProgress");
  progress.setWindowTitle(windowTitle());
  progress.setWindowModality(Qt::WindowModal);
  progress.setMinimumDuration(kProgressShowsAfterMilliseconds);
  progress.setAutoClose(false);
  progress.setAutoReset(false);
  progress.setValue(0);  // starts the clock after which the dialog shows itself
  const ExportProgress report = [&](int64_t done, int64_t total) {
    // A value at the minimum would start the dialog's clock again.
    const int step = total > 0 ? static_cast<int>(done * kProgressSteps / total) : 0;
    if (step > 0) progress.setValue(step);
    QCoreApplication::processEvents();
    return !progress.wasCanceled();
  };
  const ExportResult result = dialog_->write(session(), request, output, report);
  if (result.cancelled && !output.partial_path().empty()) {
    const QString partial = QDir::toNativeSeparators(QFile::decodeName(output.partial_path().c_str()));
    const QString text = tr("Export cancelled: %1 is left as it was; the lines written so far are in %2");
    workstation().dialogs().message(this, text.arg(shown_path, partial));
  }
}

void ExportForm::Command2_Click() {
  close_frame();
}

}  // namespace morvane
