// SPDX-License-Identifier: MIT
#pragma once

#include <exception>
#include <functional>

#include <QString>

class QWidget;

namespace morvane {

class Dialogs;

// The text a message box shows for a failure: "<description>[: <detail>]; Error number <n>"
// for a run-time error, the exception's own text otherwise.
QString error_text(const std::exception& error);

// Writes a message the window shows to the error stream as one line (its line breaks become
// blanks), so that a run from a terminal, or a test's log, shows every failure.
void echo_to_error_stream(const QString& text);

// Runs the work of an event handler. A run-time error (or any other exception) ends the work
// and is shown in a message box; the program carries on. Returns whether the work completed.
// Qt must never see an exception leave an event handler, so every handler goes through here.
bool run_trapped(Dialogs& dialogs, QWidget* parent, const std::function<void()>& work);

}  // namespace morvane
