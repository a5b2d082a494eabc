// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QFrame>
#include <QLabel>
#include <QString>

namespace morvane {

// The face of the decoded pages. Their twips were laid out for a narrow 8-point face: a sensor
// name and its right-aligned value share 1700 twips, an auxiliary unit and an eight-digit lander
// time 1200, the longest register label 3500; a wider face runs them together.
inline QFont page_font(QFont font) {
  font.setPointSize(8);
  font.setStretch(QFont::SemiCondensed);
  return font;
}

// A value label beside its static caption: sunken, wide enough for `characters` digits.
inline QLabel* value_label(QWidget* parent, const QString& name, int characters = 10) {
  auto* label = new QLabel(parent);
  label->setObjectName(name);
  label->setFrameStyle(QFrame::Panel | QFrame::Sunken);
  label->setMinimumWidth(label->fontMetrics().horizontalAdvance(QString(characters, QChar('0'))));
  return label;
}

}  // namespace morvane
