// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/widgets/PaperPainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QMarginsF>
#include <QPageLayout>
#include <QPainter>
#include <QPen>

#include <algorithm>
#include <array>
#include <cstddef>

#include "core/paper/PaperLayout.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

constexpr qreal kMargin = 15;  // mm
constexpr qreal kInch = 72;    // points

QFont FontOfSize(qreal points, bool isBold = false) {
  QFont font;
  font.setPointSizeF(points);
  font.setBold(isBold);
  return font;
}

/// The fonts as they are on a device.
class DeviceFonts final : public PaperFonts {
 public:
  explicit DeviceFonts(QPaintDevice& device)
      : scale_(device.logicalDpiX() / kInch),
        fonts_({FontOfSize(9), FontOfSize(9, true), FontOfSize(15, true), FontOfSize(7.5)}),
        metrics_({QFontMetricsF(fonts_[0], &device), QFontMetricsF(fonts_[1], &device),
                  QFontMetricsF(fonts_[2], &device), QFontMetricsF(fonts_[3], &device)}) {}

  [[nodiscard]] double WidthOf(std::string_view text, PaperFont font) const override {
    return Metrics(font).horizontalAdvance(ToQt(text)) / scale_;
  }
  [[nodiscard]] double LineHeight(PaperFont font) const override {
    return Metrics(font).height() / scale_;
  }

  [[nodiscard]] qreal Scale() const { return scale_; }
  [[nodiscard]] const QFont& Font(PaperFont font) const {
    return fonts_[static_cast<std::size_t>(font)];
  }
  [[nodiscard]] qreal Ascent(PaperFont font) const { return Metrics(font).ascent(); }

 private:
  [[nodiscard]] const QFontMetricsF& Metrics(PaperFont font) const {
    return metrics_[static_cast<std::size_t>(font)];
  }

  qreal scale_;  ///< dots for each point
  std::array<QFont, 4> fonts_;
  std::array<QFontMetricsF, 4> metrics_;
};

class SheetPainter {
 public:
  SheetPainter(QPainter& painter, const DeviceFonts& fonts, const QList<QPicture>& pictures)
      : painter_(painter), fonts_(fonts), pictures_(pictures) {}

  void Paint(const PaperSheet& sheet) {
    for (const PlacedPicture& picture : sheet.pictures) {
      Paint(picture);
    }
    painter_.setPen(Qt::black);
    for (const PlacedText& text : sheet.texts) {
      painter_.setFont(fonts_.Font(text.font));
      const QPointF base(Dots(text.x), Dots(text.y) + fonts_.Ascent(text.font));
      painter_.drawText(base, ToQt(text.text));
    }
    for (const PlacedRule& rule : sheet.rules) {
      painter_.setPen(QPen(Qt::black, Dots(rule.thickness), Qt::SolidLine, Qt::FlatCap));
      const QPointF left(Dots(rule.x), Dots(rule.y));
      painter_.drawLine(left, left + QPointF(Dots(rule.width), 0));
    }
  }

 private:
  [[nodiscard]] qreal Dots(double points) const { return points * fonts_.Scale(); }

  /// As large as there is room for.
  void Paint(const PlacedPicture& place) {
    const auto number = static_cast<qsizetype>(place.number);
    if (number >= pictures_.size()) {
      return;
    }
    const QPicture& picture = pictures_[number];
    const QRect size = picture.boundingRect();
    const qreal scale = Dots(std::min(place.width / size.width(), place.height / size.height()));
    painter_.save();
    painter_.translate(Dots(place.x), Dots(place.y));
    painter_.scale(scale, scale);
    painter_.drawPicture(-size.topLeft(), picture);
    painter_.restore();
  }

  QPainter& painter_;
  const DeviceFonts& fonts_;
  const QList<QPicture>& pictures_;
};

}  // namespace

bool PaintPaper(const PaperDocument& document, const QList<QPicture>& pictures,
                QPagedPaintDevice& device) {
  device.setPageMargins(QMarginsF(kMargin, kMargin, kMargin, kMargin), QPageLayout::Millimeter);
  QPainter painter;
  if (!painter.begin(&device)) {
    return false;
  }
  const DeviceFonts fonts(device);
  const QSizeF area = device.pageLayout().paintRect(QPageLayout::Point).size();
  SheetPainter sheets(painter, fonts, pictures);
  bool isFirst = true;
  for (const PaperSheet& sheet : LayOut(document, {area.width(), area.height()}, fonts)) {
    if (!isFirst && !device.newPage()) {
      return false;
    }
    isFirst = false;
    sheets.Paint(sheet);
  }
  return painter.end();
}

}  // namespace tarvell
