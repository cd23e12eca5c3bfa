// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/HeaderPlan.h"

#include <string>

#include "core/dates/Months.h"
#include "core/text/FileCharacters.h"
#include "core/text/Text.h"

namespace tarvell {

namespace {

/// The value that an export writes for a set without its option.
constexpr std::string_view kNoOption = "none";

std::string WithoutGaps(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    plain += c == ' ' || c == '-' || c == '_' ? "" : std::string(1, c);
  }
  return plain;
}

std::string DateShown(const std::string& day, const std::string& month, const std::string& year) {
  return day + " " + month + " " + year;
}

class HeaderPlanning {
 public:
  HeaderPlanning(const ImportTarget& target, const Certificate& certificate, ImportPlan& plan)
      : target_(target), header_(certificate.header), plan_(plan) {
    plan_.header = target.now.header;
  }

  void TakeItem(const CertificateItem& item) {
    if (!item.model.empty() && !NamesModel(item.model, target_.model.code)) {
      plan_.doubts.push_back("The certificate is for the model " + Quoted(item.model) +
                             ", and this data set is for " + std::string(target_.model.code) + ".");
    }
    const std::string& present = target_.now.header.serialNumber;
    if (item.serialNumber.empty()) {
      plan_.notes.emplace_back("The certificate names no serial number.");
    } else if (item.serialNumber != present) {
      // Nobody has entered the serial number of the template.
      const bool isDefault = !target_.isSerialFixed && present == target_.data.SerialNumber();
      if (!present.empty() && !isDefault) {
        plan_.doubts.push_back("The certificate is for the serial number " +
                               Quoted(item.serialNumber) + ", and this data set has " +
                               Quoted(present) + "." +
                               (target_.isSerialFixed ? " The serial number stays as it is." : ""));
      }
      if (!target_.isSerialFixed) {
        Text("Serial number", {item.serialNumber, "item"}, plan_.header.serialNumber);
      }
    }
  }

  void TakeFields() {
    if (header_.calibrationNumber) {
      Text("Calibration number", *header_.calibrationNumber, plan_.header.calibrationNumber);
    }
    if (header_.calDate) {
      Date("Calibration date", *header_.calDate, plan_.header.calDay, plan_.header.calMonth,
           plan_.header.calYear);
    }
    if (header_.dueDate) {
      Date("Due date", *header_.dueDate, plan_.header.dueDay, plan_.header.dueMonth,
           plan_.header.dueYear);
    }
    if (header_.comment) {
      Text("Comment", *header_.comment, plan_.header.comment);
    }
    if (header_.option && target_.now.option) {
      plan_.option = !EqualsIgnoringCase(header_.option->text, kNoOption);
    }
  }

 private:
  void Text(const std::string& name, const FoundText& found, std::string& box) {
    const std::string_view foreign = FirstForeignCharacter(found.text);
    if (!foreign.empty() || found.text.find_first_of("\r\n\t") != std::string::npos) {
      plan_.notes.push_back(
          name + ": " + Quoted(found.text) + " is not used, because a data file cannot hold " +
          (foreign.empty() ? "its line ends or tabs" : "the character " + Quoted(foreign)) + ".");
      return;
    }
    plan_.fields.push_back({name, box, found.text, found.where});
    box = found.text;
  }

  void Date(const std::string& name, const FoundDate& found, std::string& day, std::string& month,
            std::string& year) {
    const std::string before = DateShown(day, month, year);
    day = std::to_string(found.date.day);
    month = NumberToMonth(found.date.month);
    year = std::to_string(found.date.year);
    plan_.fields.push_back({name, before, DateShown(day, month, year), found.where});
  }

  const ImportTarget& target_;
  const CertificateHeader& header_;
  ImportPlan& plan_;
};

}  // namespace

bool NamesModel(std::string_view named, std::string_view code) {
  return ContainsIgnoringCase(WithoutGaps(named), code);
}

void PlanHeader(const ImportTarget& target, const Certificate& certificate,
                const ImportChoices& choices, ImportPlan& plan) {
  HeaderPlanning planning(target, certificate, plan);
  if (choices.item && *choices.item < certificate.items.size()) {
    planning.TakeItem(certificate.items[*choices.item]);
  } else {
    planning.TakeItem({});
  }
  planning.TakeFields();
}

}  // namespace tarvell
