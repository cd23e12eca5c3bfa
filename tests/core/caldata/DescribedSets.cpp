// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/DescribedSets.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>

#include "core/caldata/cInstrRT520A.h"
#include "core/caldata/cInstrRT520C.h"
#include "core/caldata/cInstrRT730A.h"
#include "support/TestTree.h"

namespace tarvell::test {

bool EndsIn(const std::string& text, std::string_view end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

std::string FirstWord(const std::string& text) {
  return text.substr(0, text.find(' '));
}

namespace {

/// A decimal number: `magnitude` units of so many decimals.
struct Decimal {
  bool negative = false;
  std::int64_t magnitude = 0;
  int decimals = 0;
};

std::int64_t PowerOfTen(int exponent) {
  std::int64_t power = 1;
  for (int i = 0; i < exponent; ++i) {
    power *= 10;
  }
  return power;
}

/// The number that a text consists of, digits with a point, perhaps behind a "-".
Decimal DecimalOf(const std::string& text) {
  Decimal number;
  bool behindPoint = false;
  for (const char c : text) {
    if (c == '-') {
      number.negative = true;
    } else if (c == '.') {
      behindPoint = true;
    } else {
      EXPECT_TRUE(c >= '0' && c <= '9') << text;
      number.magnitude = number.magnitude * 10 + (c - '0');
      number.decimals += behindPoint ? 1 : 0;
    }
  }
  return number;
}

/// Rounded half away from zero, or filled up, to so many decimals.
Decimal WithDecimals(Decimal number, int decimals) {
  if (decimals >= number.decimals) {
    number.magnitude *= PowerOfTen(decimals - number.decimals);
  } else {
    const std::int64_t unit = PowerOfTen(number.decimals - decimals);
    number.magnitude = (number.magnitude + unit / 2) / unit;
  }
  number.decimals = decimals;
  return number;
}

std::string TextOf(const Decimal& number) {
  std::string digits = std::to_string(number.magnitude);
  const auto decimals = static_cast<std::size_t>(number.decimals);
  if (digits.size() <= decimals) {
    digits.insert(0, decimals + 1 - digits.size(), '0');
  }
  if (decimals > 0) {
    digits.insert(digits.size() - decimals, ".");
  }
  return (number.negative ? "-" : "") + digits;
}

bool IsMinusZero(const std::string& text) {
  return text.size() > 1 && text[0] == '-' && text.find_first_not_of("0.", 1) == std::string::npos;
}

/// The text of a number less the sign of a zero, which no number that is read keeps.
std::string WithoutZeroSign(const std::string& text) {
  return IsMinusZero(text) ? text.substr(1) : text;
}

std::string Less(const std::string& text, std::size_t count) {
  return text.substr(0, text.size() - std::min(count, text.size()));
}

std::size_t Characters(const std::string& text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U;
  }));
}

std::string Right(const std::string& text, std::size_t width) {
  const std::size_t length = Characters(text);
  return std::string(width - std::min(length, width), ' ') + text;
}

/// A value in ppm, given as its number text, in per cent of so many decimals.
std::string PercentOf(const std::string& ppm, int decimals) {
  Decimal number = DecimalOf(ppm);
  number.negative = number.negative && number.magnitude != 0;
  number.decimals += 4;
  return TextOf(WithDecimals(number, decimals));
}

/// How an uncertainty is shown.
struct UncertaintyForm {
  int ppmDecimals;
  bool dropsZeros;
};

/// A value that a file holds in per cent, in the ppm of a cell.
std::string PpmOf(const std::string& percent, const UncertaintyForm& form) {
  Decimal number = DecimalOf(percent);
  number = WithDecimals(number, std::max(number.decimals, 4));
  number.decimals -= 4;
  std::string text = TextOf(WithDecimals(number, form.ppmDecimals));
  if (form.dropsZeros) {
    text.resize(text.find_last_not_of('0') + 1);
    if (text.ends_with('.')) {
      text.pop_back();
    }
  }
  return WithoutZeroSign(text);
}

