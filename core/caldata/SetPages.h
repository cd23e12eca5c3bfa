// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_SETPAGES_H
#define TARVELL_CORE_CALDATA_SETPAGES_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "core/caldata/BodyReader.h"
#include "core/caldata/LoadNotes.h"
#include "core/caldata/Table.h"
#include "core/files/FileText.h"
#include "core/files/ItemReader.h"

/// What the files of the sets of standards share: the reading and the writing of their pages.
namespace tarvell {

/// The page that comes with an option, and the serial numbers that switch it off and on again.
inline constexpr std::int16_t kOptionPage = 3;
inline constexpr std::string_view kOptionOff = "*";
inline constexpr std::string_view kOptionOn = "/";

/// Throws an Index error unless 0 <= page < pages.
[[nodiscard]] std::size_t PageIndex(std::int16_t page, std::int16_t pages);

/// Appends the caption of the tables, which is that of the capacitor sets in every file: station
/// software looks for it.
void WriteTableCaption(FileText& text);

/// Appends the rows of a page and its last line.
template <std::size_t Columns, typename LineOf>
void WritePageRows(FileText& text, const Table<Columns>& table, const LineOf& lineOf) {
  WriteRows(text, table, lineOf);
  text.Line("!END");
}

/// Reads the pages of a set.
class SetReader : public BodyReader {
 public:
  bool End(const FileEnd& end) override;

 protected:
  /// How the notes name a page: "page RT521A".
  struct Page {
    std::string name;
    std::string ifMissing;    ///< added to the name where the file does not hold the page
    bool isOptional = false;  ///< whether a file without the page is complete
  };

  /// `notes` must outlive the object.
  SetReader(LoadNotes& notes, const std::vector<Page>& pages);

  /// Passes over `titleLines` lines, then reads the rows of a page.
  void ReadPage(std::int16_t page, int titleLines, ItemReader& reader);

  [[nodiscard]] LoadNotes& Notes() { return notes_; }
  /// Whether the file holds a page.
  [[nodiscard]] bool IsFound(std::int16_t page) const { return PageAt(page).count > 0; }
  /// The doubtful rows of a page.
  [[nodiscard]] DoubtfulRows& RowsOf(std::int16_t page) { return PageAt(page).rows; }

 private:
  /// The text of an item as a row, "" if the item is not a row.
  [[nodiscard]] virtual std::string RowText(const std::string& item) const = 0;
  /// Takes the text of a row, its first character included.
  virtual void TakeRow(std::int16_t page, TableIndex index, std::string_view text) = 0;
  /// Notes the doubtful rows of a page that the file holds; `table` is the page, at the beginning
  /// of a sentence.
  virtual void NoteRows(std::int16_t page, const std::string& table) = 0;

  struct PageState {
    Page page;
    int count = 0;        ///< how many times the file holds the page
    bool hasEnd = false;  ///< whether the last of them has its "!END"
    DoubtfulRows rows;
  };

  [[nodiscard]] PageState& PageAt(std::int16_t page) {
    return pages_.at(static_cast<std::size_t>(page));
  }
  [[nodiscard]] const PageState& PageAt(std::int16_t page) const {
    return pages_.at(static_cast<std::size_t>(page));
  }
  void PassTitle(const PageState& state, ItemReader& reader);

  LoadNotes& notes_;
  std::vector<PageState> pages_;
};

}  // namespace tarvell

#endif
