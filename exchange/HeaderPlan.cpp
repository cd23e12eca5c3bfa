// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/HeaderPlan.h"

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "core/caldata/CellNotices.h"
#include "core/caldata/Models.h"
#include "core/caldata/SetPages.h"
#include "core/dates/Months.h"
#include "core/numbers/Numbers.h"
#include "core/numbers/WrittenNumber.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

/// The value that an export writes for a set without its option.
constexpr std::string_view kNoOption = "none";

std::string DateShown(const std::string& day, const std::string& month, const std::string& year) {
  return day + " " + month + " " + year;
}

class HeaderPlanning {
 public:
  HeaderPlanning(const ImportTarget& target, const Certificate& certificate, ImportPlan& plan)
      : target_(target),
        header_(certificate.header),
        namedModels_(certificate.namedModels),
        isUnchanged_(certificate.isUnchanged),
        plan_(plan) {}

  void TakeItem(const CertificateItem& item) {
    if (!item.model.empty() && !NamesModel(item.model, target_.model.code)) {
      plan_.otherModel = "The certificate is for the model " + Quoted(item.model) +
                         ", and this data set is for " + std::string(target_.model.code) + ".";
      plan_.doubts.push_back(plan_.otherModel);
    } else if (item.model.empty()) {
      DoubtNamedModels(item);
    }
    const std::string& present = target_.now.header.serialNumber;
    if (item.serialNumber.empty()) {
      plan_.notes.emplace_back("The certificate names no serial number.");
    } else if (item.serialNumber != present) {
      // Nobody has entered the serial number of the template.
      const bool isDefault = present == target_.templateSerial;
      if (!present.empty() && !isDefault) {
        plan_.doubts.push_back("The certificate is for the serial number " +
                               Quoted(item.serialNumber) + ", and this data set has " +
                               Quoted(present) + "." +
                               (target_.isSerialFixed ? " The serial number stays as it is." : ""));
      }
      if (!target_.isSerialFixed) {
        (void)Text("Serial number", {item.serialNumber, item.where}, plan_.header.serialNumber);
        DoubtReading("Serial number", plan_.header.serialNumber);
        DoubtExponent("serial number", {item.serialNumber, item.where});
      }
    }
  }

  /// Reports the models of the program that are named outside the field of the model.
  void DoubtNamedModels(const CertificateItem& item) {
    std::vector<FoundText> named = namedModels_;
    for (const LocalText& name : item.name) {
      for (const Model& model : kModels) {
        if (NamesModel(name.text, model.code)) {
          named.push_back({std::string(model.code), item.where});
        }
      }
    }
    const bool isOwn =
        std::ranges::find(named, target_.model.code, &FoundText::text) != named.end();
    if (!named.empty() && !isOwn) {
      plan_.doubts.push_back("The certificate names the model " + Quoted(named.front().text) +
                             " (" + named.front().where + "), and this data set is for " +
                             std::string(target_.model.code) + ".");
    }
  }

  void TakeFields() {
    if (header_.calibrationNumber) {
      (void)Text("Calibration number", *header_.calibrationNumber, plan_.header.calibrationNumber);
      DoubtExponent("calibration number", *header_.calibrationNumber);
      DoubtNoDate();
    }
    if (header_.calDate) {
      Date("Calibration date", *header_.calDate, plan_.header.calDay, plan_.header.calMonth,
           plan_.header.calYear);
    }
    if (header_.dueDate) {
      Date("Due date", *header_.dueDate, plan_.header.dueDay, plan_.header.dueMonth,
           plan_.header.dueYear);
    }
    DoubtUnread("calibration date", header_.calDate, header_.unreadCalDate);
    DoubtUnread("due date", header_.dueDate, header_.unreadDueDate);
    DoubtDueDate();
    if (header_.comment) {
      (void)Text("Comment", *header_.comment, plan_.header.comment);
    }
    if (header_.option && target_.now.option) {
      plan_.option = !EqualsIgnoringCase(header_.option->text, kNoOption);
    }
  }

  void DoubtSerials(const Certificate& certificate) {
    if (const std::string names = SerialsToChooseFrom(target_, certificate); !names.empty()) {
      plan_.doubts.push_back("The certificate names several serial numbers: " + names +
                             ". Choose that of this instrument.");
    }
  }

