// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_SETPAGES_H
#define TARVELL_CORE_CALDATA_SETPAGES_H

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/files/FileText.h"
#include "core/files/ItemReader.h"

/// What the files of the sets of standards share.
namespace tarvell {

/// The page that comes with an option, and the serial numbers that switch it off and on again.
inline constexpr std::int16_t kOptionPage = 3;
inline constexpr std::string_view kOptionOff = "*";
inline constexpr std::string_view kOptionOn = "/";

/// An uncertainty of so many characters or more stands for ppm in the file, a shorter one for per
/// cent: the length is the only mark of the unit.
inline constexpr std::size_t kPpmCharacters = 6;

/// What a value in ppm is divided by to be one in per cent.
inline constexpr double kPpmPerPercent = 10000;

/// The value of a text in per cent as one in ppm, in its shortest text. Throws a Type error when it
/// is too large: the file could not be read back.
[[nodiscard]] std::string PpmOfPercent(std::string_view percent);

/// Throws an Index error unless 0 <= page < pages.
[[nodiscard]] std::size_t PageIndex(std::int16_t page, std::int16_t pages);

/// Appends the caption of the tables, which are those of the capacitor sets in every file: station
/// software looks for it.
void WriteTableCaption(FileText& text);

/// Calls `take` with every item up to a line "!End", in any case. Returns false when the file ends
/// first; its last item is then not taken.
bool ReadToEnd(ItemReader& reader, const std::function<void(const std::string& item)>& take);

}  // namespace tarvell

#endif
