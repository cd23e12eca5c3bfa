// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/ItemReader.h"

#include <algorithm>
#include <utility>

#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/text/FileCharacters.h"

namespace tarvell {

namespace {

// More than any file that the program writes, so that one is read at once.
constexpr std::size_t kBlockSize = 16384;

constexpr const char* kReading = "read the file";

bool IsBlank(int c) {
  return c == ' ' || c == '\t';
}

bool EndsItem(int c) {
  return c == ',' || c == '\r' || c == '\n';
}

}  // namespace

ItemReader::ItemReader(const std::filesystem::path& native, std::string shown)
    : path_(std::move(shown)) {
  if (const std::error_code code = Open(native)) {
    throw SystemError(code, kReading, path_);
  }
}

ItemReader::ItemReader(std::string_view path) : ItemReader(NativePath(path), std::string(path)) {}

ItemReader ItemReader::Of(std::string_view bytes) {
  ItemReader reader;
  reader.block_.assign(bytes.begin(), bytes.end());
  reader.filled_ = bytes.size();
  return reader;
}

std::error_code ItemReader::Open(const std::filesystem::path& native, TextEncoding encoding) {
  encoding_ = encoding;
  return CurrentPlatform().OpenForReading(native, EntryKind::None, file_);
}

bool ItemReader::AtEnd() {
  const bool end = Peek() == kEnd;
  if (failure_) {
    throw SystemError(failure_, kReading, path_).Located(path_, line_);
  }
  return end;
}

std::string ItemReader::ReadItem() {
  std::string item;
  const bool found = Next(item);
  if (failure_) {
    throw SystemError(failure_, kReading, path_);
  }
  if (!found) {
    throw Error(ErrorKind::InputPastEnd,
                "The file ends too early: more lines were expected (input past end of file). "
                "Check the file, or replace it by a complete one.",
                path_, line_);
  }
  return item;
}

bool ItemReader::TryReadItem(std::string& item) {
  item.clear();
  return Next(item) && !failure_;
}

bool ItemReader::Next(std::string& item) {
  if (Peek() == kEnd) {
    return false;
  }
  while (IsBlank(Peek())) {
    Take();
  }
  itemLine_ = line_;
  if (Peek() == '"') {
    ReadQuoted(item);
  } else {
    ReadUnquoted(item);
  }
  SkipLineEndOrComma();
  return true;
}

void ItemReader::ReadQuoted(std::string& item) {
  Take();
  while (Peek() != kEnd && Peek() != '"') {
    const auto byte = static_cast<char>(Take());
    Append(item, {&byte, 1});
  }
  while (Peek() != kEnd && !EndsItem(Peek())) {
    Take();
  }
}

void ItemReader::ReadUnquoted(std::string& item) {
  bool ended = false;
  while (!ended && Peek() != kEnd) {
    // As much at once as is there.
    const std::string_view ahead(&block_[position_], filled_ - position_);
    const auto* end = std::find_if(ahead.begin(), ahead.end(), EndsItem);
    const auto length = static_cast<std::size_t>(end - ahead.begin());
    ended = length < ahead.size();
    Append(item, ahead.substr(0, length));
    Pass(length);
  }
  item.resize(item.find_last_not_of(" \t") + 1);
}

void ItemReader::SkipLineEndOrComma() {
  if (Take() == '\r' && Peek() == '\n') {
    Take();
  }
}

void ItemReader::Append(std::string& item, std::string_view bytes) const {
  if (encoding_ == TextEncoding::FileCharacters) {
    AppendDecoded(item, bytes);
  } else {
    item += bytes;
  }
}

int ItemReader::Peek() {
  if (position_ == filled_) {
    Fill();
  }
  return position_ == filled_ ? kEnd : static_cast<unsigned char>(block_[position_]);
}

void ItemReader::Pass(std::size_t count) {
  position_ += count;
}

int ItemReader::Take() {
  const int byte = Peek();
  if (byte != kEnd) {
    Pass(1);
  }
  // A CR LF counts once, at its LF.
  if (byte == '\n' || (byte == '\r' && Peek() != '\n')) {
    ++line_;
  }
  return byte;
}

void ItemReader::Fill() {
  if (!file_ || readWhole_ || failure_) {
    return;
  }
  block_.resize(kBlockSize);
  position_ = 0;
  failure_ = file_->Read(block_.data(), block_.size(), filled_);
  readWhole_ = filled_ == 0;
  bytesRead_ += filled_;
  if (bytesRead_ > kMostDataFileBytes) {
    failure_ = std::make_error_code(kTooLargeForData);
    filled_ = 0;
  }
  if (stamp_ != nullptr) {
    stamp_->Append({block_.data(), filled_});
  }
}

}  // namespace tarvell
