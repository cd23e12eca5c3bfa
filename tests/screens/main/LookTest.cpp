// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QTest>
#include <QtWidgets>
#include <gtest/gtest.h>

#include <cstdlib>

#include "screens/caldata/CalGrid.h"
#include "screens/caldata/PastePreview.h"
#include "screens/widgets/DateBoxes.h"
#include "screens/widgets/NameList.h"
#include "screens/widgets/NoticeLine.h"
#include "screens/widgets/ScreenSize.h"
#include "screens/widgets/UpDown.h"

namespace tarvell {
namespace {

// ---- The selection.

/// The background colour at the right end of the selected entry.
QColor ColourIn(QAbstractItemView& view) {
  const QRect cell = view.visualRect(view.selectionModel()->selectedIndexes().value(0));
  return view.viewport()->grab().toImage().pixelColor(cell.right() - 3, cell.center().y());
}

int Distance(const QColor& a, const QColor& b) {
  return std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) +
         std::abs(a.blue() - b.blue());
}

TEST(Selection, OfAListAndOfATableIsPaleWithoutFocus) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);  // the window owns it and what is in it
  auto* list = new QListWidget;
  AddName(list, "one");
  OnEntry(list, {});
  list->setCurrentRow(0);
  auto* grid = new CalGrid;
  grid->Fill([](MemoryGrid& cells) {
    cells.Clear(2);
    cells.AddRow("50.00\t100.0");
  });
  auto* other = new QLineEdit;
  layout->addWidget(list);
  layout->addWidget(grid);
  layout->addWidget(other);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  for (QAbstractItemView* view : std::initializer_list<QAbstractItemView*>{list, grid}) {
    const QColor strong = view->palette().color(QPalette::Highlight);
    const QColor base = view->palette().color(QPalette::Base);
    view->setFocus();
    const QColor focused = ColourIn(*view);
    other->setFocus();
    const QColor pale = ColourIn(*view);
    EXPECT_LT(Distance(focused, strong), Distance(focused, base));
    EXPECT_LT(Distance(pale, base), Distance(pale, strong));
    EXPECT_NE(pale, base) << "the selection stays visible";
  }
}

/// The number of pixels in the right half of a box that are as dark as text.
int DarkDots(QLineEdit& box) {
  QApplication::processEvents();
  const QImage picture = box.grab().toImage();
  int dots = 0;
  for (int x = picture.width() / 2; x < picture.width() - 4; ++x) {
    for (int y = 4; y < picture.height() - 4; ++y) {
      dots += picture.pixelColor(x, y).lightness() < 100 ? 1 : 0;
    }
  }
  return dots;
}

TEST(MarkedBox, ShowsItsTextBesideTheMark) {
  QLineEdit box;
  UpDown spinner;
  SetUpDayBox(&box, &spinner);
  box.setFocusPolicy(Qt::NoFocus);  // no cursor beside the text
  box.setText("31");
  box.setAccessibleDescription("The day.");
  box.show();
  const int before = DarkDots(box);
  EXPECT_GT(before, 10);
  MarkBox(&box, "no such day");
  EXPECT_EQ(DarkDots(box), before);
  EXPECT_EQ(box.accessibleDescription(), "no such day The day.");
  MarkBox(&box, "");
  EXPECT_EQ(DarkDots(box), before);
  EXPECT_EQ(box.accessibleDescription(), "The day.");
}

// ---- The preview of a paste.

QImage PictureOf(QTableWidget& table, int row, int column) {
  return table.viewport()->grab(table.visualItemRect(table.item(row, column))).toImage();
}

/// Away from text and lines.
QColor BackgroundOf(const QImage& cell) {
  return cell.pixelColor(3, 3);
}

/// The number of pixels that text or a line covers.
int Ink(const QImage& cell) {
  constexpr int kClear = 150;
  int dots = 0;
  for (int x = 0; x < cell.width() - 2; ++x) {
    for (int y = 0; y < cell.height() - 2; ++y) {
      dots += Distance(cell.pixelColor(x, y), BackgroundOf(cell)) > kClear ? 1 : 0;
    }
  }
  return dots;
}

// In dark colours, too. The values are the same, so that only their looks differ.
TEST(PastePreview, PaintsChangedRemovedAndDefaultValuesInTheirOwnWays) {
  constexpr int kBefore = 1;
  constexpr int kAfter = 2;
  using Change = PastedRow::Change;
  const PastedTable table = {
      .rows = {{Change::Unchanged, {"1.00", "99.9"}, {"1.00", "99.9"}},
               {Change::Updated, {"2.00", "98.0"}, {"2.00", "99.9"}},
               {Change::Missing, {"3.00", "99.9"}, {"3.00", "99.9"}},
               {Change::Unchanged, {"4.00", "99.9"}, {"4.00", "99.9"}, true}},
      .frequencyUnit = "MHz"};
  const QPalette usual = QApplication::palette();
  for (const QPalette& palette : {usual, QPalette(QColor(0x30, 0x30, 0x30))}) {
    QApplication::setPalette(palette);
    PastePreview preview(table, {"Frequency  [MHz]", "Calibration factor[%]"}, nullptr);
    preview.show();
    auto& shown = *preview.findChild<QTableWidget*>("tblPreview");
    const QImage plain = PictureOf(shown, 0, kAfter);
    const QImage changed = PictureOf(shown, 1, kAfter);
    EXPECT_GT(Distance(BackgroundOf(changed), BackgroundOf(plain)), 30) << "a tint";
    EXPECT_GT(Ink(changed), 1.1 * Ink(plain)) << "bold";
    const QImage kept = PictureOf(shown, 2, kBefore);
    EXPECT_EQ(Ink(kept), Ink(PictureOf(shown, 0, kBefore)));
    EXPECT_NE(PictureOf(shown, 3, kBefore), kept) << "italic";
    EXPECT_EQ(shown.item(3, kBefore)->data(Qt::AccessibleTextRole), "99.9 (not entered)");
    preview.findChild<QCheckBox*>("chkRemove")->setChecked(true);
    EXPECT_GT(Ink(PictureOf(shown, 2, kBefore)), 1.1 * Ink(kept)) << "struck out";
  }
  QApplication::setPalette(usual);
}

