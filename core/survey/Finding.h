// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_FINDING_H
#define TARVELL_CORE_SURVEY_FINDING_H

#include <cstddef>
#include <string>
#include <string_view>

namespace tarvell {

/// The states that a survey finds, in the order in which they are shown.
enum class FindingKind {
  PastDue,
  DueSoon,
  NoSuchDate,
  DueDateDiffers,     ///< an instrument's due date is not that of its data set
  SerialDiffers,      ///< its serial number is not that of its data set
  DataSetMissing,     ///< of an instrument
  NotUsed,            ///< a data set of which no station has the instrument
  SharedFileName,     ///< two data sets of a model whose serial numbers give the same file name
  SharedAddress,      ///< two instruments of a station with one bus address
  IndexLacksName,     ///< an INDEX that lacks a name of its folder
  IndexNamesMissing,  ///< an INDEX with a name that its folder does not have
  IndexNamesTwice,    ///< an INDEX with a name more often than its folder
  Unreadable,         ///< a file or folder that cannot be read
  CutOff,             ///< a file whose last line has no end
  NoEnd,              ///< a file without the line that ends it
  OtherModel,         ///< a file that holds another model than its folder or name says
  OtherSerial,        ///< a file that holds another serial number than its name says
  NotRewritten,       ///< a file that would not be written back byte for byte
  DoubtfulValue       ///< a value that stands out
};
inline constexpr std::size_t kFindingKinds = 19;

/// One state of a row, with a sentence of what was found and one of what to do, in UTF-8.
struct Finding {
  FindingKind kind;
  std::string text;

  bool operator==(const Finding&) const = default;
};

/// The name of a state for programs, such as "past-due". It never changes.
[[nodiscard]] std::string_view CodeOf(FindingKind kind);

/// The state in words, such as "past due".
[[nodiscard]] std::string_view WordsOf(FindingKind kind);

/// Whether somebody has to do something about a state. It is a fault, except that a laboratory may
/// well have instruments that no station uses.
[[nodiscard]] bool IsFault(FindingKind kind);

}  // namespace tarvell

#endif
