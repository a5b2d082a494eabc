// SPDX-License-Identifier: MIT
#include "background_pass.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

#include <QApplication>
#include <QProgressDialog>
#include <QPushButton>
#include <QTimer>

#include "core/error.h"

namespace morvane {
namespace {

// A pass that reports progress every few milliseconds for about two seconds.
void slow_pass(const ProgressFunction& progress, int& steps) {
  for (steps = 0; steps < 400; ++steps) {
    progress(steps, 400);
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
  }
}

TEST(BackgroundPass, AFinishedPassReportsSuccessAndItsErrorsComeBack) {
  QWidget parent;
  int calls = 0;
  EXPECT_TRUE(run_with_progress(&parent, "pass", [&](const ProgressFunction& progress) {
    progress(1, 2);
    ++calls;
  }));
  EXPECT_EQ(calls, 1);
  EXPECT_THROW(run_with_progress(&parent, "pass", [](const ProgressFunction&) { raise(ErrorNumber::Overflow); }),
               RuntimeError);
}

TEST(BackgroundPass, CancelEndsThePassAtItsNextProgressCall) {
  QWidget parent;
  int steps = 0;
  QTimer cancel;
  QObject::connect(&cancel, &QTimer::timeout, [&] {
    auto* dialog = parent.findChild<QProgressDialog*>();
    if (!dialog || !dialog->isVisible()) return;
    if (auto* button = dialog->findChild<QPushButton*>()) button->click();
  });
  cancel.start(20);
  EXPECT_FALSE(run_with_progress(&parent, "pass", [&](const ProgressFunction& progress) { slow_pass(progress, steps); }));
  EXPECT_LT(steps, 400);
}

}  // namespace
}  // namespace morvane
