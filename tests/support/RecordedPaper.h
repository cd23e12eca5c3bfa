// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_RECORDEDPAPER_H
#define TARVELL_TESTS_SUPPORT_RECORDEDPAPER_H

#include <QIODevice>
#include <QPaintEngine>
#include <QPdfWriter>

#include <string>
#include <vector>

namespace tarvell::test {

/// What was painted on the sheets of a printer.
struct Painted {
  std::vector<std::string> texts;
  int polylines = 0;  ///< of at least three points
};

/// A printer that takes down what is painted on it.
class RecordedPaper final : public QPdfWriter {
 public:
  /// `unused` is the device of the PDF, which stays empty.
  RecordedPaper(QIODevice* unused, Painted& painted) : QPdfWriter(unused), engine_(painted) {}

  bool newPage() override { return true; }
  [[nodiscard]] QPaintEngine* paintEngine() const override { return &engine_; }

 private:
  class Engine final : public QPaintEngine {
   public:
    explicit Engine(Painted& painted) : QPaintEngine(AllFeatures), painted_(painted) {}

    bool begin(QPaintDevice* /*device*/) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState& /*state*/) override {}
    void drawPixmap(const QRectF& /*to*/, const QPixmap& /*pixmap*/,
                    const QRectF& /*from*/) override {}
    void drawTextItem(const QPointF& /*place*/, const QTextItem& item) override {
      painted_.texts.push_back(item.text().toStdString());
    }
    void drawPath(const QPainterPath& path) override {
      painted_.polylines += path.elementCount() > 2 ? 1 : 0;
    }
    void drawPolygon(const QPointF* /*points*/, int count, PolygonDrawMode mode) override {
      painted_.polylines += mode == PolylineMode && count > 2 ? 1 : 0;
    }
    [[nodiscard]] Type type() const override { return User; }

   private:
    Painted& painted_;
  };

  mutable Engine engine_;
};

}  // namespace tarvell::test

#endif
