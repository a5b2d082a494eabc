// SPDX-License-Identifier: MIT
#include "housekeeping_form.h"

#include <algorithm>
#include <string_view>
#include <variant>

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "core/session.h"
#include "dialogs.h"
#include "drawing_view.h"
#include "error_trap.h"
#include "form_widgets.h"
#include "raw_link.h"
#include "sensor_picker.h"
#include "workstation.h"

namespace morvane {

namespace {

// The surface holds both pages: the sensor page's second column ends near 6600 twips, the
// register page's last row lies at 5400.
constexpr int kSurfaceWidth = 7000;
constexpr int kSurfaceHeight = 5700;
constexpr int kPageEntries = 10;

}  // namespace

Housekeeping_form::Housekeeping_form(Workstation& workstation)
    : ChildView(workstation, ViewKind::Housekeeping),
      packet_type_(new QLabel(this)),
      scroll_(new QScrollBar(Qt::Vertical, this)),
      picture_(new DrawingView(this)),
      command1_(new QPushButton(QString::fromUtf8(kMoreButton), this)),
      picker_(new SensorPicker(*picture_, [this](int) {
        if (const std::optional<RawMark> mark = shown_mark()) mark_in_open_raw_view(this->workstation(), *mark);
      })) {
  setWindowTitle(QString::fromUtf8(kHousekeepingCaption));
  packet_type_->setObjectName("Label_Packet_Type");
  scroll_->setObjectName("VScroll1");
  picture_->setObjectName("Picture1");
  command1_->setObjectName("Command1");
  picture_->setFont(page_font(picture_->font()));
  picture_->set_surface_twips(kSurfaceWidth, kSurfaceHeight);
  picture_->setMinimumSize(picture_->sizeHint());

  // The header: the packet type across the top, then the six values in two rows of three,
  // each behind its static caption.
  auto* header = new QGridLayout;
  header->addWidget(packet_type_, 0, 0, 1, 6);
  int k = 0;
  for (const char* caption : kHKHeaderCaptions) {
    // The mode holds its name too ("12  -  Ice Core Analysis(HTO)").
    const bool mode = std::string_view(caption) == "Mode";
    QLabel* value = value_label(this, QStringLiteral("Label_%1").arg(k + 1), mode ? 26 : 10);
    header->addWidget(new QLabel(QString::fromUtf8(caption), this), 1 + k / 3, 2 * (k % 3));
    header->addWidget(value, 1 + k / 3, 2 * (k % 3) + 1);
    header_[caption] = value;
    ++k;
  }
  header->setColumnStretch(1, 1);
  header->setColumnStretch(3, 1);
  header->setColumnStretch(5, 2);

  auto* layout = new QGridLayout(this);
  layout->addLayout(header, 0, 0, 1, 2);
  layout->addWidget(new QLabel(QString::fromUtf8(kSensorReadingsCaption), this), 1, 0);
  layout->addWidget(picture_, 2, 0);
  layout->addWidget(scroll_, 2, 1);
  layout->addWidget(command1_, 3, 0, 1, 2, Qt::AlignRight);
  layout->setRowStretch(2, 1);

  connect(scroll_, &QScrollBar::valueChanged, this, &Housekeeping_form::VScroll1_Change);
  connect(command1_, &QPushButton::clicked, this, &Housekeeping_form::Command1_Click);
  add_show_in_raw_frame(*this, [this] { return shown_mark(); });

  // Form_Load: without housekeeping packets the bar stops at 1 and nothing is drawn.
  command1_->setVisible(false);
  const ScrollSetting opening = HousekeepingPresenter::Form_Load_scroll(session());
  {
    const QSignalBlocker quiet(scroll_);
    scroll_->setRange(1, std::max<int32_t>(opening.maximum, 1));
    scroll_->setPageStep(kPageEntries);
    scroll_->setValue(opening.value);
  }
  guarded([&] {
    if (const std::optional<SensorPage> page = state_.Form_Load(session())) show_sensor_page(*page);
  });
}

void Housekeeping_form::move_scroll(const ScrollSetting& setting, bool redraw_anyway) {
  if (setting.maximum < 1) return;  // still no housekeeping packet
  bool moved = false;
  {
    const QSignalBlocker quiet(scroll_);
    scroll_->setRange(1, setting.maximum);
    moved = scroll_->value() != setting.value;
    scroll_->setValue(setting.value);
  }
  if (moved || redraw_anyway) VScroll1_Change(scroll_->value());
}

void Housekeeping_form::update_realtime() {
  // A bar that did not move keeps its page (the register page stays open), unless nothing has
  // been drawn yet: the first housekeeping packet of a log that had none.
  move_scroll(HousekeepingPresenter::UpdateRealtime(session()), !page_shown_);
}

void Housekeeping_form::show_current_entry() {
  // The entry already on its sensor page (the view has just opened on it) is not drawn twice.
  move_scroll(HousekeepingPresenter::Update(session()), state_.Showing_Registers || !page_shown_);
}

void Housekeeping_form::calibration_changed(CalibrationTable table) {
  if (table != CalibrationTable::PressureSensors || !page_shown_) return;
  if (state_.Showing_Registers) return;  // the register page reads no table
  guarded([&] { show_sensor_page(state_.Update_Sensor_readings(session())); });
}

void Housekeeping_form::VScroll1_Change(int value) {
  command1_->setText(QString::fromUtf8(kMoreButton));
  const bool drawn = guarded([&] { show_sensor_page(state_.VScroll1_Change(session(), value)); });
  if (!drawn) {
    picture_->clear();
    picker_->clear();
    command1_->setVisible(false);
    page_shown_ = false;
  }
}

void Housekeeping_form::Command1_Click() {
  guarded([&] {
    auto shown = state_.Command1_Click(session());
    if (auto* sensors = std::get_if<SensorPage>(&shown)) {
      show_sensor_page(*sensors);
    } else {
      picture_->set_drawing(std::move(std::get<RegisterPage>(shown).drawing));
      picker_->clear();
    }
    command1_->setText(QString::fromUtf8(state_.button_caption()));
  });
}

void Housekeeping_form::show_sensor_page(const SensorPage& page) {
  picture_->set_drawing(page.drawing);
  picker_->set_lines(page.lines);
  const HKHeader& h = page.header;
  packet_type_->setText(QString::fromStdString(h.packet_type));
  const std::string* values[] = {&h.packet_number, &h.sequence, &h.lander_time, &h.packet_count, &h.mode, &h.line};
  for (size_t k = 0; k < std::size(kHKHeaderCaptions); ++k) {
    header_[kHKHeaderCaptions[k]]->setText(QString::fromStdString(*values[k]));
  }
  command1_->setText(QString::fromUtf8(state_.button_caption()));
  command1_->setVisible(page.more_visible);
  page_shown_ = true;
  // The mode could not be read (a line high byte of 128): the page is there, the error is told.
  if (page.mode_error) workstation().dialogs().message(this, error_text(*page.mode_error));
}

QString Housekeeping_form::header_text(const std::string& caption) const {
  const auto found = header_.find(caption);
  return found == header_.end() ? QString() : found->second->text();
}

std::optional<RawMark> Housekeeping_form::shown_mark() const {
  const Session& s = session();
  const int32_t index = scroll_->value();  // the entry drawn
  if (!page_shown_ || !s.loaded() || index < 1 || index > s.catalogue.HK_Count()) return std::nullopt;
  const Packet_Entry& entry = s.catalogue.HK_List[index];
  const int sensor = picker_->sensor();
  if (sensor == 0) return packet_mark(s.File_Type, entry);
  return packet_byte_mark(s.File_Type, s.Byte_Reverse, entry, s.config.sensor(sensor).Byte_Offset);
}

QString Housekeeping_form::packet_type_text() const { return packet_type_->text(); }

void Housekeeping_form::wheelEvent(QWheelEvent* event) {
  const int steps = event->angleDelta().y() / 120;
  if (steps != 0) scroll_->setValue(scroll_->value() - steps);
  event->accept();
}

}  // namespace morvane
