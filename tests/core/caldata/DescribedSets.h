// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_CORE_CALDATA_DESCRIBEDSETS_H
#define TARVELL_TESTS_CORE_CALDATA_DESCRIBEDSETS_H

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/cifCaldata.h"

/// The files of the sets once more, without a word of the program: what a file holds and what comes
/// back, worked out on the texts of the cells alone.
namespace tarvell::test {

using Texts = std::vector<std::string>;
using CellTexts = std::array<std::string, 5>;

/// All that a set's file holds.
struct SetData {
  std::string serial;
  std::string number;
  std::string comment;
  std::array<int, 3> calDate{};  ///< year, month, day
  std::array<int, 3> dueDate{};
  Texts pageSerials;  ///< of a capacitor set
  std::vector<std::vector<CellTexts>> pages;
};

[[nodiscard]] bool EndsIn(const std::string& text, std::string_view end);
[[nodiscard]] std::string FirstWord(const std::string& text);

/// A set and its file.
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
  [[nodiscard]] virtual CellTexts Read(std::size_t page, int row, const CellTexts& cells) const = 0;
  /// Whether what is written for a cell that has come back differs from what was written first.
  [[nodiscard]] virtual bool IsWrittenAnew(std::size_t page, std::size_t column,
                                           const std::string& cell) const = 0;

  /// The whole file that holds these data, and the data that are then read from it.
  [[nodiscard]] std::string File(const SetData& data) const;
  [[nodiscard]] SetData AfterLoad(const SetData& data) const;
};

[[nodiscard]] const Described& DescribedSetA();
[[nodiscard]] const Described& DescribedSetC();
[[nodiscard]] const Described& DescribedResistors();

}  // namespace tarvell::test

#endif
