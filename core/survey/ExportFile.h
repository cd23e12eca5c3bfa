// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_EXPORTFILE_H
#define TARVELL_CORE_SURVEY_EXPORTFILE_H

#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace tarvell {

/// Writes a file for other programs. Throws the error of a file that cannot be written, and refuses
/// one in a folder of `trees`, the directories of calibration data and stations (paths of the
/// program), and an INDEX: it would replace a file that stations read, or look like one.
void SaveExport(const std::filesystem::path& target, std::string_view bytes,
                std::span<const std::string> trees);

}  // namespace tarvell

#endif
