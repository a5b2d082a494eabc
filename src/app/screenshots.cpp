// SPDX-License-Identifier: MIT
#include "screenshots.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPixmap>
#include <QRadioButton>
#include <QTabWidget>

#include "functest/short_message_load.h"
#include "main_window.h"
#include "short_test_view.h"
#include "short_test_form_view.h"
#include "trend_chart.h"
#include "trend_form.h"

namespace morvane {

namespace {

// Makes the first entry of an entry window's kind current; false when the file has none.
bool choose_first_entry(Session& session, ViewKind kind) {
  const Catalogue& c = session.catalogue;
  auto first_science = [&](auto wanted) {
    for (int32_t i = 1; i <= c.Science_Count(); ++i) {
      if (wanted(c.Science_List[i].Label)) return i;
    }
    return 0;
  };
  switch (kind) {
    case ViewKind::Housekeeping: session.Current_HK_Index = 1; return c.HK_Count() > 0;
    case ViewKind::Information: session.Current_Information_Index = 1; return c.Information_Count() > 0;
    case ViewKind::Auxiliary:
      session.Current_Science_Index = first_science([](LabelCode l) { return l == LabelCode::AuxiliaryData; });
      return session.Current_Science_Index > 0;
    case ViewKind::Spectra:
      session.Current_Science_Index = first_science(
          [](LabelCode l) { return l == LabelCode::GcSpectrum || l == LabelCode::IsotopeSpectrum; });
      return session.Current_Science_Index > 0;
    case ViewKind::ShortTestList: session.Test_Mode = "Cruise Phase"; return true;
    case ViewKind::ShortTest: {
      // The second test of the mode is the faulty one: its failures show in red.
      session.Test_Mode = "Cruise Phase";
      const ShortTestList tests = find_short_tests(session);
      if (tests.Test_Count() == 0) return false;
      session.Current_Science_Index = science_index_of_line(tests, tests.Test_Count() >= 2 ? 2 : 1);
      return true;
    }
    default: return true;
  }
}

// Shows a window the way its picture is most telling: the verdicts of an evaluation, a conversion
// in the general tests dialog, sensors on the trend plot.
void stage(ChildView* view) {
  if (auto* test = qobject_cast<ShortTest*>(view)) test->tabs()->setCurrentIndex(test->tabs()->count() - 1);
  if (auto* form = qobject_cast<TestForm*>(view)) {
    form->sensor_field()->setText("28");
    form->voltage_field()->setText("2.98");
    form->Command1_Click();
  }
  // The board temperature with its limits and the docking station, each on its own axis.
  if (auto* trend = qobject_cast<TrendForm*>(view)) {
    trend->set_sensor_chosen(28, true);
    trend->set_sensor_chosen(29, true);
    trend->separate_axes_button()->setChecked(true);
  }
}

void settle() {
  for (int i = 0; i < 3; ++i) QApplication::processEvents();
}

}  // namespace

QStringList write_screenshots(EGSE_MDI& window, const QString& folder) {
  QDir().mkpath(folder);
  QStringList written;
  auto save = [&](QWidget* widget, const QString& name) {
    settle();
    // A big file's trend plot is made on a worker thread: the picture waits for it.
    for (TrendChart* chart : widget->findChildren<TrendChart*>()) chart->plot();
    const QString path = QDir(folder).filePath(name + QStringLiteral(".png"));
    if (widget->grab().save(path)) written << path;
  };
  window.resize(1280, 860);
  window.show();
  for (const ViewKind kind : kAllViewKinds) {
    if (!window.is_registered(kind) || !choose_first_entry(window.session(), kind)) continue;
    ChildView* view = window.show_view(kind);
    if (!view) continue;
    if (is_entry_view(kind)) view->show_current_entry();
    stage(view);
    QMdiSubWindow* frame = window.frame_of(view);
    frame->adjustSize();
    save(frame, QString::fromUtf8(view_name(kind)));
    window.close_view(kind);
  }
  // The packet overview as a user sees it: the summary, with the raw and concise views beside it.
  window.resize(1400, 900);
  int right = 0;
  int below_raw = 0;
  for (const ViewKind kind : {ViewKind::Summary, ViewKind::RawData, ViewKind::Concise}) {
    if (!window.is_registered(kind)) continue;
    QMdiSubWindow* frame = window.frame_of(window.show_view(kind));
    frame->adjustSize();
    if (kind == ViewKind::Summary) {
      frame->move(0, 0);
      right = frame->width();
    } else if (kind == ViewKind::RawData) {
      frame->move(right, 0);
      below_raw = frame->height();
    } else {
      frame->move(right, below_raw);
    }
  }
  // The main window just holds them.
  QRect bounds;
  for (QMdiSubWindow* frame : window.mdi_area()->subWindowList()) bounds |= frame->geometry();
  if (bounds.isValid()) {
    const QSize chrome = window.size() - window.mdi_area()->viewport()->size();
    window.resize(bounds.right() + 1 + chrome.width() + 8, bounds.bottom() + 1 + chrome.height() + 8);
  }
  save(&window, QStringLiteral("morvane-egse"));
  return written;
}

}  // namespace morvane
