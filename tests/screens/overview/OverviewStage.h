// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SCREENS_OVERVIEW_OVERVIEWSTAGE_H
#define TARVELL_TESTS_SCREENS_OVERVIEW_OVERVIEWSTAGE_H

#include <QProgressBar>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/session/Tarvell_MainModule.h"
#include "screens/overview/OverviewTable.h"
#include "screens/overview/frmOverview.h"
#include "support/SensorStage.h"

namespace tarvell::test {

using Texts = std::vector<std::string>;

inline constexpr const char* kSensor = R"(c:\calfactors\PX12A\SN12345)";
inline constexpr const char* kAtStation1 = R"(c:\stations\ST1\PX12A)";
inline constexpr const char* kAtStation2 = R"(c:\stations\ST2\PX12A)";

// The rows of the table.
inline constexpr int kUnusedSensorRow = 1;
inline constexpr int kSensorRow = 2;
inline constexpr int kStation1Row = 3;
inline constexpr int kOtherRow = 4;
inline constexpr int kStation2Row = 5;

/// An instrument at a station.
struct AtStation {
  std::string model = "PX12A";
  std::string serial = "3318A12345";
  std::string address = "713";
  std::string due = "5 MAR 2027";
  std::string comment = "certificate";

  [[nodiscard]] std::string Bytes() const {
    return Lines({"MODEL NUMBER " + model, "SERIAL NUMBER " + serial, "ADDRESS TYPE GP-IB",
                  "ADDRESS " + address, "STATION rack 2", "OPTIONS ", "AVAILABILITY YES",
                  "CAL DUE DATE " + due, "ASSET A-77", "TRACE ", "COMMENT " + comment,
                  "CAL DATA own file"});
  }
};

/// The overview of a small laboratory on 22 NOV 2026: a sensor that two stations use, one of them
/// with an old due date; a sensor that is past due and that no station uses; and an instrument of a
/// model that the program does not know, which is not calibrated.
class OverviewStage : public SensorStage {
 protected:
  OverviewStage() {
    gStationDir = R"(c:\stations)";
    tree_.Write(kSensor, sensor_.Bytes());
    tree_.Write(R"(c:\calfactors\PX12A\SN00001)", SensorFile{.serial = "3318A00001",
                                                             .calDate = "20251121",
                                                             .calNo = "C-9",
                                                             .dueDate = "20261121",
                                                             .comment = "certificate",
                                                             .rows = {{"50.00", "100.0"}}}
                                                      .Bytes());
    tree_.Write(kAtStation1, AtStation{.due = "5 MAR 2026", .comment = "factory"}.Bytes());
    tree_.Write(
        R"(c:\stations\ST1\ZZ9)",
        AtStation{.model = "ZZ9", .serial = "77", .address = "714", .due = "1 1 2000"}.Bytes());
    tree_.Write(kAtStation2, AtStation{}.Bytes());
    tree_.Write(R"(c:\stations\INDEX)", Lines({"ST1", "ST2"}));
    tree_.Write(R"(c:\stations\ST1\INDEX)", Lines({"PX12A", "ZZ9", "INDEX"}));
    tree_.Write(R"(c:\stations\ST2\INDEX)", Lines({"PX12A", "INDEX"}));
  }

  /// Shows the overview, runs `act` and closes it.
  void AtOverview(const std::function<void(frmOverview& overview)>& act) {
    user_.At<frmOverview>([&](frmOverview& overview) {
      act(overview);
      overview.close();
    });
    frmOverview overview(nullptr);
    overview.ShowModally([this] { return today_; });
  }

  /// The same, when all files have been read.
  void AtFilled(const std::function<void(frmOverview& overview)>& act) {
    AtOverview([&](frmOverview& overview) {
      AwaitEnd(overview);
      act(overview);
    });
  }

  static void AwaitEnd(frmOverview& overview) {
    constexpr int kPatience = 20000;  // ms
    const auto& progress = Find<QProgressBar>(overview, "prgSurvey");
    EXPECT_TRUE(QTest::qWaitFor([&] { return !progress.isVisible(); }, kPatience));
  }

  static OverviewTable& TableOf(frmOverview& overview) {
    return Find<OverviewTable>(overview, "tblRows");
  }
  static Texts Column(frmOverview& overview, SurveyColumn column) {
    return ColumnOf(TableOf(overview), static_cast<int>(column));
  }
  static std::string Cell(frmOverview& overview, int row, SurveyColumn column) {
    return CellOf(TableOf(overview), row, static_cast<int>(column));
  }
  static void ClickRow(frmOverview& overview, int row) { ClickCell(TableOf(overview), row, 1); }
  static std::string ToDo(frmOverview& overview) {
    return Find<QLabel>(overview, "notices").text().toStdString();
  }
  static std::string Counts(frmOverview& overview) {
    return Find<QLabel>(overview, "lblCount").text().toStdString();
  }

  FileDate today_ = {2026, 11, 22};
  SensorFile sensor_ = {.calDate = "20260305",
                        .dueDate = "20270305",
                        .comment = "certificate",
                        .rows = {{"50.00", "100.0"}}};
};

}  // namespace tarvell::test

#endif
