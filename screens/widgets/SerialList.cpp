// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/SerialList.h"

#include <QDate>
#include <QEvent>
#include <QIcon>
#include <QStyle>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "core/caldata/CalFileNotes.h"
#include "core/files/Paths.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr int kDueStateRole = Qt::UserRole + 1;

// Degrees of the colour circle.
constexpr int kRed = 0;
constexpr int kAmber = 35;

constexpr int kMostLightness = 255;
/// What the accessibility guidelines ask of text of ordinary size.
constexpr double kLeastContrast = 4.5;

/// Relative luminance of one of the parts of a colour (sRGB).
double Linear(int part) {
  const double share = part / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.red()) + 0.7152 * Linear(colour.green()) +
         0.0722 * Linear(colour.blue());
}

double Contrast(const QColor& a, const QColor& b) {
  const auto [dark, light] = std::minmax({Luminance(a), Luminance(b)});
  return (light + 0.05) / (dark + 0.05);
}

void Mark(QListWidgetItem* entry) {
  const auto state = static_cast<DueState>(entry->data(kDueStateRole).toInt());
  if (DueWords(state).empty()) {
    entry->setData(Qt::ForegroundRole, QVariant());
    entry->setIcon(QIcon());
    return;
  }
  entry->setForeground(DueColour(state, entry->listWidget()->palette()));
  SetEntryIcon(entry, state == DueState::PastDue ? QStyle::SP_MessageBoxCritical
                                                 : QStyle::SP_MessageBoxWarning);
}

/// Marks the entries of a list anew when its colours or its style change.
class MarksFollowTheLook : public QObject {
 public:
  explicit MarksFollowTheLook(QListWidget* list) : QObject(list), list_(list) {
    list->installEventFilter(this);
  }

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::StyleChange) {
      for (int row = 0; row < list_->count(); ++row) {
        Mark(list_->item(row));
      }
    }
    return QObject::eventFilter(watched, event);
  }

 private:
  QListWidget* list_;
};

}  // namespace

FileDate Today() {
  const QDate today = QDate::currentDate();
  return {static_cast<std::int16_t>(today.year()), static_cast<std::int16_t>(today.month()),
          static_cast<std::int16_t>(today.day())};
}

void SetUpSerialList(QListWidget* list) {
  // As tall as the text: marked entries stand hardly farther apart than others.
  const int size = list->fontMetrics().height();
  list->setIconSize({size, size});
  new MarksFollowTheLook(list);  // the list owns it
}

void FillSerialList(QListWidget* list, const std::string& model, const FileDate& today) {
  list->clear();
  if (model.empty()) {
    return;
  }
  const BusyPointer busy;
  ReadCalFileHeaders(Joined(gCalibrationDir, model), [&](const CalFileInfo& row) {
    AddName(list, row.SerialNumber);
    ShowCalFile(list->item(list->count() - 1), row, today);
  });
}

void ShowCalFile(QListWidgetItem* entry, const CalFileInfo& row, const FileDate& today) {
  const DueState state = DueStateOf(DueDateOf(row), today);
  const QString notes = ToQt(CalFileNotes(row, state));
  const QString words = ToQt(DueWords(state));
  // As text, whatever stands in the file, and wrapped where it is long.
  entry->setToolTip(Qt::convertFromPlainText(notes, Qt::WhiteSpaceNormal));
  entry->setData(Qt::AccessibleDescriptionRole, notes);
  entry->setData(Qt::AccessibleTextRole,
                 words.isEmpty() ? QVariant() : QVariant(entry->text() + ", " + words));
  entry->setData(kDueStateRole, static_cast<int>(state));
  Mark(entry);
}

QColor DueColour(DueState state, const QPalette& palette) {
  const QColor background = palette.color(QPalette::Active, QPalette::Base);
  const int step = Contrast(background, Qt::white) > Contrast(background, Qt::black) ? 1 : -1;
  // From the full colour towards white or black, of which one can be read on any background.
  int lightness = kMostLightness / 2;
  QColor colour;
  do {
    colour = QColor::fromHsl(state == DueState::PastDue ? kRed : kAmber, 255, lightness).toRgb();
    lightness += step;
  } while (Contrast(background, colour) < kLeastContrast && lightness >= 0 &&
           lightness <= kMostLightness);
  return colour;
}

}  // namespace tarvell
