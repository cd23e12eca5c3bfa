// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/SetStage.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "caldata/MemoryGrid.h"
#include "caldata/Models.h"
#include "support/ErrorOf.h"

namespace tarvell::test {

namespace {

/// The lines that open the pages, whose serial numbers are S0, S1 and so on.
std::vector<Texts> CapacitorOpenings(const Texts& pages) {
  std::vector<Texts> openings;
  for (const std::string& page : pages) {
    openings.push_back({"#" + page + "    :     S" + std::to_string(openings.size())});
  }
  return openings;
}

SetModel CapacitorSet(const std::string& code, const std::string& otherCode,
                      std::unique_ptr<cifCaldata> (*create)(), const Texts& pages,
                      std::size_t requiredPages) {
  return {code,          otherCode,
          create,        pages,
          requiredPages, CapacitorOpenings(pages),
          {"!END", "!"}, {{"", "", "", "", ""}}};
}

}  // namespace

const SetModel& CapacitorSetA() {
  static const SetModel kSet = CapacitorSet("RT520A", "RT520C", &CreateModel<cInstrRT520A>,
                                            {"RT521A", "RT522A", "RT523A", "RT524A"}, 4);
  return kSet;
}

const SetModel& CapacitorSetC() {
  // The last page is that of option 001.
  static const SetModel kSet = CapacitorSet("RT520C", "RT520A", &CreateModel<cInstrRT520C>,
                                            {"RT525A", "RT526A", "RT527A", "RT528A"}, 3);
  return kSet;
}

const SetModel& ResistorSet() {
  // clang-format off
  static const SetModel kSet = {
      "RT730A",
      "RT520A",
      &CreateModel<cInstrRT730A>,
      {"DC Registance", "Indactance / Parallel Capacitance", "HF Calibration at 10ohm",
       "HF Calibration at 100ohm", "HF Calibration at 1kohm", "HF Calibration at 10kohm",
       "HF Calibration at 100kohm"},
      7,
      {{"!", "!DC Resistance",
        "!Model     : Nominal Value : Calibrated Value : Unc.(%)"},
       {"!", "!Series Inductance and/or Parallel Capacitance at 1MHz",
        "!Model     : Calibrated Value : Unc.(%)"},
       {"!", "!High Freqency Calibration Results", "! 10 ohm (MODEL QZ RT735A)",
        "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
       {"!", "! 100 ohm (MODEL QZ RT736A)",
        "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
       {"!", "! 1 kohm (MODEL QZ RT737A)",
        "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
       {"!", "! 10 kohm (MODEL QZ RT738A)",
        "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
       {"!", "! 100 kohm (MODEL QZ RT739A)",
        "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"}},
      {"!END"},
      {}};
  // clang-format on
  return kSet;
}

void PrintTo(const SetModel& set, std::ostream* stream) {
  *stream << set.code;
}

Texts Joined(const std::vector<Texts>& parts) {
  Texts lines;
  for (const Texts& part : parts) {
    lines.insert(lines.end(), part.begin(), part.end());
  }
  return lines;
}

Texts ManyLines(int count) {
  Texts lines;
  for (const std::string& name : ManyNames(count)) {
    lines.push_back("*" + name);
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

std::string SetStage::Saved() const {
  EXPECT_EQ(data_->SaveCalibrationDataToFile(kFile), 0);
  return tree_.Read(kFile);
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

Error SetStage::LoadError(const Texts& lines) {
  data_ = set_.create();
  tree_.Write(kFile, Lines(lines));
  return ErrorOf([&] { data_->LoadCalibrationDataFromFile(kFile); });
}

Texts SetStage::Page(std::size_t page, const Texts& dataLines) const {
  return Joined({set_.openings.at(page), dataLines, set_.closing});
}

Texts SetStage::PagesBut(const std::vector<std::size_t>& others) const {
  Texts lines;
  for (std::size_t page = 0; page < set_.pages.size(); ++page) {
    if (std::find(others.begin(), others.end(), page) == others.end()) {
      lines = Joined({lines, Page(page, {"*7"})});
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
