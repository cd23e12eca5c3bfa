// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/OpenedDataSet.h"

#include <cstdint>
#include <optional>

#include "core/caldata/HeaderLines.h"
#include "core/caldata/SetPages.h"
#include "core/dates/DueDate.h"
#include "core/dates/Months.h"
#include "core/files/FileNames.h"
#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Reads the template of a set. Its data are shown where the file of the set lacks them. A template
/// that is refused is reported, and leaves nothing in the data.
void TakeTemplate(const Model& model, OpenedDataSet& opened) {
  try {
    opened.data->SetInitialDefaultData();
  } catch (const Error& error) {
    opened.data = model.create();
    opened.notices.push_back(
        "The template of the model was not used; data that the file lacks are not filled in from "
        "it. " +
        std::string(error.what()));
  }
}

/// Takes the serial number of the list, because the file has none.
void TakeListedSerial(const CalFileInfo& listed, OpenedDataSet& opened) {
  // A list takes the serial number from a fixed place in the file, which may hold another line.
  const std::string serial = BeginsLine(listed.SerialNumber) ? std::string() : listed.SerialNumber;
  opened.data->SetSerialNumber(serial);
  opened.notices.push_back(
      serial.empty() ? "The file has no serial number. Enter that of the instrument: its last five "
                       "characters name the file that is saved."
                     : "The file has no line \"#SER_NO\" with a serial number. The one that the "
                       "list shows, \"" +
                           serial + "\", was taken.");
}

/// Dates the data set as a calibration on the day `today`.
void DateAgain(const FileDate& today, OpenedDataSet& opened) {
  cifCaldata& data = *opened.data;
  FileDate calibrated;
  FileDate due;
  std::string month;
  data.GetCalDate(calibrated.year, month, calibrated.day);
  calibrated.month = MonthToNumber(month);
  data.GetDueDate(due.year, month, due.day);
  due.month = MonthToNumber(month);
  std::optional<FileDate> again = DueAgain(calibrated, due, today);
  if (!again) {
    static constexpr FileDate kDay = {2001, 1, 1};
    again = DueAgain(kDay, OneYearAfter(kDay), today);
    opened.notices.emplace_back(
        "The earlier dates do not say after how long the calibration is due again. The due date is "
        "one year after today; correct it if that is wrong.");
  }
  data.SetCalDate(today.year, NumberToMonth(today.month), today.day);
  data.SetDueDate(again->year, NumberToMonth(again->month), again->day);
}

/// Reads the listed file into `opened`, which may hold the data of the template.
void TakeFile(const CalFileInfo& listed, OpenedDataSet& opened) {
  opened.data->LoadCalibrationDataFromFile(listed.FilePath);
  if (opened.data->HeaderOfLoad().isOldStyle) {
    throw Error(ErrorKind::NotAFile,
                "The file is in the old style, without the header lines of a data file, which this "
                "editor cannot read. It was not opened, and stays as it is. To edit these data, "
                "add new data of the model, enter the serial number and the values from the file, "
                "and save them.",
                listed.FilePath);
  }
}

}  // namespace

OpenedDataSet NewDataSet(const Model& model) {
  OpenedDataSet opened;
  opened.data = model.create();
  opened.data->SetInitialDefaultData();
  opened.notices = opened.data->LoadNotices();
  return opened;
}

OpenedDataSet OpenVersion(const Model& model, const CalFileInfo& listed) {
  OpenedDataSet opened;
  opened.data = model.create();
  TakeFile(listed, opened);
  opened.notices = opened.data->LoadNotices();
  return opened;
}

OpenedDataSet OpenDataSet(const Model& model, const CalFileInfo& listed) {
  OpenedDataSet opened;
  opened.data = model.create();
  if (HasPages(model)) {
    TakeTemplate(model, opened);
  }
  TakeFile(listed, opened);
  const LoadedHeader& header = opened.data->HeaderOfLoad();
  if (!header.hasSerialNumber) {
    TakeListedSerial(listed, opened);
  }
  const std::string& serial = opened.data->SerialNumber();
  const std::string name(LastNameOf(listed.FilePath));
  const bool fits = EqualsIgnoringCase(name, UncheckedDataFileName(serial));
  if (!fits && !serial.empty()) {
    opened.notices.push_back("The serial number that was read, \"" + serial +
                             "\", is not that of the file's name " + name +
                             ". Saving writes the file " + UncheckedDataFileName(serial) + "; " +
                             name + " stays.");
  }
  opened.isNamedBySerial = header.hasSerialNumber || (fits && !serial.empty());
  const std::vector<std::string>& ofLoad = opened.data->LoadNotices();
  opened.notices.insert(opened.notices.end(), ofLoad.begin(), ofLoad.end());
  opened.data->RememberUnchangedSave();
  return opened;
}

OpenedDataSet NewCalibration(const Model& model, const CalFileInfo& listed, const FileDate& today) {
  OpenedDataSet opened = OpenDataSet(model, listed);
  opened.fileValues = Origin::Earlier;
  opened.data->SetCalibrationNumber("");
  DateAgain(today, opened);
  return opened;
}

OpenedDataSet CopyOfDataSet(const Model& model, const CalFileInfo& listed, const FileDate& today) {
  OpenedDataSet opened = NewCalibration(model, listed, today);
  opened.isNamedBySerial = false;
  cifCaldata& data = *opened.data;
  data.LeaveFile();
  data.SetSerialNumber("");
  data.SetComment("");
  // The page that the option hides has a member, too.
  const bool isHidden = model.hasOption && data.GetCalPageSerial(kOptionPage) == kOptionOff;
  if (isHidden) {
    data.SetCalPageSerial(kOptionPage, std::string(kOptionOn));
  }
  for (std::int16_t page = 0; page < data.GetCalPageCount(); ++page) {
    data.SetCalPageSerial(page, "");
  }
  if (isHidden) {
    data.SetCalPageSerial(kOptionPage, std::string(kOptionOff));
  }
  return opened;
}

}  // namespace tarvell
