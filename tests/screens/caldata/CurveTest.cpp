// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QClipboard>
#include <QSplitter>
#include <QToolTip>
#include <qcustomplot.h>

#include <cmath>

#include "screens/caldata/CurvePane.h"
#include "screens/caldata/EitherEditor.h"
#include "screens/widgets/ProgramLibrary.h"
#include "screens/widgets/UserSettings.h"
#include "support/SensorStage.h"

/// The curve beside the table.
namespace tarvell {
namespace {

using namespace test;  // NOLINT(google-build-using-namespace)

using Points = std::vector<std::pair<double, double>>;

/// A small display has no room for the curve at first.
void Unfold(QWidget& editor) {
  if (!Find<CurvePane>(editor, "curve").isVisible()) {
    Press(Qt::Key_F8);
  }
  Settle();
}

CurvePane& PaneOf(QWidget& editor) {
  return Find<CurvePane>(editor, "curve");
}

QCustomPlot& PlotOf(QWidget& editor) {
  // Changes are shown by the next event.
  Settle();
  return Find<QCustomPlot>(editor, "plot");
}

/// The points of a drawn curve. The last one is the ring around the current point.
Points PointsOf(QWidget& editor, int curve) {
  Points points;
  for (const QCPGraphData& point : *PlotOf(editor).graph(curve)->data()) {
    points.emplace_back(point.key, point.value);
  }
  return points;
}

std::string SummaryOf(QWidget& editor) {
  Settle();
  return Find<QLabel>(editor, "lblSummary").text().toStdString();
}

Points RingOf(QWidget& editor) {
  return PointsOf(editor, PlotOf(editor).graphCount() - 1);
}

QPoint PlaceOf(QWidget& editor, double x, double y) {
  const QCustomPlot& plot = PlotOf(editor);
  return QPointF(plot.xAxis->coordToPixel(x), plot.yAxis->coordToPixel(y)).toPoint();
}

void PointAt(QWidget& editor, const QPoint& place) {
  QCustomPlot& plot = PlotOf(editor);
  QTest::mouseMove(&plot, place + QPoint(1, 0));
  QTest::mouseMove(&plot, place);
}

/// The current cell of the table, which has the keyboard.
void ExpectAt(QWidget& editor, int row, int column) {
  auto& grid = *editor.findChild<CalGrid*>();
  EXPECT_TRUE(grid.hasFocus());
  EXPECT_EQ(grid.currentIndex().row() + 1, row);
  EXPECT_EQ(grid.currentIndex().column(), column);
}

class CurveOfASensor : public SensorStage {
 protected:
  CurveOfASensor() {
    file_.rows = {{"0.10", "98.8"}, {"50.00", "100.0"}, {"100.00", "98.8"}, {"1000.00", "97.0"}};
  }

  void Show(const Act& act) {
    ShowFile(file_, [&](frmCalDataInput& editor) {
      ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
      Unfold(editor);
      act(editor);
    });
  }

