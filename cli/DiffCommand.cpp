// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <limits>
#include <map>
#include <nlohmann/json.hpp>
#include <optional>
#include <tuple>
#include <utility>

#include "cli/Commands.h"
#include "cli/DataFile.h"
#include "cli/TextTable.h"
#include "core/caldata/Uncertainty.h"
#include "core/numbers/Numbers.h"
#include "core/platform/Error.h"
#include "core/platform/ProgramPath.h"
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

/// The number of an uncertainty in ppm; nothing for a text that is not one.
std::optional<double> PpmOf(std::string_view cell) {
  const auto [number, unit] = SplitUncertainty(Trim(cell), "m");
  if (unit != kPpm && unit != kPercent) {
    return std::nullopt;
  }
  const std::optional<double> value = ParseNumber(Trim(number));
  return value && unit == kPercent ? std::optional(PpmOfPercent(*value)) : value;
}

/// Whether two texts are the same text, the same number or the same uncertainty.
bool IsSameValue(const std::string& a, const std::string& b) {
  if (a == b) {
    return true;
  }
  const std::optional<double> first = ParseNumber(a);
  const std::optional<double> ppm = PpmOf(a);
  return (first && first == ParseNumber(b)) || (ppm && ppm == PpmOf(b));
}

/// What a row is for: its first cell, in an attenuator's table its first two. Numbers come in their
/// order, before texts.
struct RowKey {
  std::vector<std::pair<double, std::string>> cells;
  int again = 0;  ///< a row that comes again is a row of its own

  bool operator<(const RowKey& other) const {
    return std::tie(cells, again) < std::tie(other.cells, other.again);
  }
};

std::string TextOf(const RowKey& key) {
  std::string text;
  for (const auto& [number, cell] : key.cells) {
    text += (text.empty() ? "" : ", ") + cell;
  }
  return text;
}

using KeyedRows = std::map<RowKey, const std::vector<std::string>*>;

KeyedRows RowsByKey(const PageTexts& page, std::size_t keyColumns) {
  KeyedRows rows;
  for (const std::vector<std::string>& row : page.rows) {
    RowKey key;
    for (std::size_t column = 0; column < std::min(keyColumns, row.size()); ++column) {
      const std::string& cell = row[column];
      const std::optional<double> number = ParseNumber(cell);
      key.cells.emplace_back(number.value_or(std::numeric_limits<double>::infinity()),
                             number ? Normalised(cell) : cell);
    }
    while (!rows.emplace(key, &row).second) {
      ++key.again;
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

bool IsBlank(const std::vector<std::string>& row) {
  return std::ranges::all_of(row, [](const std::string& cell) { return Trim(cell).empty(); });
}

/// What is said of a page that the other file lacks; "" for one without rows.
std::string TextOfPage(const PageTexts& page) {
  const auto rows =
      page.rows.size() - static_cast<std::size_t>(std::ranges::count_if(page.rows, &IsBlank));
  const std::string serial =
      page.serialNumber.empty() ? std::string() : "serial number " + page.serialNumber + ", ";
  return rows == 0 ? "" : serial + std::to_string(rows) + (rows == 1 ? " row" : " rows");
}

void CompareTables(const PageTexts& first, const PageTexts& second, const std::string& page,
                   std::size_t keyColumns, Differences& differences) {
  const KeyedRows rows = RowsByKey(first, keyColumns);
  const KeyedRows others = RowsByKey(second, keyColumns);
  KeyedRows all = rows;
  all.insert(others.begin(), others.end());
  for (const auto& [key, any] : all) {
    const std::string place = page + TextOf(key);
    const auto row = rows.find(key);
    const auto other = others.find(key);
    if (row == rows.end()) {
      differences.push_back({place, "", JoinedCells(*any)});
    } else if (other == others.end()) {
      differences.push_back({place, JoinedCells(*any), ""});
    } else {
      CompareRows(first, place, *row->second, *other->second, differences);
    }
  }
}

void ComparePages(const PageTexts& first, const PageTexts& second, std::size_t keyColumns,
                  Differences& differences) {
  const std::string text = TextOfPage(first);
  const std::string other = TextOfPage(second);
  if (text.empty() != other.empty()) {
    differences.push_back({first.name.empty() ? "Table" : first.name, text, other});
    return;
  }
  const std::string page = first.name.empty() ? std::string() : first.name + ", ";
  if (first.serialNumber != second.serialNumber) {
    differences.push_back({page + "Serial number", first.serialNumber, second.serialNumber});
  }
  CompareTables(first, second, page, keyColumns, differences);
}

Differences Compared(const DataFile& first, const DataFile& second) {
  Differences differences;
  const std::vector<NamedValue> fields = HeaderValues(first);
  const std::vector<NamedValue> others = HeaderValues(second);
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

/// A value of a file that was cut off may be that of the template.
void ReportNotices(const DataFile& file, const std::string& path, Console& console) {
  for (const std::string& notice : file.data->LoadNotices()) {
    console.Err("tarvell-cli: " + WithoutControls(ShownPath(path)) + ": " +
                WithoutControls(notice) + "\n");
  }
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
    if (!options.isQuiet) {
      ReportNotices(a, first, console);
      ReportNotices(b, second, console);
    }
  }
  if (!options.isQuiet) {
    console.Out(TextOf(options, differences));
  }
  return differences.empty() ? kClean : kFindings;
}

}  // namespace tarvell::cli
