// SPDX-License-Identifier: MIT
#include "short_test_view.h"

#include <QDir>
#include <QFileInfo>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPageLayout>
#include <QPageSize>
#include <QPdfWriter>
#include <QPrinter>
#include <QPushButton>
#include <QBuffer>
#include <QFile>
#include <QTabWidget>
#include <QTextDocument>
#include <QVBoxLayout>

#include "core/error.h"
#include "core/program_version.h"
#include "core/safe_file.h"
#include "core/session.h"
#include "dialogs.h"
#include "functest/report_provenance.h"
#include "functest/short_message_load.h"
#include "settings.h"
#include "workstation.h"

namespace morvane {

namespace {

constexpr Qt::Alignment kNumber = Qt::AlignRight | Qt::AlignVCenter;
constexpr Qt::Alignment k_text = Qt::AlignLeft | Qt::AlignVCenter;
constexpr Qt::Alignment kResult = Qt::AlignHCenter | Qt::AlignVCenter;
const QColor k_fail_red(255, 0, 0);

QString text_of(const std::string& text) { return QString::fromStdString(text); }

void show_cell(QLabel* label, const Cell& cell) {
  label->setText(text_of(cell.text));
  if (cell.red) {
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, k_fail_red);
    label->setPalette(palette);
  }
}

QLabel* heading(const char* text, QWidget* parent) {
  auto* label = new QLabel(QString::fromUtf8(text), parent);
  QFont font = label->font();
  font.setBold(true);
  label->setFont(font);
  return label;
}

// A tab page whose grid keeps its rows together at the top left.
QWidget* grid_page(QGridLayout*& grid) {
  auto* page = new QWidget;
  auto* outer = new QVBoxLayout(page);
  grid = new QGridLayout;
  grid->setHorizontalSpacing(24);
  grid->setVerticalSpacing(4);
  auto* row = new QHBoxLayout;
  row->addLayout(grid);
  row->addStretch(1);
  outer->addLayout(row);
  outer->addStretch(1);
  return page;
}

// The report's file type, by the extension of its name.
enum class ReportFormat { Text, Html, Pdf };

ReportFormat report_format(const QString& path) {
  const QString suffix = QFileInfo(path).suffix().toLower();
  if (suffix == "pdf") return ReportFormat::Pdf;
  if (suffix == "html" || suffix == "htm") return ReportFormat::Html;
  return ReportFormat::Text;
}

// The report's page: landscape, since the heater tables are eleven columns wide.
QPageLayout report_page() {
  return QPageLayout(QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(15, 12, 15, 12),
                     QPageLayout::Millimeter);
}

void print_html(const std::string& html, QPagedPaintDevice& device) {
  QTextDocument document;
  document.setHtml(QString::fromStdString(html));
  document.print(&device);
}

}  // namespace

