// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/ItemReader.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/Paths.h"
#include "core/text/FileCharacters.h"

/// Compares what the item reader reads with the rule for items, applied here to the whole file at
/// once. The first byte of an input chooses the encoding and how many bytes the disk gives at once;
/// the rest is the file.
namespace tarvell::fuzz {
namespace {

constexpr const char* kPath = "c:\\file";

struct Item {
  std::string bytes;
  std::ptrdiff_t line = 0;
  bool isLast = false;

  bool operator==(const Item&) const = default;
};

/// The line of a position, which does not lie between CR and LF.
std::ptrdiff_t LineAt(std::string bytes, std::size_t position) {
  bytes.resize(position);
  for (std::size_t i = bytes.find("\r\n"); i != std::string::npos; i = bytes.find("\r\n", i)) {
    bytes.erase(i, 1);
  }
  return 1 + std::count(bytes.begin(), bytes.end(), '\n') +
         std::count(bytes.begin(), bytes.end(), '\r');
}

std::vector<Item> ExpectedItems(const std::string& bytes) {
  std::vector<Item> items;
  std::size_t i = 0;
  while (i < bytes.size()) {
    i = std::min(bytes.find_first_not_of(" \t", i), bytes.size());
    Item item;
    item.line = LineAt(bytes, i);
    const bool quoted = bytes.compare(i, 1, "\"") == 0;
    const std::size_t from = quoted ? std::min(bytes.find('"', i + 1), bytes.size()) : i;
    const std::size_t end = std::min(bytes.find_first_of(",\r\n", from), bytes.size());
    if (quoted) {
      item.bytes = bytes.substr(i + 1, from - i - 1);
    } else {
      item.bytes = bytes.substr(i, end - i);
      item.bytes.resize(item.bytes.find_last_not_of(" \t") + 1);
    }
    i = end + (bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    item.isLast = i >= bytes.size();
    items.push_back(item);
  }
  return items;
}

std::vector<Item> ReadItems(std::size_t limit, TextEncoding encoding) {
  ItemReader reader(NativePath(kPath), kPath, encoding);
  std::vector<Item> items;
  while (!reader.AtEnd()) {
    Require(items.size() < limit, "every item takes at least a byte");
    const std::string item = reader.ReadItem();
    const std::ptrdiff_t line = reader.Line();
    items.push_back(
        {encoding == TextEncoding::Utf8 ? item : EncodeFileText(item), line, reader.AtEnd()});
  }
  std::string none;
  Require(!reader.TryReadItem(none), "there is no item after the end");
  Require(!Accepts([&] { static_cast<void>(reader.ReadItem()); }),
          "reading past the end is an error");
  return items;
}

}  // namespace

void Run(Input input) {
  const unsigned choice = input.Byte();
  const TextEncoding encoding =
      (choice & 1U) != 0 ? TextEncoding::Utf8 : TextEncoding::FileCharacters;
  const std::string bytes = input.Rest();

  MemoryPlatform disk;
  disk.readAtMost = 1 + choice / 2;
  disk.Put("file", bytes);
  const std::vector<Item> items = ReadItems(bytes.size(), encoding);
  Require(items == ExpectedItems(bytes), "the items are those of the rule of list input");
  Require(EncodeFileText(DecodeFileText(bytes)) == bytes,
          "every byte is the same after decoding and encoding");
  Require(ItemReader(kPath).AtEnd() == bytes.empty(), "only an empty file is at its end");
}

}  // namespace tarvell::fuzz
