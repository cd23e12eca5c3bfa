// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/PointRows.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/caldata/CalPoints.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/TableRows.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "exchange/PagePlanning.h"
#include "exchange/ValueLimits.h"

namespace tarvell {

namespace {

class PointRows : public PagePlanning {
 public:
  using PagePlanning::PagePlanning;

  PagePlan Run() {
    JudgeColumns();
    if (source_.table.RowCount() == 0) {
      for (const std::vector<std::string>& cells : source_.rows) {
        plan_.rows.push_back({{PastedRow::Change::Missing, cells, cells}, {}});
      }
    } else {
      TakePoints();
      FinishDoubts();
    }
    return std::move(plan_);
  }

 private:
  void TakePoints() {
    std::string text;
    std::size_t points = 0;
    std::size_t written = 1;
    for (std::size_t row = 0; row < source_.table.RowCount(); ++row) {
      const std::string line = LineOf(row);
      points += line.empty() ? 0 : 1;
      if (points > kTableRows) {
        throw Error(ErrorKind::Type, "The table of the certificate (" + source_.table.where +
                                         ") has more than " + std::to_string(kTableRows) +
                                         " points, which is all that a data set has room for. "
                                         "Choose another table.");
      }
      // Refusals name the lines of the text: they are those of the file.
      for (const std::size_t place = LineInFile(row); written < place; ++written) {
        text += '\n';
      }
      text += line;
    }
    if (text.find_first_not_of('\n') == std::string::npos) {
      return;
    }
    MemoryGrid grid(static_cast<std::int16_t>(columns_.size()));
    for (std::vector<std::string> cells : source_.rows) {
      cells.resize(columns_.size());
      grid.InsertRow(EndOf(grid), cells);
    }
    const std::int16_t valueColumn = LastColumn();
    const PastedTable pasted = PastedTableFrom(
        grid, text, {source_.model.frequencyUnit},
        [&](const std::string& number) {
          return Store({kFirstDataRow, valueColumn}, {number, {}});
        },
        DecimalSign::Point, WordsForFile());
    for (const PastedRow& row : pasted.rows) {
      plan_.rows.push_back({row, {}});
      if (row.change != PastedRow::Change::Missing) {
        plan_.rows.back().taken.push_back(valueColumn);
      }
    }
    if (source_.keepsTexts) {
      KeepTexts();
    }
  }

  /// What a refusal of the paste says about a file.
  [[nodiscard]] RefusalWords WordsForFile() const {
    RefusalWords words = {
        .advice =
            "Correct them in the file and import it again, or choose another table or other "
            "columns."};
    for (const ModelColumn& column : columns_) {
      words.columns.push_back(column.caption);
    }
    return words;
  }

  /// Gives the rows the texts that the data set had, where they are the same numbers.
  void KeepTexts() {
    for (PlannedRow& planned : plan_.rows) {
      PastedRow& row = planned.row;
      for (std::size_t from = 0; !planned.taken.empty() && from < source_.table.RowCount();
           ++from) {
        std::vector<std::string> texts;
        for (std::size_t column = 0; column < columns_.size(); ++column) {
          const WrittenValue* value = ValueAt(from, column);
          texts.push_back(value == nullptr ? std::string() : value->text);
        }
        if (std::ranges::equal(texts, row.after, [](const auto& one, const auto& other) {
              return ParseNumber(one) && ParseNumber(one) == ParseNumber(other);
            })) {
          row.after = texts;
          break;
        }
      }
      if (row.change == PastedRow::Change::Unchanged && row.after != row.before) {
        row.change = PastedRow::Change::Updated;
      }
    }
  }

  [[nodiscard]] std::int16_t LastColumn() const {
    return static_cast<std::int16_t>(columns_.size() - 1);
  }

  /// The numbers of a row in the units of the table, with tabs between them; "" for a row that
  /// cannot be taken.
  std::string LineOf(std::size_t row) {
    std::vector<std::string> numbers;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
      const WrittenValue* value = ValueAt(row, i);
      const std::optional<std::string> number =
          value == nullptr ? std::nullopt : Converted(*value, columns_[i].unit);
      if (!number) {
        // Without its row, the table would look as if the certificate did not have the point.
        plan_.doubts.push_back(Refusal(row, value == nullptr ? WrittenValue() : *value,
                                       " cannot be taken for " + columns_[i].caption));
        return {};
      }
      if (std::isinf(*ParseNumber(*number))) {
        DoubtValue(row, i, "is too large to be calculated with");
        return {};
      }
      numbers.push_back(*number);
    }
    DoubtImpossible(row, numbers);
    NoteRoundedPoint(row, numbers);
    std::string line;
    for (const std::string& number : numbers) {
      line += (line.empty() ? "" : "\t") + number;
    }
    return line;
  }

  void DoubtImpossible(std::size_t row, const std::vector<std::string>& numbers) {
    const bool isSensor = columns_.front().role == ColumnRole::Frequency;
    const std::size_t frequency = isSensor ? 0 : 1;
    const double hertz =
        NumericValueOrInfinity(Shifted(numbers.at(frequency), columns_.at(frequency).unit.power));
    const double value = NumericValueOrInfinity(numbers.back());
    DoubtValue(row, frequency, WhyNoFrequency(hertz));
    if (isSensor) {
      DoubtValue(row, 1, WhyNoFactor(value));
      return;
    }
    const double setting = NumericValueOrInfinity(numbers.front());
    DoubtValue(row, 0, WhyNoSetting(setting));
    DoubtValue(row, 2, WhyNoAttenuation(value, setting));
  }

  void NoteRoundedPoint(std::size_t row, const std::vector<std::string>& numbers) {
    const std::string stored = Store({kFirstDataRow, LastColumn()}, {numbers.back(), {}});
    NoteIfRounded(row, columns_.size() - 1, numbers.back(), stored);
    const std::size_t column = columns_.front().role == ColumnRole::Frequency ? 0 : 1;
    const double frequency = *ParseNumber(numbers.at(column));
    NoteIfRounded(row, column, numbers.at(column),
                  column == 0 ? SensorRow(frequency, source_.model.frequencyUnit).front()
                              : AttenuatorRow({.setting = 0, .frequency = frequency}).at(1));
  }
};

}  // namespace

PagePlan PlanPoints(const PageSource& source) {
  return PointRows(source).Run();
}

}  // namespace tarvell
