// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_FUZZ_FUZZTARGET_H
#define TARVELL_FUZZ_FUZZTARGET_H

#include <cstddef>
#include <cstdint>
#include <string>

#include "core/platform/Error.h"

/// Runs the target on one input.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tarvell::fuzz {

/// The bytes of an input, taken from its front.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : bytes_(data, data + size) {}

  /// The next byte, 0 after the last one.
  [[nodiscard]] unsigned Byte();
  [[nodiscard]] std::string Rest();

 private:
  std::string bytes_;
  std::size_t position_ = 0;
};

/// The target, defined once in each program. A property that does not hold ends the process.
void Run(Input input);

/// Runs `action`; false when it throws the program's own error, by which the program refuses an
/// input. Any other exception ends the process.
template <typename Action>
[[nodiscard]] bool Accepts(const Action& action) {
  try {
    action();
  } catch (const Error&) {
    return false;
  }
  return true;
}

/// Ends the process unless the property `what` holds.
void Require(bool holds, const char* what, const std::string& details = {});

/// `text` without the characters of `blanks` around it.
[[nodiscard]] std::string Stripped(const std::string& text, const char* blanks = " ");

}  // namespace tarvell::fuzz

#endif
