// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/LongTexts.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QFontMetrics>

#include <algorithm>

namespace tarvell {

namespace {

/// The list has no room for more characters.
constexpr int kWidestText = 80;  // characters
/// Beside the texts: the margins of the list and its scroll bar, in characters.
constexpr int kMargins = 6;

void WidenList(QComboBox* box, int first, int last) {
  const QFontMetrics metrics = box->fontMetrics();
  int width = box->view()->minimumWidth();
  for (int i = first; i <= last; ++i) {
    const QString text = box->itemText(i).left(kWidestText);
    width =
        std::max(width, metrics.horizontalAdvance(text) + kMargins * metrics.averageCharWidth());
  }
  box->view()->setMinimumWidth(width);
}

}  // namespace

void ShowLongTexts(QComboBox* box) {
  QObject::connect(box->model(), &QAbstractItemModel::rowsInserted, box,
                   [box](const QModelIndex&, int first, int last) { WidenList(box, first, last); });
  QObject::connect(box, &QComboBox::currentTextChanged, box, [box](const QString& text) {
    // The text may come from a file, and must not be taken for HTML.
    box->setToolTip(text.isEmpty() ? QString() : "<p>" + text.toHtmlEscaped() + "</p>");
  });
}

}  // namespace tarvell
