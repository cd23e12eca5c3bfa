// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/OpenedDataSet.h"

#include <string_view>

#include "core/files/Paths.h"
#include "core/platform/Error.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

constexpr std::size_t kNameCharacters = 5;

/// The name of the file that a save would write, whether or not it is a valid one.
std::string NameBySerial(std::string_view serial) {
  return "SN" + std::string(LastCharacters(serial, kNameCharacters));
}

/// Fills in the template below a set. One that is refused is reported, and leaves nothing.
void TakeTemplate(const Model& model, OpenedDataSet& opened) {
  try {
    opened.data->SetInitialDefaultData();
  } catch (const Error& error) {
    opened.data = model.create();
    opened.notices.push_back(
        "The template of the model was not used; nothing that the file lacks is filled in from "
        "it. " +
        std::string(error.what()));
  }
}

/// Sees to a serial number where the file has none.
void TakeListedSerial(const CalFileInfo& listed, OpenedDataSet& opened) {
  // A list reads it by its place in the file, where another line may stand.
  const bool isLine =
      !listed.SerialNumber.empty() &&
      std::string_view("#*!").find(listed.SerialNumber.front()) != std::string_view::npos;
  const std::string serial = isLine ? std::string() : listed.SerialNumber;
  opened.data->SetSerialNumber(serial);
  opened.notices.push_back(
      serial.empty() ? "The file has no serial number. Enter that of the instrument: its last five "
                       "characters name the file that is saved."
                     : "The file has no line \"#SER_NO\" with a serial number. The one that the "
                       "list shows, \"" +
                           serial + "\", was taken.");
}

}  // namespace

OpenedDataSet NewDataSet(const Model& model) {
  OpenedDataSet opened;
  opened.data = model.create();
  opened.data->SetInitialDefaultData();
  opened.notices = opened.data->LoadNotices();
  return opened;
}

OpenedDataSet OpenDataSet(const Model& model, const CalFileInfo& listed) {
  OpenedDataSet opened;
  opened.data = model.create();
  if (HasPages(model)) {
    TakeTemplate(model, opened);
  }
  opened.data->LoadCalibrationDataFromFile(listed.FilePath);
  const HeaderSeen& header = opened.data->LoadedHeader();
  if (header.isOldStyle) {
    throw Error(ErrorKind::NotAFile,
                "The file is in the old style, without the header lines of a data file, which this "
                "editor cannot read. It was not opened, and stays as it is. To edit these data, "
                "add new data of the model, enter the serial number and the values from the file, "
                "and save them.",
                listed.FilePath);
  }
  if (!header.hasSerialNumber) {
    TakeListedSerial(listed, opened);
  }
  const std::string& serial = opened.data->SerialNumber();
  const std::string name(LastNameOf(listed.FilePath));
  const bool fits = EqualsIgnoringCase(name, NameBySerial(serial));
  if (!fits && !serial.empty()) {
    opened.notices.push_back(
        "The serial number that was read, \"" + serial + "\", is not that of the file's name " +
        name + ". Saving writes the file " + NameBySerial(serial) + "; " + name + " stays.");
  }
  opened.isNamedBySerial = header.hasSerialNumber || (fits && !serial.empty());
  const std::vector<std::string>& met = opened.data->LoadNotices();
  opened.notices.insert(opened.notices.end(), met.begin(), met.end());
  opened.data->RememberUnchangedSave();
  return opened;
}

}  // namespace tarvell
