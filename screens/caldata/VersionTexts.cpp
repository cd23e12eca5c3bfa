// SPDX-FileCopyrightText: the Tarvell authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "screens/caldata/VersionTexts.h"

#include <QCoreApplication>

#include <optional>
#include <utility>

#include "core/dates/DueDate.h"
#include "core/history/Replacement.h"
#include "core/text/Text.h"
#include "screens/widgets/QtText.h"

namespace tarvell {

namespace {

QString Tr(const char* text) {
  return QCoreApplication::translate("frmHistory", text);
}

using TextOfVersion = QString (*)(const Calibration& version);

/// A cell of the row of a version.
class VersionItem final : public QTableWidgetItem {
 public:
  VersionItem(std::function<const Calibration&()> version, TextOfVersion textOf)
      : version_(std::move(version)), textOf_(textOf) {}

  [[nodiscard]] QVariant data(int role) const override {
    if (role != Qt::DisplayRole) {
      return QTableWidgetItem::data(role);
    }
    if (!text_) {
      text_ = textOf_(version_());
    }
    return *text_;
  }

 private:
  std::function<const Calibration&()> version_;
  TextOfVersion textOf_;
  mutable std::optional<QString> text_;
};

QString CalibratedText(const Calibration& version) {
  return version.hasHeader ? ToQt(DateText(version.Calibrated())) : QString();
}

QString NumberText(const Calibration& version) {
  return ToQt(version.header.CalibrationNumber);
}

QString DueText(const Calibration& version) {
  return version.hasHeader ? ToQt(DateText(version.Due())) : QString();
}

QString UserText(const Calibration& version) {
  return version.isCurrent ? QString() : ToQt(version.event.user);
}

/// When, or by what, a version came to its end.
QString EndText(const Calibration& version) {
  if (version.isCurrent) {
    return Tr("(the present file)");
  }
  const QString time = ToQt(LocalTimeText(version.event.time));
  return version.event.done == kDeleted ? Tr("%1, deleted").arg(time) : time;
}

}  // namespace

QString StateText(const Calibration& version) {
  const std::string_view text = TextOf(version.State());
  return text.empty() ? Tr("As saved.") : ToQt(text);
}

QString HeaderText(const Calibration& version) {
  const CalFileInfo& header = version.header;
  if (!version.hasHeader) {
    return EndText(version);
  }
  return Tr("Serial number %1, calibration number %2, calibrated %3, due %4, comment: %5")
      .arg(ToQt(TextOrNone(header.SerialNumber)), ToQt(TextOrNone(header.CalibrationNumber)),
           ToQt(DateText(version.Calibrated())), ToQt(DateText(version.Due())),
           ToQt(TextOrNone(header.Comment)));
}

std::vector<QTableWidgetItem*> CellsOf(const std::function<const Calibration&()>& version) {
  std::vector<QTableWidgetItem*> cells;
  for (const TextOfVersion text :
       {CalibratedText, NumberText, DueText, EndText, UserText, StateText}) {
    cells.push_back(new VersionItem(version, text));  // the list takes it
  }
  return cells;
}

}  // namespace tarvell
