// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_FILES_ITEMREADER_H
#define TARVELL_CORE_FILES_ITEMREADER_H

#include <cstddef>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/files/FileStamp.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"

namespace tarvell {

enum class TextEncoding { FileCharacters, Utf8 };

/// Reads a text file item by item.
///
/// Blanks and tabs before an item are skipped. An unquoted item ends at a comma or a line end
/// (CR LF, or a lone CR or LF) and loses its trailing blanks and tabs. A quoted item runs to the
/// closing quote, commas and line ends included, or to the end of the file; what stands between
/// that quote and the next comma or line end is passed over. An empty line is one empty item.
///
/// Behind kMostDataFileBytes the reading ends with a NotAFile error: what is no data file at all is
/// not read to its end.
class ItemReader {
 public:
  ItemReader() = default;

  /// Opens the file at the native path `native`; errors name it as `shown`. Throws the error of
  /// a file that cannot be opened.
  ItemReader(const std::filesystem::path& native, std::string shown);

  /// Opens the file at `path`, a path text of the program.
  explicit ItemReader(std::string_view path);

  /// A reader of a text that is there already, as of a file.
  [[nodiscard]] static ItemReader Of(std::string_view bytes);

  /// Opens a file without throwing: for readers that have an answer of their own to a failure.
  [[nodiscard]] std::error_code Open(const std::filesystem::path& native,
                                     TextEncoding encoding = TextEncoding::FileCharacters);

  /// Lets `stamp` take in every byte from here on; it outlives the reading.
  void StampContent(FileStamp& stamp) { stamp_ = &stamp; }

  /// Whether no byte is left behind the terminator of the item read last.
  [[nodiscard]] bool AtEnd();

  /// Reads the next item. Throws an InputPastEnd error when there is none.
  [[nodiscard]] std::string ReadItem();

  /// Reads the next item into `item`; false when there is none or reading failed.
  [[nodiscard]] bool TryReadItem(std::string& item);

  /// Runs `interpret` on what was read last; an error that it throws without naming a file is
  /// thrown on as one of this file and line.
  template <typename Interpret>
  auto AtThisLine(const Interpret& interpret) const {
    try {
      return interpret();
    } catch (const Error& error) {
      throw error.Located(path_, itemLine_);
    }
  }

  /// Line, counted from 1, on which the item read last begins.
  [[nodiscard]] int Line() const { return itemLine_; }

  /// The file's path as errors name it.
  [[nodiscard]] const std::string& Path() const { return path_; }

 private:
  static constexpr int kEnd = -1;

  [[nodiscard]] int Peek();
  int Take();
  /// Moves on by `count` bytes of the block.
  void Pass(std::size_t count);
  void Append(std::string& item, std::string_view bytes) const;
  void SkipLineEndOrComma();
  void ReadQuoted(std::string& item);
  void ReadUnquoted(std::string& item);
  [[nodiscard]] bool Next(std::string& item);
  void Fill();

  std::string path_;
  TextEncoding encoding_ = TextEncoding::FileCharacters;
  std::unique_ptr<InputFile> file_;
  std::vector<char> block_;
  std::size_t filled_ = 0;
  std::size_t position_ = 0;
  std::size_t bytesRead_ = 0;
  bool readWhole_ = false;
  std::error_code failure_;
  FileStamp* stamp_ = nullptr;
  int line_ = 1;
  int itemLine_ = 0;
};

}  // namespace tarvell

#endif
