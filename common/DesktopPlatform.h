// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_COMMON_DESKTOPPLATFORM_H
#define TARVELL_COMMON_DESKTOPPLATFORM_H

#include <string>

#include "common/LinuxPlatform.h"

namespace tarvell {

/// The system together with its desktop's trash, which serves as the recycle bin.
class DesktopPlatform : public LinuxPlatform {
 public:
  [[nodiscard]] std::error_code Recycle(const std::string& path) override;
  [[nodiscard]] std::error_code RecycleCopy(const std::string& path) override;

 private:
  /// Copies one file whose original may be replaced as soon as this returns.
  [[nodiscard]] std::error_code CopyForGood(const std::string& from, const std::string& to);
};

}  // namespace tarvell

#endif
