// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/SerialList.h"

#include <QDate>
#include <QEvent>
#include <QIcon>
#include <QScopeGuard>
#include <QStyle>
#include <QTextDocument>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "core/caldata/CalFileNotes.h"
#include "core/files/Paths.h"
#include "screens/widgets/BusyPointer.h"
#include "screens/widgets/Guard.h"
#include "screens/widgets/ListHead.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr const char* kFilterNotice = "filter";

constexpr int kDueStateRole = Qt::UserRole + 1;

// Hues, in degrees.
constexpr int kRed = 0;
constexpr int kAmber = 35;

// Numbers of dates only have to be in their order.
constexpr int kDaysOfAMonth = 100;
constexpr int kDaysOfAYear = 100 * kDaysOfAMonth;

constexpr int kMaxLightness = 255;
/// The contrast that WCAG 2.1 requires for text of normal size.
constexpr double kMinContrast = 4.5;

/// Linear value of one component of an sRGB colour, 0 to 1.
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
  if (!entry->data(kDueStateRole).isValid()) {
    // The entry has no mark of a due date, but perhaps another one.
    return;
  }
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

/// Marks the entries of a list again when its palette or style changes.
class MarkUpdater : public QObject {
 public:
  explicit MarkUpdater(QListWidget* list) : QObject(list), list_(list) {
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
  // As tall as the text, so that a marked entry is hardly taller than the others.
  const int size = list->fontMetrics().height();
  list->setIconSize({size, size});
  new MarkUpdater(list);  // the list owns it
}

void FillSerialList(QListWidget* list, const std::string& model, const FileDate& today,
                    const std::string& filter) {
  list->clear();
  if (model.empty()) {
    return;
  }
  const BusyPointer busy;
  ReadCalFileHeaders(
      Joined(gCalibrationDir, model),
      [&](const CalFileInfo& row) {
        AddName(list, row.SerialNumber);
        ShowCalFile(list->item(list->count() - 1), row, today);
      },
      filter);
}

void ListDataSets(QListWidget* list, const std::string& model, ListHead& head, NoticeLine& notices,
                  bool isTyping) {
  notices.Clear();
  const auto applied = qScopeGuard([&] { head.Apply(); });
  const std::string filter = head.Filter();
  const auto fill = [&] { FillSerialList(list, model, Today(), filter); };
  if (filter.empty() && !isTyping) {
    fill();
    return;
  }
  const bool areRead = Guarded(list->window(), fill, [&](const Error& error) {
    notices.Report(kFilterNotice, ToQt(error.Text()));
  });
  if (areRead && list->count() == 0 && !filter.empty() && !model.empty()) {
    notices.Report(kFilterNotice,
                   ListHead::tr("No data set of %1 matches the filter.").arg(ToQt(model)));
  }
}

std::int16_t SelectedDataSet(const QListWidget* list) {
  const QListWidgetItem* entry = list->selectedItems().value(0);
  const auto row = static_cast<std::size_t>(NumberAdded(entry));
  const std::string serial = NameOfEntry(entry);
  // Row k of `gCalFiles` belongs to the entry that was added as number k.
  const bool isItsRow = row < gCalFiles.size() && gCalFiles.at(row).SerialNumber == serial;
  return isItsRow ? static_cast<std::int16_t>(row) : FindCalFile(serial);
}

void ShowCalFile(QListWidgetItem* entry, const CalFileInfo& row, const FileDate& today) {
  const DueState state = DueStateOf(DueDateOf(row), today);
  const QString notes = ToQt(CalFileNotes(row, state));
  // Converted, so that the tooltip shows any markup in the file as text and wraps long lines.
  entry->setToolTip(Qt::convertFromPlainText(notes, Qt::WhiteSpaceNormal));
  entry->setData(Qt::AccessibleDescriptionRole, notes);
  MarkDueDate(entry, DueDateOf(row), today);
}

void MarkDueDate(QListWidgetItem* entry, const FileDate& due, const FileDate& today) {
  const DueState state = DueStateOf(due, today);
  const QString words = ToQt(DueWords(state));
  entry->setData(Qt::AccessibleTextRole,
                 words.isEmpty() ? QVariant() : QVariant(entry->text() + ", " + words));
  entry->setData(kDueStateRole, static_cast<int>(state));
  SetDueNumber(entry, state == DueState::NoDate
                          ? 0
                          : due.year * kDaysOfAYear + due.month * kDaysOfAMonth + due.day);
  Mark(entry);
}

void UnmarkDueDate(QListWidgetItem* entry) {
  MarkDueDate(entry, FileDate(), FileDate());
  entry->setData(kDueStateRole, QVariant());
}

QColor DueColour(DueState state, const QPalette& palette) {
  const QColor background = palette.color(QPalette::Active, QPalette::Base);
  const int step = Contrast(background, Qt::white) > Contrast(background, Qt::black) ? 1 : -1;
  // Makes the full colour lighter or darker until it contrasts enough: white or black does with any
  // background.
  int lightness = kMaxLightness / 2;
  QColor colour;
  do {
    colour = QColor::fromHsl(state == DueState::PastDue ? kRed : kAmber, 255, lightness).toRgb();
    lightness += step;
  } while (Contrast(background, colour) < kMinContrast && lightness >= 0 &&
           lightness <= kMaxLightness);
  return colour;
}

}  // namespace tarvell
