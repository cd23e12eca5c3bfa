// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/survey/IndexCheck.h"

#include <cstddef>
#include <map>
#include <utility>

#include "core/station/StationFiles.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// A name, and how often it occurs.
struct Counted {
  std::string name;
  std::size_t count = 0;
};
/// Names by their text in upper case.
using Names = std::map<std::string, Counted>;

void Add(std::string name, Names& names) {
  Counted& counted = names[ToUpper(name)];
  if (counted.count++ == 0) {
    counted.name = std::move(name);
  }
}

Names NamesInIndex(std::string_view bytes) {
  Names names;
  while (!bytes.empty()) {
    std::string name = DecodeFileText(TakeLine(bytes));
    if (!name.empty() && !EqualsIgnoringCase(name, kIndexName)) {
      Add(std::move(name), names);
    }
  }
  return names;
}

Names NamesOf(const std::vector<std::string>& listed) {
  Names names;
  for (const std::string& name : listed) {
    Add(NameText(name), names);
  }
  return names;
}

/// The first of `names` that `isMeant` in words, in quotes, which show a blank at the end; "" if
/// there are none.
template <typename IsMeant>
std::string InWords(const Names& names, const IsMeant& isMeant) {
  static constexpr std::size_t kNamedEntries = 5;
  std::string text;
  std::size_t count = 0;
  for (const auto& [key, counted] : names) {
    if (isMeant(key, counted.count) && ++count <= kNamedEntries) {
      text += (count == 1 ? "" : ", ") + Quoted(counted.name);
    }
  }
  return count > kNamedEntries ? text + " and " + std::to_string(count - kNamedEntries) + " more"
                               : text;
}

/// The names of `names` that `others` lacks.
std::string Missing(const Names& names, const Names& others) {
  return InWords(names, [&](const std::string& key, std::size_t) { return !others.contains(key); });
}

/// The names that an INDEX has more often than its folder, in which two may differ only in case.
std::string Repeated(const Names& inIndex, const Names& inFolder) {
  return InWords(inIndex, [&](const std::string& key, std::size_t count) {
    const auto found = inFolder.find(key);
    return found != inFolder.end() && count > found->second.count;
  });
}

}  // namespace

void CheckIndex(std::string_view bytes, const std::vector<std::string>& names,
                std::string_view remedy, SurveyRow& row) {
  const Names inIndex = NamesInIndex(bytes);
  const Names inFolder = NamesOf(names);
  const std::string toDo = std::string(remedy) + " to save a new one.";
  if (const std::string lacked = Missing(inFolder, inIndex); !lacked.empty()) {
    row.Add(FindingKind::IndexLacksName, "INDEX lacks " + lacked + ". " + toDo);
  }
  if (const std::string gone = Missing(inIndex, inFolder); !gone.empty()) {
    row.Add(FindingKind::IndexNamesMissing,
            "INDEX names " + gone + ", which the folder does not have. " + toDo);
  }
  if (const std::string repeated = Repeated(inIndex, inFolder); !repeated.empty()) {
    row.Add(FindingKind::IndexNamesTwice, "INDEX names " + repeated + " more than once. " + toDo);
  }
}

}  // namespace tarvell
