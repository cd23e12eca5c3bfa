// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "caldata/TestKit.h"

#include <string_view>

#include "common/CommonStringModule.h"
#include "common/Error.h"
#include "common/FileNames.h"
#include "common/ItemReader.h"
#include "common/Paths.h"
#include "common/Platform.h"
#include "common/ReadFile.h"
#include "common/SaveFile.h"
#include "common/Text.h"

namespace tarvell {

namespace {

/// Name of the data file, from the serial number in the file's second item.
std::string TargetName(const std::string& source) {
  ItemReader reader(source, source);
  static_cast<void>(reader.ReadItem());
  const std::string item = reader.ReadItem();
  const std::string_view serial = Trim(StripNull(item));
  if (serial.empty()) {
    throw Error(ErrorKind::Name,
                "The file holds no serial number where its second line should. Choose a test kit "
                "file.",
                source);
  }
  return reader.AtThisLine([&] { return DataFileName(serial); });
}

}  // namespace

void CopyTestKitFile(const std::string& source, const std::string& modelFolder) {
  const std::string target = Joined(modelFolder, TargetName(source));
  if (CurrentPlatform().IsSameFile(source, NativePath(target))) {
    throw Error(ErrorKind::Name,
                "The chosen file is the kit's data file itself. Nothing was changed.", target);
  }
  std::string bytes;
  if (const std::error_code code = ReadNativeFile(source, bytes)) {
    throw SystemError(code, "read the file", source);
  }
  SaveFile(target, bytes);
}

}  // namespace tarvell
