// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_ITEMREADER_H
#define TARVELL_CORE_FILES_ITEMREADER_H

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <utility>

#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/platform/SystemName.h"

namespace tarvell {

enum class TextEncoding { FileCharacters, Utf8 };

/// Reads a text file item by item, from memory.
///
/// Blanks and tabs before an item are skipped. An unquoted item ends at a comma or a line end
/// (CR LF, or a lone CR or LF) and loses its trailing blanks and tabs. A quoted item ends at the
/// closing quote, or at the end of the file, and may hold commas and line ends; the text between
/// that quote and the next comma or line end is ignored. An empty line is one empty item.
class ItemReader {
 public:
  /// Reads the whole file at `path`, a path of the program. Throws the error of a file that cannot
  /// be read, and a NotAFile error for one of more than kDataFileLimit bytes.
  explicit ItemReader(std::string_view path);

  /// Reads the first kDataFileLimit bytes of the file at `native`, which errors name as `shown`. In
  /// a larger file an item that does not end within them is a NotAFile error. Throws the error of a
  /// file that cannot be read.
  ItemReader(const std::filesystem::path& native, std::string shown,
             TextEncoding encoding = TextEncoding::FileCharacters);
  ItemReader(const std::string& path, std::string shown,
             TextEncoding encoding = TextEncoding::FileCharacters) = delete;

  /// A reader of the content of a file. Errors name the file as `shown`.
  [[nodiscard]] static ItemReader Of(std::string_view bytes, std::string shown = {});

  /// A reader of the beginning of a file that a search has found, more than an ordinary header.
  /// Errors name the file as `shown`. Throws the error of a file that cannot be read.
  [[nodiscard]] static ItemReader OfBeginning(const FoundEntry& entry, std::string shown);

  /// Whether no byte is left after the terminator of the last item that was read.
  [[nodiscard]] bool AtEnd() const;

  /// Reads the next item, which is kept until the next call. Throws an InputPastEnd error when
  /// none exists.
  [[nodiscard]] const std::string& ReadItem();

  /// Reads the next item into `item`; false if none exists.
  [[nodiscard]] bool TryReadItem(std::string& item);

  /// Runs `interpret` on the last item that was read. An error that it throws without naming a file
  /// gets the path and line of this one.
  template <typename Interpret>
  auto AtThisLine(const Interpret& interpret) const {
    try {
      return interpret();
    } catch (const Error& error) {
      throw error.Located(path_, itemLine_);
    }
  }

  /// Line, counted from 1, on which the last item that was read begins.
  [[nodiscard]] int Line() const { return itemLine_; }

  /// The file's path as errors name it.
  [[nodiscard]] const std::string& Path() const { return path_; }

  /// The bytes that were read from the file.
  [[nodiscard]] const std::string& Bytes() const { return bytes_; }

  /// Whether all of Bytes() has been used up, so that more bytes could change the last item.
  [[nodiscard]] bool UsedAllBytes() const { return position_ == bytes_.size(); }

 private:
  ItemReader() = default;

  /// Throws a NotAFile error if all of `bytes_` is used up but the file goes on after it.
  void ThrowIfCut() const;
  void Decode(std::string_view bytes, std::string& item) const;
  [[nodiscard]] bool Next(std::string& item);

  std::string path_;
  TextEncoding encoding_ = TextEncoding::FileCharacters;
  std::string bytes_;
  bool isCut_ = false;  ///< whether the file goes on after `bytes_`
  std::size_t position_ = 0;
  int line_ = 1;
  int itemLine_ = 0;
  std::string item_;  ///< that ReadItem has read
};

/// The result of `read` for the first items of a file that a search has found. A large file is read
/// whole only if its beginning is not enough. `read` is first called with a reader of the beginning
/// and then, if necessary, with one of the whole file. Errors name the file as `shown`.
template <typename Read>
auto ReadFirstItems(const FoundEntry& entry, std::string shown, const Read& read) {
  ItemReader beginning = ItemReader::OfBeginning(entry, std::move(shown));
  try {
    auto result = read(beginning);
    if (!beginning.UsedAllBytes()) {
      return result;
    }
  } catch (const Error&) {
    if (!beginning.UsedAllBytes()) {
      throw;
    }
  }
  ItemReader whole(entry.folder / SystemName(entry.name), beginning.Path());
  return read(whole);
}

}  // namespace tarvell

#endif
