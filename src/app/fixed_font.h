// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QFontDatabase>

namespace morvane {

// The fixed-pitch font of list lines and hexadecimal words, whose blanks line the columns up.
inline QFont fixed_pitch_font() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setStyleHint(QFont::TypeWriter);
  return font;
}

}  // namespace morvane
