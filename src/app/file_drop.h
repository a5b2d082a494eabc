// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>

namespace morvane {

class EGSE_MDI;

// The text of the question a dropped file asks.
inline constexpr const char* kDropFormatQuestion = "Load %1 as:";

// Dropping a file on the main window loads it: the format is asked with the five load choices of
// the File menu (a format is never guessed; the choice offered first is the one the file's
// suffix or the last file loaded suggests), and the file is loaded as the File menu loads it.
// Of several files dropped at once the first is loaded.
class FileDrop : public QObject {
  Q_OBJECT

 public:
  explicit FileDrop(EGSE_MDI& window);

  // Asks the format of a dropped file and loads it. Returns whether it was loaded.
  bool load(const QString& path);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  EGSE_MDI& window_;
};

}  // namespace morvane
