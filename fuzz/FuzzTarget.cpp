// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "FuzzTarget.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <utility>

namespace tarvell::fuzz {

unsigned Input::Byte() {
  return position_ < bytes_.size() ? static_cast<unsigned char>(bytes_[position_++]) : 0U;
}

std::string Input::Rest() {
  return bytes_.substr(std::exchange(position_, bytes_.size()));
}

void Require(bool holds, const char* what, const std::string& details) {
  if (!holds) {
    static_cast<void>(std::fprintf(stderr, "Broken: %s\n%s\n", what, details.c_str()));
    std::abort();
  }
}

std::string Stripped(const std::string& text, const char* blanks) {
  const std::size_t first = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

}  // namespace tarvell::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  tarvell::fuzz::Run({data, size});
  return 0;
}