ShortTest::ShortTest(Workstation& workstation)
    : ChildView(workstation, ViewKind::ShortTest), test_(open_short_test(workstation.session())) {
  const Session& s = session();
  source_.file_name = s.File_Name;
  source_.file_type = std::string(format_tag(s.File_Type));
  source_.science_index = s.Current_Science_Index;
  source_.evaluated_at = local_time_now();
  source_.program_version = kProgramVersion;
  evaluated_file_ = s.file;

  start_label_ = new QLabel(text_of(test_.start_label), this);
  start_label_->setObjectName("StartLabel");
  mode_title_ = new QLabel(text_of(test_.mode_title), this);
  mode_title_->setObjectName("ModeTitle");
  QFont title_font = mode_title_->font();
  title_font.setBold(true);
  title_font.setPointSizeF(title_font.pointSizeF() * 1.5);
  mode_title_->setFont(title_font);

  tabs_ = new QTabWidget(this);
  tabs_->setObjectName("SSTab1");
  tabs_->addTab(make_sensor_tab(), kShortTestTabs[0]);
  tabs_->addTab(make_current_tab(kValveHeadings[0], "Label14", "Label15", "Label16", "Label17", test_.valves),
                kShortTestTabs[1]);
  tabs_->addTab(make_current_tab(kInjectorValveHeadings[0], "Label20", "Label21", "Label22", "Label23",
                               test_.injector_valves),
                kShortTestTabs[2]);
  // The heater, reactor and L-valve tabs share one set of cells, numbered on from tab to tab.
  tabs_->addTab(make_heated_tab(kHeatedItemHeadings[0], test_.heaters, 0), kShortTestTabs[3]);
  tabs_->addTab(make_heated_tab(kHeatedItemHeadings[1], test_.large_reactors, 6), kShortTestTabs[4]);
  tabs_->addTab(make_heated_tab(kHeatedItemHeadings[2], test_.small_reactors, 11), kShortTestTabs[5]);
  tabs_->addTab(make_heated_tab(kHeatedItemHeadings[3], test_.l_valves, 16), kShortTestTabs[6]);
  tabs_->addTab(make_summary_tab(), kShortTestTabs[7]);

  print_ = new QPushButton(tr("Print..."), this);
  print_->setObjectName("PrintButton");
  save_ = new QPushButton(tr("Save report..."), this);
  save_->setObjectName("SaveReportButton");
  connect(print_, &QPushButton::clicked, this, [this] { guarded([&] { print_report(); }); });
  connect(save_, &QPushButton::clicked, this, [this] { guarded([&] { save_report(); }); });

  auto* top = new QHBoxLayout;
  top->addWidget(start_label_);
  top->addStretch(1);
  top->addWidget(mode_title_);
  top->addStretch(1);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  buttons->addWidget(print_);
  buttons->addWidget(save_);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(tabs_, 1);
  layout->addLayout(buttons);
}

QLabel* ShortTest::add_cell(QGridLayout* grid, QWidget* page, int row, int column, const char* name, int index,
                           const Cell& cell, Qt::Alignment alignment) {
  auto* label = new QLabel(page);
  label->setObjectName(QStringLiteral("%1_%2").arg(QString::fromUtf8(name)).arg(index));
  label->setAlignment(alignment);
  show_cell(label, cell);
  grid->addWidget(label, row, column);
  return label;
}

QLabel* ShortTest::cell(const char* name, int index) const {
  return findChild<QLabel*>(QStringLiteral("%1_%2").arg(QString::fromUtf8(name)).arg(index));
}

QWidget* ShortTest::make_sensor_tab() {
  QGridLayout* grid = nullptr;
  QWidget* page = grid_page(grid);
  grid->addWidget(heading(kSensorHeadings[0], page), 0, 0);
  grid->addWidget(heading(kSensorHeadings[1], page), 0, 1, 1, 3, Qt::AlignHCenter);
  grid->addWidget(heading(kSensorHeadings[2], page), 0, 4, Qt::AlignHCenter);
  for (int i = 0; i < static_cast<int>(test_.sensors.size()); ++i) {
    const SensorRow& row = test_.sensors[static_cast<size_t>(i)];
    const int r = i + 1;
    add_cell(grid, page, r, 0, "Label3", i, Cell{row.name}, k_text);
    add_cell(grid, page, r, 1, "Label4", i, row.initial, kNumber);
    add_cell(grid, page, r, 2, "Label5", i, row.final, kNumber);
    add_cell(grid, page, r, 3, "Label6", i, Cell{row.unit}, k_text);
    add_cell(grid, page, r, 4, "Label7", i, row.result, kResult);
  }
  return page;
}

QWidget* ShortTest::make_current_tab(const char* item_heading, const char* names, const char* rise_28v,
                                   const char* rise_5v, const char* result, const std::vector<ItemRow>& rows) {
  QGridLayout* grid = nullptr;
  QWidget* page = grid_page(grid);
  grid->addWidget(heading(item_heading, page), 0, 0);
  grid->addWidget(heading(kValveHeadings[1], page), 0, 1, Qt::AlignRight);
  grid->addWidget(heading(kValveHeadings[2], page), 0, 2, Qt::AlignRight);
  grid->addWidget(heading(kValveHeadings[3], page), 0, 3, Qt::AlignHCenter);
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    const ItemRow& row = rows[static_cast<size_t>(i)];
    const int r = i + 1;
    add_cell(grid, page, r, 0, names, i, Cell{row.name}, k_text);
    add_cell(grid, page, r, 1, rise_28v, i, row.rise_28v, kNumber);
    add_cell(grid, page, r, 2, rise_5v, i, row.rise_5v, kNumber);
    add_cell(grid, page, r, 3, result, i, row.result, kResult);
  }
  return page;
}

