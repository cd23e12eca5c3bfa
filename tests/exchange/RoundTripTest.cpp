// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

// What was exported and imported again is the same data set, byte for byte when saved.

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <utility>

#include "core/caldata/CalPoints.h"
#include "core/caldata/EditedCell.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/dates/Months.h"
#include "core/numbers/Numbers.h"
#include "exchange/Export.h"
#include "exchange/ImportPlan.h"
#include "exchange/ReadCertificate.h"
#include "support/TestTree.h"

namespace tarvell::test {

namespace {

/// Fills data sets with random data that the program can write.
class RandomData {
 public:
  explicit RandomData(unsigned seed) : random_(seed) {}

  void Fill(const Model& model, cifCaldata& data) {
    EditorState state = StateOf(model, data);
    DraftHeader& header = state.header;
    header.serialNumber = "2702A" + Number(5);
    header.calibrationNumber = Below(2) == 0 ? "" : "PS-" + Number(4);
    header.comment = Below(2) == 0 ? "" : "a \"b\", c; \u00E4\u20AC " + Number(2);
    SetDate(header.calYear, header.calMonth, header.calDay);
    SetDate(header.dueYear, header.dueMonth, header.dueDay);
    if (model.hasOption) {
      state.option = Below(2) == 0;
    }
    if (HasPages(model)) {
      FillPages(model, data, state);
    } else {
      state.pages.front().rows = Below(5) == 0 ? Rows() : Points(model, data);
    }
    StoreState(state, model, data);
  }

 private:
  [[nodiscard]] unsigned Below(unsigned end) { return static_cast<unsigned>(random_() % end); }

  [[nodiscard]] std::string Number(int digits) {
    std::string text;
    for (int i = 0; i < digits; ++i) {
      text += static_cast<char>('1' + Below(9));
    }
    return text;
  }

  [[nodiscard]] std::string Value() {
    return (Below(8) == 0 ? "-" : "") + Number(static_cast<int>(1 + Below(4))) + "." +
           Number(static_cast<int>(1 + Below(6)));
  }

  void SetDate(std::string& year, std::string& month, std::string& day) {
    const bool isNone = Below(6) == 0;
    year = isNone ? "0" : std::to_string(1990 + Below(60));
    month = isNone ? "" : NumberToMonth(static_cast<std::int16_t>(1 + Below(12)));
    // Some of these days do not exist.
    day = isNone ? "0" : std::to_string(1 + Below(31));
  }

  using Rows = std::vector<std::vector<std::string>>;

  [[nodiscard]] Rows Points(const Model& model, const cifCaldata& data) {
    const bool isSensor = model.family == ModelFamily::PowerSensor;
    MemoryGrid grid(isSensor ? 2 : 3);
    const unsigned count = 1 + Below(50);
    for (unsigned i = 0; i < count; ++i) {
      PointPosition place;
      std::vector<std::string> cells;
      const double frequency =
          NumericValue(Number(static_cast<int>(1 + Below(5))) + "." + Number(3));
      if (isSensor) {
        place = PlaceSensorPoint(grid, frequency, model.frequencyUnit);
        cells = SensorRow(frequency, model.frequencyUnit);
      } else {
        const AttenuatorPoint point = {static_cast<std::int16_t>(Below(121)), frequency * 1E5};
        place = PlaceAttenuatorPoint(grid, point);
        cells = AttenuatorRow(point);
        if (FindAttenuatorPoint(grid, {point.setting, NumericValue(cells[1])})) {
          continue;
        }
      }
      if (place.place == PointPlace::Row) {
        cells.back() = data.SetCalibrationDataFormat(0, static_cast<std::int16_t>(cells.size() - 1),
                                                     1, Value(), "");
        if (Below(4) == 0) {
          // Files of other programs write numbers shorter.
          cells.front() = Normalised(cells.front());
          cells.back() = Below(2) == 0 ? "." + Number(1) : Normalised(cells.back());
        }
        grid.InsertRow(place.row, cells);
      }
    }
    return RowsOf(grid);
  }

  void FillPages(const Model& model, const cifCaldata& data, EditorState& state) {
    for (std::size_t index = 0; index < state.pages.size(); ++index) {
      const auto page = static_cast<std::int16_t>(index);
      DraftPage& filled = state.pages[index];
      filled.serialNumber =
          model.family == ModelFamily::CapacitorSet && Below(4) > 0 ? "M" + Number(4) : "";
      for (std::size_t row = 0; row < filled.rows.size(); ++row) {
        for (std::size_t column = 1; column < filled.rows[row].size(); ++column) {
          FillCell(data, page, {RowOf({row}), static_cast<std::int16_t>(column)},
                   filled.rows[row][column]);
        }
      }
    }
  }

  void FillCell(const cifCaldata& data, std::int16_t page, Cell cell, std::string& text) {
    const std::vector<std::string> units = UnitsOf(data, page, cell.column);
    const std::string unit = units.empty() ? "" : units[Below(static_cast<unsigned>(units.size()))];
    if (data.AffixesOf(page, cell, unit) && Below(5) > 0) {
      text = data.SetCalibrationDataFormat(page, cell.column, cell.row.number, Value(), unit);
    }
  }

  std::mt19937 random_;
};

class RoundTrip : public testing::TestWithParam<std::string> {};

std::vector<std::string> EditedModels() {
  std::vector<std::string> codes;
  for (const Model& model : kModels) {
    if (model.create != nullptr) {
      codes.emplace_back(model.code);
    }
  }
  return codes;
}

}  // namespace

TEST_P(RoundTrip, WhatIsExportedAndImportedIsSavedByteForByte) {
  const Model& model = *FindModel(GetParam());
  const TestTree tree;
  tree.InstallTemplate(model.code);
  for (unsigned seed = 1; seed <= 10; ++seed) {
    SCOPED_TRACE(seed);
    const std::unique_ptr<cifCaldata> data = NewDataSet(model).data;
    RandomData(seed).Fill(model, *data);
    const std::string csv = CsvOf(model, *data, StateOf(model, *data));
    data->SaveCalibrationDataToFile("c:\\one");

    const std::unique_ptr<cifCaldata> other = NewDataSet(model).data;
    EditorState now = StateOf(model, *other);
    // What the export leaves empty has to become empty.
    now.header = {"", "OLD", "2001", "MAR", "5", "2002", "MAR", "5", "old"};
    for (DraftPage& page : now.pages) {
      page.serialNumber = "OLD";
    }
    const ImportTarget target = {model, *other, now};
    const Certificate certificate = ReadCertificate(csv);
    EXPECT_TRUE(certificate.questions.empty());
    const ImportPlan plan = PlanImport(target, certificate, ProposedChoices(target, certificate));
    EXPECT_EQ(plan.doubts, std::vector<std::string>());
    EXPECT_EQ(plan.Rounded(), std::vector<std::string>());
    StoreState(AfterImport(now, plan, true), model, *other);
    other->SaveCalibrationDataToFile("c:\\two");
    ASSERT_EQ(tree.Read("c:\\two"), tree.Read("c:\\one")) << csv;
  }
}

INSTANTIATE_TEST_SUITE_P(EveryModel, RoundTrip, testing::ValuesIn(EditedModels()),
                         [](const auto& model) { return model.param; });

}  // namespace tarvell::test
