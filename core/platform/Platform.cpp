// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/Platform.h"

#include <utility>

#include "core/platform/LinuxPlatform.h"

namespace tarvell {

namespace {

Platform*& ChosenPlatform() {
  static Platform* platform = nullptr;
  return platform;
}

}  // namespace

Platform& CurrentPlatform() {
  static LinuxPlatform system;
  Platform* chosen = ChosenPlatform();
  return chosen != nullptr ? *chosen : system;
}

Platform* SetCurrentPlatform(Platform* platform) {
  return std::exchange(ChosenPlatform(), platform);
}

}  // namespace tarvell
