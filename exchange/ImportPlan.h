// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_IMPORTPLAN_H
#define TARVELL_EXCHANGE_IMPORTPLAN_H

#include <cstddef>
#include <cstdint>
#include <functional>
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
  bool isSerialFixed = false;       ///< whether the serial number must not change
  std::string language = "en";      ///< of the user; names in several languages are shown in it
  std::string templateSerial = {};  ///< the serial number that nobody has entered; "" for none
};

/// Which tables go into a page, and how their columns do.
struct PageChoice {
  std::vector<std::size_t> tables;  ///< joined to one; none: the page stays as it is
  ColumnMatch match;
  std::vector<AskedColumn> asked;   ///< columns for which the user has to choose first
  std::vector<std::size_t> rivals;  ///< tables that fit equally well and cannot be joined
  /// Tables of which only one can be meant, such as those before and after an adjustment. Each of
  /// them may be in several parts. The user has to choose; until then `tables` is empty, and
  /// `match` is that of the first one.
  std::vector<std::vector<std::size_t>> alternatives = {};
  bool canJoinAlternatives = false;  ///< whether the user may also choose all of them together
  bool takesNone = false;            ///< whether the user leaves the page as it is

  /// Whether the user still has to choose one of the alternatives.
  [[nodiscard]] bool IsOpen() const {
    return tables.empty() && !alternatives.empty() && !takesNone;
  }
};

struct ImportChoices {
  std::optional<std::size_t> item;  ///< nothing where the certificate names none
  std::vector<PageChoice> pages;    ///< of each page of the data set
};

/// The columns of a table that the user chose before for a page, as MatchText gives them; "" for
/// none.
using RememberedMatch =
    std::function<std::string(const CertificateTable& table, std::int16_t page)>;

/// The item with the serial number of the editor, or the first one of the model; for each page the
/// tables of that item that fit it by name, columns and values.
[[nodiscard]] ImportChoices ProposedChoices(const ImportTarget& target,
                                            const Certificate& certificate,
                                            const RememberedMatch& remembered = nullptr);
/// The same for an item that the user chose.
[[nodiscard]] ImportChoices ProposedChoices(const ImportTarget& target,
                                            const Certificate& certificate, std::size_t item,
                                            const RememberedMatch& remembered = nullptr);

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
  std::string
      otherModel;  ///< the doubt about another model, which is also the first one; "" for none
  std::vector<std::string> open;    ///< what the user has to choose, before anything is taken
  std::vector<std::string> doubts;  ///< what the user has to confirm
  std::vector<std::string> notes;   ///< what is not taken and why

  [[nodiscard]] std::vector<std::string> Rounded() const;
  [[nodiscard]] std::size_t Count(PastedRow::Change change) const;
  [[nodiscard]] bool HasPlace(bool missingRemoved) const;
  /// Whether there is anything to take.
  [[nodiscard]] bool HasValues() const { return !pages.empty(); }
};

/// Whether nobody has entered any point of a sensor or attenuator: all are those of the template.
[[nodiscard]] bool HasOnlyDefaults(const EditorState& now);

/// Throws as PlanPage does.
[[nodiscard]] ImportPlan PlanImport(const ImportTarget& target, const Certificate& certificate,
                                    const ImportChoices& choices);

/// What the editor shows after the import. Points of sensors and attenuators that the certificate
/// lacks are removed, or kept.
[[nodiscard]] EditorState AfterImport(const EditorState& now, const ImportPlan& plan,
                                      bool removesMissing);

}  // namespace tarvell

#endif
