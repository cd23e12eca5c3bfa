// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/TableBox.h"

#include <QObject>

#include <algorithm>
#include <utility>

#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

using Tables = std::vector<std::size_t>;

/// The tables that the user may choose together.
std::vector<Tables> TogetherFor(const PageChoice& choice) {
  std::vector<Tables> together;
  Tables all;
  for (const Tables& tables : choice.alternatives) {
    all.insert(all.end(), tables.begin(), tables.end());
    if (tables.size() > 1) {
      together.push_back(tables);
    }
  }
  if (choice.canJoinAlternatives) {
    together.push_back(all);
  }
  const bool isKnown = std::ranges::find(together, choice.tables) != together.end();
  if (choice.tables.size() > 1 && !isKnown) {
    together.push_back(choice.tables);
  }
  return together;
}

QString NameTogether(const Certificate& certificate, const Tables& tables) {
  std::size_t rows = 0;
  for (const std::size_t table : tables) {
    rows += certificate.tables.at(table).RowCount();
  }
  const std::string& section = certificate.tables.at(tables.front()).section;
  const bool isOfSection = !section.empty() && std::ranges::all_of(tables, [&](std::size_t table) {
    return certificate.tables.at(table).section == section;
  });
  const QString name = QObject::tr("%1 tables together, %2").arg(tables.size()).arg(RowsText(rows));
  return isOfSection ? QObject::tr("%1: %2").arg(ToQt(section), name) : name;
}

}  // namespace

QString RowsText(std::size_t count) {
  return count == 1 ? QObject::tr("1 row") : QObject::tr("%1 rows").arg(count);
}

void TableBox::Show(const Certificate& certificate, const PageChoice& choice,
                    const std::string& language) {
  offered_.clear();
  box_->clear();
  offersOpen_ = choice.IsOpen();
  if (offersOpen_) {
    Offer({}, QObject::tr("(choose a table)"));
  }
  Offer({}, QObject::tr("(none: the page stays as it is)"));
  for (const Tables& tables : TogetherFor(choice)) {
    Offer(tables, NameTogether(certificate, tables));
  }
  for (std::size_t i = 0; i < certificate.tables.size(); ++i) {
    const CertificateTable& table = certificate.tables[i];
    Offer({i},
          QObject::tr("%1 (%2), %3")
              .arg(ToQt(TitleOf(table, language)), ToQt(table.where), RowsText(table.RowCount())));
  }
  box_->setCurrentIndex(
      static_cast<int>(std::ranges::find(offered_, choice.tables) - offered_.begin()));
}

const std::vector<std::size_t>& TableBox::TablesOf(int entry) const {
  return offered_.at(static_cast<std::size_t>(entry));
}

void TableBox::Offer(std::vector<std::size_t> tables, const QString& name) {
  offered_.push_back(std::move(tables));
  box_->addItem(name);
}

}  // namespace tarvell
