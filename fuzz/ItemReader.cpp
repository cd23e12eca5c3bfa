// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/files/ItemReader.h"

#include <algorithm>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/text/FileCharacters.h"

/// The item reader against the rule of list input on the whole bytes. The first byte of an input
/// chooses the encoding and how many bytes the disk gives at once; the rest is the file.
namespace tarvell::fuzz {
namespace {

constexpr const char* kPath = "c:\\file";

struct Item {
  std::string bytes;
  int line = 0;
  bool isLast = false;

  bool operator==(const Item&) const = default;
};

int LineAt(const std::string& bytes, std::size_t position) {
  int line = 1;
  for (std::size_t i = 0; i < position; ++i) {
    const bool isCrOfCrLf = bytes[i] == '\r' && i + 1 < bytes.size() && bytes[i + 1] == '\n';
    line += bytes[i] == '\n' || (bytes[i] == '\r' && !isCrOfCrLf) ? 1 : 0;
  }
  return line;
}

std::vector<Item> ExpectedItems(const std::string& bytes) {
  std::vector<Item> items;
  std::size_t i = 0;
  while (i < bytes.size()) {
    i = std::min(bytes.find_first_not_of(" \t", i), bytes.size());
    Item item;
    item.line = LineAt(bytes, i);
    const bool quoted = i < bytes.size() && bytes[i] == '"';
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

std::string BytesOf(const std::string& item, TextEncoding encoding) {
  return encoding == TextEncoding::Utf8 ? item : EncodeFileText(item);
}

std::vector<Item> ReadItems(std::size_t limit, TextEncoding encoding) {
  ItemReader reader(NativePath(kPath), kPath, encoding);
  std::vector<Item> items;
  while (!reader.AtEnd()) {
    Require(items.size() < limit, "every item takes at least a byte");
    const std::string item = reader.ReadItem();
    const int line = reader.Line();
    items.push_back({BytesOf(item, encoding), line, reader.AtEnd()});
  }
  std::string none;
  Require(!reader.TryReadItem(none), "no item stands behind the end");
  Require(!Accepts([&] { static_cast<void>(reader.ReadItem()); }),
          "reading past the end is an error");
  return items;
}

/// The items, each in a line of its own that reads back as it.
std::string FileOf(const std::vector<Item>& items) {
  std::string bytes;
  for (const Item& item : items) {
    // What holds a quote was not quoted, so that it stands for itself.
    const bool quoted = item.bytes.find('"') == std::string::npos;
    bytes += (quoted ? "\"" + item.bytes + "\"" : item.bytes) + "\r\n";
  }
  return bytes;
}

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

  const std::string rewritten = FileOf(items);
  disk.Put("file", rewritten);
  const std::vector<Item> again = ReadItems(rewritten.size(), encoding);
  Require(again.size() == items.size(), "as many items come back as were written");
  for (std::size_t i = 0; i < items.size(); ++i) {
    Require(again[i].bytes == items[i].bytes, "an item that is written comes back");
  }
  Require(EncodeFileText(DecodeFileText(bytes)) == bytes, "every byte comes back as it was");

  // Opened by its path text it is the same file.
  Require(ItemReader(kPath).AtEnd() == rewritten.empty(), "only an empty file is at its end");
}

}  // namespace
}  // namespace tarvell::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvell::fuzz::Run({data, size});
  return 0;
}
