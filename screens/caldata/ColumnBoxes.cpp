// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/ColumnBoxes.h"

#include <QObject>

#include <algorithm>
#include <cstddef>
#include <optional>

#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

/// The data of the entries of a column's box that are no columns.
constexpr int kNotUsed = -1;
constexpr int kAsked = -2;

}  // namespace

void ShowPair(QWidget* label, QWidget* box, bool isShown) {
  label->setVisible(isShown);
  box->setVisible(isShown);
}

void ColumnBoxes::Show(const std::vector<ModelColumn>& columns, const Certificate& certificate,
                       const PageChoice& choice, const std::string& language) const {
  for (std::size_t i = 0; i < boxes_.size(); ++i) {
    const auto& [label, box] = boxes_[i];
    const bool isUsed = !choice.tables.empty() && i < columns.size();
    ShowPair(label, box, isUsed);
    box->clear();
    if (!isUsed) {
      continue;
    }
    // A set has several uncertainties.
    label->setText(
        columns[i].IsUncertainty()
            ? QObject::tr("%1 of %2").arg(ToQt(columns[i].caption), ToQt(columns[i - 1].caption))
            : ToQt(columns[i].caption));
    box->setAccessibleName(QObject::tr("Column for %1").arg(label->text()));
    if (std::ranges::find(choice.asked, i, &AskedColumn::column) != choice.asked.end()) {
      box->addItem(QObject::tr("(choose a column)"), kAsked);
    }
    box->addItem(QObject::tr("(not used)"), kNotUsed);
    const CertificateTable& table = certificate.tables.at(choice.tables.front());
    int number = 0;
    for (const ColumnSource& source : SourcesOf(table)) {
      box->addItem(ToQt(SourceName(table, source, language)), number++);
      if (choice.match.at(i) == source) {
        box->setCurrentIndex(box->count() - 1);
      }
    }
  }
}

void ColumnBoxes::Take(const CertificateTable& table, PageChoice& choice) const {
  const std::vector<ColumnSource> sources = SourcesOf(table);
  for (std::size_t i = 0; i < choice.match.size(); ++i) {
    const int chosen = boxes_.at(i).second->currentData().toInt();
    choice.match[i] =
        chosen >= 0 ? std::optional(sources.at(static_cast<std::size_t>(chosen))) : std::nullopt;
    if (chosen != kAsked) {
      std::erase_if(choice.asked, [&](const AskedColumn& asked) { return asked.column == i; });
    }
  }
}

}  // namespace tarvell