/// A date as the file has it.
std::string Digits(const std::array<int, 3>& date) {
  return std::to_string(date[0] * 10000 + date[1] * 100 + date[2]);
}

class Capacitors : public Described {
 public:
  [[nodiscard]] std::size_t Pages() const override { return 4; }
  [[nodiscard]] bool HasPageSerials() const override { return true; }
  [[nodiscard]] bool MayHaveBlanks() const override { return false; }
  [[nodiscard]] std::size_t UncertaintyColumn(std::size_t /*page*/) const override { return 2; }
  [[nodiscard]] std::size_t ColumnsOf(std::size_t /*page*/) const override { return 5; }
  [[nodiscard]] virtual std::string PageName(std::size_t page) const = 0;
  [[nodiscard]] virtual UncertaintyForm FormOf(std::size_t page, int row) const = 0;

  [[nodiscard]] Texts Body(const SetData& data) const override {
    Texts lines;
    for (std::size_t page = 0; page < data.pages.size(); ++page) {
      lines.push_back("#" + PageName(page) + "    :     " + data.pageSerials[page]);
      for (const CellTexts& cells : data.pages[page]) {
        lines.push_back("*" + Right(cells[0], 13) + " : " + Right(cells[1], 16) + " : " +
                        Right(PercentWritten(cells[2]), 9) + " : " + Right(cells[3], 18) + " :   " +
                        cells[4]);
      }
      lines.emplace_back("!END");
      lines.emplace_back("!");
    }
    return lines;
  }

  [[nodiscard]] CellTexts Read(std::size_t page, int row, const CellTexts& cells) const override {
    const std::string unit = cells[1].substr(cells[1].size() - 2);
    return {cells[0], WithoutZeroSign(Less(cells[1], 2)) + unit,
            UncertaintyRead(page, row, cells[2]), WithoutZeroSign(cells[3]),
            WithoutZeroSign(cells[4])};
  }

  [[nodiscard]] bool IsWrittenAnew(std::size_t /*page*/, std::size_t column,
                                   const std::string& cell) const override {
    if (column == 2) {
      const std::string percent = PercentWritten(cell);
      // Per cent that are taken for ppm are written with four decimals from then on.
      return IsMinusZero(percent) ||
             (EndsIn(cell, "%") && percent.size() >= 6 && DecimalOf(percent).decimals != 4);
    }
    return IsMinusZero(column == 1 ? Less(cell, 2) : cell);
  }

 private:
  static std::string PercentWritten(const std::string& cell) {
    if (EndsIn(cell, "%")) {
      return Less(cell, 2);
    }
    const std::string number = EndsIn(cell, " ppm") ? Less(cell, 4) : cell;
    return PercentOf(number.empty() ? "0" : number, 4);
  }

  [[nodiscard]] std::string UncertaintyRead(std::size_t page, int row,
                                            const std::string& cell) const {
    if (row > RowsOf(page)) {
      return " ppm";  // per cent do not come here, see below
    }
    const std::string percent = PercentWritten(cell);
    return percent.size() >= 6 ? PpmOf(percent, FormOf(page, row)) + " ppm"
                               : WithoutZeroSign(percent) + " %";
  }
};

class SetA final : public Capacitors {
 public:
  [[nodiscard]] const char* Code() const override { return "RT520A"; }
  [[nodiscard]] std::unique_ptr<cifCaldata> Create() const override {
    return std::make_unique<cInstrRT520A>();
  }
  [[nodiscard]] std::string PageName(std::size_t page) const override {
    return "RT52" + std::to_string(page + 1) + "A";
  }
  [[nodiscard]] int RowsOf(std::size_t /*page*/) const override { return 8; }
  [[nodiscard]] UncertaintyForm FormOf(std::size_t page, int row) const override {
    static constexpr std::array<std::array<int, 8>, 4> kDecimals = {{{0, 3, 3, 3, 3, 2, 2, 2},
                                                                     {0, 0, 0, 0, 0, 0, 3, 3},
                                                                     {0, 0, 0, 0, 3, 3, 3, 3},
                                                                     {0, 0, 3, 3, 3, 3, 2, 2}}};
    return {kDecimals.at(page).at(static_cast<std::size_t>(row - 1)), false};
  }
};

