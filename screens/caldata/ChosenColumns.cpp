// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ChosenColumns.h"

#include <QByteArray>
#include <QCryptographicHash>

#include "exchange/ModelColumns.h"
#include "screens/widgets/QtText.h"
#include "screens/widgets/UserSettings.h"

namespace tarvell {

std::string ChosenColumns::Of(const CertificateTable& table, std::int16_t page) const {
  if (CaptionsKey(table).empty()) {
    return {};
  }
  const QString setting = SettingOf(table, page);
  const auto known = chosen_.find(setting);
  return known == chosen_.end() ? FromQt(RememberedText(setting)) : known->second;
}

void ChosenColumns::Choose(const CertificateTable& table, std::int16_t page,
                           const ColumnMatch& match) {
  if (CaptionsKey(table).empty()) {
    // Any other table without captions would get these columns, too.
    return;
  }
  chosen_[SettingOf(table, page)] = MatchText(match);
}

void ChosenColumns::Keep() const {
  for (const auto& [setting, columns] : chosen_) {
    Remember(setting, ToQt(columns));
  }
}

QString ChosenColumns::SettingOf(const CertificateTable& table, std::int16_t page) const {
  std::string captions = CaptionsKey(table);
  if (HasPages(target_.model)) {
    // Pages with the same columns share what the user chose.
    for (const ModelColumn& column : ModelColumns(target_.model, target_.data, page)) {
      captions += "|" + column.caption;
    }
  }
  const QByteArray hash =
      QCryptographicHash::hash(QByteArray::fromStdString(captions), QCryptographicHash::Sha1);
  return "certificates/" + ToQt(target_.model.code) + "-" + QString(hash.toHex());
}

}  // namespace tarvell