// ---- Sizes.

TEST(NoticeLine, HasTheSameHeightForEveryText) {
  QWidget window;
  auto* layout = new QVBoxLayout(&window);  // the window owns it
  auto* other = new QWidget(&window);
  auto* notice = new NoticeLine(&window);
  layout->addWidget(other, 1);
  layout->addWidget(notice);
  window.resize(200, 200);
  window.show();
  const int height = notice->height();
  for (const QString& text : {QString("short"), QString("long ").repeated(40), QString()}) {
    notice->Report("subject", text);
    layout->activate();
    EXPECT_EQ(notice->height(), height) << text.toStdString();
  }
}

TEST(NoticeLine, EndsInDotsWhereItHasNoRoomForAll) {
  NoticeLine notice;
  notice.resize(200, notice.sizeHint().height());
  notice.Report("subject", "short");
  EXPECT_EQ(notice.ShownLines(), QStringList("short"));
  QStringList words;
  for (int number = 0; number < 60; ++number) {
    words << QString("word%1").arg(number);
  }
  notice.Report("subject", words.join(' '));
  const QStringList lines = notice.ShownLines();
  ASSERT_EQ(lines.size(), 2);
  EXPECT_TRUE(lines[0].startsWith("word0 word1 ")) << lines[0].toStdString();
  EXPECT_TRUE(lines[1].endsWith(QChar(0x2026))) << lines[1].toStdString();
  EXPECT_LE(notice.fontMetrics().horizontalAdvance(lines[1]), notice.width());
  EXPECT_TRUE(notice.toolTip().contains("word59"));
  EXPECT_TRUE(notice.text().endsWith("word59")) << "a screen reader reads all";
}

TEST(ScreenSize, GrowsWithTheFontButNotBeyondTheDisplay) {
  QWidget small;
  QWidget large;
  int pixels = 12;
  for (QWidget* window : {&small, &large}) {
    QFont font = window->font();
    font.setPixelSize(pixels);
    window->setFont(font);
    window->resize(200, 100);
    FitToDisplay(window);
    pixels *= 2;
  }
  EXPECT_GE(small.width(), 200);
  EXPECT_NEAR(large.width(), 2 * small.width(), 0.15 * large.width());
  EXPECT_NEAR(large.height(), 2 * small.height(), 0.15 * large.height());
  for (const QSize size : {QSize(9000, 9000), QSize(200, 9000), QSize(9000, 100)}) {
    small.resize(size);
    small.show();
    const QSize room = small.screen()->availableSize();
    EXPECT_LT(small.width(), room.width());
    EXPECT_LT(small.height(), room.height());
    EXPECT_EQ(small.width() == size.width(), size.width() == 200);
    small.hide();
  }
}

TEST(MakeScrollable, ShowsTheFieldThatGetsTheFocus) {
  QWidget window;
  auto* part = new QWidget;
  (new QVBoxLayout(&window))->addWidget(part);  // the window owns both layouts and what is in them
  auto* fields = new QVBoxLayout(part);
  for (int i = 0; i < 20; ++i) {
    fields->addWidget(new QLineEdit);
  }
  MakeScrollable(part);
  window.resize(200, 150);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QWidget* last = fields->itemAt(19)->widget();
  ASSERT_TRUE(last->visibleRegion().isEmpty());
  last->setFocus();
  EXPECT_EQ(last->visibleRegion().boundingRect(), last->rect());
}

TEST(MakeScrollable, ShowsTheWholeOfAFieldOfWhichOnlyTheTextIsSeen) {
  QWidget window;
  auto* part = new QWidget;
  auto* outside = new QPushButton;
  auto* rows = new QVBoxLayout(&window);  // the window owns both layouts and what is in them
  rows->addWidget(part);
  rows->addWidget(outside);
  auto* fields = new QVBoxLayout(part);
  for (int i = 0; i < 20; ++i) {
    fields->addWidget(new QLineEdit);
  }
  MakeScrollable(part);
  window.resize(200, 150);
  window.show();
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QWidget* field = fields->itemAt(10)->widget();
  QScrollBar* bar = window.findChild<QScrollArea*>()->verticalScrollBar();
  int cutOff = 0;
  for (int place = 0; place <= bar->maximum(); ++place) {
    outside->setFocus();
    bar->setValue(place);
    const QRect seen = field->visibleRegion().boundingRect();
    cutOff += !seen.isEmpty() && seen != field->rect() ? 1 : 0;
    field->setFocus();
    ASSERT_EQ(field->visibleRegion().boundingRect(), field->rect()) << place;
  }
  EXPECT_GT(cutOff, 0);
}

}  // namespace
}  // namespace tarvell
