// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_STATION_STATIONFILES_H
#define TARVELL_CORE_STATION_STATIONFILES_H

#include <string>
#include <string_view>
#include <vector>

#include "core/files/Replacement.h"
#include "core/files/StoredFile.h"

/// The files of the stations: one folder per station below the station data root, one keyword
/// file per instrument in it, and the INDEX files of the root and of each station.
namespace tarvell {

inline constexpr std::string_view kIndexName = "INDEX";

/// What a station file holds of one instrument; all free text but for the due date's checks.
struct StationInstrument {
  std::string ModelNumber;  ///< also the name of the file
  std::string SerialNumber;
  std::string AddressType;  ///< "GP-IB", "GPIO", "SERIAL", "NONE" or free text
  std::string Address;
  std::string Station;
  std::string Options;
  std::string Availability;
  std::string DueDay;
  std::string DueMonth;  ///< "JAN" to "DEC"
  std::string DueYear;
  std::string Asset;
  std::string Trace;
  std::string Comment;
  std::string CalData;
};

/// A line taken apart: "CAL DUE DATE 5 MAR 2002" has the keyword "CAL DUE DATE" and the value
/// "5 MAR 2002". Runs of blanks in a value are one blank; words behind the 30th are lost.
struct KeywordLine {
  std::string keyword;
  std::string value;
};
[[nodiscard]] KeywordLine ParseKeywordLine(std::string_view item);

/// Puts a line into its field of `instrument`, when it has a known keyword.
void ApplyKeywordLine(const KeywordLine& line, StationInstrument& instrument);

/// Reads an instrument file over what `instrument` holds. The last item is never interpreted, so
/// that a file that the program wrote gives every field but CalData; a model number empties the
/// serial number, which its own line fills again. `file` is this one from then on. Returns false
/// for an empty file, which gives nothing. Throws the error of a file that cannot be read;
/// `instrument` is then as it was, and so is `file`.
bool LoadInstrumentFile(const std::string& path, StationInstrument& instrument, StoredFile& file);

/// A value that an instrument's file does not give back as it is.
struct ReadBackNotice {
  std::string StationInstrument::*field =
      nullptr;       ///< of the due date, the part that is to be corrected
  std::string text;  ///< says what will be read back, and why
};

/// The values that a file with this instrument would not give back, in the order of the file. No
/// notice is given of blanks after a value, of zeros before a number, of CalData, which no file
/// gives back, and of a due date that a save refuses.
[[nodiscard]] std::vector<ReadBackNotice> ReadBackNotices(const StationInstrument& instrument);

/// Whether the due date exists: its day and year as numbers, its month as a name. Throws a Type
/// error for a number outside 16 bits.
[[nodiscard]] bool HasValidDueDate(const StationInstrument& instrument);

/// Writes the instrument's file into the station's folder. Throws a Name error when its model
/// number is no file name, or that of the INDEX file, a Character error for text that the file
/// cannot hold or that would be read back as another line, and the error of a save that fails; an
/// earlier file is then whole. `file` is the one that the instrument came from; another that is
/// replaced goes to the recycle bin.
void SaveInstrumentFile(const std::string& stationFolder, const StationInstrument& instrument,
                        StoredFile& file);

/// What SaveInstrumentFile would replace although the user has not seen it. Throws as it does.
[[nodiscard]] Replacement InstrumentWouldReplace(const std::string& stationFolder,
                                                 const StationInstrument& instrument,
                                                 const StoredFile& file);

/// Deletes an instrument's file; it goes to the recycle bin. A file that is not there is no error.
/// Throws a Name error when the model number is no file name, and a NotAFile error when it names a
/// folder, which stays.
void DeleteInstrumentFile(const std::string& stationFolder, const std::string& modelNumber);

/// Deletes every file in a station's folder, INDEX included. Links are deleted, never what they
/// lead to; folders stay.
void DeleteAllInstrumentFiles(const std::string& stationFolder);

/// Makes the folder of a new station. Throws a Name error when the name is no folder name, or one
/// that the station list would never show, and the error of a folder that cannot be made.
void MakeStation(const std::string& root, const std::string& name);

/// Names of the stations below `root`: every name without a dot but INDEX, in the platform's
/// order. Throws the platform's error when the root cannot be listed.
[[nodiscard]] std::vector<std::string> ListStations(const std::string& root);

/// Names of the instrument files in a station's folder: every ordinary file but INDEX, in the
/// platform's order. Throws the platform's error when the folder cannot be listed.
[[nodiscard]] std::vector<std::string> ListInstruments(const std::string& stationFolder);

/// Writes the station list of the root: one name per line. Throws a Character error for a name
/// that no line can hold; the earlier list is then whole.
void WriteStationIndex(const std::string& root, const std::vector<std::string>& stations);

/// Writes the instrument list of a station: one name per line, and INDEX itself last. Throws as
/// WriteStationIndex does.
void WriteStationInstrumentIndex(const std::string& stationFolder,
                                 const std::vector<std::string>& instruments);

}  // namespace tarvell

#endif
