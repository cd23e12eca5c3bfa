// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "bench/slips/Tables.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <utility>

#include "core/caldata/EditedCell.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/curves/CellNumber.h"
#include "core/curves/PageRows.h"
#include "core/numbers/Numbers.h"

namespace tarvell::bench {

namespace {

constexpr std::int16_t kColumns = 5;

/// The curve of one table.
class Shape {
 public:
  Shape(const PageTable& table, Chance& chance)
      : slope_(chance.Between(2, 14)),
        power_(chance.Between(0.7, 1.6)),
        ripple_(chance.Between(0.05, 0.5)),
        waves_(chance.Between(2, 6)),
        phase_(chance.Between(0, 2 * std::numbers::pi)),
        lowEnd_(chance.Between(0, 3)),
        perDecibel_(chance.Between(-0.002, 0.002)) {
    for (GridRow row = kFirstDataRow; row < EndOf(table.grid); ++row) {
      highest_ = std::max(highest_, PlaceOf(table.grid, row, AxisOf(table)).x);
    }
  }

  /// A calibration factor at a frequency: 100 %, less at both ends, with ripple.
  [[nodiscard]] double Factor(double x) const {
    constexpr double kLow = 1E6;
    const double share = x / highest_;
    return 100 - slope_ * std::pow(share, power_) - lowEnd_ / (1 + x / kLow) +
           ripple_ * std::sqrt(share) * std::sin(2 * std::numbers::pi * waves_ * share + phase_);
  }

  /// An attenuation in dB: its deviation grows with the setting and the frequency.
  [[nodiscard]] double Attenuation(double setting, double x) const {
    const double share = x / highest_;
    constexpr double kPeriod = 40;  // dB
    return setting + setting * perDecibel_ * share + 0.02 * share +
           0.05 * ripple_ * std::sin(2 * std::numbers::pi * setting / kPeriod + phase_);
  }

