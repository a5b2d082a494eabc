// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

class QAbstractItemView;

namespace morvane {

// The keys every list and table of the workstation answers, whatever window it is in: Enter
// (Return) does what a double click on the current line does, and Ctrl+C copies every selected
// line or cell as text (cells of a row joined by tabs, rows by line breaks) where the view
// alone would copy only the current one. Installed once on the application.
class ViewKeys : public QObject {
  Q_OBJECT

 public:
  explicit ViewKeys(QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
};

// The selected lines or cells of a view as text, in the order they stand.
QString selected_text(const QAbstractItemView& view);

}  // namespace morvane
