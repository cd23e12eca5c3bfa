// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

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

#include "core/caldata/DescribedSets.h"
#include "core/caldata/MemoryGrid.h"
#include "core/platform/ForwardingPlatform.h"
#include "support/TestTree.h"

/// Random tables of the sets go through their files.
namespace tarvell {
namespace {

using test::Described;
using test::DescribedResistors;
using test::DescribedSetA;
using test::DescribedSetC;
using test::EndsIn;
using test::FirstWord;
using test::SetData;
using Row = test::CellTexts;
using Rows = std::vector<Row>;

constexpr const char* kFirst = "c:\\data\\SN00001";
constexpr const char* kSecond = "c:\\data\\SN00002";

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
class HastyPlatform : public ForwardingPlatform {
 public:
  HastyPlatform() { SetCurrentPlatform(this); }
  HastyPlatform(const HastyPlatform&) = delete;
  HastyPlatform& operator=(const HastyPlatform&) = delete;
  ~HastyPlatform() override { SetCurrentPlatform(nullptr); }

  [[nodiscard]] std::error_code CreateTemporary(const std::filesystem::path& folder,
                                                std::filesystem::path& path,
                                                std::unique_ptr<OutputFile>& file) override {
    std::unique_ptr<OutputFile> real;
    const std::error_code code = ForwardingPlatform::CreateTemporary(folder, path, real);
    file = std::make_unique<File>(std::move(real));
    return code;
  }
  [[nodiscard]] std::error_code SyncFolder(const std::filesystem::path& /*folder*/) override {
    return {};
  }

 private:
  class File : public ForwardingOutputFile {
   public:
    using ForwardingOutputFile::ForwardingOutputFile;

    std::error_code Sync() override { return {}; }
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
    ASSERT_EQ(loaded->LoadNotices().size(), PagesBeyondTheFormats(before));
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

  /// What is reported of a file that the program wrote: of rows after those that have formats.
  [[nodiscard]] std::size_t PagesBeyondTheFormats(const SetData& data) const {
    std::size_t pages = 0;
    for (std::size_t page = 0; page < data.pages.size(); ++page) {
      pages += data.pages[page].size() > static_cast<std::size_t>(set_.RowsOf(page)) ? 1 : 0;
    }
    return pages;
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
  EXPECT_EQ(trip.Counts().roundedPpm > 100, GetParam().set != &DescribedSetC());
}

TEST_P(SetRoundTrip, ChangesOnlyWhatTheFileCannotHold) {
  RoundTrip trip(*GetParam().set, GetParam().seed + 1, false);
  trip.Run(GetParam().files);
  const Met& met = trip.Counts();
  EXPECT_GE(met.tables, 1400);
  EXPECT_GT(met.cells, 20 * met.tables);
  EXPECT_GT(met.filesWrittenAnew, 100);
  EXPECT_GT(met.percentAsPpm, 100);
  EXPECT_EQ(met.roundedPpm > 100, GetParam().set != &DescribedSetC());
  EXPECT_GT(met.zeroSigns, 10);
  EXPECT_GT(met.firstWords, 100);
  const bool isResistors = GetParam().set == &DescribedResistors();
  EXPECT_EQ(met.leadingBlanks > 10, isResistors);
  EXPECT_EQ(met.unitOfOther > 10, !isResistors);
}

INSTANTIATE_TEST_SUITE_P(Sets, SetRoundTrip,
                         testing::Values(RoundTripCase{&DescribedSetA(), 400, 520},
                                         RoundTripCase{&DescribedSetC(), 400, 528},
                                         RoundTripCase{&DescribedResistors(), 300, 730}),
                         [](const auto& test) { return std::string(test.param.set->Code()); });

}  // namespace
}  // namespace tarvell
