// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/Finding.h"

#include <array>

namespace tarvell {

namespace {

struct FindingNames {
  std::string_view code;
  std::string_view words;
};

/// In the order of FindingKind.
constexpr std::array<FindingNames, kFindingKinds> kNames = {{
    {"past-due", "past due"},
    {"due-soon", "due soon"},
    {"no-such-date", "no such date"},
    {"due-date-differs", "due date differs"},
    {"serial-differs", "serial number differs"},
    {"data-set-missing", "data set missing"},
    {"not-used", "not used"},
    {"shared-file-name", "file name shared"},
    {"shared-address", "address shared"},
    {"index-lacks-name", "INDEX lacks a name"},
    {"index-names-missing", "INDEX names a missing file"},
    {"index-names-twice", "INDEX names a file twice"},
    {"unreadable", "cannot be read"},
    {"cut-off", "cut off"},
    {"no-end", "end missing"},
    {"other-model", "other model"},
    {"other-serial", "other serial number"},
    {"not-rewritten", "not kept by a save"},
    {"doubtful-value", "doubtful value"},
}};

}  // namespace

std::string_view CodeOf(FindingKind kind) {
  return kNames.at(static_cast<std::size_t>(kind)).code;
}

std::string_view WordsOf(FindingKind kind) {
  return kNames.at(static_cast<std::size_t>(kind)).words;
}

bool IsFault(FindingKind kind) {
  return kind != FindingKind::NotUsed;
}

}  // namespace tarvell
