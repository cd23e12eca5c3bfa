// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_LISTEDFOLDER_H
#define TARVELL_CORE_SURVEY_LISTEDFOLDER_H

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/platform/Platform.h"
#include "core/survey/SurveyRow.h"

namespace tarvell {

/// The names in a folder, for a survey.
class ListedFolder {
 public:
  struct Name {
    std::string name;
    EntryKind kind;
  };

  /// A folder at a path of the program.
  explicit ListedFolder(std::string path);
  /// A folder with a name that `parent` has.
  ListedFolder(const ListedFolder& parent, const std::string& name);

  /// Finds the names, and sorts them.
  [[nodiscard]] std::error_code List(SearchKind kind);
  /// The row of a folder that cannot be listed for this reason.
  [[nodiscard]] SurveyRow UnlistedRow(std::error_code code) const;

  /// Takes the INDEX out of the names. Adds a row for it if there is something to report. `remedy`
  /// says how a new INDEX is saved; `stations` is the row's.
  void CheckIndex(std::string_view remedy, const std::vector<std::string>& stations,
                  std::vector<SurveyRow>& rows);

  [[nodiscard]] const std::string& Path() const { return path_; }
  /// The same as a path of the system.
  [[nodiscard]] const std::filesystem::path& Native() const { return native_; }
  [[nodiscard]] const std::vector<Name>& Names() const { return names_; }

 private:
  std::string path_;
  std::filesystem::path native_;
  std::vector<Name> names_;
};

}  // namespace tarvell

#endif
