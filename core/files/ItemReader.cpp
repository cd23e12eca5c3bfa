// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/ItemReader.h"

#include <algorithm>
#include <system_error>
#include <utility>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr const char* kReading = "read the file";

bool EndsItem(char c) {
  return c == ',' || c == '\r' || c == '\n';
}

/// Number of line ends in `bytes`; CR LF is one.
int LineEndsIn(std::string_view bytes) {
  int count = 0;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const bool isCrOfCrLf = bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
    count += bytes[i] == '\n' || (bytes[i] == '\r' && !isCrOfCrLf) ? 1 : 0;
  }
  return count;
}

}  // namespace

ItemReader::ItemReader(const std::filesystem::path& native, std::string shown,
                       TextEncoding encoding)
    : path_(std::move(shown)), encoding_(encoding) {
  const std::error_code code = ReadNativeFile(native, bytes_, kDataFileLimit);
  isCut_ = code == kTooLargeForData;
  if (code && !isCut_) {
    throw SystemError(code, kReading, path_);
  }
}

ItemReader::ItemReader(std::string_view path) : ItemReader(NativePath(path), std::string(path)) {
  if (isCut_) {
    throw SystemError(std::make_error_code(kTooLargeForData), kReading, path_);
  }
}

ItemReader ItemReader::Of(std::string_view bytes, std::string shown) {
  ItemReader reader;
  reader.path_ = std::move(shown);
  reader.bytes_ = bytes;
  return reader;
}

ItemReader ItemReader::OfBeginning(const FoundEntry& entry, std::string shown) {
  ItemReader reader;
  reader.path_ = std::move(shown);
  std::unique_ptr<InputFile> file;
  std::error_code code = CurrentPlatform().OpenFound(entry, file);
  if (!code) {
    code = ReadBeginning(*file, reader.bytes_);
  }
  if (code) {
    throw SystemError(code, kReading, reader.path_);
  }
  return reader;
}

void ItemReader::ThrowIfCut() const {
  if (isCut_ && UsedAllBytes()) {
    throw SystemError(std::make_error_code(kTooLargeForData), kReading, path_);
  }
}

bool ItemReader::AtEnd() const {
  ThrowIfCut();
  return UsedAllBytes();
}

const std::string& ItemReader::ReadItem() {
  const bool found = Next(item_);
  ThrowIfCut();
  if (!found) {
    throw Error(ErrorKind::InputPastEnd,
                "The file ends too early: more lines were expected (input past end of file). "
                "Check the file, or replace it by a complete one.",
                path_, line_);
  }
  return item_;
}

bool ItemReader::TryReadItem(std::string& item) {
  item.clear();
  return Next(item) && !(isCut_ && UsedAllBytes());
}

void ItemReader::Decode(std::string_view bytes, std::string& item) const {
  item.clear();
  if (encoding_ == TextEncoding::FileCharacters) {
    AppendDecoded(item, bytes);
  } else {
    item = bytes;
  }
}

bool ItemReader::Next(std::string& item) {
  std::string_view rest = std::string_view(bytes_).substr(position_);
  if (rest.empty()) {
    return false;
  }
  const auto* begin = std::ranges::find_if_not(rest, IsBlankOrTab);
  const bool isQuoted = begin != rest.end() && *begin == '"';
  const auto* last = isQuoted ? std::find(begin + 1, rest.end(), '"') : begin;
  const auto* end = std::find_if(last, rest.end(), EndsItem);
  if (isQuoted) {
    Decode({begin + 1, last}, item);
  } else {
    Decode({begin, end}, item);
    item.resize(item.find_last_not_of(" \t") + 1);
  }
  const auto* next = end;
  if (next != rest.end()) {
    const bool isCrLf = *end == '\r' && end + 1 != rest.end() && end[1] == '\n';
    next += isCrLf ? 2 : 1;
  }
  itemLine_ = line_;
  // An unquoted item holds no line end.
  line_ += LineEndsIn({isQuoted ? begin : end, next});
  position_ += static_cast<std::size_t>(next - rest.begin());
  return true;
}

}  // namespace tarvell
