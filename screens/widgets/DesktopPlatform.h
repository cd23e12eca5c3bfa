// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_SCREENS_WIDGETS_DESKTOPPLATFORM_H
#define TARVELL_SCREENS_WIDGETS_DESKTOPPLATFORM_H

#include <filesystem>

#include "core/platform/ForwardingPlatform.h"

namespace tarvell {

/// The operating system, with the desktop's trash as its recycle bin if it has none of its own.
class DesktopPlatform : public ForwardingPlatform {
 public:
  [[nodiscard]] std::error_code Recycle(const std::filesystem::path& path) override;
};

}  // namespace tarvell

#endif
