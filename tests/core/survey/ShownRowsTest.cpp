// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "core/survey/ShownRows.h"

namespace tarvell {
namespace {

using Change = std::function<void(SurveyRow& row)>;

SurveyRow Row(
    const std::string& path, const Change& change = [](SurveyRow&) {}) {
  SurveyRow row;
  row.path = path;
  change(row);
  return row;
}

/// The paths of the rows that are shown, as one text.
std::string Shown(const ShownRows& rows) {
  std::string paths;
  for (std::size_t place = 0; place < rows.Count(); ++place) {
    paths += rows.At(place).path;
  }
  return paths;
}

/// A column, and the values of three rows in their order; a row "-" has none.
struct Column {
  const char* name;
  SurveyColumn column;
  Change first;
  Change second;
  Change third;
};

std::ostream& operator<<(std::ostream& stream, const Column& column) {
  return stream << column.name;
}

class SortedBy : public testing::TestWithParam<Column> {};

TEST_P(SortedBy, ItsValuesWithRowsWithoutOneAtTheEnd) {
  const Column& by = GetParam();
  ShownRows rows;
  rows.Set({Row("3", by.third), Row("1", by.first), Row("-"), Row("2", by.second)});
  rows.Sort(by.column, false);
  EXPECT_EQ(Shown(rows), "123-");
  rows.Sort(by.column, true);
  EXPECT_EQ(Shown(rows), "321-");
  rows.Sort({}, false);
  EXPECT_EQ(Shown(rows), "31-2") << "the order of the survey";
}

Change Text(std::string SurveyRow::*field, const std::string& text) {
  return [=](SurveyRow& row) { row.*field = text; };
}

Change Date(FileDate SurveyRow::*field, const FileDate& date) {
  return [=](SurveyRow& row) { row.*field = date; };
}

Change Days(int days) {
  return [=](SurveyRow& row) { row.daysLeft = days; };
}

Change Stations(const std::vector<std::string>& stations) {
  return [=](SurveyRow& row) { row.stations = stations; };
}

Change States(const std::vector<FindingKind>& states) {
  return [=](SurveyRow& row) {
    for (const FindingKind state : states) {
      row.Add(state, "Do it.");
    }
  };
}

INSTANTIATE_TEST_SUITE_P(
    Columns, SortedBy,
    testing::Values(
        Column{"Model", SurveyColumn::Model, Text(&SurveyRow::model, "px9A"),
               Text(&SurveyRow::model, "PX12A"), Text(&SurveyRow::model, "RT520A")},
        Column{"SerialNumber", SurveyColumn::SerialNumber, Text(&SurveyRow::serialNumber, "99"),
               Text(&SurveyRow::serialNumber, "0100"), Text(&SurveyRow::serialNumber, "A1")},
        Column{"CalibrationNumber", SurveyColumn::CalibrationNumber,
               Text(&SurveyRow::calibrationNumber, "C-9"),
               Text(&SurveyRow::calibrationNumber, "C-10"),
               Text(&SurveyRow::calibrationNumber, "C-10b")},
        Column{"Calibrated", SurveyColumn::Calibrated, Date(&SurveyRow::calibrated, {2026, 2, 28}),
               Date(&SurveyRow::calibrated, {2026, 10, 1}),
               Date(&SurveyRow::calibrated, {2026, 10, 2})},
        Column{"Due", SurveyColumn::Due, Date(&SurveyRow::due, {999, 12, 31}),
               Date(&SurveyRow::due, {2026, 2, 30}), Date(&SurveyRow::due, {2027, 1, 1})},
        Column{"DaysLeft", SurveyColumn::DaysLeft, Days(-10), Days(9), Days(100)},
        Column{"Comment", SurveyColumn::Comment, Text(&SurveyRow::comment, "a"),
               Text(&SurveyRow::comment, "B"), Text(&SurveyRow::comment, "c")},
        Column{"Stations", SurveyColumn::Stations, Stations({"BENCH2"}),
               Stations({"BENCH2", "BENCH3"}), Stations({"BENCH10"})},
        Column{"State", SurveyColumn::State, States({FindingKind::PastDue}),
               States({FindingKind::DueSoon}),
               States({FindingKind::DueSoon, FindingKind::NotUsed})}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST(ShownRows, StayInTheOrderOfTheSurveyWhereTheyAreEqual) {
  ShownRows rows;
  const Change same = Days(5);
  rows.Set({Row("a", same), Row("b", Days(7)), Row("c", same)});
  rows.Sort(SurveyColumn::DaysLeft, false);
  rows.Append({Row("d", same), Row("e", Days(6)), Row("f")});
  EXPECT_EQ(Shown(rows), "acbdef") << "added rows come last at first";
  rows.Arrange();
  EXPECT_EQ(Shown(rows), "acdebf");
  rows.Sort(SurveyColumn::DaysLeft, true);
  EXPECT_EQ(Shown(rows), "beacdf");
}

TEST(ShownRows, AreThoseThatMatchTheFilter) {
  SurveyRow sensor = Row("1", [](SurveyRow& row) {
    row.model = "PX12A";
    row.serialNumber = "3318A12345";
    row.calibrationNumber = "C-0042";
    row.comment = "factory";
    row.stations = {"BENCH1", "BENCH2"};
  });
  SurveyRow unused = Row("2", States({FindingKind::NotUsed}));
  SurveyRow due = Row("3", States({FindingKind::PastDue, FindingKind::NotUsed}));
  ShownRows rows;
  rows.Set({sensor, unused, due});
  for (const auto& [filter, expected] : std::vector<std::pair<RowFilter, const char*>>{
           {{}, "123"},
           {{.text = " px12 "}, "1"},
           {{.text = "a123"}, "1"},
           {{.text = "c-00"}, "1"},
           {{.text = "FACT"}, "1"},
           {{.text = "bench2"}, "1"},
           {{.text = "bench3"}, ""},
           {{.onlyFaults = true}, "3"},
           {{.state = FindingKind::NotUsed}, "23"},
           {{.station = "BENCH2"}, "1"},
           {{.station = "BENCH"}, ""},
           {{.state = FindingKind::NotUsed, .station = "BENCH2"}, ""}}) {
    rows.SetFilter(filter);
    EXPECT_EQ(Shown(rows), expected) << filter.text << " " << filter.station;
    rows.SetFilter({.text = "none"});
    rows.Set({});
    rows.SetFilter(filter);
    rows.Append({sensor, unused, due});
    EXPECT_EQ(Shown(rows), expected) << "when they are added";
  }
}

}  // namespace
}  // namespace tarvell
