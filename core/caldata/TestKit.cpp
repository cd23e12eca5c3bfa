// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/caldata/TestKit.h"

#include <string>
#include <system_error>

#include "core/caldata/DataFileSummary.h"
#include "core/files/FileNames.h"
#include "core/files/ItemReader.h"
#include "core/files/Paths.h"
#include "core/files/ReadFile.h"
#include "core/history/StoredFile.h"
#include "core/platform/Error.h"
#include "core/platform/Platform.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

struct KitFile {
  std::string serialNumber;  ///< the second item of the file
  std::string name;          ///< the name that the file gets as a data file
};

KitFile Identify(const std::filesystem::path& source) {
  const std::string path = source.string();
  ItemReader reader(source, path);
  static_cast<void>(reader.ReadItem());
  const std::string item = reader.ReadItem();
  const std::string serial(Trim(StripNull(item)));
  if (serial.empty()) {
    throw Error(ErrorKind::Name,
                "The file holds no serial number where its second line should. Choose a test kit "
                "file.",
                path);
  }
  return reader.AtThisLine([&] { return KitFile{serial, DataFileName(serial)}; });
}

}  // namespace

void CopyTestKitFile(const std::filesystem::path& source, const std::string& modelFolder,
                     Earlier earlier) {
  const KitFile kit = Identify(source);
  const std::string target = Joined(modelFolder, kit.name);
  if (CurrentPlatform().IsSameFile(source, NativePath(target))) {
    throw Error(ErrorKind::Name,
                "The chosen file is the kit's data file itself. Nothing was changed.", target);
  }
  std::string bytes;
  if (const std::error_code code = ReadNativeFile(source, bytes)) {
    throw SystemError(code, "read the file", source.string());
  }
  StoredFile().Save(target, kit.serialNumber, bytes, earlier);
}

Replacement TestKitWouldReplace(const std::filesystem::path& source,
                                const std::string& modelFolder) {
  const KitFile kit = Identify(source);
  const std::string target = Joined(modelFolder, kit.name);
  // The serial number is at the beginning of the file.
  std::string bytes;
  const std::error_code code = ReadNativeFile(source, bytes, kDataFileLimit);
  if (code && code != kTooLargeForData) {
    throw SystemError(code, "read the file", source.string());
  }
  Replacement replacement = ReplacementBy(StoredFile(), target, bytes, &SummaryOfKitFile);
  // An update brings a new file of the same kit, so that there is nothing to ask.
  if (replacement.kind != Replacement::Kind::AnotherSerialNumber) {
    return {};
  }
  return replacement;
}

}  // namespace tarvell
