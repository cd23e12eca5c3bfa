// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/HeaderDates.h"

#include <algorithm>

#include "core/text/Text.h"

namespace tarvell {

void HeaderDates::Add(bool isCalDate, std::string_view written, const std::string& where,
                      std::string_view unsureKey) {
  // Those that are sure come first.
  const auto place = unsureKey.empty()
                         ? std::ranges::find_if(
                               dates_, [](const Written& date) { return !date.unsureKey.empty(); })
                         : dates_.end();
  dates_.insert(place, {isCalDate, std::string(written), where, std::string(unsureKey)});
}

std::optional<DateOrder> HeaderDates::OnlyOrder() const {
  for (const Written& date : dates_) {
    const bool fitsDay = DateFrom(date.text, DateOrder::DayFirst).has_value();
    const bool fitsMonth = DateFrom(date.text, DateOrder::MonthFirst).has_value();
    if (fitsDay != fitsMonth) {
      return fitsDay ? DateOrder::DayFirst : DateOrder::MonthFirst;
    }
  }
  return std::nullopt;
}

void HeaderDates::Store(Certificate& certificate) const {
  const std::optional<DateOrder> only = OnlyOrder();
  const DateOrder order = only ? *only : chosen_.value_or(DateOrder::DayFirst);
  bool isAsked = only.has_value();
  CertificateHeader& header = certificate.header;
  for (const Written& written : dates_) {
    const std::optional<FileDate> date = DateFrom(written.text, order);
    std::optional<FoundDate>& target = written.isCalDate ? header.calDate : header.dueDate;
    if (!date) {
      std::optional<FoundText>& unread =
          written.isCalDate ? header.unreadCalDate : header.unreadDueDate;
      unread = unread ? unread : FoundText{written.text, written.where};
      continue;
    }
    const std::string follows = "follows " + Quoted(written.unsureKey) + ".";
    const std::string named = "The date " + Quoted(written.text) + " (" + written.where + ") is ";
    if (!written.unsureKey.empty() && target) {
      certificate.notes.push_back(named + "not used, because it " + follows);
      continue;
    }
    if (!written.unsureKey.empty()) {
      certificate.doubts.push_back(named + "used as the " +
                                   (written.isCalDate ? "calibration" : "due") +
                                   " date, though it " + follows);
    }
    const std::optional<FileDate> dayFirst = DateFrom(written.text, DateOrder::DayFirst);
    const std::optional<FileDate> monthFirst = DateFrom(written.text, DateOrder::MonthFirst);
    if (!isAsked && dayFirst && monthFirst && *dayFirst != *monthFirst) {
      certificate.questions.push_back({ReadingQuestion::About::DateOrder, written.text,
                                       IsoDate(*dayFirst), IsoDate(*monthFirst)});
      isAsked = true;
    }
    if (!target) {
      target = FoundDate{*date, written.where};
    } else if (*date != target->date) {
      certificate.doubts.push_back(
          std::string("There are two ") + (written.isCalDate ? "calibration" : "due") +
          " dates: " + IsoDate(target->date) + " (" + target->where + "), which is used, and " +
          IsoDate(*date) + " (" + written.where + ").");
    }
  }
}

}  // namespace tarvell
