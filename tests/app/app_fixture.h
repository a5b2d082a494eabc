// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <QApplication>
#include <QElapsedTimer>
#include <QPrinter>
#include <QSettings>
#include <QWindow>

#include "core/configuration.h"
#include "dialogs.h"
#include "main_window.h"
#include "sim/config_writer.h"
#include "test_files.h"

namespace morvane::testing {

// Answers the program's questions from queues and records its messages, in order.
class FakeDialogs : public Dialogs {
 public:
  std::deque<QString> files;    // answers to open and save dialogs; "" is a cancel
  std::deque<QString> folders;  // answers to folder dialogs
  std::deque<QString> printers;  // answers to print dialogs: the PDF file the printer writes; "" is a cancel
  std::vector<QString> messages;
  std::vector<std::string> events;  // "message", "file", "folder", "question", "print" as they happened
  std::function<void()> on_message;  // called as each message is shown
  struct Question {
    QString text;
    bool yes_no = false;  // Yes / No rather than OK / Cancel
  };
  std::deque<bool> answers;        // answers to questions, OK or Yes being true; none left: true
  std::vector<Question> questions;  // the questions asked, in order

  QString openFileName(QWidget*, const QString&, const QString&, const QString&) override { return next_file(); }
  QString saveFileName(QWidget*, const QString&, const QString&, const QString&) override { return next_file(); }
  QString existingFolder(QWidget*, const QString&, const QString&) override {
    events.push_back("folder");
    if (folders.empty()) return {};
    QString folder = folders.front();
    folders.pop_front();
    return folder;
  }
  void message(QWidget*, const QString& text) override {
    events.push_back("message");
    messages.push_back(text);
    if (on_message) on_message();
  }
  bool askOkCancel(QWidget*, const QString& text) override { return next_answer(text, false); }
  bool askYesNo(QWidget*, const QString& text) override { return next_answer(text, true); }
  bool choosePrinter(QWidget*, QPrinter& printer) override {
    events.push_back("print");
    if (printers.empty()) return false;
    const QString file = printers.front();
    printers.pop_front();
    if (file.isEmpty()) return false;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    return true;
  }
  // Answers to choices (the index chosen, -1 a cancel; none left: a cancel), and what was offered.
  std::deque<int> choices;
  struct Choice {
    QString text;
    QStringList offered;
    int preselected = -1;
  };
  std::vector<Choice> choices_offered;
  int chooseOne(QWidget*, const QString& text, const QStringList& offered, int preselected) override {
    events.push_back("choice");
    choices_offered.push_back({text, offered, preselected});
    if (choices.empty()) return -1;
    const int answer = choices.front();
    choices.pop_front();
    return answer;
  }

 private:
  bool next_answer(const QString& text, bool yes_no) {
    events.push_back("question");
    questions.push_back({text, yes_no});
    if (answers.empty()) return true;
    const bool answer = answers.front();
    answers.pop_front();
    return answer;
  }
  QString next_file() {
    events.push_back("file");
    if (files.empty()) return {};
    QString file = files.front();
    files.pop_front();
    return file;
  }
};

// Serves events until the condition holds or the time is up; returns the condition.
inline bool wait_until(const std::function<bool()>& condition, int milliseconds = 3000) {
  QElapsedTimer clock;
  clock.start();
  while (!condition() && clock.elapsed() < milliseconds) QApplication::processEvents(QEventLoop::AllEvents, 20);
  return condition();
}

// A main window on a complete configuration, with its own folder and forgotten settings.
class AppTest : public ::testing::Test {
 protected:
  void SetUp() override {
    QSettings().clear();
    base = sim::write_configuration(dir.path("base"));
    window = std::make_unique<EGSE_MDI>(load_configuration(base), dialogs);
    window->setByteReverse(true);
    window->show();
    wait_until([&] { return window->windowHandle() && window->windowHandle()->isExposed(); });
  }
  void TearDown() override {
    window.reset();
    QSettings().clear();
  }

  // Writes binary frames to a file of the folder and returns its path.
  QString write_frames(const std::string& name, FrameWriter& writer) {
    write_bytes(dir.path(name), writer.bytes());
    return QString::fromStdString(dir.path(name));
  }
  // Loads a file through the File menu item, answering the dialog with path.
  bool load_through_menu(const char* item, const QString& path) {
    dialogs.files.push_back(path);
    window->menuItem(item)->trigger();
    return dialogs.files.empty();
  }

  TempDir dir;
  std::string base;
  FakeDialogs dialogs;
  std::unique_ptr<EGSE_MDI> window;
};

// Three frames: a complete housekeeping packet with an auxiliary and an isotope packet; a
// progress event, an acceptance failure and a GC spectrum; a concise housekeeping packet and
// an unknown science packet.
inline FrameWriter three_frames(int stride = 282) {
  FrameWriter writer(stride);
  writer.add_frame({Packet{0x0F34, 3, 51, 0, 1000, {{16, 2}}, {}}, Packet{0x0F3C, 7, 25, 0, 1001, {{16, 1}}, {}},
                    Packet{0x0F3C, 0xC000 + 8, 25, 0, 1002, {{16, 3}}, {}}});
  writer.add_frame({Packet{0x0F37, 5, 11, 0, 1003, {{14, 0x0100}}, {}}, Packet{0x0F31, 6, 11, 0, 1004, {{14, 0x0200}}, {}},
                    Packet{0x0F3C, 9, 25, 0, 1005, {{16, 2}}, {}}});
  writer.add_frame({Packet{0x0F34, 4, 51, 0, 1006, {{16, 1}}, {}}, Packet{0x0F3C, 10, 25, 0, 1007, {{16, 9}}, {}}});
  return writer;
}

}  // namespace morvane::testing
