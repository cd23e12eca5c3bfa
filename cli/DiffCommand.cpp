// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <utility>

#include "cli/Commands.h"
#include "cli/DataFile.h"
#include "cli/TextTable.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell::cli {

namespace {

/// A value that differs. What a file does not have is "".
struct Difference {
  std::string place;
  std::string first;
  std::string second;
};
using Differences = std::vector<Difference>;

/// Whether two texts are the same text or the same number.
bool IsSameValue(const std::string& a, const std::string& b) {
  if (a == b) {
    return true;
  }
  const std::optional<double> first = ParseNumber(a);
  return first && first == ParseNumber(b);
}

/// The rows of a page by what they are for: by the first column, in an attenuator's table by the
/// first two. A row that comes again is a row of its own.
using KeyedRows = std::map<std::pair<std::string, int>, const std::vector<std::string>*>;

KeyedRows RowsByKey(const PageTexts& page, std::size_t keyColumns) {
  KeyedRows rows;
  for (const std::vector<std::string>& row : page.rows) {
    std::string key;
    for (std::size_t column = 0; column < std::min(keyColumns, row.size()); ++column) {
      const std::optional<double> number = ParseNumber(row[column]);
      key += (column == 0 ? "" : ", ") + (number ? Normalised(row[column]) : row[column]);
    }
    int again = 0;
    while (!rows.emplace(std::pair(key, again), &row).second) {
      ++again;
    }
  }
  return rows;
}

std::string JoinedCells(const std::vector<std::string>& row) {
  std::string text;
  for (const std::string& cell : row) {
    text += (text.empty() ? "" : " | ") + std::string(Trim(cell));
  }
  return text;
}

void CompareRows(const PageTexts& page, const std::string& place,
                 const std::vector<std::string>& first, const std::vector<std::string>& second,
                 Differences& differences) {
  for (std::size_t column = 0; column < std::max(first.size(), second.size()); ++column) {
    const auto cell = [column](const std::vector<std::string>& row) {
      return column < row.size() ? row[column] : std::string();
    };
    if (!IsSameValue(cell(first), cell(second))) {
      const std::string caption =
          column < page.captions.size() ? page.captions[column] : std::string();
      differences.push_back({place + ", " + caption, cell(first), cell(second)});
    }
  }
}

void ComparePages(const PageTexts& first, const PageTexts& second, std::size_t keyColumns,
                  Differences& differences) {
  const std::string page = first.name.empty() ? std::string() : first.name + ", ";
  if (first.serialNumber != second.serialNumber) {
    differences.push_back({page + "Serial number", first.serialNumber, second.serialNumber});
  }
  const KeyedRows rows = RowsByKey(first, keyColumns);
  const KeyedRows others = RowsByKey(second, keyColumns);
  for (const auto& [key, row] : rows) {
    const auto other = others.find(key);
    if (other == others.end()) {
      differences.push_back({page + key.first, JoinedCells(*row), ""});
    } else {
      CompareRows(first, page + key.first, *row, *other->second, differences);
    }
  }
  for (const auto& [key, row] : others) {
    if (!rows.contains(key)) {
      differences.push_back({page + key.first, "", JoinedCells(*row)});
    }
  }
}

Differences Compared(const DataFile& first, const DataFile& second) {
  Differences differences;
  const std::vector<NamedValue> fields = HeaderValues(first.header);
  const std::vector<NamedValue> others = HeaderValues(second.header);
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (fields[i].value != others[i].value) {
      differences.push_back({fields[i].name, fields[i].value, others[i].value});
    }
  }
  const std::vector<PageTexts> pages = PagesOf(*first.data);
  const std::vector<PageTexts> otherPages = PagesOf(*second.data);
  const std::size_t keyColumns = first.model->family == ModelFamily::StepAttenuator ? 2 : 1;
  for (std::size_t i = 0; i < std::max(pages.size(), otherPages.size()); ++i) {
    // The page of an option may be in only one of the files.
    ComparePages(i < pages.size() ? pages[i] : PageTexts{otherPages[i].name, "", {}, {}},
                 i < otherPages.size() ? otherPages[i] : PageTexts{pages[i].name, "", {}, {}},
                 keyColumns, differences);
  }
  return differences;
}

std::string TextOf(const Options& options, const Differences& differences) {
  if (!options.isJson) {
    TextTable table;
    for (const Difference& it : differences) {
      table.Add({it.place, std::string(TextOrNone(it.first)), std::string(TextOrNone(it.second))});
    }
    return table.Text();
  }
  using Json = nlohmann::ordered_json;
  Json json = {{"format", "tarvell-diff"}, {"version", 1}, {"differences", Json::array()}};
  for (const Difference& it : differences) {
    json["differences"].push_back(
        {{"place", it.place}, {"first", it.first}, {"second", it.second}});
  }
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

Differences ComparedBytes(const std::string& first, const std::string& second) {
  const auto [a, b] = std::mismatch(first.begin(), first.end(), second.begin(), second.end());
  if (a == first.end() && b == second.end()) {
    return {};
  }
  const auto line = std::count(first.begin(), a, '\n') + 1;
  const auto textOf = [](auto from, auto end) {
    return from == end ? std::string("end of the file")
                       : std::to_string(static_cast<unsigned char>(*from));
  };
  return {{"Byte " + std::to_string(a - first.begin() + 1) + ", line " + std::to_string(line),
           textOf(a, first.end()), textOf(b, second.end())}};
}

}  // namespace

int Diff(const Options& options, const std::string& first, const std::string& second,
         bool comparesBytes, Console& console) {
  const std::string bytes = ReadBytes(first);
  const std::string others = ReadBytes(second);
  Differences differences;
  if (comparesBytes) {
    differences = ComparedBytes(bytes, others);
  } else {
    const DataFile a = ReadDataFile(bytes, first);
    const DataFile b = ReadDataFile(others, second);
    if (!a.data || !b.data || a.model != b.model) {
      throw Error(ErrorKind::NotAFile,
                  "The values of these files cannot be compared: the program has to know the "
                  "format of both, and both have to be of one model. Compare their bytes "
                  "(--bytes).");
    }
    differences = Compared(a, b);
  }
  if (!options.isQuiet) {
    console.Out(TextOf(options, differences));
  }
  return differences.empty() ? kClean : kFindings;
}

}  // namespace tarvell::cli
