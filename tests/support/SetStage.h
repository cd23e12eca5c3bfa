// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SETSTAGE_H
#define TARVELL_TESTS_SUPPORT_SETSTAGE_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/caldata/cifCaldata.h"
#include "core/platform/Error.h"
#include "support/SetModels.h"
#include "support/TestTree.h"

namespace tarvell::test {

using Row = Texts;
using Rows = std::vector<Row>;

[[nodiscard]] Texts Joined(const std::vector<Texts>& parts);

/// A data line with a value in every column, the first of which is `first`.
[[nodiscard]] std::string FullLine(const std::string& first);

/// Data lines, texts and rows of so many rows, whose first cells are 1, 2 and so on.
[[nodiscard]] Texts ManyLines(int count);
[[nodiscard]] Texts ManyNames(int count);
[[nodiscard]] Rows ManyRows(int count);

/// The cells of each row that a page shows, joined by "|".
[[nodiscard]] Texts RowsOf(const cifCaldata& data, std::int16_t page = 0);

/// A set in its file.
class SetStage {
 public:
  static constexpr const char* kFile = "c:\\data\\SN12345";

  explicit SetStage(const SetModel& set);

 protected:
  void SetRows(std::int16_t page, const Rows& rows, std::int16_t columns = 5);
  [[nodiscard]] Rows ShownRows(std::int16_t page) const;
  [[nodiscard]] Texts FirstColumn(std::int16_t page) const;

  /// Sets every value of the header, and the lines that it then has in the file, with those before
  /// the first page.
  void SetHeader();
  [[nodiscard]] Texts WholeHeader() const;

  [[nodiscard]] std::string Saved() const;
  /// The data line of the only row of the file, when this page holds it.
  [[nodiscard]] std::string SavedLineOf(std::int16_t page, const Row& row);

  /// Loads a file of these lines into a new object, or into the one that is there.
  void Load(const Texts& lines);
  void LoadOver(const Texts& lines);
  /// Loads the file as it is into a new object.
  void LoadAgain();
  /// Loading a file of these lines into a new object ends with an error of this line, whose text
  /// has this part.
  void ExpectLoadError(const Texts& lines, ErrorKind kind, std::size_t line,
                       const std::string& part = "");

  [[nodiscard]] const std::string& Name(std::size_t page) const { return set_.pages.at(page); }
  /// One page of a file, whole.
  [[nodiscard]] Texts Page(std::size_t page, const Texts& dataLines) const;
  /// Pages with the row "7" each, all but these.
  [[nodiscard]] Texts PagesBut(const std::vector<std::size_t>& others) const;

  /// Exactly these notices, each with its parts.
  void ExpectNotices(const std::vector<Texts>& notices) const;
  void ExpectNotice(const Texts& parts) const { ExpectNotices({parts}); }

  const SetModel& set_;
  TestTree tree_;
  std::unique_ptr<cifCaldata> data_;
};

}  // namespace tarvell::test

#endif
