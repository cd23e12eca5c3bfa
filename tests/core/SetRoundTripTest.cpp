// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <memory>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "caldata/MemoryGrid.h"
#include "caldata/cInstrRT520A.h"
#include "caldata/cInstrRT520C.h"
#include "caldata/cInstrRT730A.h"
#include "common/LinuxPlatform.h"
#include "support/TestTree.h"

/// Random tables of the sets go through their files. What the files must hold, and what must come
/// back, is worked out here once more, on the texts of the cells alone.
namespace tarvell {
namespace {

using test::Lines;
using Texts = std::vector<std::string>;
using Row = std::array<std::string, 5>;
using Rows = std::vector<Row>;

constexpr const char* kFirst = "c:\\data\\SN00001";
constexpr const char* kSecond = "c:\\data\\SN00002";

// What is written and read, without a word of the program.

/// All that a set's file holds.
struct SetData {
  std::string serial;
  std::string number;
  std::string comment;
  std::array<int, 3> calDate{};  ///< year, month, day
  std::array<int, 3> dueDate{};
  Texts pageSerials;  ///< of a capacitor set
  std::vector<Rows> pages;
};

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

bool EndsIn(const std::string& text, std::string_view end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
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

std::string FirstWord(const std::string& text) {
  return text.substr(0, text.find(' '));
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
    text.resize(text.size() - (text.back() == '.' ? 1 : 0));
  }
  return WithoutZeroSign(text);
}

/// A set as the description has it.
class Described {
 public:
  Described() = default;
  Described(const Described&) = delete;
  Described& operator=(const Described&) = delete;
  virtual ~Described() = default;

  [[nodiscard]] virtual const char* Code() const = 0;
  [[nodiscard]] virtual std::unique_ptr<cifCaldata> Create() const = 0;
  [[nodiscard]] virtual std::size_t Pages() const = 0;
  [[nodiscard]] virtual bool HasPageSerials() const = 0;
  [[nodiscard]] virtual bool HasOption() const { return false; }
  /// Rows that the formats of a page have.
  [[nodiscard]] virtual int RowsOf(std::size_t page) const = 0;
  [[nodiscard]] virtual bool MayHaveBlanks() const = 0;  ///< the first column
  /// The column of the relative uncertainty, 5 without one.
  [[nodiscard]] virtual std::size_t UncertaintyColumn(std::size_t page) const = 0;
  [[nodiscard]] virtual std::size_t ColumnsOf(std::size_t page) const = 0;

  [[nodiscard]] virtual Texts Body(const SetData& data) const = 0;
  /// The row as it comes back from the file. `row` counts from 1.
  [[nodiscard]] virtual Row Read(std::size_t page, int row, const Row& cells) const = 0;
  /// Whether what is written for a cell that has come back differs from what was written first.
  [[nodiscard]] virtual bool IsWrittenAnew(std::size_t page, std::size_t column,
                                           const std::string& cell) const = 0;

  [[nodiscard]] std::string File(const SetData& data) const {
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

  [[nodiscard]] SetData AfterLoad(const SetData& data) const {
    SetData read = data;
    read.serial = FirstWord(data.serial);
    read.number = FirstWord(data.number);
    read.comment = FirstWord(data.comment);
    for (std::string& serial : read.pageSerials) {
      serial = FirstWord(serial);
    }
    for (std::size_t page = 0; page < data.pages.size(); ++page) {
      int row = 1;
      for (Row& cells : read.pages[page]) {
        cells = Read(page, row++, cells);
      }
    }
    return read;
  }

 private:
  [[nodiscard]] static std::string Digits(const std::array<int, 3>& date) {
    return std::to_string(date[0] * 10000 + date[1] * 100 + date[2]);
  }
};

class DescribedCapacitors : public Described {
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
      for (const Row& cells : data.pages[page]) {
        lines.push_back("*" + Right(cells[0], 13) + " : " + Right(cells[1], 16) + " : " +
                        Right(PercentWritten(cells[2]), 9) + " : " + Right(cells[3], 18) + " :   " +
                        cells[4]);
      }
      lines.emplace_back("!END");
      lines.emplace_back("!");
    }
    return lines;
  }