class SetC final : public Capacitors {
 public:
  [[nodiscard]] const char* Code() const override { return "RT520C"; }
  [[nodiscard]] std::unique_ptr<cifCaldata> Create() const override {
    return std::make_unique<cInstrRT520C>();
  }
  [[nodiscard]] bool HasOption() const override { return true; }
  [[nodiscard]] std::string PageName(std::size_t page) const override {
    return "RT52" + std::to_string(page + 5) + "A";
  }
  [[nodiscard]] int RowsOf(std::size_t /*page*/) const override { return 51; }
  [[nodiscard]] UncertaintyForm FormOf(std::size_t /*page*/, int /*row*/) const override {
    return {0, false};
  }
};

class Resistors final : public Described {
 public:
  [[nodiscard]] const char* Code() const override { return "RT730A"; }
  [[nodiscard]] std::unique_ptr<cifCaldata> Create() const override {
    return std::make_unique<cInstrRT730A>();
  }
  [[nodiscard]] std::size_t Pages() const override { return 7; }
  [[nodiscard]] bool HasPageSerials() const override { return false; }
  [[nodiscard]] bool MayHaveBlanks() const override { return true; }
  [[nodiscard]] int RowsOf(std::size_t page) const override {
    static constexpr std::array<int, 7> kRows = {9, 6, 7, 7, 8, 8, 8};
    return kRows.at(page);
  }
  [[nodiscard]] std::size_t UncertaintyColumn(std::size_t page) const override {
    return page == 0 ? 3 : page == 1 ? 5 : 2;
  }
  [[nodiscard]] std::size_t ColumnsOf(std::size_t page) const override {
    return page == 0 ? 4 : page == 1 ? 3 : 5;
  }

