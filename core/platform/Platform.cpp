// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/platform/Platform.h"

#include <utility>

namespace tarvell {

namespace {

Platform*& ChosenPlatform() {
  static Platform* platform = nullptr;
  return platform;
}

}  // namespace

Platform& CurrentPlatform() {
  Platform* chosen = ChosenPlatform();
  return chosen != nullptr ? *chosen : SystemPlatform();
}

Platform* SetCurrentPlatform(Platform* platform) {
  return std::exchange(ChosenPlatform(), platform);
}

}  // namespace tarvell
