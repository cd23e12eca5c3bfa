// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/SetStage.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "core/caldata/MemoryGrid.h"
#include "support/ErrorOf.h"

namespace tarvell::test {

Texts Joined(const std::vector<Texts>& parts) {
  Texts lines;
  for (const Texts& part : parts) {
    lines.insert(lines.end(), part.begin(), part.end());
  }
  return lines;
}

std::string FullLine(const std::string& first) {
  return "*" + first + " : 1 : 2 : 3 : 4";
}

Texts ManyLines(int count) {
  Texts lines;
  for (const std::string& name : ManyNames(count)) {
    lines.push_back(FullLine(name));
  }
  return lines;
}

Texts ManyNames(int count) {
  Texts names;
  for (int i = 1; i <= count; ++i) {
    names.push_back(std::to_string(i));
  }
  return names;
}

Rows ManyRows(int count) {
  Rows rows;
  for (const std::string& name : ManyNames(count)) {
    rows.push_back({name, "1", "2", "3", "4"});
  }
  return rows;
}

Texts RowsOf(const cifCaldata& data, std::int16_t page) {
  // As wide as the editor of the model's family lays it out.
  MemoryGrid grid(data.GetCalPageCount() > 1 ? 5 : 2);
  data.GetCalData(page, grid);
  Texts rows;
  for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
    std::string text;
    for (std::int16_t column = 0; column < grid.ColumnCount(); ++column) {
      text += (column == 0 ? "" : "|") + grid.CellText(row, column);
    }
    rows.push_back(text);
  }
  return rows;
}

SetStage::SetStage(const SetModel& set) : set_(set), data_(set.create()) {
  tree_.MakeFolders("c:\\data");
}

void SetStage::SetRows(std::int16_t page, const Rows& rows, std::int16_t columns) {
  MemoryGrid grid(columns);
  for (const Row& row : rows) {
    std::string text;
    for (const std::string& cell : row) {
      text += cell + "\t";
    }
    grid.AddRow(text);
  }
  data_->SetCalData(page, grid);
}

Rows SetStage::ShownRows(std::int16_t page) const {
  MemoryGrid grid(5);
  data_->GetCalData(page, grid);
  Rows rows;
  for (std::int16_t row = 1; row < grid.RowCount(); ++row) {
    rows.push_back({grid.CellText(row, 0), grid.CellText(row, 1), grid.CellText(row, 2),
                    grid.CellText(row, 3), grid.CellText(row, 4)});
  }
  return rows;
}

Texts SetStage::FirstColumn(std::int16_t page) const {
  Texts texts;
  for (const Row& row : ShownRows(page)) {
    texts.push_back(row[0]);
  }
  return texts;
}

void SetStage::SetHeader() {
  data_->SetSerialNumber("1234A05678");
  data_->SetCalDate(2001, "MAR", 5);
  data_->SetCalibrationNumber("C-0042");
  data_->SetDueDate(2002, "NOV", 25);
  data_->SetComment("factory");
}

Texts SetStage::WholeHeader() const {
  return {"#MODEL_NO : " + set_.code,
          "#SER_NO   : 1234A05678",
          "#CAL_DATE : 20010305",
          "#CAL_NO   : C-0042",
          "#DUE_DATE : 20021125",
          "#COMMENT  : factory",
          "!",
          "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
          "!"};
}

std::string SetStage::Saved() const {
  EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);
  return tree_.Read(kFile);
}

std::string SetStage::SavedLineOf(std::int16_t page, const Row& row) {
  data_ = set_.create();
  SetRows(page, {row});
  const std::string file = Saved();
  const std::size_t start = file.find("\r\n*");
  EXPECT_NE(start, std::string::npos);
  return file.substr(start + 2, file.find("\r\n", start + 2) - start - 2);
}

void SetStage::Load(const Texts& lines) {
  data_ = set_.create();
  LoadOver(lines);
}

void SetStage::LoadOver(const Texts& lines) {
  tree_.Write(kFile, Lines(lines));
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
}

void SetStage::LoadAgain() {
  data_ = set_.create();
  EXPECT_EQ(data_->LoadCalibrationDataFromFile(kFile), 0);
}

void SetStage::ExpectLoadError(const Texts& lines, ErrorKind kind, std::size_t line,
                               const std::string& part) {
  data_ = set_.create();
  tree_.Write(kFile, Lines(lines));
  const Error error = ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
  EXPECT_EQ(error.Kind(), kind);
  EXPECT_EQ(error.Path(), kFile);
  EXPECT_EQ(static_cast<std::size_t>(error.Line()), line);
  EXPECT_TRUE(Contains(error.Text(), part)) << error.Text();
}

Texts SetStage::Page(std::size_t page, const Texts& dataLines) const {
  return Joined({set_.openings.at(page), dataLines, set_.closing});
}

Texts SetStage::PagesBut(const std::vector<std::size_t>& others) const {
  Texts lines;
  for (std::size_t page = 0; page < set_.pages.size(); ++page) {
    if (std::find(others.begin(), others.end(), page) == others.end()) {
      lines = Joined({lines, Page(page, {FullLine("7")})});
    }
  }
  return lines;
}

void SetStage::ExpectNotices(const std::vector<Texts>& notices) const {
  ASSERT_EQ(data_->LoadNotices().size(), notices.size());
  for (std::size_t i = 0; i < notices.size(); ++i) {
    for (const std::string& part : notices[i]) {
      EXPECT_TRUE(Contains(data_->LoadNotices()[i], part))
          << part << " in: " << data_->LoadNotices()[i];
    }
  }
}

}  // namespace tarvell::test
