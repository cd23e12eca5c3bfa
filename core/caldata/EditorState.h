// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_EDITORSTATE_H
#define TARVELL_CORE_CALDATA_EDITORSTATE_H

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/CalDataGrid.h"
#include "core/caldata/Cell.h"
#include "core/caldata/Origin.h"
#include "core/caldata/cifCaldata.h"

/// What is in an open editor, even if it could not be saved as it is.
namespace tarvell {

/// The boxes of the header, as typed. Months are what the lists of months show.
struct DraftHeader {
  std::string serialNumber = {};
  std::string calibrationNumber = {};
  std::string calYear = {};
  std::string calMonth = {};
  std::string calDay = {};
  std::string dueYear = {};
  std::string dueMonth = {};
  std::string dueDay = {};
  std::string comment = {};

  bool operator==(const DraftHeader&) const = default;
};

/// Every box of the header, in the order of the screen.
inline constexpr std::array kHeaderBoxes = {
    &DraftHeader::serialNumber, &DraftHeader::calibrationNumber,
    &DraftHeader::calYear,      &DraftHeader::calMonth,
    &DraftHeader::calDay,       &DraftHeader::dueYear,
    &DraftHeader::dueMonth,     &DraftHeader::dueDay,
    &DraftHeader::comment};

/// The serial number of the member, the cells of each data row, and what is known of them.
struct DraftPage {
  std::string serialNumber = {};
  std::vector<std::vector<std::string>> rows = {};
  CellOrigins origins = {};                ///< of the cells that do not come from the file
  std::map<Cell, std::string> notes = {};  ///< of the cells that the user should look at

  bool operator==(const DraftPage&) const = default;
};

/// A cell whose edit is open, with the text and unit that are not stored yet.
struct OpenCell {
  Cell cell;
  std::string text;
  std::string unit;
  bool isTyped = true;  ///< whether text or unit was changed

  bool operator==(const OpenCell&) const = default;
};

/// Everything that the user can change in an editor.
struct EditorState {
  DraftHeader header = {};
  std::optional<bool> option = {};  ///< whether the option is on; nullopt for a model without one
  std::vector<DraftPage> pages = {};
  std::int16_t shownPage = 0;
  std::optional<OpenCell> openCell = {};

  bool operator==(const EditorState&) const = default;
};

/// Whether the user sees the same in two states. Which page is shown does not matter, nor does a
/// cell that was only opened.
[[nodiscard]] bool HaveSameContent(const EditorState& one, const EditorState& other);

/// Whether nothing of `draft` is lost when `state` is saved: both hold the same data, and no value
/// that was entered in the draft is still to be entered in `state`.
[[nodiscard]] bool HoldsAllOf(const EditorState& state, const EditorState& draft);

/// The data rows of a grid.
[[nodiscard]] std::vector<std::vector<std::string>> RowsOf(const CalDataGrid& grid);

/// All pages of a data set, without the origins, with the one that its option hides at present. The
/// data set is the same afterwards.
[[nodiscard]] std::vector<DraftPage> PagesOf(cifCaldata& data, bool hasOption);

/// Fills `grid` with a page as an editor shows it: the captions of `data`, and the rows of `shown`.
void FillPage(const cifCaldata& data, std::int16_t page, const DraftPage& shown, CalDataGrid& grid);

/// The pages of a state without the one that its option hides, which is not part of the data set.
[[nodiscard]] std::vector<std::int16_t> ShownPages(const EditorState& state);

/// Puts pages and option back into a data set of the same model. What the data set has no place for
/// is left out.
void RestorePages(const EditorState& state, bool hasOption, cifCaldata& data);

}  // namespace tarvell

#endif