QWidget* ShortTest::make_heated_tab(const char* item_heading, const std::vector<ItemRow>& rows, int first_index) {
  QGridLayout* grid = nullptr;
  QWidget* page = grid_page(grid);
  // "28V Current (mA)", "5V Current (mA)", "Initial", "Final", "Increase", "Test Result", "Temperatures (   C)"
  const auto& h = kHeatedColumnHeadings;
  grid->addWidget(heading(item_heading, page), 1, 0);
  grid->addWidget(heading(h[0], page), 1, 1, Qt::AlignRight);
  grid->addWidget(heading(h[1], page), 1, 2, Qt::AlignRight);
  grid->addWidget(heading(h[6], page), 0, 3, 1, 3, Qt::AlignHCenter);
  grid->addWidget(heading(h[2], page), 1, 3, Qt::AlignRight);
  grid->addWidget(heading(h[3], page), 1, 4, Qt::AlignRight);
  grid->addWidget(heading(h[4], page), 1, 5, Qt::AlignRight);
  grid->addWidget(heading(h[5], page), 1, 6, Qt::AlignHCenter);
  for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
    const ItemRow& row = rows[static_cast<size_t>(i)];
    const int index = first_index + i;
    const int r = i + 2;
    add_cell(grid, page, r, 0, "Label25", index, Cell{row.name}, k_text);
    add_cell(grid, page, r, 1, "Label26", index, row.rise_28v, kNumber);
    add_cell(grid, page, r, 2, "Label27", index, row.rise_5v, kNumber);
    add_cell(grid, page, r, 3, "Label28", index, row.initial, kNumber);
    add_cell(grid, page, r, 4, "Label29", index, row.final, kNumber);
    add_cell(grid, page, r, 5, "Label30", index, row.increase, kNumber);
    add_cell(grid, page, r, 6, "Label31", index, row.result, kResult);
  }
  return page;
}

QWidget* ShortTest::make_summary_tab() {
  auto* page = new QWidget;

  auto* rails = new QGridLayout;
  rails->setHorizontalSpacing(24);
  rails->setVerticalSpacing(4);
  rails->addWidget(heading(kRailsHeading, page), 0, 0, 1, 4);
  rails->addWidget(new QLabel(QString::fromUtf8(kRailsSubheading), page), 1, 0, 1, 4);
  for (int i = 0; i < static_cast<int>(test_.rails.size()); ++i) {
    const RailRow& row = test_.rails[static_cast<size_t>(i)];
    const int r = i + 2;
    add_cell(rails, page, r, 0, "Label10", i, Cell{row.name}, k_text);
    add_cell(rails, page, r, 1, "Label11", i, row.value, kNumber);
    add_cell(rails, page, r, 2, "Label13", i, Cell{row.unit}, k_text);
    add_cell(rails, page, r, 3, "Label33", i, row.result, kResult);
  }

  auto* subsystems = new QGridLayout;
  subsystems->setHorizontalSpacing(24);
  subsystems->setVerticalSpacing(4);
  subsystems->addWidget(heading(kSubsystemHeadings[0], page), 0, 0);
  subsystems->addWidget(heading(kSubsystemHeadings[1], page), 0, 1, Qt::AlignHCenter);
  for (int i = 0; i < static_cast<int>(test_.subsystems.size()); ++i) {
    const SubsystemRow& row = test_.subsystems[static_cast<size_t>(i)];
    add_cell(subsystems, page, i + 1, 0, "Label1", i, Cell{row.name}, k_text);
    add_cell(subsystems, page, i + 1, 1, "Label2", i, row.result, kResult);
  }

  auto* overall_caption = heading(kOverallCaption, page);
  overall_ = new QLabel(page);
  overall_->setObjectName("Label35");
  overall_->setFont(overall_caption->font());
  show_cell(overall_, test_.overall);
  packet_message_ = new QLabel(page);
  packet_message_->setObjectName("Label37");
  show_cell(packet_message_, test_.packet_message);

  auto* tables = new QHBoxLayout;
  tables->addLayout(rails);
  tables->addSpacing(48);
  tables->addLayout(subsystems);
  tables->addStretch(1);
  auto* verdict = new QHBoxLayout;
  verdict->addWidget(overall_caption);
  verdict->addWidget(overall_);
  verdict->addStretch(1);
  auto* layout = new QVBoxLayout(page);
  layout->addLayout(tables);
  layout->addSpacing(12);
  layout->addLayout(verdict);
  layout->addWidget(packet_message_);
  layout->addStretch(1);
  return page;
}

