// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/EarlierCalibration.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <system_error>
#include <unordered_map>
#include <utility>

#include "core/caldata/CalFileList.h"
#include "core/caldata/MemoryGrid.h"
#include "core/caldata/OpenedDataSet.h"
#include "core/caldata/TableRows.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Takes what the lists would show of a file with this content.
void TakeHeader(const std::string& bytes, Calibration& calibration) {
  calibration.isRead = true;
  try {
    if (std::optional<CalFileInfo> header = CalFileHeaderIn(bytes, calibration.header.FilePath)) {
      calibration.header = *std::move(header);
      calibration.hasHeader = bytes.starts_with('#');
    }
  } catch (const Error&) {
    // It is listed without a header: whoever opens it sees what is wrong with it.
  }
}

/// Reads the headers of the versions in their folder: one visit takes less time than finding each
/// file by its path.
void ReadHeadersIn(const std::filesystem::path& folder, std::vector<Calibration>& calibrations) {
  std::unordered_map<std::string_view, Calibration*> named;
  for (Calibration& each : calibrations) {
    if (!each.isRead) {
      named.emplace(each.event.kept, &each);
    }
  }
  std::string bytes;
  // Whoever has listed the history has reported a folder that cannot be read.
  static_cast<void>(
      CurrentPlatform().Search(folder, SearchKind::EveryName, [&](const FoundEntry& entry) {
        const auto found = named.find(entry.name);
        std::unique_ptr<InputFile> file;
        if (found != named.end() && !CurrentPlatform().OpenFound(entry, file) &&
            !ReadBeginning(*file, bytes)) {
          TakeHeader(bytes, *found->second);
        }
        return true;
      }));
}

ReadablePage TableOf(const Model& model, const cifCaldata& data, std::int16_t page) {
  MemoryGrid grid(kTableColumns);
  data.GetCalData(page, grid);
  TableRowList rows = grid.Rows();
  // A table may use fewer columns, and only those have captions.
  const auto unused = std::ranges::find(rows.front(), std::string());
  const auto columns = static_cast<std::size_t>(unused - rows.front().begin());
  for (TableRow& row : rows) {
    row.resize(std::min(row.size(), columns));
  }
  const bool hasSetting = model.family == ModelFamily::StepAttenuator;
  return {data.GetCalPageName(page), std::move(rows), hasSetting ? std::size_t{2} : std::size_t{1}};
}

ReadablePage LinesOf(const std::string& path) {
  std::string bytes;
  const std::error_code code = ReadNativeFile(NativePath(path), bytes, kDataFileLimit);
  if (code && code != kTooLargeForData) {
    throw SystemError(code, "read the version", path);
  }
  ReadablePage page;
  page.rows = {{"Line"}};
  const std::string text = DecodeFileText(bytes);
  std::string_view rest = text;
  while (!rest.empty()) {
    page.rows.push_back({std::string(TakeLine(rest))});
  }
  return page;
}

}  // namespace

std::vector<Calibration> EveryCalibrationOf(const std::string& path) {
  std::vector<Calibration> calibrations = CalibrationsIn(HistoryOf(path), path);
  ReadHeadersIn(HistoryPlaceOf(path).Versions(), calibrations);
  // Those that were not found have none.
  std::ranges::for_each(calibrations, &ReadHeader);
  return calibrations;
}

void ReadHeader(Calibration& calibration) {
  if (calibration.isRead) {
    return;
  }
  std::string bytes;
  std::unique_ptr<InputFile> file;
  const std::filesystem::path native = NativePath(calibration.header.FilePath);
  if (CurrentPlatform().OpenForReading(native, file) || ReadBeginning(*file, bytes)) {
    // It is listed as one that has no header; its state says why.
    bytes.clear();
  }
  TakeHeader(bytes, calibration);
}

std::vector<Calibration> CalibrationsIn(FileHistory history, const std::string& path) {
  std::vector<Calibration> calibrations;
  calibrations.reserve(history.versions.size() + 1);
  if (history.current) {
    calibrations.push_back({.isCurrent = true, .event = std::move(history.written)});
    calibrations.back().header.FilePath = path;
    TakeHeader(*history.current, calibrations.back());
  }
  for (KeptVersion& version : history.versions) {
    calibrations.push_back({.event = std::move(version.event), .wasSaved = version.wasSaved});
    calibrations.back().header.FilePath = std::move(version.path);
  }
  return calibrations;
}

std::vector<Calibration> CalibrationsOf(const std::string& path, std::string& problem) {
  std::vector<Calibration> calibrations;
  try {
    calibrations = EveryCalibrationOf(path);
  } catch (const Error& error) {
    // The data set can be edited without its history.
    problem = error.what();
    FileHistory history;
    history.current.emplace();
    static_cast<void>(ReadNativeFile(NativePath(path), *history.current, kDataFileLimit));
    calibrations = CalibrationsIn(std::move(history), path);
  }
  std::erase_if(calibrations, [](const Calibration& each) { return !each.hasHeader; });
  return calibrations;
}

std::unique_ptr<cifCaldata> LoadCalibration(const Model& model, const Calibration& calibration) {
  try {
    return OpenVersion(model, calibration.header).data;
  } catch (const Error&) {
    // Nothing can be compared with such data; the screen of the history says what is wrong.
    return nullptr;
  }
}

const Calibration* EarlierCalibration(const std::vector<Calibration>& calibrations,
                                      const FileDate& date) {
  const auto found = std::ranges::find_if(
      calibrations, [&](const Calibration& each) { return each.Calibrated() != date; });
  return found == calibrations.end() ? nullptr : &*found;
}

std::unique_ptr<cifCaldata> LoadEarlier(const Model& model,
                                        const std::vector<KeptVersion>& versions,
                                        const FileDate& date) {
  for (const KeptVersion& version : versions) {
    Calibration calibration;
    calibration.header.FilePath = version.path;
    ReadHeader(calibration);
    if (calibration.hasHeader && calibration.Calibrated() != date) {
      return LoadCalibration(model, calibration);
    }
  }
  return nullptr;
}

ReadableData Readable(const Model* model, const Calibration& calibration) {
  ReadableData readable;
  if (model != nullptr && model->create != nullptr) {
    try {
      const OpenedDataSet opened = OpenVersion(*model, calibration.header);
      for (std::int16_t page = 0; page < opened.data->GetCalPageCount(); ++page) {
        readable.pages.push_back(TableOf(*model, *opened.data, page));
      }
      for (const std::string& notice : opened.notices) {
        readable.notice += (readable.notice.empty() ? "" : " ") + notice;
      }
      return readable;
    } catch (const Error& error) {
      readable.isLines = true;
      readable.notice = "The lines of the file are shown. " + error.Text();
    }
  }
  readable.pages = {LinesOf(calibration.header.FilePath)};
  return readable;
}

}  // namespace tarvell
