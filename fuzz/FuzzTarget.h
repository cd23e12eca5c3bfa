// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_FUZZ_FUZZTARGET_H
#define TARVELL_FUZZ_FUZZTARGET_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "core/platform/Error.h"

/// Runs a target on one input. A property that does not hold ends the process.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace tarvell::fuzz {

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
inline void Require(bool holds, const char* what, const std::string& details = {}) {
  if (!holds) {
    static_cast<void>(std::fprintf(stderr, "Broken: %s\n%s\n", what, details.c_str()));
    std::abort();
  }
}

/// `text` without the blanks around it.
[[nodiscard]] inline std::string WithoutBlanks(const std::string& text) {
  const std::size_t first = text.find_first_not_of(' ');
  return first == std::string::npos ? std::string()
                                    : text.substr(first, text.find_last_not_of(' ') - first + 1);
}

/// The bytes of an input, taken from its front.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : bytes_(data, data + size) {}

  /// The next byte, 0 behind the last one.
  [[nodiscard]] unsigned Byte() {
    return position_ < bytes_.size() ? static_cast<unsigned char>(bytes_[position_++]) : 0U;
  }
  /// The bytes up to the next line feed, which is passed over, or to the end.
  [[nodiscard]] std::string Line() {
    const std::size_t start = position_;
    const std::size_t end = std::min(bytes_.find('\n', start), bytes_.size());
    position_ = std::min(end + 1, bytes_.size());
    return bytes_.substr(start, end - start);
  }
  [[nodiscard]] std::string Rest() {
    const std::size_t start = position_;
    position_ = bytes_.size();
    return bytes_.substr(start);
  }

 private:
  std::string bytes_;
  std::size_t position_ = 0;
};

}  // namespace tarvell::fuzz

#endif
