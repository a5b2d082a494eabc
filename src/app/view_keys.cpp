// SPDX-License-Identifier: MIT
#include "view_keys.h"

#include <algorithm>
#include <map>

#include <QAbstractItemView>
#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>

namespace morvane {

ViewKeys::ViewKeys(QObject* parent) : QObject(parent) { qApp->installEventFilter(this); }

QString selected_text(const QAbstractItemView& view) {
  QModelIndexList indexes = view.selectionModel() ? view.selectionModel()->selectedIndexes() : QModelIndexList{};
  if (indexes.isEmpty() && view.currentIndex().isValid()) indexes.append(view.currentIndex());
  std::map<int, std::map<int, QString>> rows;
  for (const QModelIndex& index : indexes) rows[index.row()][index.column()] = index.data(Qt::DisplayRole).toString();
  QStringList lines;
  for (const auto& [row, cells] : rows) {
    const int last = cells.rbegin()->first;
    const int first = cells.begin()->first;
    QStringList line;
    for (int column = first; column <= last; ++column) {
      const auto found = cells.find(column);
      line.append(found == cells.end() ? QString() : found->second);
    }
    lines.append(line.join(QLatin1Char('\t')));
  }
  return lines.join(QLatin1Char('\n'));
}

bool ViewKeys::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QObject::eventFilter(watched, event);
  // While a cell is edited its editor has the keys, not the view.
  auto* view = qobject_cast<QAbstractItemView*>(watched);
  if (!view) return QObject::eventFilter(watched, event);
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->matches(QKeySequence::Copy)) {
    const QString text = selected_text(*view);
    if (!text.isEmpty()) QApplication::clipboard()->setText(text);
    return true;
  }
  const bool enter = (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) &&
                     (key->modifiers() | Qt::KeypadModifier) == Qt::KeypadModifier;
  if (enter && view->currentIndex().isValid()) {
    emit view->doubleClicked(view->currentIndex());
    return true;
  }
  return QObject::eventFilter(watched, event);
}

}  // namespace morvane
