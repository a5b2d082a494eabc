// SPDX-License-Identifier: MIT
#include "raw_view.h"

#include <algorithm>

#include <QAction>
#include <QGridLayout>
#include <QLabel>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "core/session.h"
#include "drawing_view.h"
#include "fixed_font.h"
#include "decoders/raw_frame.h"

namespace morvane {

namespace {

// The surface holds the widest grid: 141 words, the last column starting at 5310 twips.
constexpr int kSurfaceWidth = 6200;
constexpr int kSurfaceHeight = 18 * kRawRowHeight + 100;
constexpr int kPageFrames = 10;

}  // namespace

RawData::RawData(Workstation& workstation)
    : ChildView(workstation, ViewKind::RawData),
      label1_(new QLabel(this)),
      label2_(new QLabel(this)),
      scroll_(new QScrollBar(Qt::Vertical, this)),
      picture_(new DrawingView(this)) {
  const Session& s = session();
  setWindowTitle(s.File_Name.empty() ? QString::fromUtf8(view_title(kind())) : QString::fromStdString(s.File_Name));
  label1_->setObjectName("Label1");
  label2_->setObjectName("Label2");
  scroll_->setObjectName("VScroll1");
  picture_->setObjectName("Picture1");
  picture_->setFont(fixed_pitch_font());
  picture_->set_surface_twips(kSurfaceWidth, kSurfaceHeight);
  picture_->setMinimumSize(picture_->sizeHint());

  auto* layout = new QGridLayout(this);
  layout->addWidget(label1_, 0, 0);
  layout->addWidget(label2_, 1, 0);
  layout->addWidget(picture_, 2, 0);
  layout->addWidget(scroll_, 2, 1);
  layout->setRowStretch(2, 1);

  label1_->setText(QString::fromStdString(raw_count_label(s.Packet_Count)));
  set_frame_range();
  scroll_->setValue(1);
  current_frame_ = 1;
  label2_->setText(QString::fromStdString(raw_frame_label(current_frame_)));
  connect(scroll_, &QScrollBar::valueChanged, this, &RawData::VScroll1_Change);
  draw_frame();

  auto* clear_mark = new QAction(tr("Clear mark"), this);
  clear_mark->setObjectName("actClearMark");
  connect(clear_mark, &QAction::triggered, this, &RawData::clear_mark);
  addAction(clear_mark);
  setContextMenuPolicy(Qt::ActionsContextMenu);
}

void RawData::set_frame_range() {
  // Packet_Count is a 32-bit count and so is the scroll bar's range: every frame has a step.
  const QSignalBlocker quiet(scroll_);
  scroll_->setRange(1, std::max<int32_t>(session().Packet_Count, 1));
  scroll_->setSingleStep(1);
  scroll_->setPageStep(kPageFrames);
}

void RawData::VScroll1_Change(int value) {
  current_frame_ = value;
  label2_->setText(QString::fromStdString(raw_frame_label(current_frame_)));
  draw_frame();
}

void RawData::draw_frame() {
  // With no file there is nothing to read: the grid stays empty.
  if (!session().loaded()) {
    picture_->clear();
    return;
  }
  const bool drawn = guarded([&] { picture_->set_drawing(Display_Raw_Frame(session(), current_frame_).words); });
  if (!drawn) picture_->clear();
  paint_mark();
}

void RawData::paint_mark() {
  if (!mark_ || picture_->drawing().empty()) return;
  const Session& s = session();
  const RawMarkCells cells = raw_mark_cells(s.File_Type, s.Byte_Reverse, *mark_, current_frame_);
  std::vector<DrawingView::TextMark> marks;
  auto add = [&](const std::vector<MarkedCell>& marked, const Colour& colour) {
    for (const MarkedCell& cell : marked) {
      const auto text = static_cast<size_t>(cell.word - 1);
      if (text >= picture_->drawing().size()) continue;
      const TextRun run = cell_part_characters(cell.part, static_cast<int>(picture_->drawing()[text].text.size()));
      marks.push_back({text, run.first, run.count, colour});
    }
  };
  add(cells.packet, kPacketMarkColour);
  add(cells.byte, kByteMarkColour);
  picture_->set_marks(std::move(marks));
}

void RawData::show_mark(const RawMark& mark) {
  mark_ = mark;
  show_frame(std::max<int32_t>(mark.frame, 1));
}

void RawData::clear_mark() {
  mark_.reset();
  picture_->set_marks({});
}

void RawData::show_frame(int32_t n) {
  if (n == scroll_->value()) {
    VScroll1_Change(n);
  } else {
    scroll_->setValue(n);
  }
}

void RawData::update_realtime() {
  const int32_t newest = session().Packet_Count;
  label1_->setText(QString::fromStdString(raw_count_label(newest)));
  set_frame_range();
  {
    const QSignalBlocker quiet(scroll_);
    scroll_->setValue(std::max<int32_t>(newest, 1));
  }
  // The newest frame may have grown since it was last drawn, so it is drawn again in any case.
  VScroll1_Change(scroll_->value());
}

QString RawData::count_label() const { return label1_->text(); }

QString RawData::frame_label() const { return label2_->text(); }

void RawData::wheelEvent(QWheelEvent* event) {
  const int steps = event->angleDelta().y() / 120;
  if (steps != 0) scroll_->setValue(scroll_->value() - steps);
  event->accept();
}

}  // namespace morvane
