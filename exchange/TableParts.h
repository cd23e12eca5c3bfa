// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_TABLEPARTS_H
#define TARVELL_EXCHANGE_TABLEPARTS_H

#include <string>
#include <string_view>

#include "exchange/Certificate.h"

/// What the titles of a certificate's tables say about each other. Results before and after an
/// adjustment, those of the last calibration, or of two channels, have the same columns but are
/// never parts of one table.
namespace tarvell {

/// What a title says about when its results were measured: "before", "after" or "earlier" (at a
/// calibration before this one); "" where it says nothing, or several of them.
[[nodiscard]] std::string_view StateIn(std::string_view title);

/// The channel, port, device ... that a title names, folded: "channel a"; "" for none.
[[nodiscard]] std::string ChannelIn(std::string_view title);

/// A text that is the same for tables whose results can be of one kind. Tables with different ones
/// are alternatives.
[[nodiscard]] std::string KindOfResults(const CertificateTable& table);

/// Whether a table says when its results were measured.
[[nodiscard]] bool HasState(const CertificateTable& table);

/// Whether the titles of two tables differ only as those of parts do: in ranges and numbers. A
/// later table without a title of its own continues the first one.
[[nodiscard]] bool AreTitledAsParts(const CertificateTable& first, const CertificateTable& later);

/// Divides each table with a column of texts that say which rows belong together, such as
/// "Channel A" and "Channel B", into one table for each of these texts.
void DivideTables(Certificate& certificate);

}  // namespace tarvell

#endif