  [[nodiscard]] Row Read(std::size_t page, int row, const Row& cells) const override {
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

class DescribedSetA final : public DescribedCapacitors {
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

class DescribedSetC final : public DescribedCapacitors {
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

class DescribedResistors final : public Described {
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
      for (const Row& cells : data.pages[page]) {
        lines.push_back(Line(page, cells));
      }
      lines.emplace_back("!END");
    }
    return lines;
  }

  [[nodiscard]] Row Read(std::size_t page, int row, const Row& cells) const override {
    Row read = cells;
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

  [[nodiscard]] static std::string Line(std::size_t page, const Row& cells) {
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

// What is typed.

class Generator {
 public:
  explicit Generator(std::uint32_t seed) : engine_(seed) {}

  int Below(int limit) {
    // std::uniform_int_distribution may differ from one library to another.
    return static_cast<int>(engine_() % static_cast<std::uint32_t>(limit));
  }

  int Between(int low, int high) { return low + Below(high - low + 1); }

  bool Chance(int percent) { return Below(100) < percent; }

  /// A number as a user may type it; now and then none.
  std::string Number() {
    if (Chance(2)) {
      static constexpr std::array<const char*, 6> kOdd = {"", "abc", " ", ".", "-", "0"};
      return kOdd.at(static_cast<std::size_t>(Below(6)));
    }
    std::string text = Chance(10) ? "-" : "";
    text += Chance(40) ? "0" : Digits(Chance(80) ? Between(1, 3) : Between(4, 6));
    if (Chance(85)) {
      text += ".";
      text += std::string(static_cast<std::size_t>(Chance(50) ? Between(0, 4) : 0), '0');
      text += Digits(Between(1, 6));
      text += Chance(25) ? "5" : "";  // a rounding boundary
    }
    if (Chance(5)) {
      text += "E" + std::to_string(Between(-3, 2));
    }
    return Chance(5) ? " " + text + " " : text;
  }

  std::string Word(int longest) {
    static const std::string kCharacters =
        "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ.-+/()#!*'\"";
    std::string word;
    for (int length = Between(1, longest); length > 0; --length) {
      word += Chance(2)
                  ? std::string("\xC2\xB5")
                  : kCharacters.substr(
                        static_cast<std::size_t>(Below(static_cast<int>(kCharacters.size()))), 1);
    }
    return word;
  }

  /// A serial number, which no sign of the option is.
  std::string Serial() { return Digits(Between(1, 6)) + (Chance(50) ? "A" + Digits(5) : ""); }

  std::string Words(int most) {
    std::string words;
    for (int count = Between(0, most); count > 0; --count) {
      words += (words.empty() ? "" : " ") + Word(8);
    }
    return words;
  }

  std::array<int, 3> Date() { return {Between(1904, 2037), Between(1, 12), Between(1, 28)}; }

  std::string Unit() {
    if (Chance(4)) {
      static constexpr std::array<const char*, 3> kOdd = {"", "None", "*"};
      return kOdd.at(static_cast<std::size_t>(Below(3)));
    }
    return Chance(50) ? "ppm" : "%";
  }

 private:
  std::string Digits(int count) {
    std::string digits;
    for (; count > 0; --count) {
      digits += static_cast<char>('0' + Below(10));
    }
    return digits;
  }

  std::mt19937 engine_;
};

constexpr std::array<const char*, 13> kMonths = {"",    "JAN", "FEB", "MAR", "APR", "MAY", "JUN",
                                                 "JUL", "AUG", "SEP", "OCT", "NOV", "DEC"};

std::string WithMonthName(std::array<int, 3> date) {
  return std::to_string(date[0]) + kMonths.at(static_cast<std::size_t>(date[1])) +
         std::to_string(date[2]);
}

/// How often each difference was met.
struct Met {
  int tables = 0;
  int cells = 0;
  int percentAsPpm = 0;
  int roundedPpm = 0;
  int unitOfOther = 0;
  int zeroSigns = 0;
  int leadingBlanks = 0;
  int firstWords = 0;
  int filesWrittenAnew = 0;
  int files = 0;
};

/// The system, but that nobody waits for the disk: thousands of files are saved here, and none is
/// to outlast the test. The current platform until the TestTree that was made before it ends.
class HastyPlatform : public LinuxPlatform {
 public:
  HastyPlatform() { SetCurrentPlatform(this); }
  HastyPlatform(const HastyPlatform&) = delete;
  HastyPlatform& operator=(const HastyPlatform&) = delete;
  ~HastyPlatform() override { SetCurrentPlatform(nullptr); }

  [[nodiscard]] std::error_code CreateTemporary(const std::string& folder, std::string& path,
                                                std::unique_ptr<OutputFile>& file) override {
    std::unique_ptr<OutputFile> real;
    const std::error_code code = LinuxPlatform::CreateTemporary(folder, path, real);
    file = std::make_unique<File>(std::move(real));
    return code;
  }
  [[nodiscard]] std::error_code SyncFolder(const std::string& /*folder*/) override { return {}; }

 private:
  class File : public OutputFile {
   public:
    explicit File(std::unique_ptr<OutputFile> real) : real_(std::move(real)) {}

    std::error_code Write(std::string_view bytes, std::size_t& count) override {
      return real_->Write(bytes, count);
    }
    std::error_code CutHere() override { return real_->CutHere(); }
    std::error_code Length(std::uintmax_t& length) override { return real_->Length(length); }
    std::error_code TakeAttributesOf(const std::string& path) override {
      return real_->TakeAttributesOf(path);
    }
    std::error_code Sync() override { return {}; }
    std::error_code Close() override { return real_->Close(); }

   private:
    std::unique_ptr<OutputFile> real_;
  };
};

/// Sends random tables of one set through its files.
class RoundTrip {
 public:
  /// With `exact` only those are typed whose file is written back byte for byte.
  RoundTrip(const Described& set, std::uint32_t seed, bool exact)
      : set_(set), generator_(seed), exact_(exact) {
    tree_.MakeFolders("c:\\data");
  }

  void Run(int files) {
    for (int i = 0; i < files && !testing::Test::HasFailure(); ++i) {
      SCOPED_TRACE("file " + std::to_string(i));
      // No file takes another's place, which a file system may wait for.
      std::filesystem::remove(tree_.Native(kFirst));
      std::filesystem::remove(tree_.Native(kSecond));
      RunOne();
    }
  }

  [[nodiscard]] const Met& Counts() const { return met_; }

 private:
  void RunOne() {
    const std::unique_ptr<cifCaldata> typed = set_.Create();
    const SetData before = Fill(*typed);
    ASSERT_EQ(typed->SaveCalibrationDataToFile(kFirst), 0);
    const std::string first = tree_.Read(kFirst);
    ASSERT_EQ(first, set_.File(before));

    const std::unique_ptr<cifCaldata> loaded = set_.Create();
    ASSERT_EQ(loaded->LoadCalibrationDataFromFile(kFirst), 0);
    ASSERT_TRUE(loaded->LoadNotices().empty()) << loaded->LoadNotices()[0];
    const SetData after = set_.AfterLoad(before);
    ExpectHolds(*loaded, before, after);

    ASSERT_EQ(loaded->SaveCalibrationDataToFile(kSecond), 0);
    const std::string second = tree_.Read(kSecond);
    ASSERT_EQ(second, set_.File(after));
    ++met_.files;
    if (IsWrittenAnew(before)) {
      ++met_.filesWrittenAnew;
      ASSERT_FALSE(exact_);
      ASSERT_NE(second, first);
    } else {
      ASSERT_EQ(second, first);
    }

    // From the first load on nothing changes.
    if (met_.files % 16 == 0) {
      const std::unique_ptr<cifCaldata> again = set_.Create();
      ASSERT_EQ(again->LoadCalibrationDataFromFile(kSecond), 0);
      ExpectHolds(*again, after, after);
      std::filesystem::remove(tree_.Native(kFirst));
      ASSERT_EQ(again->SaveCalibrationDataToFile(kFirst), 0);
      ASSERT_EQ(tree_.Read(kFirst), second);
    }
  }

  /// Types a whole set, and returns it as the cells then stand.
  SetData Fill(cifCaldata& data) {
    SetData typed;
    typed.serial = generator_.Serial();
    typed.number = exact_ ? generator_.Serial() : generator_.Words(2);
    typed.comment = generator_.Words(exact_ ? 1 : 3);
    typed.calDate = generator_.Date();
    typed.dueDate = generator_.Date();
    data.SetModelNumber(set_.Code());
    data.SetSerialNumber(typed.serial);
    data.SetCalibrationNumber(typed.number);
    data.SetComment(typed.comment);
    data.SetCalDate(static_cast<std::int16_t>(typed.calDate[0]),
                    kMonths.at(static_cast<std::size_t>(typed.calDate[1])),
                    static_cast<std::int16_t>(typed.calDate[2]));
    data.SetDueDate(static_cast<std::int16_t>(typed.dueDate[0]),
                    kMonths.at(static_cast<std::size_t>(typed.dueDate[1])),
                    static_cast<std::int16_t>(typed.dueDate[2]));
    std::size_t pages = set_.Pages();
    if (set_.HasOption() && generator_.Chance(30)) {
      --pages;
      data.SetCalPageSerial(3, "*");
    }
    for (std::size_t page = 0; page < pages; ++page) {
      if (set_.HasPageSerials()) {
        typed.pageSerials.push_back(exact_ || generator_.Chance(80)
                                        ? (generator_.Chance(90) ? generator_.Serial() : "")
                                        : generator_.Serial() + " " + generator_.Serial());
        data.SetCalPageSerial(static_cast<std::int16_t>(page), typed.pageSerials.back());
      }
      typed.pages.push_back(Rows());
      const int rows = RowCount(page);
      for (int row = 1; row <= rows; ++row) {
        typed.pages.back().push_back(TypedRow(data, page, row));
      }
      MemoryGrid grid(5);
      for (const Row& row : typed.pages.back()) {
        grid.AddRow(row[0] + "\t" + row[1] + "\t" + row[2] + "\t" + row[3] + "\t" + row[4]);
      }
      data.SetCalData(static_cast<std::int16_t>(page), grid);
      ++met_.tables;
    }
    return typed;
  }

  int RowCount(std::size_t page) {
    const int most = set_.RowsOf(page);
    if (most > 12) {
      return generator_.Chance(1) ? most : generator_.Between(0, 10);
    }
    // Behind its eight rows set A has units alone.
    return set_.HasPageSerials() && generator_.Chance(5) ? most + 2 : generator_.Between(0, most);
  }

  Row TypedRow(const cifCaldata& data, std::size_t page, int row) {
    Row cells;
    cells[0] = generator_.Word(set_.MayHaveBlanks() ? 6 : 15);
    if (set_.MayHaveBlanks() && generator_.Chance(20)) {
      cells[0] += "  " + generator_.Word(3);
    }
    for (std::size_t column = 1; column < set_.ColumnsOf(page); ++column) {
      do {
        std::string unit = generator_.Unit();
        if (column == set_.UncertaintyColumn(page) && row > set_.RowsOf(page) && unit == "%") {
          unit = "ppm";  // tested by itself
        }
        cells.at(column) = data.SetCalibrationDataFormat(
            static_cast<std::int16_t>(page), static_cast<std::int16_t>(column),
            static_cast<std::int16_t>(row), generator_.Number(), unit);
      } while (exact_ && set_.IsWrittenAnew(page, column, cells.at(column)));
    }
    return cells;
  }

  [[nodiscard]] bool IsWrittenAnew(const SetData& data) const {
    bool anew = FirstWord(data.number) != data.number || FirstWord(data.comment) != data.comment;
    for (const std::string& serial : data.pageSerials) {
      anew = anew || FirstWord(serial) != serial;
    }
    for (std::size_t page = 0; page < data.pages.size(); ++page) {
      for (const Row& row : data.pages[page]) {
        for (std::size_t column = 1; column < set_.ColumnsOf(page); ++column) {
          anew = anew || set_.IsWrittenAnew(page, column, row.at(column));
        }
      }
    }
    return anew;
  }

  /// Every text that the object holds, and what became of it.
  void ExpectHolds(const cifCaldata& data, const SetData& before, const SetData& after) {
    ASSERT_EQ(data.ModelNumber(), set_.Code());
    ASSERT_EQ(data.SerialNumber(), after.serial);
    ASSERT_EQ(data.CalibrationNumber(), after.number);
    ASSERT_EQ(data.Comment(), after.comment);
    met_.firstWords += before.comment != after.comment ? 1 : 0;
    std::int16_t year = 0;
    std::string month;
    std::int16_t day = 0;
    data.GetCalDate(year, month, day);
    ASSERT_EQ(std::to_string(year) + month + std::to_string(day), WithMonthName(after.calDate));
    data.GetDueDate(year, month, day);
    ASSERT_EQ(std::to_string(year) + month + std::to_string(day), WithMonthName(after.dueDate));
    ASSERT_EQ(static_cast<std::size_t>(data.GetCalPageCount()), after.pages.size());
    for (std::size_t page = 0; page < after.pages.size(); ++page) {
      SCOPED_TRACE("page " + std::to_string(page));
      const auto number = static_cast<std::int16_t>(page);
      if (set_.HasPageSerials()) {
        ASSERT_EQ(data.GetCalPageSerial(number), after.pageSerials[page]);
      }
      MemoryGrid grid(5);
      data.GetCalData(number, grid);
      // An empty page of a capacitor set shows one empty row.
      const std::size_t shown =
          after.pages[page].empty() && set_.HasPageSerials() ? 1 : after.pages[page].size();
      ASSERT_EQ(static_cast<std::size_t>(grid.RowCount()), 1 + shown);
      for (std::size_t row = 0; row < after.pages[page].size(); ++row) {
        for (std::size_t column = 0; column < 5; ++column) {
          const std::string& was = before.pages[page][row].at(column);
          const std::string is =
              grid.CellText(static_cast<std::int16_t>(row + 1), static_cast<std::int16_t>(column));
          ASSERT_EQ(is, after.pages[page][row].at(column))
              << "row " << row + 1 << ", column " << column << ", was " << was;
          Count(was, is, column == set_.UncertaintyColumn(page));
        }
      }
    }
  }

  /// Names the difference; one without a name fails.
  void Count(const std::string& was, const std::string& is, bool uncertainty) {
    ++met_.cells;
    if (was == is) {
      return;
    }
    if (was == "-" + is) {
      ++met_.zeroSigns;
    } else if (uncertainty && EndsIn(was, " %") && EndsIn(is, " ppm") && was.size() >= 6 + 2) {
      ++met_.percentAsPpm;
    } else if (uncertainty && EndsIn(was, " ppm") && EndsIn(is, " ppm")) {
      ++met_.roundedPpm;
    } else if (uncertainty && !EndsIn(was, " ppm") && !EndsIn(was, "%") && EndsIn(is, " ppm")) {
      ++met_.unitOfOther;
    } else if (was == " " + is) {
      ++met_.leadingBlanks;
    } else {
      ADD_FAILURE() << '"' << was << "\" became \"" << is << '"';
    }
  }

  const Described& set_;
  Generator generator_;
  bool exact_;
  test::TestTree tree_;
  HastyPlatform platform_;
  Met met_;
};

const DescribedSetA kSetA;
const DescribedSetC kSetC;
const DescribedResistors kResistors;

struct RoundTripCase {
  const Described* set;
  int files;
  std::uint32_t seed;
};

void PrintTo(const RoundTripCase& test, std::ostream* stream) {
  *stream << test.set->Code();
}

class SetRoundTrip : public testing::TestWithParam<RoundTripCase> {};

TEST_P(SetRoundTrip, WritesUsualTablesBackByteForByte) {
  RoundTrip trip(*GetParam().set, GetParam().seed, true);
  trip.Run(GetParam().files);
  EXPECT_GE(trip.Counts().tables, 1400);
  EXPECT_EQ(trip.Counts().filesWrittenAnew, 0);
  // Set C shows whole ppm alone.
  EXPECT_EQ(trip.Counts().roundedPpm > 100, GetParam().set != &kSetC);
}

TEST_P(SetRoundTrip, ChangesOnlyWhatTheFileCannotHold) {
  RoundTrip trip(*GetParam().set, GetParam().seed + 1, false);
  trip.Run(GetParam().files);
  const Met& met = trip.Counts();
  EXPECT_GE(met.tables, 1400);
  EXPECT_GT(met.cells, 20 * met.tables);
  EXPECT_GT(met.filesWrittenAnew, 100);
  EXPECT_GT(met.percentAsPpm, 100);
  EXPECT_EQ(met.roundedPpm > 100, GetParam().set != &kSetC);
  EXPECT_GT(met.zeroSigns, 10);
  EXPECT_GT(met.firstWords, 100);
  const bool isResistors = GetParam().set == &kResistors;
  EXPECT_EQ(met.leadingBlanks > 10, isResistors);
  EXPECT_EQ(met.unitOfOther > 10, !isResistors);
}

INSTANTIATE_TEST_SUITE_P(Sets, SetRoundTrip,
                         testing::Values(RoundTripCase{&kSetA, 400, 520},
                                         RoundTripCase{&kSetC, 400, 528},
                                         RoundTripCase{&kResistors, 300, 730}),
                         [](const auto& test) { return std::string(test.param.set->Code()); });

// What a file does to a row that it has no right place for, one example each.

/// The row that comes back when the first page holds these rows, the last of them.
template <typename Class>
Row LastRowRead(const Rows& rows) {
  const test::TestTree tree;
  tree.MakeFolders("c:\\data");
  Class typed;
  MemoryGrid grid(5);
  for (const Row& row : rows) {
    grid.AddRow(row[0] + "\t" + row[1] + "\t" + row[2] + "\t" + row[3] + "\t" + row[4]);
  }
  typed.SetCalData(0, grid);
  EXPECT_EQ(typed.SaveCalibrationDataToFile(kFirst), 0);
  Class loaded;
  EXPECT_EQ(loaded.LoadCalibrationDataFromFile(kFirst), 0);
  loaded.GetCalData(0, grid);
  const auto last = static_cast<std::int16_t>(rows.size());
  if (grid.RowCount() != last + 1) {
    ADD_FAILURE() << grid.RowCount() - 1 << " rows came back";
    return {};
  }
  return {grid.CellText(last, 0), grid.CellText(last, 1), grid.CellText(last, 2),
          grid.CellText(last, 3), grid.CellText(last, 4)};
}

TEST(SetFileLosses, APercentValueOfSixCharactersComesBackInPpm) {
  EXPECT_EQ(LastRowRead<cInstrRT520A>({{"1000", "1.000000pF", "0.0050 %", "0.00001", "0.00002"}}),
            (Row{"1000", "1.000000pF", "50 ppm", "0.00001", "0.00002"}));
  EXPECT_EQ(LastRowRead<cInstrRT520A>({{"1000", "1.000000pF", "0.0050 %", "0", "0"},
                                       {"2000", "1.00000pF", "12.345 %", "0.00001", "0.00002"}}),
            (Row{"2000", "1.00000pF", "123450.000 ppm", "0.00001", "0.00002"}));
  EXPECT_EQ(LastRowRead<cInstrRT730A>({{"RT731A", "1 mohm", "1.0000  mohm", "100.25 %", ""}}),
            (Row{"RT731A", "1 mohm", "1.0000  mohm", "1002500 ppm", ""}));
  EXPECT_EQ(LastRowRead<cInstrRT730A>({{"RT731A", "1 mohm", "1.0000  mohm", "-12.35 %", ""}}),
            (Row{"RT731A", "1 mohm", "1.0000  mohm", "-123500 ppm", ""}));
}

TEST(SetFileLosses, AnEmptyUncertaintyComesBackAsZeroPpm) {
  EXPECT_EQ(LastRowRead<cInstrRT520A>({{"1000", "1.000000pF", "", "0.00001", "0.00002"}}),
            (Row{"1000", "1.000000pF", "0 ppm", "0.00001", "0.00002"}));
  EXPECT_EQ(LastRowRead<cInstrRT730A>({{"RT731A", "1 mohm", "1.0000  mohm", "", ""}}),
            (Row{"RT731A", "1 mohm", "1.0000  mohm", "0 ppm", ""}));
}

// The words of a capacitor's line are told apart by blanks alone: a field without text lets those
// behind it move up.
TEST(SetFileLosses, AnEmptyCapacitanceLetsTheCellsBehindItMoveUp) {
  EXPECT_EQ(LastRowRead<cInstrRT520A>({{"1000", "", "0.0050 %", "0.00012", "0.00034"}}),
            (Row{"1000", "0.000000pF", "1 ppm", "0.00034", "0.00000"}));
  EXPECT_EQ(LastRowRead<cInstrRT520C>({{"1000", "", "0.0050 %", "0.00012", "0.00034"}}),
            (Row{"1000", "0.0000nF", "1 ppm", "0.00034", "0.00000"}));
}

TEST(SetFileLosses, AnEmptyDissipationFactorTakesThePlaceOfItsUncertainty) {
  EXPECT_EQ(LastRowRead<cInstrRT520C>({{"1000", "1.0000nF", "12 ppm", "", "0.00034"}}),
            (Row{"1000", "1.0000nF", "12 ppm", "0.00034", "0.00000"}));
}

TEST(SetFileLosses, TheUnitAloneInPerCentBehindSetAsRowsLetsTheCellsBehindItMoveUp) {
  Rows rows(8, {"1000", "1.0000pF", "12 ppm", "0.00001", "0.00002"});
  rows.push_back({"9000", "pF", " %", "0.00012", "0.00034"});
  EXPECT_EQ(LastRowRead<cInstrRT520A>(rows), (Row{"9000", "pF", " ppm", "0.00034", "0.00000"}));
}

TEST(SetFileLosses, ABlankInAFrequencyMovesTheCellsBehindItDown) {
  EXPECT_EQ(LastRowRead<cInstrRT520C>({{"1 kHz", "1.0000nF", "12 ppm", "0.00012", "0.00034"}}),
            (Row{"1", "0.0000nF", "10000 ppm", "0.00120", "0.00012"}));
}

TEST(SetFileLosses, AResistorsRowEndsAtItsFirstEmptyCell) {
  EXPECT_EQ(LastRowRead<cInstrRT730A>({{"RT731A", "", "1.0000  mohm", "0.1 %", ""}}),
            (Row{"RT731A", "", "", "", ""}));
}

TEST(SetFileLosses, ARowBehindThoseOfItsPageComesBackWithoutItsUncertainty) {
  const test::TestTree tree;
  tree.MakeFolders("c:\\data");
  tree.Write(kFirst, Lines({"! 1 kohm", "!", "*1 : a : 0.10 % : c : d", "*2", "*3", "*4", "*5",
                            "*6", "*7", "*8", "*9 : a : 0.10 % : c : d", "!END"}));
  cInstrRT730A loaded;
  EXPECT_EQ(loaded.LoadCalibrationDataFromFile(kFirst), 0);
  MemoryGrid grid(5);
  loaded.GetCalData(4, grid);
  ASSERT_EQ(grid.RowCount(), 1 + 9);
  EXPECT_EQ(grid.CellText(1, 2), "0.10 %");
  EXPECT_EQ(grid.CellText(9, 2), "");
  EXPECT_EQ(grid.CellText(9, 3), "c");
}

}  // namespace
}  // namespace tarvell
