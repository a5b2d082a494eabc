// SPDX-License-Identifier: MIT
#include "spectra_form.h"

#include <algorithm>

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "core/session.h"
#include "raw_link.h"
#include "spectrum_plot.h"

namespace morvane {

namespace {

// The labels beside the header headings, in the order of SpectrumPresenter::header_rows().
constexpr int kHeaderLabelNumbers[] = {24, 25, 28, 29, 30, 31, 26, 27};
constexpr int kPageSpectra = 10;

// The buttons carry arrows only; what each does is in its tool tip.
struct ButtonFace {
  SpectrumButton button;
  const char* name;
  const char* arrows;
  const char* tip;
};
constexpr ButtonFace kButtonFaces[] = {
    {SpectrumButton::ZoomOut, "Command1", "\u2190 \u2192", "Zoom the X axis out"},
    {SpectrumButton::ZoomIn, "Command2", "\u2192 \u2190", "Zoom the X axis in"},
    {SpectrumButton::ScaleUp, "Command3", "\u2191", "Raise the Y-axis scale maximum"},
    {SpectrumButton::ScaleDown, "Command4", "\u2193", "Lower the Y-axis scale maximum"},
    {SpectrumButton::PanLeft, "Command5", "\u25C4", "Move the X axis to lower bins"},
    {SpectrumButton::PanRight, "Command6", "\u25BA", "Move the X axis to higher bins"},
};

QLabel* named_label(const QString& name, const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  if (!name.isEmpty()) label->setObjectName(name);
  return label;
}

void set_coloured(QLabel* label, const std::string& text, const Colour& colour) {
  label->setText(QString::fromStdString(text));
  QPalette coloured = label->palette();
  coloured.setColor(QPalette::WindowText, QColor(colour.red, colour.green, colour.blue));
  label->setPalette(coloured);
}

// A scroll bar or label that is hidden keeps its place, so the window does not jump between a
// complete and a GC spectrum.
void keep_place_when_hidden(QWidget* widget) {
  QSizePolicy policy = widget->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget->setSizePolicy(policy);
}

}  // namespace

Spectra_Form::Spectra_Form(Workstation& workstation)
    : ChildView(workstation, ViewKind::Spectra),
      title_(named_label("SpectrumTitle", {}, this)),
      label14_(named_label("Label14", {}, this)),
      hscroll1_(new QScrollBar(Qt::Horizontal, this)),
      hscroll2_(new QScrollBar(Qt::Horizontal, this)),
      plot_(new SpectrumPlot(this)) {
  setWindowTitle(QString::fromUtf8(kSpectraCaption));
  hscroll1_->setObjectName("HScroll1");
  hscroll2_->setObjectName("HScroll2");
  plot_->setObjectName("Picture1");
  keep_place_when_hidden(label14_);
  keep_place_when_hidden(hscroll2_);
  QFont bold = title_->font();
  bold.setBold(true);
  title_->setFont(bold);
  for (const ButtonFace& face : kButtonFaces) {
    auto* command = new QPushButton(QString::fromUtf8(face.arrows), this);
    command->setObjectName(face.name);
    command->setToolTip(QString::fromUtf8(face.tip));
    command->setAccessibleName(QString::fromUtf8(face.tip));
    command->setFixedWidth(command->fontMetrics().horizontalAdvance(QStringLiteral("MMMMM")));
    buttons_[static_cast<size_t>(face.button)] = command;
    connect(command, &QPushButton::clicked, this, [this, which = face.button] { Command_Click(which); });
  }

  auto* counts = new QHBoxLayout;
  counts->addWidget(new QLabel(QString::fromUtf8(kCompleteCountCaption), this));
  counts->addWidget(named_label("Label3", {}, this));
  counts->addSpacing(24);
  counts->addWidget(new QLabel(QString::fromUtf8(kGcCountCaption), this));
  counts->addWidget(named_label("Label4", {}, this));
  counts->addSpacing(24);
  counts->addWidget(named_label("Label5", {}, this));
  counts->addStretch(1);

  auto* spectrum_row = new QGridLayout;
  spectrum_row->addWidget(title_, 0, 0);
  spectrum_row->addWidget(hscroll1_, 0, 1);
  spectrum_row->addWidget(label14_, 1, 0);
  spectrum_row->addWidget(hscroll2_, 1, 1);
  spectrum_row->setColumnStretch(1, 1);
  spectrum_row->setColumnMinimumWidth(
      0, title_->fontMetrics().horizontalAdvance(QStringLiteral("Complete spectrum number 00000")));

  auto* scale_buttons = new QVBoxLayout;
  scale_buttons->addStretch(1);
  scale_buttons->addWidget(button(SpectrumButton::ScaleUp));
  scale_buttons->addWidget(button(SpectrumButton::ScaleDown));
  scale_buttons->addStretch(1);
  auto* graph_row = new QHBoxLayout;
  graph_row->addLayout(scale_buttons);
  graph_row->addWidget(plot_, 1);

  auto* x_buttons = new QHBoxLayout;
  x_buttons->addStretch(1);
  for (const SpectrumButton which :
       {SpectrumButton::PanLeft, SpectrumButton::ZoomOut, SpectrumButton::ZoomIn, SpectrumButton::PanRight}) {
    x_buttons->addWidget(button(which));
  }
  x_buttons->addStretch(1);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(counts);
  layout->addLayout(spectrum_row);
  layout->addWidget(make_header_panel());
  layout->addLayout(graph_row, 1);
  layout->addLayout(x_buttons);
  layout->addWidget(make_axis_panel());

  hscroll1_->setPageStep(kPageSpectra);
  connect(hscroll1_, &QScrollBar::valueChanged, this, &Spectra_Form::HScroll1_Change);
  connect(hscroll2_, &QScrollBar::valueChanged, this, &Spectra_Form::HScroll2_Change);
  add_show_in_raw_frame(*this, [this]() -> std::optional<RawMark> {
    // The sub-packet whose header is on view, in the file the window opened on.
    if (opened_on_.lock() != session().file || view_.science_index() < 1) return {};
    return packet_mark(session().File_Type, session().catalogue.Science_List.at(view_.science_index()));
  });
  Form_Load();
}

void Spectra_Form::Form_Load() {
  opened_on_ = session().file;
  guarded([&] { view_.open(session()); });
  label(3)->setText(QString::fromStdString(view_.complete_count_text()));
  label(4)->setText(QString::fromStdString(view_.gc_count_text()));
  set_coloured(label(5), view_.has_spectra() ? "" : kNoSpectraText, kRed);
  {
    const QSignalBlocker quiet(hscroll1_);
    hscroll1_->setRange(1, std::max(view_.scroll_maximum(), 1));
    hscroll1_->setValue(1);
  }
  hscroll1_->setEnabled(view_.has_spectra());
  Display_Spectrum_Information();
  Update_Graph();
}

bool Spectra_Form::reloaded_file() {
  // The window is not rebuilt by a load, and its spectra are entries of the file it opened on:
  // once another file is loaded, the next step starts again on that one.
  if (opened_on_.lock() == session().file) return false;
  Form_Load();
  return true;
}

void Spectra_Form::show_current_entry() { reloaded_file(); }

bool Spectra_Form::show_spectrum_of(int32_t science_index) {
  reloaded_file();
  const Spectrum_Table& table = view_.table();
  for (int32_t s = 1; s <= table.spectrum_count(); ++s) {
    const SpectrumColumn& column = table.column(s);
    if (std::find(column.begin(), column.end(), science_index) == column.end()) continue;
    hscroll1_->setValue(s);  // HScroll1_Change shows it
    return true;
  }
  return false;
}

QWidget* Spectra_Form::make_header_panel() {
  auto* panel = new QWidget(this);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  const std::vector<HeaderRow> rows = view_.header_rows();
  constexpr int kColumns = 4;
  for (size_t i = 0; i < rows.size(); ++i) {
    const int row = static_cast<int>(i) / kColumns * 2;
    const int column = static_cast<int>(i) % kColumns;
    grid->addWidget(new QLabel(QString::fromStdString(rows[i].heading), panel), row, column);
    header_values_[i] = named_label(QStringLiteral("Label%1").arg(kHeaderLabelNumbers[i]), {}, panel);
    grid->addWidget(header_values_[i], row + 1, column);
  }
  return panel;
}

QWidget* Spectra_Form::make_axis_panel() {
  auto* panel = new QWidget(this);
  auto* grid = new QGridLayout(panel);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->addWidget(new QLabel(QString::fromUtf8(kXRangeCaption), panel), 0, 0);
  grid->addWidget(named_label("Label20", {}, panel), 0, 1);
  grid->addWidget(new QLabel(QString::fromUtf8(kYScaleCaption), panel), 1, 0);
  grid->addWidget(named_label("Label21", {}, panel), 1, 1);
  grid->addWidget(new QLabel(QString::fromUtf8(kXPositionCaption), panel), 0, 3, 1, 2, Qt::AlignHCenter);
  grid->addWidget(new QLabel(QString::fromUtf8(kMinimumCaption), panel), 1, 3);
  grid->addWidget(named_label("Label22", {}, panel), 1, 4);
  grid->addWidget(new QLabel(QString::fromUtf8(kMaximumCaption), panel), 2, 3);
  grid->addWidget(named_label("Label23", {}, panel), 2, 4);
  grid->setColumnMinimumWidth(2, 48);
  grid->setColumnStretch(5, 1);
  return panel;
}

QLabel* Spectra_Form::label(int number) const { return findChild<QLabel*>(QStringLiteral("Label%1").arg(number)); }

void Spectra_Form::HScroll1_Change(int value) {
  if (reloaded_file()) return;
  guarded([&] { view_.show_spectrum(session(), value); });
  Display_Spectrum_Information();
  Update_Graph();
}

void Spectra_Form::HScroll2_Change(int value) {
  if (reloaded_file()) return;
  guarded([&] { view_.show_sub_packet(session(), value); });
  Display_Spectrum_Information();
}

void Spectra_Form::Display_Spectrum_Information() {
  title_->setText(QString::fromStdString(view_.title()));
  const bool shown = view_.sub_packet_shown();
  label14_->setText(QString::fromStdString(view_.sub_packet_text()));
  label14_->setVisible(shown);
  hscroll2_->setVisible(shown);
  hscroll2_->setEnabled(shown);
  if (shown) {
    // The scroll bar follows the decoder: a new spectrum starts again at sub-packet 1.
    const QSignalBlocker quiet(hscroll2_);
    hscroll2_->setRange(1, view_.sub_packet_count());
    hscroll2_->setValue(view_.current_sub_packet());
  }
  const std::vector<HeaderRow> rows = view_.header_rows();
  for (size_t i = 0; i < rows.size(); ++i) set_coloured(header_values_[i], rows[i].value.text, rows[i].value.colour);
}

void Spectra_Form::Update_Graph() {
  const SpectrumAxis& axis = view_.axis();
  label(20)->setText(QString::fromStdString(axis.range_text()));
  label(21)->setText(QString::fromStdString(axis.scale_text()));
  label(22)->setText(QString::fromStdString(axis.start_text()));
  label(23)->setText(QString::fromStdString(axis.end_text()));
  for (const SpectrumButton which : kSpectrumButtons) button(which)->setEnabled(view_.enabled(which));
  plot_->set_bins(&view_.bins(), view_.bin_count(), axis);
  plot_->set_graph(view_.graph());
}

void Spectra_Form::Command_Click(SpectrumButton which) {
  guarded([&] { view_.press(which); });
  Update_Graph();
}

}  // namespace morvane