 private:
  double slope_;
  double power_;
  double ripple_;
  double waves_;
  double phase_;
  double lowEnd_;
  double perDecibel_;
  double highest_ = 1;
};

std::string NumberText(double value) {
  return ShortestText(std::round(value * 1E8) / 1E8);
}

void StoreNumber(const CalTable& table, MemoryGrid& grid, Cell cell, double value) {
  grid.SetCellText(cell.row.number, cell.column, Stored(table, cell, NumberText(value)));
}

/// The uncertainty of a value in its own unit.
double UncertaintyAt(const MemoryGrid& grid, Cell cell, std::int16_t column, double value) {
  const std::string text = grid.TextOf({cell.row, column});
  const auto number = NumberOfCell(text);
  if (!number) {
    return 0;
  }
  return number->unit == "%"                      ? value * number->value / 1E2
         : number->unit == "ppm"                  ? value * number->value / 1E6
         : number->unit == "" && cell.column == 1 ? value * number->value / 1E2
                                                  : number->value;
}

/// Puts a smooth curve with ripple into a table of a sensor or an attenuator.
void FollowCurve(const CalTable& table, MemoryGrid& grid, Chance& chance) {
  const PageTable page = {*table.model, table.page, grid};
  const Shape shape(page, chance);
  for (GridRow row = kFirstDataRow; row < EndOf(grid); ++row) {
    const double x = PlaceOf(grid, row, AxisOf(page)).x;
    if (table.model->family == ModelFamily::PowerSensor) {
      StoreNumber(table, grid, {row, 1}, shape.Factor(x));
    } else {
      const double setting = NumericValue(grid.CellText(row.number, 0));
      StoreNumber(table, grid, {row, 2}, shape.Attenuation(setting, x));
    }
  }
}

/// How far the value of a cell moves for a change of 1.
double StepOf(const CalTable& table, const ValueColumn& column, Cell cell, double value,
              double percent) {
  constexpr double kDecibelsOfPercent = 0.04343;
  switch (table.model->family) {
    case ModelFamily::PowerSensor:
      return value * percent / 100;
    case ModelFamily::StepAttenuator:
      return percent * kDecibelsOfPercent;
    default:
      return column.uncertainty ? UncertaintyAt(*table.earlier, cell, *column.uncertainty, value)
                                : 0;
  }
}

/// Changes every value as from one calibration to the next: half of it in common, half by itself.
void ChangeValues(const CalTable& table, Chance& chance) {
  const PageTable page = {*table.model, table.page, *table.earlier};
  const double percent = chance.Between(0.1, 0.5);
  for (const ValueColumn& column : ValueColumnsOf(page)) {
    const double drift = chance.Between(-0.5, 0.5);
    for (GridRow row = kFirstDataRow; row < EndOf(*table.now); ++row) {
      const Cell cell = {row, column.column};
      const std::string text = table.earlier->TextOf(cell);
      const auto number = NumberOfCell(text);
      if (!number) {
        continue;
      }
      double value = number->value;
      if (!column.isUncertainty) {
        value += StepOf(table, column, cell, value, percent) * (drift + 0.5 * chance.Normal());
        StoreNumber(table, *table.now, cell, value);
      } else if (chance.Below(10) == 0) {
        StoreNumber(table, *table.now, cell, value * chance.Between(0.8, 1.25));
      }
    }
  }
}

std::unique_ptr<MemoryGrid> GridOf(const Basis& basis) {
  auto grid = std::make_unique<MemoryGrid>(kColumns);
  if (basis.model->family == ModelFamily::PowerSensor) {
    grid->Clear(2);
  }
  basis.data->GetCalData(basis.page, *grid);
  return grid;
}

void AddPages(std::vector<Basis>& bases, const Model& model, std::shared_ptr<cifCaldata> data,
              Source source) {
  for (std::int16_t page = 0; page < data->GetCalPageCount(); ++page) {
    bases.push_back({&model, data, page, source});
  }
}

}  // namespace

std::vector<Basis> EveryBasis() {
  std::vector<Basis> bases;
  for (const Model& model : kModels) {
    if (model.create == nullptr) {
      continue;
    }
    AddPages(bases, model, NewDataSet(model).data, Source::Template);
    const std::filesystem::path folder =
        std::filesystem::path(TARVELL_EXAMPLE_FOLDER) / std::string(model.code);
    for (const auto& file : std::filesystem::directory_iterator(folder)) {
      CalFileInfo listed;
      listed.FilePath = file.path().string();
      AddPages(bases, model, OpenDataSet(model, listed).data, Source::Example);
    }
  }
  return bases;
}

CalTable RandomTable(const std::vector<Basis>& bases, Chance& chance) {
  // Each model comes equally often, not each page.
  std::vector<const Basis*> ofModel;
  const Model& model = *bases[chance.Below(bases.size())].model;
  const Model& chosen = [&]() -> const Model& {
    const Model* any = &model;
    do {
      any = &kModels[chance.Below(kModels.size())];
    } while (any->create == nullptr);
    return *any;
  }();
  for (const Basis& basis : bases) {
    if (basis.model == &chosen) {
      ofModel.push_back(&basis);
    }
  }
  const Basis& basis = *ofModel[chance.Below(ofModel.size())];
  CalTable table;
  table.model = basis.model;
  table.data = basis.data;
  table.page = basis.page;
  table.source = basis.source;
  table.earlier = GridOf(basis);
  if (!HasPages(chosen) && basis.source == Source::Template && chance.Below(2) == 0) {
    table.source = Source::Curve;
  } else if (!HasPages(chosen) && basis.source == Source::Example && chance.Below(2) == 0) {
    table.source = Source::Curve;
    table.earlier = GridOf(*ofModel.front());
  }
  if (table.source == Source::Curve) {
    FollowCurve(table, *table.earlier, chance);
  }
  table.now = std::make_unique<MemoryGrid>(table.earlier->ColumnCount());
  table.now->SetRows(table.earlier->Rows());
  ChangeValues(table, chance);
  return table;
}

std::string Stored(const CalTable& table, Cell cell, const std::string& typed) {
  const std::string unit =
      EditedCellOf(*table.data, table.page, cell, table.earlier->TextOf(cell)).unit;
  return table.data->SetCalibrationDataFormat(table.page, cell.column, cell.row.number, typed,
                                              unit);
}

}  // namespace tarvell::bench
