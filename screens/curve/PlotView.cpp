// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/curve/PlotView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>

namespace tarvell {

namespace {

constexpr double kMargin = 0.06;  // of a range, at each end

/// The lowest and the highest of some numbers.
class Span {
 public:
  void Add(double number) {
    low_ = std::min(low_, number);
    high_ = std::max(high_, number);
  }

  [[nodiscard]] QCPRange WithMargins() const {
    if (low_ > high_) {
      return {0, 1};
    }
    double margin = (high_ - low_) * kMargin;
    if (margin <= std::abs(high_) * std::numeric_limits<double>::epsilon()) {
      // All numbers are equal.
      margin = high_ == 0 ? 1 : std::abs(high_) / 100;
    }
    return {low_ - margin, high_ + margin};
  }

  /// The same for a logarithmic axis, of numbers above zero.
  [[nodiscard]] QCPRange WithLogarithmicMargins() const {
    if (low_ > high_) {
      return {1, 10};
    }
    const double factor = std::pow(high_ / low_, kMargin);
    return {low_ / factor, high_ * factor};
  }

 private:
  double low_ = std::numeric_limits<double>::infinity();
  double high_ = -std::numeric_limits<double>::infinity();
};

// Colours that people with any kind of colour vision can tell apart (Okabe and Ito), in the order
// of their contrast. Those for a light background are without the palest, the purple is darker.
constexpr std::array<QRgb, 5> kOnLight = {0x0072B2, 0xD55E00, 0x009E73, 0xA8558A, 0x000000};
constexpr std::array<QRgb, 6> kOnDark = {0x56B4E9, 0xE69F00, 0x009E73,
                                         0xF0E442, 0xCC79A7, 0xFFFFFF};

constexpr std::array<QCPScatterStyle::ScatterShape, 7> kSymbols = {
    QCPScatterStyle::ssDisc,    QCPScatterStyle::ssSquare,           QCPScatterStyle::ssTriangle,
    QCPScatterStyle::ssDiamond, QCPScatterStyle::ssTriangleInverted, QCPScatterStyle::ssCross,
    QCPScatterStyle::ssPlus};

// For paper. As there is no common divisor of their number and that of the symbols, the first 28
// looks are different.
constexpr std::array kLines = {Qt::SolidLine, Qt::DashLine, Qt::DashDotLine, Qt::DashDotDotLine};

template <typename Items>
auto ItemFor(const Items& items, int look) {
  return items[static_cast<std::size_t>(look) % items.size()];
}

}  // namespace

bool CanBeDrawn(double number) {
  constexpr double kLargest = 1E200;
  return std::abs(number) <= kLargest;
}

WholeView WholeViewOf(const Drawing& drawing) {
  Span x;
  Span y;
  for (const DrawnCurve& curve : drawing.curves) {
    for (const QPointF& point : curve.points) {
      if (CanBeDrawn(point.x()) && CanBeDrawn(point.y())) {
        x.Add(point.x() / drawing.xFactor);
        y.Add(point.y());
      }
    }
  }
  return {drawing.isLogarithmic ? x.WithLogarithmicMargins() : x.WithMargins(), y.WithMargins()};
}

QColor ColourOf(int look, const QPalette& palette) {
  const bool isDark =
      palette.color(QPalette::Base).lightness() < palette.color(QPalette::Text).lightness();
  return QColor::fromRgb(isDark ? ItemFor(kOnDark, look) : ItemFor(kOnLight, look));
}

QCPScatterStyle::ScatterShape SymbolOf(int look) {
  return ItemFor(kSymbols, look);
}

QPen PaperPenOf(const DrawnCurve& curve) {
  return curve.isEarlier ? QPen(Qt::black, 0.5, Qt::DotLine)
                         : QPen(Qt::black, 0.8, ItemFor(kLines, curve.look));
}

int DigitsFor(const QCPRange& range) {
  constexpr double kLeastDigits = 4;
  constexpr double kDigitLimit = 15;
  const double largest = std::max(std::abs(range.lower), std::abs(range.upper));
  // A step between two numbers may be a quarter of a power of ten.
  const double digits = std::ceil(std::log10(largest / range.size())) + 3;
  return static_cast<int>(std::isfinite(digits) ? std::clamp(digits, kLeastDigits, kDigitLimit)
                                                : kLeastDigits);
}

}  // namespace tarvell
