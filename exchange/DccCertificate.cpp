// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "exchange/DccCertificate.h"

#include <algorithm>
#include <pugixml.hpp>
#include <string>

#include "core/platform/Error.h"
#include "core/text/Text.h"
#include "exchange/DccTables.h"
#include "exchange/DccXml.h"
#include "exchange/Words.h"

namespace tarvell {

namespace {

constexpr std::size_t kItemLimit = 200;

/// The version that the root names; older certificates name it only in the address of the schema,
/// ".../v2.4.0/dcc.xsd".
std::string VersionOf(pugi::xml_node root) {
  std::string_view version = root.attribute("schemaVersion").value();
  for (const pugi::xml_attribute attribute : root.attributes()) {
    const std::string_view address = attribute.value();
    const std::size_t at = address.find("/v");
    if (version.empty() && std::string_view(attribute.name()).ends_with("schemaLocation") &&
        at != std::string_view::npos) {
      version = address.substr(at + 2);
      version = version.substr(0, version.find_first_not_of("0123456789."));
    }
  }
  return std::string(version);
}

/// Versions 2.4 to 3.x.
bool IsKnownVersion(std::string_view version) {
  const std::size_t point = std::min(version.find('.'), version.size());
  const std::string_view major = version.substr(0, point);
  const std::string_view rest = version.substr(std::min(point + 1, version.size()));
  const std::string_view minor = rest.substr(0, rest.find('.'));
  const bool isOld = minor == "0" || minor == "1" || minor == "2" || minor == "3";
  return major == "3" || (major == "2" && !isOld);
}

void TakeDate(pugi::xml_node node, const std::string& where, std::optional<FoundDate>& target,
              std::optional<FoundText>& unread) {
  const std::string text = TextOf(node);
  if (text.empty()) {
    return;
  }
  // A DCC has ISO dates only, so that no order of day and month has to be asked.
  const bool isIso = text.find_first_not_of("0123456789") == 4;
  const std::optional<FileDate> date = DateFrom(text, DateOrder::DayFirst);
  if (isIso && date) {
    target = FoundDate{*date, where};
  } else {
    unread = FoundText{Shortened(text), where};
  }
}

bool NamesSerial(pugi::xml_node identification) {
  const Names names = NamesOf(identification.child("dcc:name"));
  return HasRefType(identification, "basic_serialNumber") ||
         std::ranges::any_of(
             names, [](const LocalText& name) { return NamesSerialNumber(Folded(name.text)); });
}

CertificateItem ItemOf(pugi::xml_node node) {
  CertificateItem item;
  item.name = NamesOf(node.child("dcc:name"));
  item.model = Shortened(TextOf(node.child("dcc:model")));
  bool isNamed = false;
  for (const pugi::xml_node id : node.child("dcc:identifications").children("dcc:identification")) {
    // A manufacturer may give an article number, too.
    const bool isSerial = NamesSerial(id);
    if (TextOf(id.child("dcc:issuer")) == "manufacturer" &&
        (item.serialNumber.empty() || (isSerial && !isNamed))) {
      item.serialNumber = Shortened(TextOf(id.child("dcc:value")));
      isNamed = isSerial;
    }
  }
  return item;
}

void ReadAdministrativeData(pugi::xml_node data, Certificate& certificate) {
  CertificateHeader& header = certificate.header;
  const pugi::xml_node core = data.child("dcc:coreData");
  if (const std::string number = TextOf(core.child("dcc:uniqueIdentifier")); !number.empty()) {
    header.calibrationNumber = FoundText{Shortened(number), "unique identifier"};
    if (number != header.calibrationNumber->text) {
      certificate.doubts.emplace_back(
          "The unique identifier of the certificate is too long: only its beginning is used.");
    }
  }
  TakeDate(core.child("dcc:beginPerformanceDate"), "begin of the calibration", header.calDate,
           header.unreadCalDate);
  TakeDate(core.child("dcc:endPerformanceDate"), "end of the calibration", header.calDate,
           header.unreadCalDate);
  if (header.calDate && header.unreadCalDate) {
    certificate.doubts.push_back(Quoted(header.unreadCalDate->text) + " (" +
                                 header.unreadCalDate->where + ") is not a date. " +
                                 IsoDate(header.calDate->date) + " (" + header.calDate->where +
                                 ") is used.");
  }
  for (const pugi::xml_node statement : data.child("dcc:statements").children("dcc:statement")) {
    if (!HasRefType(statement, "basic_recalibration")) {
      continue;
    }
    std::optional<FoundDate> due;
    TakeDate(statement.child("dcc:date"), "statement on recalibration", due, header.unreadDueDate);
    if (due && header.dueDate && due->date != header.dueDate->date) {
      certificate.doubts.push_back(
          "There are two statements on recalibration: " + IsoDate(header.dueDate->date) +
          ", which is used, and " + IsoDate(due->date) + ".");
    }
    header.dueDate = header.dueDate ? header.dueDate : due;
  }
  for (const pugi::xml_node item : data.child("dcc:items").children("dcc:item")) {
    if (certificate.items.size() == kItemLimit) {
      throw Error(ErrorKind::Type, "The certificate names more than " + std::to_string(kItemLimit) +
                                       " instruments. Ask for one about this instrument only.");
    }
    certificate.items.push_back(ItemOf(item));
    certificate.items.back().where = "item " + std::to_string(certificate.items.size());
  }
}

}  // namespace

Certificate DccCertificate(std::string_view bytes) {
  pugi::xml_document document;
  Certificate certificate;
  certificate.notes = LoadDcc(bytes, document);
  const pugi::xml_node root = document.document_element();
  const std::string version = VersionOf(root);
  certificate.kind = version.empty() ? "DCC" : "DCC " + version;
  if (!version.empty() && !IsKnownVersion(version)) {
    certificate.doubts.push_back("The certificate is a DCC of version " +
                                 Quoted(Shortened(version)) +
                                 ", and the program knows the versions 2.4 to 3.x. Another version "
                                 "may mean other things by the same names.");
  }
  ReadAdministrativeData(root.child("dcc:administrativeData"), certificate);
  AddDccTables(root, certificate);
  return certificate;
}

}  // namespace tarvell
