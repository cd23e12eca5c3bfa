// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_DESKTOPPLATFORM_H
#define TARVELL_SCREENS_WIDGETS_DESKTOPPLATFORM_H

#include <string>

#include "core/platform/LinuxPlatform.h"

namespace tarvell {

/// The system together with its desktop's trash, which serves as the recycle bin.
class DesktopPlatform : public LinuxPlatform {
 public:
  [[nodiscard]] std::error_code Recycle(const std::string& path) override;
  [[nodiscard]] std::error_code RecycleCopy(const std::string& path) override;
};

}  // namespace tarvell

#endif
