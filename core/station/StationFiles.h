// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_STATION_STATIONFILES_H
#define TARVELL_CORE_STATION_STATIONFILES_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/dates/FileDate.h"
#include "core/history/Replacement.h"
#include "core/history/StoredFile.h"

/// The files of the stations: the station data root has a folder for each station, which has a
/// keyword file for each instrument. The root and each station have an INDEX file.
namespace tarvell {

inline constexpr std::string_view kIndexName = "INDEX";

/// The fields of an instrument. All are free text, except that the due date must be a day that
/// exists.
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

/// A parsed line: "CAL DUE DATE 5 MAR 2002" has the keyword "CAL DUE DATE" and the value
/// "5 MAR 2002". Runs of blanks in a value become one blank; words after the 30th are lost.
struct KeywordLine {
  std::string keyword;
  std::string value;
};
[[nodiscard]] KeywordLine ParseKeywordLine(std::string_view item);

/// Sets the field of `instrument` that a line is for. Ignores an unknown keyword.
void ApplyKeywordLine(const KeywordLine& line, StationInstrument& instrument);

/// Reads an instrument file into `instrument`. Fields without a line keep their value, except the
/// serial number, which is cleared first. The last item is never interpreted. Therefore a file that
/// the program wrote sets every field except CalData. `file` is set to this file, and says what a
/// file without its end did not give. Returns false for an empty file, which changes nothing.
/// Throws the error of a file that cannot be read, and changes nothing then.
bool LoadInstrumentFile(const std::string& path, StationInstrument& instrument, StoredFile& file);

/// The instrument in the content of a file, including the last line, which LoadInstrumentFile does
/// not interpret. Errors name the file as `path`.
[[nodiscard]] StationInstrument InstrumentIn(std::string_view bytes, const std::string& path);

/// The same, but much faster, for a file that a save would write exactly as it is, and all of whose
/// values are read back. Nothing for many other files, and perhaps for some of these.
[[nodiscard]] std::optional<StationInstrument> PlainInstrumentIn(std::string_view bytes);

/// The fields in the content of an instrument file, in its order, each by its keyword.
[[nodiscard]] FileSummary SummaryOfInstrument(std::string_view bytes);

/// What SaveInstrumentFile writes. Throws a Character error for text that the file cannot hold or
/// that would be read back as another line.
[[nodiscard]] std::string InstrumentBytes(const StationInstrument& instrument);

/// A value that will be read back differently from an instrument's file.
struct ReadBackNotice {
  std::string StationInstrument::*field = nullptr;  ///< of the due date, the part to correct
  std::string text;                                 ///< what will be read back, and why
};

/// The values that will be read back differently, in the order of the file. Leaves out blanks after
/// a value, zeros before a number, CalData, and a due date that cannot be saved.
[[nodiscard]] std::vector<ReadBackNotice> ReadBackNotices(const StationInstrument& instrument);

/// Whether the due date exists, with a number for its day and year and a name for its month. Throws
/// a Type error for a number outside 16 bits.
[[nodiscard]] bool HasValidDueDate(const StationInstrument& instrument);

/// The due date of an instrument; a part that is not a number or not a month is 0.
[[nodiscard]] FileDate DueDateOf(const StationInstrument& instrument);

/// Writes the instrument's file to the station's folder. `file` is the one that the instrument was
/// read from or last saved to. What the save replaces goes into the history. Throws a Name error
/// when the model number is not a valid file name or is that of the INDEX file, a Character error
/// for text that the file cannot hold or that would be read back as another line, and the error of
/// a failed save.
void SaveInstrumentFile(const std::string& stationFolder, const StationInstrument& instrument,
                        StoredFile& file, Earlier earlier = Earlier::Keep);

/// What SaveInstrumentFile would replace although the user has not seen it. Throws the same errors.
[[nodiscard]] Replacement InstrumentWouldReplace(const std::string& stationFolder,
                                                 const StationInstrument& instrument,
                                                 const StoredFile& file);

/// Moves an instrument's file to the recycle bin, and keeps it in the history. A missing file is no
/// error. Throws a Name error when the model number is not a valid file name, and a NotAFile error
/// for a folder, which stays.
void DeleteInstrumentFile(const std::string& stationFolder, const std::string& modelNumber,
                          Earlier earlier = Earlier::Keep);

/// Moves every file of a station to the recycle bin, and keeps all except INDEX in the history. Of
/// a link, only the link is deleted; folders stay.
void DeleteAllInstrumentFiles(const std::string& stationFolder, Earlier earlier = Earlier::Keep);

/// Moves the folder of a station to the recycle bin, and keeps its instrument files in the history.
void DeleteStation(const std::string& root, const std::string& name,
                   Earlier earlier = Earlier::Keep);

/// Makes the folder of a new station. Throws a Name error when the name is not a valid folder name
/// or the station list would not show it, and the error of a folder that cannot be made.
void MakeStation(const std::string& root, const std::string& name);

/// Names of the stations in `root`: every name without a dot except INDEX, in the order of the
/// system. Throws the system's error when the root cannot be listed.
[[nodiscard]] std::vector<std::string> ListStations(const std::string& root);

/// Names of the instrument files in a station's folder: every ordinary file except INDEX, in the
/// order of the system. Throws the system's error when the folder cannot be listed.
[[nodiscard]] std::vector<std::string> ListInstruments(const std::string& stationFolder);

/// Writes the station list of the root: one name per line. Throws a Character error for a name
/// that no line can hold, before anything is written.
void WriteStationIndex(const std::string& root, const std::vector<std::string>& stations);

/// Writes the instrument list of a station: one name per line, and INDEX last. Throws the same
/// errors as WriteStationIndex.
void WriteStationInstrumentIndex(const std::string& stationFolder,
                                 const std::vector<std::string>& instruments);

}  // namespace tarvell

#endif
