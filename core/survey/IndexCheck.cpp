// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/IndexCheck.h"

#include <map>

#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// Names by their text in upper case.
using Names = std::map<std::string, std::string>;

Names NamesInIndex(std::string_view bytes) {
  Names names;
  while (!bytes.empty()) {
    const std::string name = DecodeFileText(TakeLine(bytes));
    if (!name.empty() && !EqualsIgnoringCase(name, kIndexName)) {
      names.emplace(ToUpper(name), name);
    }
  }
  return names;
}

Names NamesOf(const std::vector<std::string>& listed) {
  Names names;
  for (const std::string& name : listed) {
    const std::string text = NameText(name);
    names.emplace(ToUpper(text), text);
  }
  return names;
}

/// The names of `names` that `others` lacks, the first ones in words; "" if it has them all.
std::string Missing(const Names& names, const Names& others) {
  static constexpr std::size_t kNamedEntries = 5;
  std::string text;
  std::size_t count = 0;
  for (const auto& [key, name] : names) {
    if (!others.contains(key) && ++count <= kNamedEntries) {
      text += (count == 1 ? "" : ", ") + name;
    }
  }
  return count > kNamedEntries ? text + " and " + std::to_string(count - kNamedEntries) + " more"
                               : text;
}

}  // namespace

void CheckIndex(std::string_view bytes, const std::vector<std::string>& names,
                std::string_view remedy, SurveyRow& row) {
  const Names inIndex = NamesInIndex(bytes);
  const Names inFolder = NamesOf(names);
  if (const std::string lacked = Missing(inFolder, inIndex); !lacked.empty()) {
    row.Add(FindingKind::IndexLacksName,
            "INDEX lacks " + lacked + ". " + std::string(remedy) + " to save a new one.");
  }
  if (const std::string gone = Missing(inIndex, inFolder); !gone.empty()) {
    row.Add(FindingKind::IndexNamesMissing, "INDEX names " + gone +
                                                ", which the folder does not have. " +
                                                std::string(remedy) + " to save a new one.");
  }
}

}  // namespace tarvell
