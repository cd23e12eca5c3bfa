// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_BODYREADER_H
#define TARVELL_CORE_CALDATA_BODYREADER_H

#include <string>
#include <string_view>

#include "core/caldata/Cell.h"
#include "core/caldata/HeaderLines.h"
#include "core/files/ItemReader.h"

namespace tarvell {

/// How a file ended.
struct FileEnd {
  std::string lastItem;       ///< is never interpreted
  bool hasEndLine = false;    ///< whether there was a line "!End" outside of a page
  bool hasDataLines = false;  ///< whether there were data lines outside of a page
};

/// Reads everything except the header of one file into a calibration data object. It keeps what is
/// needed only during the load, and is destroyed after it.
///
/// The functions that take a line may read more items, and throw an Index error when a table has no
/// row for them. They ignore what the model does not use.
class BodyReader {
 public:
  BodyReader() = default;
  BodyReader(const BodyReader&) = delete;
  BodyReader& operator=(const BodyReader&) = delete;
  virtual ~BodyReader() = default;

  /// Takes a data line outside of a page, the `index`-th of them, its "*" included.
  virtual void TakeDataLine(TableIndex /*index*/, std::string_view /*item*/) {}
  /// Takes a line that looks like a header line, but has a keyword that the header does not have.
  virtual void TakePageLine(const LineWords& /*words*/, ItemReader& /*reader*/) {}
  /// Takes a comment line, its "!" included.
  virtual void TakeCommentLine(const std::string& /*item*/, ItemReader& /*reader*/) {}

  /// Ends the load: notes what the file lacks, and returns whether it is complete, as a template
  /// must be.
  virtual bool End(const FileEnd& end) = 0;
};

}  // namespace tarvell

#endif
