// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_CORE_SURVEY_FOLDERSURVEY_H
#define TARVELL_CORE_SURVEY_FOLDERSURVEY_H

#include <cstddef>
#include <memory>
#include <set>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include "core/curves/SlipLimits.h"
#include "core/history/TreeVersions.h"
#include "core/platform/Platform.h"
#include "core/survey/ListedFolder.h"
#include "core/survey/SurveyRow.h"

namespace tarvell {

/// What the values of a calibration tree are judged by. Several threads may use it.
struct ValueRules {
  explicit ValueRules(const std::string& root) : limits(LoadSlipLimits(root)), versions(root) {}

  SlipLimits limits;
  TreeVersions versions;
};

/// A look at the files of one folder, that of a model or of a station. It finds what is wrong with
/// each of them, but not what depends on the day or on other files.
class FolderSurvey {
 public:
  enum class Kind { Model, Station };
  FolderSurvey(Kind kind, ListedFolder folder) : kind_(kind), folder_(std::move(folder)) {}

  /// Lists the folder or reads a file, and adds what it finds to `rows`. What somebody has deleted
  /// meanwhile has no row. Returns whether something is left to do.
  bool Step(const ValueRules& rules, std::vector<SurveyRow>& rows);

  [[nodiscard]] Kind KindOfFolder() const { return kind_; }
  /// The name of the folder.
  [[nodiscard]] std::string Name() const;
  /// Whether the folder could be listed, or was deleted meanwhile.
  [[nodiscard]] bool IsListed() const { return isListed_; }
  [[nodiscard]] std::size_t FilesRead() const { return filesRead_; }
  /// The most rows that the folder can have: one for each file, and one for its INDEX. Known after
  /// it was listed.
  [[nodiscard]] std::size_t MostRows() const { return files_.size() + 1; }
  /// How much of the work is done, from 0 to 1.
  [[nodiscard]] double Progress() const;

 private:
  void List(const ValueRules& rules, std::vector<SurveyRow>& rows);
  void ReadNextFile(const ValueRules& rules, std::vector<SurveyRow>& rows);
  /// The row of a file that cannot be read.
  [[nodiscard]] SurveyRow UnreadableRow(const std::string& path, std::error_code code) const;

  Kind kind_;
  ListedFolder folder_;
  bool hasBegun_ = false;
  bool isListed_ = false;
  std::unique_ptr<OpenFolder> open_;  ///< while its files are read
  std::vector<ListedFolder::Name> files_;
  std::set<std::string> withVersions_;  ///< names in capital letters of those with kept versions
  std::size_t file_ = 0;                ///< the next one
  std::size_t filesRead_ = 0;
  std::string bytes_;
};

}  // namespace tarvell

#endif