void ShortTest::set_list_position(int32_t line, int32_t count) {
  source_.test_number = line;
  source_.test_count = count;
}

TestReport ShortTest::report() {
  // Opened from the list, the window was told its line; otherwise it is found in the list of the
  // file evaluated, while that file is still the one loaded.
  if (source_.test_number == 0 && evaluated_file_.lock() == session().file && session().loaded()) {
    const ShortTestList list = find_short_tests(session(), test_.mode);
    for (int32_t t = 1; t <= list.Test_Count(); ++t) {
      if (list.Test_Index[static_cast<size_t>(t - 1)] == source_.science_index) set_list_position(t, list.Test_Count());
    }
  }
  // The file's digest is read once, when a report is first made (a long file takes a moment).
  if (source_.file_sha256.empty()) {
    try {
      source_.file_sha256 = file_sha256(source_.file_name);
    } catch (const std::exception&) {
      source_.file_sha256 = "(the file could not be read)";
    }
  }
  return make_test_report(test_, source_);
}

void ShortTest::print_report() {
  const std::string html = test_report_html(report());
  QPrinter printer(QPrinter::HighResolution);
  printer.setDocName(tr("Short form test %1").arg(QFileInfo(text_of(source_.file_name)).fileName()));
  printer.setPageLayout(report_page());  // the user may choose another in the dialog
  if (!workstation().dialogs().choose_printer(this, printer)) return;
  print_html(html, printer);
}

void ShortTest::save_report() {
  const QFileInfo telemetry(text_of(source_.file_name));
  const QString name = telemetry.completeBaseName() + tr(" short form test %1.pdf").arg(test_.packets.Start_Time);
  const QString suggested = QDir(start_folder("report", telemetry.absolutePath())).filePath(name);
  const QString path = workstation().dialogs().save_file_name(this, tr("Save the test report"), suggested,
                                                    tr("PDF (*.pdf);;HTML (*.html *.htm);;Text (*.txt)"));
  if (path.isEmpty()) return;  // cancelled
  set_folder_setting("report", QFileInfo(path).absolutePath());
  write_report(path);
}

void ShortTest::write_report(const QString& path) {
  const TestReport made = report();
  QByteArray content;
  PartialContent keep = PartialContent::Whole_Lines;
  switch (report_format(path)) {
    case ReportFormat::Pdf: {
      QBuffer buffer(&content);
      buffer.open(QIODevice::WriteOnly);
      {
        QPdfWriter pdf(&buffer);
        pdf.setTitle(QString::fromStdString(made.title));
        pdf.setCreator(kProgramCaption);
        pdf.setPageLayout(report_page());
        print_html(test_report_html(made), pdf);
      }
      keep = PartialContent::Nothing;  // a part of a PDF is of no use
      break;
    }
    case ReportFormat::Html: content = QByteArray::fromStdString(test_report_html(made)); break;
    case ReportFormat::Text: content = QByteArray::fromStdString(test_report_text(made)); break;
  }
  // The report replaces the chosen file only once it is whole on the disk; a link is followed.
  replace_file(QFile::encodeName(path).toStdString(), std::string_view(content.constData(), size_t(content.size())),
               {}, keep);
}

}  // namespace morvane
