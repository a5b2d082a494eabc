// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <string>
#include <vector>

// The Qt modules whole, as the tests' precompiled header has them: no test lists its widgets.
#include <QPrinter>
#include <QtTest>
#include <QtWidgets>

#include "core/configuration.h"
#include "dialogs.h"
#include "main_window.h"
#include "sim/config_writer.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane::testing {

// Answers the program's questions from queues and records its messages, in order.
class FakeDialogs : public Dialogs {
 public:
  std::deque<QString> files;     // answers to open and save dialogs; "" is a cancel
  std::deque<QString> folders;   // answers to folder dialogs
  std::deque<QString> printers;  // the PDF file each print dialog's printer writes; "" is a cancel
  std::deque<bool> answers;      // answers to questions, OK or Yes being true; none left: true
  std::deque<int> choices;       // the index chosen in each choice, -1 a cancel; none left: a cancel
  std::deque<QString> texts;     // the lines typed when asked for a text; "" is a cancel
  std::vector<QString> messages;
  // "message", "file", "folder", "question", "print", "choice", "text" as they happened
  std::vector<std::string> events;
  std::function<void()> on_message;  // called as each message is shown
  std::vector<bool> questions;       // each question asked: Yes / No (true) or OK / Cancel
  std::vector<int> choices_offered;  // each choice asked for: the index preselected

  QString open_file_name(QWidget*, const QString&, const QString&, const QString&) override { return next(files, "file"); }
  QString save_file_name(QWidget*, const QString&, const QString&, const QString&) override { return next(files, "file"); }
  QString existing_folder(QWidget*, const QString&, const QString&) override { return next(folders, "folder"); }
  void message(QWidget*, const QString& text) override {
    events.push_back("message");
    messages.push_back(text);
    if (on_message) on_message();
  }
  bool ask_ok_cancel(QWidget*, const QString&) override { return answer(false); }
  bool ask_yes_no(QWidget*, const QString&) override { return answer(true); }
  bool choose_printer(QWidget*, QPrinter& printer) override {
    const QString file = next(printers, "print");
    if (file.isEmpty()) return false;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    return true;
  }
  int choose_one(QWidget*, const QString&, const QStringList&, int preselected) override {
    choices_offered.push_back(preselected);
    return next(choices, "choice", -1);
  }
  QString ask_text(QWidget*, const QString&, const QString&) override { return next(texts, "text"); }

 private:
  template <class T>
  T next(std::deque<T>& queue, const char* event, T none = T()) {
    events.push_back(event);
    if (queue.empty()) return none;
    T answer = queue.front();
    queue.pop_front();
    return answer;
  }
  bool answer(bool yes_no) { return questions.push_back(yes_no), next(answers, "question", true); }
};

// Serves events until the condition holds or the time is up; returns the condition.
inline bool wait_until(const std::function<bool()>& condition, int milliseconds = 3000) {
  QElapsedTimer clock;
  clock.start();
  while (!condition() && clock.elapsed() < milliseconds) QApplication::processEvents(QEventLoop::AllEvents, 20);
  return condition();
}

// A double click on an item as a mouse makes it: a click, then the press that makes it double.
inline void double_click(QAbstractItemView* view, const QModelIndex& index) {
  EXPECT_TRUE(QTest::qWaitForWindowExposed(view->window()));
  view->doItemsLayout();
  const QPoint at = view->visualRect(index).center();
  QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, at);
  QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, at);
}

// Deletes the windows that closed themselves (they go at the next turn of the event loop).
inline void delete_closed_windows() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

// A main window on a complete configuration, with its own folder and forgotten settings.
class AppTest : public ::testing::Test {
 protected:
  void SetUp() override {
    QSettings().clear();
    base = sim::write_configuration(dir.path("base"));
    window = std::make_unique<EGSE_MDI>(load_configuration(base), dialogs);
    window->set_byte_reverse(true);
    window->show();
    wait_until([&] { return window->windowHandle() && window->windowHandle()->isExposed(); });
  }

  QString write_frames(const std::string& name, FrameWriter writer) {
    write_bytes(dir.path(name), writer.bytes());
    return QString::fromStdString(dir.path(name));
  }
  // Writes one packet a frame, in the start-up byte order, and loads the file as CSS.
  bool load_frames(FrameWriter writer) { return window->load_file(FileFormat::CSS, write_frames("t.css", writer)); }
  bool load_packets(const std::vector<Packet>& packets) {
    FrameWriter writer(282);
    for (const Packet& packet : packets) writer.add_frame({packet});
    return load_frames(std::move(writer));
  }
  QString load_simulated(FileFormat format, const std::string& name) {
    sim::TelemetryOptions options;
    options.format = format;
    sim::write_telemetry(dir.path(name), options);
    const QString path = QString::fromStdString(dir.path(name));
    EXPECT_TRUE(window->load_file(format, path));
    return path;
  }
  // Loads a file through the File menu item, answering the dialog with path.
  bool load_through_menu(const char* item, const QString& path) {
    dialogs.files.push_back(path);
    window->menu_item(item)->trigger();
    return dialogs.files.empty();
  }
  template <class View> View* show(ViewKind kind) { return dynamic_cast<View*>(window->show_view(kind)); }
  template <class View> View* shown(ViewKind kind) const { return dynamic_cast<View*>(window->view(kind)); }

  // The log file the collection follows: written whole each time, as the ground station grows it.
  std::string log() const { return dir.path("tmlog.dat"); }
  void write_log(FrameWriter writer) {
    write_bytes(log(), writer.bytes());
    window->set_log_file(QString::fromStdString(log()));
  }
  // One collection pass over the log rewritten with these frames.
  void grow_log(FrameWriter writer) {
    write_log(std::move(writer));
    window->Timer1_Timer();
  }

  // Exactly one message was shown, starting with `start` and holding `part`; no message was shown.
  ::testing::AssertionResult one_message(const QString& start, const QString& part = {}) const {
    return messages_are(dialogs.messages.size() == 1 && dialogs.messages[0].startsWith(start) &&
                        dialogs.messages[0].contains(part));
  }
  ::testing::AssertionResult no_message() const { return messages_are(dialogs.messages.empty()); }

  TempDir dir;
  std::string base;
  FakeDialogs dialogs;
  std::unique_ptr<EGSE_MDI> window;

 private:
  ::testing::AssertionResult messages_are(bool as_expected) const {
    if (as_expected) return ::testing::AssertionSuccess();
    ::testing::AssertionResult failure = ::testing::AssertionFailure() << dialogs.messages.size() << " messages:";
    for (const QString& message : dialogs.messages) failure << " \"" << message.toStdString() << '"';
    return failure;
  }
};

// Three frames: complete housekeeping, auxiliary and isotope packets; a progress event, an
// acceptance failure and a GC spectrum; concise housekeeping and an unknown science packet.
inline FrameWriter three_frames(int stride = 282) {
  FrameWriter writer(stride);
  writer.add_frame({labelled(LabelCode::Complete, 3, 51, 1000), labelled(LabelCode::AuxiliaryData, 7, 25, 1001),
                    labelled(LabelCode::IsotopeSpectrum, 0xC000 + 8, 25, 1002)});
  writer.add_frame({labelled(LabelCode::NormalProgressEvent, 5, 11, 1003),
                    labelled(LabelCode::AcceptanceFailure, 6, 11, 1004), labelled(LabelCode::GcSpectrum, 9, 25, 1005)});
  writer.add_frame({labelled(LabelCode::Concise, 4, 51, 1006), Packet{kScienceId, 10, 25, 0, 1007, {{16, 9}}, {}}});
  return writer;
}

}  // namespace morvane::testing
