// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_CALDATA_MTYPEDEF_H
#define TARVELL_CORE_CALDATA_MTYPEDEF_H

#include <cstdint>
#include <string>

namespace tarvell {

/// Header of one calibration data file. Months are numbers, 1 to 12 if the file is correct.
struct CalFileInfo {
  std::string FilePath;
  std::string ModelNumber;
  std::string SerialNumber;
  std::string CalibrationNumber;
  std::int16_t CalYear = 0;
  std::int16_t CalMonth = 0;
  std::int16_t CalDay = 0;
  std::int16_t DueYear = 0;
  std::int16_t DueMonth = 0;
  std::int16_t DueDay = 0;
  std::string Comment;
  std::string Option;  ///< "001" when an old-style file names the model with "Opt001"
};

}  // namespace tarvell

#endif
