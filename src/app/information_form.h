// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <memory>

#include "child_view.h"
#include "decoders/information_presenter.h"

class QLabel;
class QScrollBar;

namespace morvane {

class DrawingView;

// Information_Form: one entry of the information list at a time, its words as a raw dump, its
// header labels and its translation in five coloured lines, with the memory dump or checksum
// table below them. The scroll bar steps through the list. What the decoder keeps between
// packets (the words, a ZEB entry's untranslated area) is what the window keeps.
class Information_Form : public ChildView {
  Q_OBJECT

 public:
  explicit Information_Form(Workstation& workstation);

  // Update: the summary made an entry current; the scroll bar moves there and it is shown,
  // also when it is the entry on display.
  void Update();
  void show_current_entry() override { Update(); }

  QScrollBar* scroll_bar() const { return scroll_; }
  DrawingView* raw_dump() const { return picture1_; }      // Picture1
  DrawingView* translation() const { return picture2_; }  // Picture2
  // Label2 .. Label9 by number; nullptr for a number the window does not have.
  QLabel* label(int number) const;
  const InformationPresenter& decoder() const { return view_; }

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  // VScroll1_Change: the entry of the scroll bar, drawn from what the decoder holds afterwards
  // (also after an error, so what was drawn before it stays).
  void VScroll1_Change(int value);
  void show_decoded();
  // Picture1 holds the words of a binary packet or the items of a ZEB record.
  void fit_dump_to_format();

  InformationPresenter view_;
  QLabel* label2_;
  QLabel* label3_;
  QLabel* label5_;
  QLabel* label7_;
  QLabel* label9_;
  DrawingView* picture1_;
  DrawingView* picture2_;
  QScrollBar* scroll_;
  bool shown_on_load_ = false;  // the entry of the opening is on display, untouched since
  std::weak_ptr<TelemetryFile> shown_file_;  // the file of the entry on display
};

}  // namespace morvane