  const Points kPoints = {{0.1, 98.8}, {50, 100}, {100, 98.8}, {1000, 97}};
  SensorFile file_;
};

TEST_F(CurveOfASensor, FollowsWhatIsTypedAtOnce) {
  Show([this](frmCalDataInput& editor) {
    EXPECT_EQ(PointsOf(editor, 0), kPoints);
    const QCustomPlot& plot = PlotOf(editor);
    EXPECT_EQ(plot.xAxis->label(), "Frequency [MHz]");
    EXPECT_EQ(plot.yAxis->label(), "Calibration factor [%]");
    EXPECT_EQ(plot.xAxis->scaleType(), QCPAxis::stLogarithmic);
    EXPECT_LT(plot.yAxis->range().lower, 97);
    EXPECT_GT(plot.yAxis->range().upper, 100);
    ClickCell(Find<CalGrid>(editor, "Grid"), 3, 1);
    EXPECT_EQ(RingOf(editor), (Points{{100, 98.8}}));
    // While the cell is open, the axes stay.
    const QCPRange range = plot.yAxis->range();
    Type("9");
    EXPECT_EQ(PointsOf(editor, 0)[2], std::pair(100.0, 9.0));
    Type("1");
    EXPECT_EQ(PointsOf(editor, 0)[2], std::pair(100.0, 91.0));
    EXPECT_EQ(RingOf(editor), (Points{{100, 91}}));
    EXPECT_EQ(plot.yAxis->range(), range);
    Press(Qt::Key_Return);
    EXPECT_LT(PlotOf(editor).yAxis->range().lower, 91);
    // An edit that is given up is not drawn.
    Type("5");
    Press(Qt::Key_Escape);
    EXPECT_EQ(PointsOf(editor, 0)[2], std::pair(100.0, 91.0));
    DeletePoint(editor, "100MHz", QMessageBox::Yes);
    EXPECT_EQ(PointsOf(editor, 0), (Points{{0.1, 98.8}, {50, 100}, {1000, 97}}));
    Press(Qt::Key_Z, Qt::ControlModifier);
    Press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(PointsOf(editor, 0), kPoints);
  });
}

TEST_F(CurveOfASensor, ShowsTheNumbersUnderThePointerAndAClickGoesToTheCell) {
  Show([](frmCalDataInput& editor) {
    PointAt(editor, PlaceOf(editor, 50, 100));
    EXPECT_EQ(QToolTip::text(), "50 MHz: 100.0 %");
    QTest::mouseClick(&PlotOf(editor), Qt::LeftButton, {}, PlaceOf(editor, 1000, 97));
    ExpectAt(editor, 4, 1);
    // The click stores an open edit first.
    Type("96.5");
    QTest::mouseClick(&PlotOf(editor), Qt::LeftButton, {}, PlaceOf(editor, 50, 100));
    ExpectAt(editor, 2, 1);
    EXPECT_EQ(CellOf(Find<CalGrid>(editor, "Grid"), 4, 1), "96.5");
    // Beside the points a click does nothing.
    QTest::mouseClick(&PlotOf(editor), Qt::LeftButton, {}, PlaceOf(editor, 5, 97));
    EXPECT_EQ(Find<CalGrid>(editor, "Grid").currentIndex().row(), 1);
  });
}

TEST_F(CurveOfASensor, AClickKeepsAnEditThatCannotBeStored) {
  Show([this](frmCalDataInput& editor) {
    ClickCell(Find<CalGrid>(editor, "Grid"), 4, 1);
    Type("1E999");
    questions_.ExpectError({"1E999"});
    QTest::mouseClick(&PlotOf(editor), Qt::LeftButton, {}, PlaceOf(editor, 50, 100));
    ExpectOpen(editor, "1E999");
    Press(Qt::Key_Escape);
    ExpectAt(editor, 4, 1);
  });
}

TEST_F(CurveOfASensor, SaysEachPointToAScreenReader) {
  Show([](frmCalDataInput& editor) {
    const CurvePane& pane = PaneOf(editor);
    const auto name = [&] {
      Settle();
      return pane.accessibleName().toStdString();
    };
    Settle();
    EXPECT_TRUE(pane.accessibleDescription().startsWith("4 points, 97.0 to 100.0 %. The arrow"))
        << pane.accessibleDescription().toStdString();
    EXPECT_EQ(SummaryOf(editor), "4 points, 97.0 to 100.0 %.");
    EXPECT_EQ(name(), "Curve");
    Press(Qt::Key_V, Qt::AltModifier);
    ASSERT_TRUE(pane.hasFocus());
    EXPECT_EQ(name(), "Curve, 0.1 MHz: 98.8 %");
    Press(Qt::Key_Right);
    EXPECT_EQ(name(), "Curve, 50 MHz: 100.0 %");
    EXPECT_EQ(QToolTip::text(), "50 MHz: 100.0 %");
    Press(Qt::Key_End);
    Press(Qt::Key_Right);
    EXPECT_EQ(name(), "Curve, 1000 MHz: 97.0 %");
    Press(Qt::Key_Left);
    EXPECT_EQ(name(), "Curve, 100 MHz: 98.8 %");
    Press(Qt::Key_Home);
    Press(Qt::Key_Left);
    EXPECT_EQ(name(), "Curve, 0.1 MHz: 98.8 %");
    Press(Qt::Key_Down);
    EXPECT_EQ(name(), "Curve, 0.1 MHz: 98.8 %") << "it is the only curve";
    Press(Qt::Key_Right);
    Press(Qt::Key_Return);
    ExpectAt(editor, 2, 1);
    EXPECT_EQ(name(), "Curve");
  });
}

TEST_F(CurveOfASensor, ZoomsByTheMouseAndByKeys) {
  Show([](frmCalDataInput& editor) {
    QCustomPlot& plot = PlotOf(editor);
    const QCPRange whole = plot.yAxis->range();
    const QPoint at = PlaceOf(editor, 50, 98.5);
    QWheelEvent wheel(at, plot.mapToGlobal(at), {}, QPoint(0, 120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&plot, &wheel);
    EXPECT_LT(plot.yAxis->range().size(), whole.size());
    // What is typed does not change what the user chose to see.
    const QCPRange chosen = plot.yAxis->range();
    ClickCell(Find<CalGrid>(editor, "Grid"), 1, 1);
    Type("90");
    Press(Qt::Key_Return);
    EXPECT_EQ(PlotOf(editor).yAxis->range(), chosen);
    Press(Qt::Key_V, Qt::AltModifier);
    Press(Qt::Key_0);
    EXPECT_LT(PlotOf(editor).yAxis->range().lower, 90);
    EXPECT_GT(plot.yAxis->range().upper, 100);
    const QCPRange all = plot.yAxis->range();
    Press(Qt::Key_Plus);
    EXPECT_NEAR(PlotOf(editor).yAxis->range().size(), 0.7 * all.size(), 1E-9);
    Press(Qt::Key_Minus);
    EXPECT_NEAR(PlotOf(editor).yAxis->range().size(), all.size(), 1E-9);
    // A drag from one place to another shows what is between them.
    Press(Qt::Key_0);
    const QPoint from = PlaceOf(editor, 10, 99);
    const QPoint to = PlaceOf(editor, 200, 97);
    QTest::mousePress(&plot, Qt::LeftButton, {}, from);
    QTest::mouseMove(&plot, (from + to) / 2);
    QTest::mouseMove(&plot, to);
    QTest::mouseRelease(&plot, Qt::LeftButton, {}, to);
    EXPECT_NEAR(plot.yAxis->range().upper, 99, 0.2);
    EXPECT_NEAR(plot.yAxis->range().lower, 97, 0.2);
    EXPECT_NEAR(std::log10(plot.xAxis->range().upper), std::log10(200), 0.1);
    QTest::mouseDClick(&plot, Qt::LeftButton, {}, at);
    EXPECT_EQ(PlotOf(editor).yAxis->range(), all);
  });
}

TEST_F(CurveOfASensor, IsWholeWhenAnotherDataSetIsOpened) {
  QCPRange whole;
  Show([&](frmCalDataInput& editor) {
    whole = PlotOf(editor).yAxis->range();
    Press(Qt::Key_V, Qt::AltModifier);
    Press(Qt::Key_Plus);
    EXPECT_LT(PlotOf(editor).yAxis->range().size(), whole.size());
  });
  Show([&](frmCalDataInput& editor) { EXPECT_EQ(PlotOf(editor).yAxis->range(), whole); });
}

TEST_F(CurveOfASensor, IsCopiedAsAPictureAtTwiceItsSize) {
  Show([this](frmCalDataInput& editor) {
    const QSize size = PlotOf(editor).size();
    Press(Qt::Key_V, Qt::AltModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    const QImage copied = QApplication::clipboard()->image();
    EXPECT_EQ(copied.size(), 2 * size);
    QApplication::clipboard()->clear();
    user_.At<QMenu>([&](QMenu& menu) {
      EXPECT_EQ(menu.actions().size(), 4);
      Press(Qt::Key_C);
    });
    QContextMenuEvent byKey(QContextMenuEvent::Keyboard, {}, editor.mapToGlobal(QPoint(5, 5)));
    QApplication::sendEvent(&PaneOf(editor), &byKey);
    EXPECT_EQ(QApplication::clipboard()->image().size(), 2 * size);
  });
}

TEST_F(CurveOfASensor, CanBeFoldedAwayWhichIsRemembered) {
  const auto file = tree_.Root() / "config" / "settings.ini";
  KeepUserSettingsIn(QString::fromStdString(file.string()));
  int width = 0;
  Show([&](frmCalDataInput& editor) {
    const CurvePane& pane = PaneOf(editor);
    EXPECT_TRUE(pane.isVisible());
    auto& handle = *Find<QSplitter>(editor, "splitter").handle(1);
    QTest::mousePress(&handle, Qt::LeftButton, {}, QPoint(1, 20));
    QTest::mouseMove(&handle, QPoint(-39, 20));
    QTest::mouseRelease(&handle, Qt::LeftButton, {}, QPoint(1, 20));
    width = pane.width();
    Press(Qt::Key_V, Qt::AltModifier);
    Press(Qt::Key_F8);
    EXPECT_FALSE(pane.isVisible());
    ExpectAt(editor, 1, 1);
  });
  ShowFile(file_, [&](frmCalDataInput& editor) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    const CurvePane& pane = PaneOf(editor);
    EXPECT_FALSE(pane.isVisible());
    EXPECT_FALSE(editor.findChild<QAction*>("mnuCurve")->isChecked());
    user_.At<QMenu>([](QMenu& /*menu*/) { Press(Qt::Key_C); });
    Click(editor, "btnFile");
    EXPECT_TRUE(QTest::qWaitFor([&] { return pane.isVisible(); }));
    Settle();
    EXPECT_NEAR(pane.width(), width, 2);
    EXPECT_EQ(PointsOf(editor, 0), kPoints);
  });
  KeepUserSettingsIn("");
}

TEST_F(CurveOfASensor, IsMissedWithAMessageWhereItsLibraryIsMissing) {
  TakeLibrariesFrom(QString::fromStdString(tree_.Root().string()));
  Show([](frmCalDataInput& editor) {
    const auto& message = Find<QLabel>(editor, "lblNoCurve");
    EXPECT_TRUE(message.isVisible());
    EXPECT_TRUE(message.text().contains("Install the program again"));
    Press(Qt::Key_V, Qt::AltModifier);
    for (const Qt::Key key : {Qt::Key_Right, Qt::Key_0, Qt::Key_Plus, Qt::Key_Return}) {
      Press(key);
    }
    ExpectAt(editor, 2, 1);
    Type("99");
    Click(editor, "btnOk");
  });
  TakeLibrariesFrom("");
  file_.rows[1].second = "99.0";
  EXPECT_EQ(tree_.Read(R"(c:\calfactors\PX12A\SN12345)"), file_.Bytes());
}

/// Expects that the numbers on an axis are those of its ticks, as far as can be seen.
void ExpectTrueNumbers(const QCPAxis& axis) {
  QVector<double> ticks;
  QVector<QString> texts;
  axis.ticker()->generate(axis.range(), QLocale::c(), 'g', axis.numberPrecision(), ticks, nullptr,
                          &texts);
  for (qsizetype tick = 0; tick < ticks.size(); ++tick) {
    EXPECT_NEAR(texts[tick].toDouble(), ticks[tick], axis.range().size() / 1000)
        << texts[tick].toStdString();
  }
}

TEST_F(CurveOfASensor, HasDecimalPointsInALanguageWithCommas) {
  const QLocale usual;
  QLocale::setDefault(QLocale(QLocale::German));
  Show([](frmCalDataInput& editor) {
    const QCPAxis& axis = *PlotOf(editor).yAxis;
    QVector<double> ticks;
    QVector<QString> texts;
    axis.ticker()->generate(axis.range(), PlotOf(editor).locale(), 'g', axis.numberPrecision(),
                            ticks, nullptr, &texts);
    EXPECT_TRUE(texts.contains("97.5")) << texts.join(' ').toStdString();
  });
  QLocale::setDefault(usual);
}

TEST_F(CurveOfASensor, IsDrawnOfAnyTable) {
  const std::vector<std::pair<SensorRows, std::string>> tables = {
      {{}, "The table has no values to draw."},
      {{{"50.00", "x"}}, "The table has no values to draw."},
      {{{"50.00", "100.0"}}, "1 point, 100.0 %."},
      {{{"50.00", "103.0"}, {"60.00", "92.0"}}, "2 points, 92.0 to 103.0 %."},
      {{{"50.00", "99.0"}, {"50.00", "100.0"}}, "2 points, 99.0 to 100.0 %."},
      {{{"0.00", "99.0"}, {"50.00", "99.0"}}, "2 points, 99.0 to 99.0 %."},
      {{{"-1.00", "99.0"}, {"50.00", "1E300"}}, "2 points, 99.0 to 1E300 %."},
      {{{"1E300", "99.0"}, {"50.00", "1E-300"}}, "1 point, 1E-300 %."}};
  for (const auto& table : tables) {
    const std::string& summary = table.second;
    file_.rows = table.first;
    file_.reference = "none";
    Show([&](frmCalDataInput& editor) {
      const QCustomPlot& plot = PlotOf(editor);
      EXPECT_EQ(SummaryOf(editor), summary);
      for (const QCPRange& range : {plot.xAxis->range(), plot.yAxis->range()}) {
        EXPECT_TRUE(std::isfinite(range.size()) && range.size() > 0) << summary;
      }
      ExpectTrueNumbers(*plot.yAxis);
      Press(Qt::Key_V, Qt::AltModifier);
      Press(Qt::Key_End);
      Press(Qt::Key_Return);
    });
  }
}

TEST_F(CurveOfASensor, HasTheColoursOfADarkDesktop) {
  Show([](frmCalDataInput& editor) {
    const QImage light = PlotOf(editor).grab().toImage();
    QPalette dark = editor.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, Qt::white);
    editor.setPalette(dark);
    QCustomPlot& plot = PlotOf(editor);
    Settle();
    const QImage shown = plot.grab().toImage();
    EXPECT_EQ(light.pixelColor(2, 2), QColor(Qt::white));
    EXPECT_EQ(shown.pixelColor(2, 2), QColor(30, 30, 30));
    EXPECT_EQ(plot.xAxis->labelColor(), QColor(Qt::white));
    EXPECT_GT(plot.graph(0)->pen().color().lightness(), 100);
  });
}

// ---- Attenuators and sets.

class CurvesOfAnAttenuator : public SensorStage {};

TEST_F(CurvesOfAnAttenuator, AreTheDeviationsOfEachSetting) {
  const std::string path = R"(c:\calfactors\PX60H\SN12345)";
  tree_.Write(path,
              Lines({"#MODEL_NO : PX60H", "#SER_NO   : 3318A12345", "#CAL_DATE : 20010305",
                     "#CAL_NO   : ", "#DUE_DATE : 20020305", "#COMMENT  : ", "!",
                     "*  0  :   5.00E07   :   0.0010", "*  0  :   1.00E09   :   0.0020",
                     "* 10  :   5.00E07   :   9.9800", "* 10  :   2.00E09   :  10.0300", "!End"}));
  gCalFiles[0].FilePath = path;
  SensorStage::Show(0, "PX60H", [](frmCalDataInput& editor) {
    ASSERT_TRUE(QTest::qWaitForWindowActive(&editor));
    Unfold(editor);
    EXPECT_EQ(PointsOf(editor, 0), (Points{{5E7, 0.001}, {1E9, 0.002}}));
    EXPECT_EQ(PointsOf(editor, 1), (Points{{5E7, -0.02}, {2E9, 0.03}}));
    const QCustomPlot& plot = PlotOf(editor);
    EXPECT_EQ(plot.yAxis->label(), "Deviation [dB]");
    EXPECT_EQ(plot.xAxis->scaleType(), QCPAxis::stLinear);
    EXPECT_TRUE(plot.legend->visible());
    EXPECT_EQ(plot.graph(1)->name(), "10 dB");
    EXPECT_NE(plot.graph(0)->pen().color(), plot.graph(1)->pen().color());
    EXPECT_NE(plot.graph(0)->scatterStyle().shape(), plot.graph(1)->scatterStyle().shape());
    // Down goes to the nearest point of the next curve.
    Press(Qt::Key_V, Qt::AltModifier);
    Press(Qt::Key_End);
    Press(Qt::Key_Down);
    Settle();
    EXPECT_EQ(PaneOf(editor).accessibleName(), "Curve, 10 dB, 50 MHz: -0.0200 dB");
    EXPECT_EQ(SummaryOf(editor), "10 dB: 2 points, -0.0200 to +0.0300 dB.");
    Press(Qt::Key_Return);
    ExpectAt(editor, 3, 2);
  });
}

using CurveOfASet = EitherEditor;

TEST_P(CurveOfASet, IsThatOfTheCurrentColumnAndPage) {
  Edit([](CalEditor& editor) {
    Unfold(editor);
    ClickCell(GridOf(editor), 1, 1);
    EXPECT_EQ(PointsOf(editor, 0), (Points{{1E3, 1.000012}, {1E4, 1.00002}, {1E5, 1.00003}}));
    const QCustomPlot& plot = PlotOf(editor);
    EXPECT_EQ(plot.yAxis->label(), "Capacitance [pF]");
    // Uncertainties are drawn in one unit.
    Press(Qt::Key_Right);
    EXPECT_EQ(PointsOf(editor, 0), (Points{{1E3, 0.0012}, {1E4, 0.005}, {1E5, 0.006}}));
    EXPECT_EQ(plot.yAxis->label(), "Unc. of Capacitance [%]");
    Type("50");
    EXPECT_EQ(PointsOf(editor, 0)[0], std::pair(1E3, 0.005)) << "ppm";
    Press(Qt::Key_Escape);
    Press(Qt::Key_Right);
    EXPECT_EQ(PlotOf(editor).yAxis->label(), "Disspation Factor");
    ClickTab(editor, 2);
    EXPECT_EQ(PointsOf(editor, 0), (Points{{1E3, 10.00001}, {2E3, 10.00002}}));
    EXPECT_EQ(SummaryOf(editor), "2 points, 10.00001 to 10.00002 pF.");
  });
}

INSTANTIATE_TEST_SUITE_P(Editor, CurveOfASet, testing::Values(true), KindName);

}  // namespace
}  // namespace tarvell