  [[nodiscard]] Texts Body(const SetData& data) const override {
    // clang-format off
    static const std::vector<Texts> kTitles = {
        {"!", "!DC Resistance", "!Model     : Nominal Value : Calibrated Value : Unc.(%)"},
        {"!", "!Series Inductance and/or Parallel Capacitance at 1MHz", "!Model     : Calibrated Value : Unc.(%)"},
        {"!", "!High Freqency Calibration Results", "! 10 ohm (MODEL QZ RT735A)", "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
        {"!", "! 100 ohm (MODEL QZ RT736A)", "!Frequency :  Resistance  :  Uncertainty :  Reactance     : Uncertainty"},
        {"!", "! 1 kohm (MODEL QZ RT737A)", "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
        {"!", "! 10 kohm (MODEL QZ RT738A)", "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"},
        {"!", "! 100 kohm (MODEL QZ RT739A)", "!Frequency :  Resistance   :  Uncertainty  :  Susceptance   :  Uncertainty"}};
    // clang-format on
    Texts lines;
    for (std::size_t page = 0; page < data.pages.size(); ++page) {
      lines.insert(lines.end(), kTitles[page].begin(), kTitles[page].end());
      for (const CellTexts& cells : data.pages[page]) {
        lines.push_back(Line(page, cells));
      }
      lines.emplace_back("!END");
    }
    return lines;
  }

  [[nodiscard]] CellTexts Read(std::size_t page, int row, const CellTexts& cells) const override {
    CellTexts read = cells;
    for (std::size_t column = 0; column < cells.size(); ++column) {
      if (column == UncertaintyColumn(page)) {
        const std::string percent = PercentWritten(cells[column]);
        const UncertaintyForm form = FormOf(page, row);
        read[column] =
            percent.size() >= 6 ? PpmOf(percent, form) + " ppm" : WithoutZeroSign(percent) + " %";
      } else if (!cells[column].empty() && cells[column][0] == ' ') {
        // A nominal value of 0 is shown as its unit alone.
        read[column] = cells[column].substr(1);
      }
    }
    return read;
  }

  [[nodiscard]] bool IsWrittenAnew(std::size_t page, std::size_t column,
                                   const std::string& cell) const override {
    if (column != UncertaintyColumn(page)) {
      return false;
    }
    const std::string percent = PercentWritten(cell);
    // Per cent that are taken for ppm are written with five decimals from then on.
    return IsMinusZero(percent) || (EndsIn(cell, "%") && percent.size() >= 6);
  }

 private:
  static UncertaintyForm FormOf(std::size_t page, int row) {
    // The last row of each page that has two decimals.
    static constexpr std::array<int, 7> kTwoDecimals = {0, 0, 4, 5, 6, 2, 2};
    if (page == 0) {
      return {2, true};
    }
    return {row <= kTwoDecimals.at(page) ? 2 : 1, false};
  }

  static std::string PercentWritten(const std::string& cell) {
    return EndsIn(cell, "%") ? Less(cell, 2) : PercentOf(Less(cell, 4), 5);
  }

  [[nodiscard]] static std::string Line(std::size_t page, const CellTexts& cells) {
    if (page == 0) {
      const std::string percent = PercentWritten(cells[3]);
      return "*" + Right(cells[0], 9) + " : " + Right(cells[1], 13) + " : " + Right(cells[2], 16) +
             " : " + (EndsIn(cells[3], "%") ? Right(percent, 9) + " % " : Right(percent + " %", 9));
    }
    if (page == 1) {
      return "*" + Right(cells[0], 9) + " : " + Right(cells[1], 16) + " : " + Right(cells[2], 7);
    }
    return "*" + Right(cells[0], 9) + " : " + Right(cells[1], page <= 3 ? 12 : 13) + " : " +
           Right(PercentWritten(cells[2]), 9) + " % : " + Right(cells[3], 14) + " : " +
           Right(cells[4], 11);
  }
};

}  // namespace

std::string Described::File(const SetData& data) const {
  Texts lines = {std::string("#MODEL_NO : ") + Code(),
                 "#SER_NO   : " + data.serial,
                 "#CAL_DATE : " + Digits(data.calDate),
                 "#CAL_NO   : " + data.number,
                 "#DUE_DATE : " + Digits(data.dueDate),
                 "#COMMENT  : " + data.comment,
                 "!",
                 "!Frequency     : Capacitance(pF)  :Unc.(%)    : Dissipation Factor : Unc.(%)",
                 "!"};
  const Texts body = Body(data);
  lines.insert(lines.end(), body.begin(), body.end());
  std::string bytes = Lines(lines);
  // The one character beyond ASCII that the generator knows is one byte there.
  for (std::size_t at = bytes.find("\xC2\xB5"); at != std::string::npos;
       at = bytes.find("\xC2\xB5", at)) {
    bytes.erase(at, 1);
  }
  return bytes;
}

SetData Described::AfterLoad(const SetData& data) const {
  SetData read = data;
  read.serial = FirstWord(data.serial);
  read.number = FirstWord(data.number);
  read.comment = FirstWord(data.comment);
  for (std::string& serial : read.pageSerials) {
    serial = FirstWord(serial);
  }
  for (std::size_t page = 0; page < data.pages.size(); ++page) {
    int row = 1;
    for (CellTexts& cells : read.pages[page]) {
      cells = Read(page, row++, cells);
    }
  }
  return read;
}

const Described& DescribedSetA() {
  static const SetA kSet;
  return kSet;
}

const Described& DescribedSetC() {
  static const SetC kSet;
  return kSet;
}

const Described& DescribedResistors() {
  static const Resistors kSet;
  return kSet;
}

}  // namespace tarvell::test