  void TakeMember(PagePlan& page, const CertificateItem* member, const std::string& where) {
    if (!HasPages(target_.model)) {
      page.memberSerial.reset();
      return;
    }
    if (!page.memberSerial && member != nullptr) {
      page.memberSerial = member->serialNumber;
    }
    std::string box = target_.now.pages.at(static_cast<std::size_t>(page.page)).serialNumber;
    if (!page.memberSerial || (page.memberSerial->empty() && box.empty())) {
      return;
    }
    const std::string name = "Serial number of " + page.name;
    if (target_.model.family == ModelFamily::ResistorSet) {
      plan_.notes.push_back(name + ": " + Quoted(*page.memberSerial) +
                            " is not used, because the data file has no place for it.");
      page.memberSerial.reset();
    } else if (!Text(name, {*page.memberSerial, where}, box)) {
      page.memberSerial.reset();
    }
  }

  void TakeOption() {
    if (!target_.now.option) {
      return;
    }
    const auto page = std::ranges::find(plan_.pages, kOptionPage, &PagePlan::page);
    if (!plan_.option && page != plan_.pages.end()) {
      plan_.option = true;
    }
    const auto words = [](bool isOn) { return std::string(isOn ? "with" : "without"); };
    if (plan_.option) {
      plan_.fields.push_back({"Option 001", words(*target_.now.option), words(*plan_.option),
                              header_.option ? header_.option->where : page->name});
    }
  }

  /// Many laboratories leave the due date to the customer.
  void NoteNoDueDate() {
    if (header_.calDate && !header_.dueDate && !header_.unreadDueDate) {
      const DraftHeader& now = target_.now.header;
      plan_.notes.push_back("The certificate names no due date. It stays " +
                            DateShown(now.dueDay, now.dueMonth, now.dueYear) + ".");
    }
  }

 private:
  /// A spreadsheet writes a long number as one with an exponent, and drops digits of it.
  void DoubtExponent(const std::string& name, const FoundText& found) {
    const std::size_t e = found.text.find("E+");
    const bool isShort = e != std::string::npos && found.text.find_first_of(".,") < e &&
                         (PlainNumber(found.text, DecimalSign::Point) ||
                          PlainNumber(found.text, DecimalSign::Comma));
    if (isShort && !isUnchanged_) {
      plan_.doubts.push_back("The " + name + " " + Quoted(found.text) + " (" + found.where +
                             ") looks like a long number that a spreadsheet has shortened.");
    }
  }

  /// The values would get the date of the calibration before. A table without header lines is for
  /// the user to complete.
  void DoubtNoDate() {
    if (!header_.calDate && !header_.unreadCalDate) {
      const DraftHeader& now = target_.now.header;
      plan_.doubts.push_back(
          "The certificate has a number, but no calibration date was found. It "
          "stays " +
          DateShown(now.calDay, now.calMonth, now.calYear) + ".");
    }
  }

  /// A date that is left as it was looks like that of the certificate.
  void DoubtUnread(const std::string& name, const std::optional<FoundDate>& date,
                   const std::optional<FoundText>& unread) {
    if (!unread) {
      return;
    }
    const std::string text = Quoted(unread->text) + " (" + unread->where + ")";
    const bool hasNumber = unread->text.find_first_of("0123456789") != std::string::npos;
    if (date || !hasNumber) {
      plan_.notes.push_back("The " + name + " " + text + " is not used, because it is not a date.");
    } else {
      plan_.doubts.push_back("The " + name + " " + text + " is not used, because " +
                             (HasShortYear(unread->text)
                                  ? "its year has two digits"
                                  : "it is not a date with a day, a month and a year") +
                             ". Enter the date after the import.");
    }
  }

  void DoubtDueDate() {
    // An unchanged export has the dates of its data set, which were entered so.
    if (isUnchanged_ || !header_.calDate || !header_.dueDate) {
      return;
    }
    const FileDate& cal = header_.calDate->date;
    const FileDate& due = header_.dueDate->date;
    const bool isBefore =
        std::tie(due.year, due.month, due.day) < std::tie(cal.year, cal.month, cal.day);
    if (due != FileDate() && isBefore) {
      const DraftHeader& header = plan_.header;
      plan_.doubts.push_back("The due date " +
                             DateShown(header.dueDay, header.dueMonth, header.dueYear) +
                             " is before the calibration date " +
                             DateShown(header.calDay, header.calMonth, header.calYear) + ".");
    }
  }

  /// Doubts a name of which only a part would be read back.
  void DoubtReading(const std::string& field, const std::string& name) {
    if (std::string notice = NameReadDifferently(field, name); !notice.empty()) {
      plan_.doubts.push_back(std::move(notice));
    }
  }

