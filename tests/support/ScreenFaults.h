// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_SCREENFAULTS_H
#define TARVELL_TESTS_SUPPORT_SCREENFAULTS_H

#include <gtest/gtest.h>

#include <string>
#include <system_error>
#include <vector>

#include "support/FaultPlatform.h"

namespace tarvell::test {

/// A step of a save that fails, and the reason that the message then gives.
struct ScreenFault {
  FaultPlatform::Step step;
  std::errc fault;
  std::string reason;
  bool isReplaced = false;  ///< whether the new file has replaced the earlier one nevertheless
};

/// One fault for each step; two for writing, whose errors have different explanations.
[[nodiscard]] inline const std::vector<ScreenFault>& ScreenFaults() {
  using Step = FaultPlatform::Step;
  static const std::string kDisk = "Input/output error. Check the disk, then try again.";
  static const std::string kFull = "the disk is full. Free some space, then try again.";
  static const std::string kRights = "you have no permission to do so.";
  static const std::vector<ScreenFault> kFaults = {
      {Step::Resolve, std::errc::permission_denied, kRights},
      {Step::Facts, std::errc::io_error, kDisk},
      {Step::Create, std::errc::no_space_on_device, kFull},
      {Step::Write, std::errc::no_space_on_device, kFull},
      {Step::Write, std::errc::file_too_large, "the file would grow beyond the size"},
      {Step::Nothing, std::errc::io_error, kDisk},
      {Step::Length, std::errc::io_error, kDisk},
      {Step::Attributes, std::errc::io_error, kDisk},
      {Step::Sync, std::errc::io_error, kDisk},
      {Step::Close, std::errc::no_space_on_device, kFull},
      {Step::Replace, std::errc::device_or_resource_busy, "another program has it open."},
      {Step::SyncFolder, std::errc::io_error, kDisk, true}};
  return kFaults;
}

/// Calls `press` under each fault in turn, then `pressAgain` without one. `press` presses the
/// button and checks the message and the screen.
template <typename Press, typename PressAgain>
void PressUnderEachFault(FaultPlatform& platform, const Press& press,
                         const PressAgain& pressAgain) {
  // A history that fails is another question.
  platform.sparesHistory = true;
  for (const ScreenFault& fault : ScreenFaults()) {
    SCOPED_TRACE(testing::Message() << fault.step << ": " << fault.reason);
    platform.failAtByte = 3;
    platform.Set(fault.step, fault.fault);
    press(fault);
    EXPECT_EQ(platform.faults, 1) << "the step was never taken";
  }
  platform.Set(FaultPlatform::Step::None);
  pressAgain();
}

}  // namespace tarvell::test

#endif
