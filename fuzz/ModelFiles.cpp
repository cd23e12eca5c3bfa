// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <deque>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "FuzzTarget.h"
#include "MemoryPlatform.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/Models.h"

/// The data file of every model. The first byte of an input chooses the model; the rest is a file
/// that is loaded, saved, loaded, saved, loaded and saved.
///
/// The first and the second saved file are the same, except for lines of which the program is known
/// to keep less than their text:
/// - every model: a comment with a comma (an item ends there), and a date that is not eight digits
///   (it is split by position);
/// - power sensors: a row without a factor (the constant after it moves into its place);
/// - sets: a value that rounds to zero loses its "-"; a text of six or more characters in per cent
///   is read as ppm; RT520A has no pattern in per cent for a ninth row, so that the words after the
///   empty cell move up. A dissipation factor that is too large for an uncertainty may then make
///   the file unreadable.
/// The second and the third saved file are the same, except for such a date.
namespace tarvell::fuzz {
namespace {

constexpr const char* kPath = "c:\\data\\SN00001";
constexpr std::size_t kHeaderLines = 6;

std::vector<std::string> LinesOf(const std::string& bytes) {
  std::vector<std::string> lines;
  for (std::size_t start = 0; start < bytes.size();) {
    const std::size_t end = bytes.find("\r\n", start);
    Require(end != std::string::npos, "a saved file ends with a line end");
    lines.push_back(bytes.substr(start, end - start));
    start = end + 2;
  }
  return lines;
}

/// The fields of a data line, without its "*".
std::vector<std::string> FieldsOf(const std::string& line) {
  std::vector<std::string> fields;
  std::istringstream rest(line.substr(1) + ":");
  for (std::string field; std::getline(rest, field, ':');) {
    fields.push_back(Stripped(field));
  }
  return fields;
}

bool IsMinusZero(const std::string& field) {
  const std::string number = field.substr(0, field.find_first_not_of("-.0123456789"));
  return number.size() > 1 && number.front() == '-' &&
         number.find_first_of("123456789") == std::string::npos;
}

/// The column of a page's relative uncertainty, -1 where it has none.
int RelativeColumn(const Model& model, int page) {
  if (model.family == ModelFamily::CapacitorSet) {
    return 2;
  }
  return page == 0 ? 3 : page == 1 ? -1 : 2;
}

/// Whether the program keeps less than the text of a set's data line. `cell` is the relative
/// uncertainty that the line was written from.
bool LosesText(const std::vector<std::string>& fields, int column, const std::string& cell) {
  if (std::any_of(fields.begin(), fields.end(), IsMinusZero)) {
    return true;
  }
  if (column < 0 || cell.empty() || cell.back() != '%') {
    return false;
  }
  std::string number = fields.at(static_cast<std::size_t>(column));
  number = Stripped(number.substr(0, number.find('%')));
  return number.empty() || number.size() >= 6;
}

/// Whether a row of a saved file has an empty uncertainty, so that the words after it move up.
bool HasGap(const Model& model, const std::vector<std::string>& lines) {
  return model.family == ModelFamily::CapacitorSet &&
         std::any_of(lines.begin(), lines.end(), [](const std::string& line) {
           return line[0] == '*' && FieldsOf(line).at(2).empty();
         });
}

std::unique_ptr<cifCaldata> Loaded(const Model& model) {
  std::unique_ptr<cifCaldata> data = model.create();
  data->LoadCalibrationDataFromFile(kPath);
  // As the editors do.
  data->SetModelNumber(std::string(model.code));
  return data;
}

/// Fills the empty header values, so that one that is never read back is noticed.
void FillHeader(cifCaldata& data) {
  const auto filled = [](const std::string& value, const char* fallback) {
    return value.empty() ? fallback : value;
  };
  data.SetSerialNumber(filled(data.SerialNumber(), "3318A12345"));
  data.SetCalibrationNumber(filled(data.CalibrationNumber(), "C-0042"));
  data.SetComment(filled(data.Comment(), "factory"));
}

std::string Saved(MemoryPlatform& disk, cifCaldata& data) {
  data.SaveCalibrationDataToFile(kPath);
  return *disk.Find("data/SN00001");
}

std::deque<MemoryGrid> GridsOf(const Model& model, const cifCaldata& data) {
  std::deque<MemoryGrid> grids;
  const auto pages = static_cast<std::size_t>(data.GetCalPageCount());
  for (std::size_t page = 0; page < pages; ++page) {
    grids.emplace_back(static_cast<std::int16_t>(HasPages(model) ? 5 : 2));
    data.GetCalData(static_cast<std::int16_t>(page), grids.back());
  }
  return grids;
}

/// Showing every page in an editor and storing it unchanged changes nothing.
void CheckEditing(MemoryPlatform& disk, cifCaldata& data, const std::deque<MemoryGrid>& grids,
                  const std::string& saved) {
  for (std::size_t page = 0; page < grids.size(); ++page) {
    const auto number = static_cast<std::int16_t>(page);
    data.SetCalData(number, grids[page]);
    data.SetCalPageSerial(number, data.GetCalPageSerial(number));
  }
  Require(Saved(disk, data) == saved, "showing and storing every page changes nothing", saved);
}

/// The header lines of a saved file that must come back.
void CheckHeader(const std::vector<std::string>& saved, const std::vector<std::string>& again) {
  for (std::size_t i = 0; i < kHeaderLines; ++i) {
    const std::string value = saved[i].substr(12);
    const bool isDate = i == 2 || i == 4;
    if (isDate ? value.size() == 8 : value.find(',') == std::string::npos) {
      Require(saved[i] == again[i], "a header line is read back", saved[i] + "\n" + again[i]);
    }
  }
}

void CheckBody(const Model& model, const std::deque<MemoryGrid>& grids,
               const std::vector<std::string>& first, const std::vector<std::string>& second) {
  std::size_t page = 0;
  std::int16_t row = 1;
  for (std::size_t i = kHeaderLines; i < first.size(); ++i) {
    bool isKept = true;
    if (first[i] == "!END") {
      ++page;
      row = 1;
    } else if (first[i][0] == '*') {
      const std::vector<std::string> fields = FieldsOf(first[i]);
      if (HasPages(model)) {
        const int column = RelativeColumn(model, static_cast<int>(page));
        const std::string cell =
            column < 0 ? "" : grids.at(page).CellText(row, static_cast<std::int16_t>(column));
        isKept = !LosesText(fields, column, cell);
      } else if (model.family == ModelFamily::PowerSensor) {
        isKept = !fields.at(1).empty();
      }
      ++row;
    }
    Require(!isKept || first[i] == second[i], "a line is read back", first[i] + "\n" + second[i]);
  }
}

}  // namespace

void Run(Input input) {
  // The first two models are kits, which are not edited.
  const Model& model = kModels[2 + input.Byte() % (kModels.size() - 2)];

  MemoryPlatform disk;
  disk.Put("data/SN00001", input.Rest());
  std::unique_ptr<cifCaldata> data;
  std::string first;
  if (!Accepts([&] {
        data = Loaded(model);
        FillHeader(*data);
        first = Saved(disk, *data);
      })) {
    return;
  }
  const std::deque<MemoryGrid> grids = GridsOf(model, *data);
  CheckEditing(disk, *data, grids, first);

  const std::vector<std::string> firstLines = LinesOf(first);
  if (HasGap(model, firstLines) && !Accepts([&] { static_cast<void>(Loaded(model)); })) {
    return;
  }
  const std::string second = Saved(disk, *Loaded(model));
  const std::string third = Saved(disk, *Loaded(model));
  const std::vector<std::string> secondLines = LinesOf(second);
  const std::vector<std::string> thirdLines = LinesOf(third);
  Require(firstLines.size() == secondLines.size(), "every line is read back",
          first + "\n" + second);
  CheckHeader(firstLines, secondLines);
  CheckBody(model, grids, firstLines, secondLines);
  CheckHeader(secondLines, thirdLines);
  Require(std::equal(secondLines.begin() + kHeaderLines, secondLines.end(),
                     thirdLines.begin() + kHeaderLines, thirdLines.end()),
          "the second and third saved tables are the same", second + "\n" + third);
}

}  // namespace tarvell::fuzz
