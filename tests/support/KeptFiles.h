// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_TESTS_SUPPORT_KEPTFILES_H
#define TARVELL_TESTS_SUPPORT_KEPTFILES_H

#include <string>
#include <vector>

#include "support/TestTree.h"

namespace tarvell::test {

/// The contents that the history of `root` holds of a file ("PX12A\SN12345"), in the order of their
/// names: that in which they were replaced, as long as the time stands still.
[[nodiscard]] inline std::vector<std::string> KeptOf(const TestTree& tree, const std::string& root,
                                                     const std::string& file) {
  const std::string folder = root + R"(\history.tarvell\)" + file;
  std::vector<std::string> contents;
  if (tree.Exists(folder)) {
    for (const std::string& name : tree.Names(folder)) {
      contents.push_back(tree.Read(folder + "\\" + name));
    }
  }
  return contents;
}

}  // namespace tarvell::test

#endif