  /// False for a text that cannot be used.
  bool Text(const std::string& name, const FoundText& found, std::string& box) {
    const std::string_view foreign = FirstForeignCharacter(found.text);
    if (!foreign.empty() || found.text.find_first_of("\r\n\t") != std::string::npos) {
      plan_.notes.push_back(
          name + ": " + Quoted(found.text) + " is not used, because a data file cannot hold " +
          (foreign.empty() ? "its line ends or tabs" : "the character " + Quoted(foreign)) + ".");
      return false;
    }
    plan_.fields.push_back({name, box, found.text, found.where});
    box = found.text;
    return true;
  }

  void Date(const std::string& name, const FoundDate& found, std::string& day, std::string& month,
            std::string& year) {
    const std::string before = DateShown(day, month, year);
    day = std::to_string(found.date.day);
    month = NumberToMonth(found.date.month);
    year = std::to_string(found.date.year);
    const bool isNone = found.date == FileDate();
    plan_.fields.push_back(
        {name, before, isNone ? std::string() : DateShown(day, month, year), found.where});
  }

  const ImportTarget& target_;
  const CertificateHeader& header_;
  const std::vector<FoundText>& namedModels_;
  bool isUnchanged_;
  ImportPlan& plan_;
};

/// The instruments with different serial numbers, without members of the set.
std::vector<CertificateItem> InstrumentsOf(const ImportTarget& target,
                                           const Certificate& certificate) {
  std::vector<CertificateItem> instruments;
  for (const CertificateItem& item : certificate.items) {
    const bool isKnown = std::ranges::find(instruments, item.serialNumber,
                                           &CertificateItem::serialNumber) != instruments.end();
    if (!item.serialNumber.empty() && !isKnown && !IsMember(target, item)) {
      instruments.push_back(item);
    }
  }
  return instruments;
}

/// Whether the first cell of a row names a member of a set.
bool IsName(std::string_view cell) {
  return !Trim(cell).empty() && !ParseNumber(Trim(cell));
}

}  // namespace

bool IsMemberOf(const CertificateItem& item, std::string_view page) {
  return !page.empty() && (NamesModel(item.model, page) ||
                           std::ranges::any_of(item.name, [&](const LocalText& name) {
                             return ContainsIgnoringCase(name.text, page);
                           }));
}

void PlanHeader(const ImportTarget& target, const Certificate& certificate,
                const ImportChoices& choices, ImportPlan& plan) {
  plan.header = target.now.header;
  HeaderPlanning planning(target, certificate, plan);
  if (choices.item && *choices.item < certificate.items.size()) {
    planning.TakeItem(certificate.items[*choices.item]);
  } else {
    planning.TakeItem({});
  }
  planning.DoubtSerials(certificate);
  planning.TakeFields();
}

bool IsMember(const ImportTarget& target, const CertificateItem& item) {
  for (std::size_t page = 0; HasPages(target.model) && page < target.now.pages.size(); ++page) {
    const bool isRow = std::ranges::any_of(target.now.pages[page].rows, [&](const auto& row) {
      return IsName(row.at(0)) && NamesModel(item.model, Trim(row.at(0)));
    });
    if (isRow || IsMemberOf(item, target.data.GetCalPageName(static_cast<std::int16_t>(page)))) {
      return true;
    }
  }
  return false;
}

bool HasSeveralInstruments(const ImportTarget& target, const Certificate& certificate) {
  return InstrumentsOf(target, certificate).size() > 1;
}

std::string SerialsToChooseFrom(const ImportTarget& target, const Certificate& certificate) {
  const std::vector<CertificateItem> items = InstrumentsOf(target, certificate);
  const std::string& present = target.now.header.serialNumber;
  const bool isPresent =
      std::ranges::find(items, present, &CertificateItem::serialNumber) != items.end();
  std::string names;
  if (items.size() < 2 || (isPresent && !present.empty())) {
    return names;
  }
  for (const CertificateItem& item : items) {
    names += (names.empty() ? "" : ", ") + Quoted(item.serialNumber) + " (" + item.where + ")";
  }
  return names;
}

void PlanMembers(const ImportTarget& target, const Certificate& certificate,
                 const ImportChoices& choices, ImportPlan& plan) {
  HeaderPlanning planning(target, certificate, plan);
  for (PagePlan& page : plan.pages) {
    const PageChoice& choice = choices.pages.at(static_cast<std::size_t>(page.page));
    const auto member = std::ranges::find_if(certificate.items, [&](const CertificateItem& item) {
      return !item.serialNumber.empty() && IsMemberOf(item, page.name);
    });
    const bool isItem = member != certificate.items.end();
    planning.TakeMember(
        page, isItem ? &*member : nullptr,
        isItem ? member->where : certificate.tables.at(choice.tables.front()).where);
  }
  planning.TakeOption();
  if (plan.HasValues()) {
    planning.NoteNoDueDate();
  }
}

}  // namespace tarvell
