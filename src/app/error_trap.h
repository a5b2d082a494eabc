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

// Runs the work of an event handler. A run-time error (or any other exception) ends the work
// and is shown in a message box; the program carries on. Returns whether the work completed.
// Qt must never see an exception leave an event handler, so every handler goes through here.
bool run_trapped(Dialogs& dialogs, QWidget* parent, const std::function<void()>& work);

}  // namespace morvane
