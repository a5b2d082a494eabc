// SPDX-License-Identifier: MIT
#include "background_pass.h"

#include <atomic>
#include <exception>

#include <QEventLoop>
#include <QFutureWatcher>
#include <QProgressDialog>
#include <QTimer>
#include <QtConcurrent/QtConcurrentRun>

namespace morvane {

namespace {

constexpr int kShowAfterMilliseconds = 400;
constexpr int kPollMilliseconds = 100;
constexpr int kSteps = 1000;

// Thrown through the pass by its progress calls once the user cancelled. Deliberately not a
// RuntimeError, so the load does not stop to keep a partial catalogue.
struct PassCancelled {};

}  // namespace

bool run_with_progress(QWidget* parent, const QString& label,
                       const std::function<void(const ProgressFunction&)>& pass) {
  std::atomic<int64_t> done{0};
  std::atomic<int64_t> total{0};
  std::atomic<bool> cancelled{false};
  std::exception_ptr failure;
  const ProgressFunction progress = [&](int64_t frames_done, int64_t frames_total) {
    done = frames_done;
    total = frames_total;
    if (cancelled) throw PassCancelled{};
  };

  QProgressDialog dialog(label, QObject::tr("Cancel"), 0, 0, parent);
  dialog.setWindowModality(Qt::WindowModal);
  dialog.setMinimumDuration(kShowAfterMilliseconds);
  dialog.setAutoClose(false);
  dialog.setAutoReset(false);
  QObject::connect(&dialog, &QProgressDialog::canceled, [&] { cancelled = true; });
  dialog.setValue(0);  // starts the clock after which the dialog shows itself, progress or not

  QTimer poll;
  poll.setInterval(kPollMilliseconds);
  QObject::connect(&poll, &QTimer::timeout, [&] {
    if (dialog.wasCanceled()) cancelled = true;
    if (total > 0 && !cancelled) {
      dialog.setMaximum(kSteps);
      dialog.setValue(static_cast<int>(done * kSteps / total));
    }
  });

  QEventLoop loop;
  QFutureWatcher<void> watcher;
  QObject::connect(&watcher, &QFutureWatcherBase::finished, &loop, &QEventLoop::quit);
  watcher.setFuture(QtConcurrent::run([&] {
    try {
      pass(progress);
    } catch (const PassCancelled&) {
    } catch (...) {
      failure = std::current_exception();
    }
  }));
  poll.start();
  if (!watcher.isFinished()) loop.exec();
  watcher.waitForFinished();
  poll.stop();
  dialog.reset();
  if (cancelled) return false;
  if (failure) std::rethrow_exception(failure);
  return true;
}

}  // namespace morvane
