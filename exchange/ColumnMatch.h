// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_COLUMNMATCH_H
#define TARVELL_EXCHANGE_COLUMNMATCH_H

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/Certificate.h"
#include "exchange/ModelColumns.h"

/// Which column of a certificate goes into which column of a model's table.
namespace tarvell {

/// A column of a certificate's table, or the expanded uncertainties of its values.
struct ColumnSource {
  std::size_t column = 0;
  bool isUncertainty = false;

  bool operator==(const ColumnSource&) const = default;
};

/// The source of each column of a model's table; nothing for a column that is not filled.
using ColumnMatch = std::vector<std::optional<ColumnSource>>;

/// Whether a column of the model gets its values from this source.
[[nodiscard]] bool IsUsed(const ColumnMatch& match, const ColumnSource& source);

/// The sources that a table offers.
[[nodiscard]] std::vector<ColumnSource> SourcesOf(const CertificateTable& table);

/// What a source is called: the caption in this language and the unit. "Factor [%]".
[[nodiscard]] std::string SourceName(const CertificateTable& table, const ColumnSource& source,
                                     std::string_view language);

/// A column of a model's table for which several sources fit equally well.
struct AskedColumn {
  std::size_t column = 0;
  std::vector<ColumnSource> sources;
};

/// The sources that fit by their captions, kinds and units. Where several with different numbers
/// fit equally well, or where the only one is hardly a result, such as the factor of the last
/// calibration, the column has none, and the user has to choose. A source in a unit that is not
/// known never fits.
struct ProposedMatch {
  ColumnMatch match;
  std::vector<AskedColumn> asked;
};
[[nodiscard]] ProposedMatch MatchedColumns(const CertificateTable& table,
                                           const std::vector<ModelColumn>& columns);

/// The captions of a column in all languages, folded.
[[nodiscard]] std::string FoldedNames(const CertificateColumn& column);

/// The first unit of these values that is not a known one, as it is written; "" for none.
[[nodiscard]] std::string UnknownUnitIn(const std::vector<WrittenValue>& values);

/// The columns of a table that do not fit because of their units, a sentence each.
[[nodiscard]] std::vector<std::string> UnknownUnits(const CertificateTable& table,
                                                    const ColumnMatch& used,
                                                    std::string_view language);

/// Whether a match has every point and at least one measured value or uncertainty.
[[nodiscard]] bool IsUsable(const ColumnMatch& match, const std::vector<ModelColumn>& columns);

/// The captions of a table in one text, by which a match that a user chose is remembered.
[[nodiscard]] std::string CaptionsKey(const CertificateTable& table);

/// A match as a short text, and back; nothing for a text that does not fit the table.
[[nodiscard]] std::string MatchText(const ColumnMatch& match);
[[nodiscard]] std::optional<ColumnMatch> MatchFrom(std::string_view text,
                                                   const CertificateTable& table,
                                                   std::size_t columns);

/// The match of a text that MatchText wrote, or else the one that MatchedColumns proposes.
[[nodiscard]] ProposedMatch ChosenOrMatched(std::string_view chosen, const CertificateTable& table,
                                            const std::vector<ModelColumn>& columns);

/// The values of a source: those in a unit that the column takes first.
[[nodiscard]] const std::vector<WrittenValue>& ValuesOf(const CertificateTable& table,
                                                        const ColumnSource& source,
                                                        const ModelColumn& column);

}  // namespace tarvell

#endif
