// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_IMPORTPLAN_H
#define TARVELL_EXCHANGE_IMPORTPLAN_H

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "core/caldata/EditorState.h"
#include "core/caldata/Models.h"
#include "exchange/Certificate.h"
#include "exchange/ColumnMatch.h"
#include "exchange/PagePlan.h"

/// What importing a certificate does to the data set in an editor. Nothing here changes anything.
namespace tarvell {

/// The data set that takes the certificate. `data` is an object of the model, for its formats;
/// `now` is what the editor shows.
struct ImportTarget {
  const Model& model;
  const cifCaldata& data;
  const EditorState& now;
  bool isSerialFixed = false;   ///< whether the serial number must not change
  std::string language = "en";  ///< of the user; names in several languages are shown in it
};

/// Which table goes into a page, and how its columns do.
struct PageChoice {
  std::optional<std::size_t> table;  ///< nothing: the page stays as it is
  ColumnMatch match;
};

struct ImportChoices {
  std::optional<std::size_t> item;  ///< nothing where the certificate names none
  std::vector<PageChoice> pages;    ///< of each page of the data set
};

/// The item with the serial number of the editor, or the first one of the model; for each page the
/// table that fits it by name, columns and values.
[[nodiscard]] ImportChoices ProposedChoices(const ImportTarget& target,
                                            const Certificate& certificate);

/// A header field that changes.
struct PlannedField {
  std::string name;
  std::string before;
  std::string after;
  std::string where;  ///< the place in the certificate
};

struct ImportPlan {
  DraftHeader header;                ///< all boxes after the import
  std::vector<PlannedField> fields;  ///< those that the certificate names
  std::optional<bool> option;        ///< what the certificate says about the option
  std::vector<PagePlan> pages;
  std::vector<std::string> doubts;  ///< what the user has to confirm
  std::vector<std::string> notes;   ///< what is not taken and why

  [[nodiscard]] std::vector<std::string> Rounded() const;
  [[nodiscard]] std::size_t Count(PastedRow::Change change) const;
  [[nodiscard]] bool HasPlace(bool missingRemoved) const;
  /// Whether there is anything to take.
  [[nodiscard]] bool HasValues() const { return !pages.empty(); }
};

/// Throws as PlanPage does.
[[nodiscard]] ImportPlan PlanImport(const ImportTarget& target, const Certificate& certificate,
                                    const ImportChoices& choices);

/// What the editor shows after the import. Points of sensors and attenuators that the certificate
/// lacks are removed, or kept.
[[nodiscard]] EditorState AfterImport(const EditorState& now, const ImportPlan& plan,
                                      bool removesMissing);

}  // namespace tarvell

#endif
