// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef TARVELL_EXCHANGE_HEADERDATES_H
#define TARVELL_EXCHANGE_HEADERDATES_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "exchange/Certificate.h"

namespace tarvell {

/// The dates of a certificate's header. All of them are read in the same order: a date that only
/// one order fits decides for all.
class HeaderDates {
 public:
  explicit HeaderDates(std::optional<DateOrder> chosen) : chosen_(chosen) {}

  /// Adds the calibration date, or else the due date. One with a key that may name another date is
  /// used only for want of another, with a doubt; `unsureKey` is "" for any other one.
  void Add(bool isCalDate, std::string_view written, const std::string& where,
           std::string_view unsureKey);

  /// Puts the dates into the header, with the texts that are not dates, and a question where the
  /// order is open. The first of two different dates is used, with a doubt.
  void Store(Certificate& certificate) const;

 private:
  struct Written {
    bool isCalDate;
    std::string text;
    std::string where;
    std::string unsureKey;
  };

  [[nodiscard]] std::optional<DateOrder> OnlyOrder() const;

  std::optional<DateOrder> chosen_;
  std::vector<Written> dates_;
};

}  // namespace tarvell

#endif
